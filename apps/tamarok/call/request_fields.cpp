#include "call/request_fields.h"

#include <nlohmann/json.hpp>

#include "call/json_value.h"

#include "tamarok/error.h"

namespace tamarok::cli {

void refuse(const std::string& reason)
{
    throw Error{errors::invalidArgument, reason};
}

const Json* findMember(const Json& object, std::string_view name)
{
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

const Json& requireMember(const Json& request, std::string_view name)
{
    const Json* found = findMember(request, name);
    if (found == nullptr) refuse("the request needs \"" + std::string{name} + "\"");
    return *found;
}

const std::string& requireText(const Json& value, std::string_view what)
{
    if (!value.is_string()) refuse("\"" + std::string{what} + "\" is a text, not " + std::string{kindOf(value)});
    return value.get_ref<const std::string&>();
}

const std::string& textMember(const Json& request, std::string_view name)
{
    return requireText(requireMember(request, name), name);
}

void requireObject(const Json& value, std::string_view what)
{
    if (!value.is_object()) refuse("\"" + std::string{what} + "\" is an object, not " + std::string{kindOf(value)});
}

std::int64_t requireCount(const Json& value, std::int64_t most, std::string_view what)
{
    // A number beyond 64 bits signed is held without sign and would change its value in `get`.
    const bool whole = value.is_number_integer() &&
                       (!value.is_number_unsigned() || value.get<std::uint64_t>() <= static_cast<std::uint64_t>(most));
    const std::int64_t number = whole ? value.get<std::int64_t>() : -1;
    if (number < 0 || number > most) {
        refuse(std::string{what} + " is a whole number from 0 to " + std::to_string(most) + ", not " + value.dump());
    }
    return number;
}

std::vector<Variant> readArguments(const Json& request, const ObjectNames& names)
{
    const Json* given = findMember(request, "args");
    if (given == nullptr) return {};
    if (!given->is_array()) refuse("\"args\" is an array, not " + std::string{kindOf(*given)});
    std::vector<Variant> args;
    args.reserve(given->size());
    for (const Json& value : *given)
        args.push_back(toVariant(value, names));
    return args;
}

} // namespace tamarok::cli
