#include "call/json_value.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "call/json_array.h"
#include "call/object_names.h"
#include "call/request_fields.h"

#include "tamarok/component.h"
#include "tamarok/early_date.h"
#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

Variant wholeNumber(const Json& json)
{
    if (json.is_number_unsigned()) {
        const auto value = json.get<std::uint64_t>();
        if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
            throw Error{errors::overflow, "whole number beyond 64 bits: " + std::to_string(value)};
        }
    }
    const auto value = json.get<std::int64_t>();
    const auto narrow = static_cast<std::int32_t>(value);
    return narrow == value ? Variant{narrow} : Variant{value};
}

Variant integer(const Json& json)
{
    if (!json.is_number_integer()) refuse("$int needs a whole number");
    const auto value = json.get<std::int64_t>();
    const auto narrow = static_cast<std::int16_t>(value);
    if (json.is_number_unsigned() && json.get<std::uint64_t>() > 0x7FFFU) {
        throw Error{errors::overflow, "$int beyond 16 bits: " + json.dump()};
    }
    if (narrow != value) throw Error{errors::overflow, "$int beyond 16 bits: " + json.dump()};
    return narrow;
}

const std::string& textOf(const Json& json, std::string_view form)
{
    if (!json.is_string()) refuse(std::string{form} + " needs a text");
    return json.get_ref<const std::string&>();
}

void requireTrue(const Json& json, std::string_view form)
{
    if (!json.is_boolean() || !json.get<bool>()) refuse(std::string{form} + " needs true");
}

/// A value with a form of its own: {"$form": content}.
Variant marked(const Json& json, const ObjectNames& names)
{
    if (isMarkedArray(json)) return arrayFromMarked(json, names);
    if (json.size() != 1) refuse("a value that is an object has exactly one member, such as {\"$ref\":\"name\"}");
    const std::string& form = json.begin().key();
    const Json& content = json.begin().value();
    if (form == "$ref") return names.find(textOf(content, form));
    if (form == "$date") return parseIsoDate(textOf(content, form));
    if (form == "$int") return integer(content);
    if (form == "$empty") {
        requireTrue(content, form);
        return Empty{};
    }
    if (form == "$nothing") {
        requireTrue(content, form);
        return ObjectRef{};
    }
    if (form == "$missing") {
        requireTrue(content, form);
        return component::missingArgument();
    }
    refuse("unknown form of a value: '" + form + "'; known are $ref, $nothing, $date, $int, $array, $empty, $missing");
}

Variant plainArray(const Json& json, const ObjectNames& names)
{
    std::vector<Variant> elements;
    elements.reserve(json.size());
    for (const Json& element : json)
        elements.push_back(toVariant(element, names));
    return VariantArray{std::move(elements)};
}

Json number(double value)
{
    if (!std::isfinite(value)) throw Error{errors::overflow, "a number that is not finite has no form in JSON"};
    return value;
}

Json reference(const ObjectRef& object, ObjectNames& names)
{
    if (!object) return {{"$nothing", true}};
    return {{"$ref", names.nameOf(object)}};
}

/// Reads exactly `digits` digits at the front of `text`.
bool takeDigits(std::string_view& text, std::size_t digits, std::int32_t& value)
{
    if (text.size() < digits) return false;
    for (std::size_t index = 0; index < digits; ++index) {
        if (text[index] < '0' || text[index] > '9') return false;
    }
    std::from_chars(text.data(), text.data() + digits, value);
    text.remove_prefix(digits);
    return true;
}

bool take(std::string_view& text, char wanted)
{
    if (text.empty() || text.front() != wanted) return false;
    text.remove_prefix(1);
    return true;
}

/// A fraction of the second, one to nine digits, to milliseconds.
bool takeFraction(std::string_view& text, std::int32_t& milliseconds)
{
    std::int32_t digit = 0;
    std::int32_t weight = 100;
    if (!takeDigits(text, 1, digit)) return false;
    milliseconds = digit * weight;
    for (int count = 1; count < 9 && takeDigits(text, 1, digit); ++count) {
        weight /= 10;
        milliseconds += digit * weight;
    }
    return true;
}

bool takeTime(std::string_view& text, CivilTime& civil)
{
    if (!takeDigits(text, 2, civil.hour) || !take(text, ':') || !takeDigits(text, 2, civil.minute)) return false;
    if (!take(text, ':')) return true;
    if (!takeDigits(text, 2, civil.second)) return false;
    return !take(text, '.') || takeFraction(text, civil.millisecond);
}

std::string padded(std::int32_t value, std::size_t width)
{
    std::string digits = std::to_string(value);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

} // namespace

Variant toVariant(const Json& json, const ObjectNames& names)
{
    switch (json.type()) {
    case Json::value_t::null: return Null{};
    case Json::value_t::boolean: return json.get<bool>();
    case Json::value_t::number_integer:
    case Json::value_t::number_unsigned: return wholeNumber(json);
    case Json::value_t::number_float: return json.get<double>();
    case Json::value_t::string: return json.get_ref<const std::string&>();
    case Json::value_t::array: return plainArray(json, names);
    default: return marked(json, names);
    }
}

Json fromVariant(const Variant& value, ObjectNames& names)
{
    if (component::isMissing(value)) return {{"$missing", true}};
    switch (value.kind()) {
    case Variant::Kind::Empty: return {{"$empty", true}};
    case Variant::Kind::Null: return nullptr;
    case Variant::Kind::Boolean: return static_cast<bool>(value.asBoolean());
    case Variant::Kind::Integer: return value.asInteger();
    case Variant::Kind::Long: return value.asLong();
    case Variant::Kind::LongLong: return value.asLongLong();
    case Variant::Kind::Double: return number(value.asDouble());
    case Variant::Kind::Date: return {{"$date", isoDate(value.asDate())}};
    case Variant::Kind::String: return value.asString();
    case Variant::Kind::Object: return reference(value.asObject(), names);
    case Variant::Kind::Array: return arrayToJson(value.asArray(), names);
    }
    return nullptr;
}

Date parseIsoDate(std::string_view text)
{
    std::string_view rest = text;
    CivilTime civil{};
    const bool day = takeDigits(rest, 4, civil.year) && take(rest, '-') && takeDigits(rest, 2, civil.month) &&
                     take(rest, '-') && takeDigits(rest, 2, civil.day);
    const bool time = day && (rest.empty() || ((take(rest, 'T') || take(rest, ' ')) && takeTime(rest, civil)));
    if (!time || !rest.empty()) {
        refuse("'" + std::string{text} + "' is no date of the form 2024-03-05 or 2024-03-05T10:15:00");
    }
    try {
        return fromCivilOrEarly(civil);
    } catch (Error& error) {
        throw error.addContext("date '" + std::string{text} + "'");
    }
}

std::string isoDate(Date date)
{
    const CivilTime civil = toCivilOrEarly(date);
    std::string text = padded(civil.year, 4) + "-" + padded(civil.month, 2) + "-" + padded(civil.day, 2);
    if (civil.hour == 0 && civil.minute == 0 && civil.second == 0 && civil.millisecond == 0) return text;
    text += "T" + padded(civil.hour, 2) + ":" + padded(civil.minute, 2) + ":" + padded(civil.second, 2);
    if (civil.millisecond != 0) text += "." + padded(civil.millisecond, 3);
    return text;
}

} // namespace tamarok::cli
