#include "call/json.h"

#include <array>
#include <nlohmann/json.hpp>
#include <vector>

#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

constexpr std::size_t deepestNesting = 256;

[[noreturn]] void refuse(const std::string& reason)
{
    throw Error{errors::invalidArgument, reason};
}

/// Builds the tree while the text is parsed. Members are appended without looking for an equal one, so
/// that the time grows with the length of the line and not with the square of its number of members.
class Builder {
public:
    explicit Builder(Json& root) : root_{root} {}

    bool null() { return add(nullptr); }
    bool boolean(bool value) { return add(value); }
    bool number_integer(Json::number_integer_t value) { return add(value); }
    bool number_unsigned(Json::number_unsigned_t value) { return add(value); }
    bool number_float(Json::number_float_t value, const Json::string_t& text)
    {
        // The reader falls back on a float where a whole number leaves 64 bits.
        if (text.find_first_of(".eE") == std::string::npos) refuse("whole number beyond 64 bits: " + text);
        return add(value);
    }
    bool string(Json::string_t& value) { return add(std::move(value)); }
    bool binary(Json::binary_t&) { return false; }

    bool start_object(std::size_t) { return open(Json::object()); }
    bool key(Json::string_t& name)
    {
        key_ = std::move(name);
        return true;
    }
    bool end_object() { return close(); }
    bool start_array(std::size_t) { return open(Json::array()); }
    bool end_array() { return close(); }

    template <class Exception>
    bool parse_error(std::size_t position, const std::string&, const Exception& error)
    {
        constexpr int numberOutOfRange = 406;
        if (error.id == numberOutOfRange) refuse("number out of range at byte " + std::to_string(position));
        refuse("not JSON: unexpected text at byte " + std::to_string(position));
    }

private:
    template <class Value>
    bool add(Value&& value)
    {
        place(Json(std::forward<Value>(value)));
        return true;
    }

    /// Appends a value to the open array or object and returns its place.
    Json& place(Json&& value)
    {
        if (open_.empty()) return root_ = std::move(value);
        Json& parent = *open_.back();
        if (parent.is_array()) {
            auto& items = parent.get_ref<Json::array_t&>();
            return items.emplace_back(std::move(value));
        }
        auto& members = parent.get_ref<Json::object_t&>();
        members.push_back({std::move(key_), std::move(value)});
        return members.back().second;
    }

    bool open(Json&& container)
    {
        if (open_.size() == deepestNesting) refuse("nested deeper than " + std::to_string(deepestNesting) + " levels");
        open_.push_back(&place(std::move(container)));
        return true;
    }

    bool close()
    {
        open_.pop_back();
        return true;
    }

    Json& root_;
    std::vector<Json*> open_;
    std::string key_;
};

} // namespace

Json parseJson(std::string_view text)
{
    Json root;
    Builder builder{root};
    Json::sax_parse(text.begin(), text.end(), &builder);
    return root;
}

std::string toLine(const Json& json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string_view kindOf(const Json& json)
{
    switch (json.type()) {
    case Json::value_t::null: return "null";
    case Json::value_t::boolean: return "a truth value";
    case Json::value_t::string: return "a text";
    case Json::value_t::array: return "an array";
    case Json::value_t::object: return "an object";
    default: return "a number";
    }
}

} // namespace tamarok::cli
