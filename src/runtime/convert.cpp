#include "tamarok/convert.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "tamarok/error.h"
#include "tamarok/text.h"

// Conversions of variants by kind. Each function has one switch over all kinds; texts are read by the parsers of
// numbers and dates, objects are replaced by their default value and converted again.

namespace tamarok::convert {

namespace {

using Kind = Variant::Kind;

/// Returns the value in quotes for a message, cut to 40 characters.
std::string quoted(std::string_view value)
{
    constexpr std::size_t longest = 40;
    const std::string_view shown = text::left(value, longest);
    return '"' + std::string{shown} + (shown.size() < value.size() ? "...\"" : "\"");
}

// The errors, each with the value or the kind that caused it.
[[noreturn]] void throwMismatch(std::string_view value, std::string_view wanted)
{
    throw Error{errors::typeMismatch, "Type mismatch: " + quoted(value) + " is no " + std::string{wanted} + "."};
}

[[noreturn]] void throwNoForm(const Variant& value, std::string_view wanted)
{
    throw Error{errors::typeMismatch, "Type mismatch: a value of kind " + std::string{name(value.kind())} + " is no " +
                                          std::string{wanted} + "."};
}

[[noreturn]] void throwNull(std::string_view wanted)
{
    throw Error{errors::invalidUseOfNull,
                "Invalid use of Null: the value is Null where a " + std::string{wanted} + " is needed."};
}

[[noreturn]] void throwOverflow(std::string_view value, std::string_view type)
{
    throw Error{errors::overflow,
                "Overflow: " + std::string{value} + " leaves the range of " + std::string{type} + "."};
}

/// Returns the default value of an object. Error 13 for an object without one and for a value that is an
/// object itself, such as a field within a field.
Variant valueOf(const ObjectRef& object, std::string_view wanted)
{
    const Object& target = require(object, wanted);
    if (!target.hasDefaultValue())
        throw Error{errors::typeMismatch, "Type mismatch: an object of the type " + std::string{target.typeName()} +
                                              " is no " + std::string{wanted} + "."};
    Variant value = target.defaultValue();
    if (value.isObject()) throwNoForm(value, wanted);
    return value;
}

/// Returns whether an object has a value to test; without one isNumeric and isDate are false.
bool hasDefaultValue(const ObjectRef& object) noexcept
{
    return object && object->hasDefaultValue();
}

double numberOf(std::string_view text, const Regional& regional)
{
    if (const auto number = parseNumber(text, regional)) return *number;
    throwMismatch(text, "number");
}

/// Rounds half to even. Error 6 outside the range of `Whole`.
template <class Whole>
Whole narrowed(double number, std::string_view type)
{
    // -lowest is one above the greatest value: both bounds are exact doubles, the greatest 64-bit value is not.
    constexpr double lowest = static_cast<double>(std::numeric_limits<Whole>::min());
    const double rounded = nearestEven(number);
    if (!(rounded >= lowest && rounded < -lowest))
        throwOverflow(std::isfinite(number) ? toPlainText(number) : "a number that is not finite", type);
    return static_cast<Whole>(rounded);
}

template <class Whole>
Whole narrowed(std::int64_t number, std::string_view type)
{
    if (number < std::numeric_limits<Whole>::min() || number > std::numeric_limits<Whole>::max())
        throwOverflow(std::to_string(number), type);
    return static_cast<Whole>(number);
}

/// Reads a text of digits alone as a 64-bit number: a double holds only 53 bits.
template <class Whole>
Whole wholeOf(std::string_view text, std::string_view type)
{
    std::int64_t exact = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), exact);
    if (result.ec == std::errc{} && result.ptr == text.data() + text.size()) return narrowed<Whole>(exact, type);
    return narrowed<Whole>(numberOf(text, Platform::current().regional), type);
}

template <class Whole>
Whole toWhole(const Variant& value, std::string_view type)
{
    switch (value.kind()) {
    case Kind::Empty: return 0;
    case Kind::Null: throwNull("number");
    case Kind::Boolean: return value.asBoolean().number();
    // A 16-bit number fits every type of whole numbers.
    case Kind::Integer: return value.asInteger();
    case Kind::Long: return narrowed<Whole>(std::int64_t{value.asLong()}, type);
    case Kind::LongLong: return narrowed<Whole>(value.asLongLong(), type);
    case Kind::Double: return narrowed<Whole>(value.asDouble(), type);
    case Kind::Date: return narrowed<Whole>(value.asDate().days, type);
    case Kind::String: return wholeOf<Whole>(value.asString(), type);
    case Kind::Object: return toWhole<Whole>(valueOf(value.asObject(), "number"), type);
    case Kind::Array: break;
    }
    throwNoForm(value, "number");
}

Date dateOfNumber(double days)
{
    // Years 100 to 9999, the range of the type Date.
    const Date date{days};
    if (!isInRange(date))
        throwOverflow(std::isfinite(days) ? toPlainText(days) : "a number that is not finite", "dates");
    return date;
}

std::string wholeText(std::int64_t number)
{
    std::array<char, maxNumberText> buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

/// Reads a truth value: a regional or English word, or a number.
bool truthOf(std::string_view text, const Regional& regional)
{
    // The words of the region go before the English ones; a number is true unless it is 0.
    const std::string_view word = text::trim(text);
    if (text::equalsNoCase(word, regional.trueText) || text::equalsNoCase(word, "True")) return true;
    if (text::equalsNoCase(word, regional.falseText) || text::equalsNoCase(word, "False")) return false;
    if (const auto number = parseNumber(text, regional)) return *number != 0.0;
    throwMismatch(text, "truth value");
}

} // namespace

std::string toText(const Variant& value, const Regional& regional)
{
    switch (value.kind()) {
    case Kind::Empty: return {};
    case Kind::Null: throwNull("text");
    case Kind::Boolean: return value.asBoolean() ? regional.trueText : regional.falseText;
    case Kind::Integer: return wholeText(value.asInteger());
    case Kind::Long: return wholeText(value.asLong());
    case Kind::LongLong: return wholeText(value.asLongLong());
    case Kind::Double: return toText(value.asDouble(), regional);
    case Kind::Date: return toText(value.asDate(), regional);
    case Kind::String: return value.asString();
    case Kind::Object: return toText(valueOf(value.asObject(), "text"), regional);
    case Kind::Array: break;
    }
    throwNoForm(value, "text");
}

std::string toText(const Variant& value)
{
    return toText(value, Platform::current().regional);
}

std::string toSqlNumber(std::string_view numberText, std::string_view thousands)
{
    std::string result{numberText};
    // A comma is not removed even if it separates thousands: the last step makes it the decimal point. Required by
    // the contract. Do not correct.
    if (thousands.size() == 1 && thousands != ",")
        std::erase(result, thousands.front());
    else if (thousands.size() > 1 && text::length(thousands) == 1) // such as a no-break space
        result = text::replaceAll(result, thousands, "");
    // Whatever the regional decimal separator is: every comma becomes a point.
    std::replace(result.begin(), result.end(), ',', '.');
    return result;
}

std::string toSqlNumber(double number, const Regional& regional)
{
    return toSqlNumber(toText(number, regional));
}

bool isNumeric(const Variant& value, const Regional& regional)
{
    switch (value.kind()) {
    case Kind::Empty:
    case Kind::Boolean:
    case Kind::Integer:
    case Kind::Long:
    case Kind::LongLong:
    case Kind::Double: return true;
    case Kind::String: return parseNumber(value.asString(), regional).has_value();
    case Kind::Object:
        return hasDefaultValue(value.asObject()) && isNumeric(valueOf(value.asObject(), "number"), regional);
    // A date is not numeric, although it converts to a number.
    case Kind::Null:
    case Kind::Date:
    case Kind::Array: break;
    }
    return false;
}

bool isNumeric(const Variant& value)
{
    return isNumeric(value, Platform::current().regional);
}

bool isDate(const Variant& value, const Regional& regional)
{
    switch (value.kind()) {
    case Kind::Date: return isInRange(value.asDate());
    case Kind::String: return parseDate(value.asString(), regional).has_value();
    case Kind::Object: return hasDefaultValue(value.asObject()) && isDate(valueOf(value.asObject(), "date"), regional);
    default: return false;
    }
}

bool isDate(const Variant& value)
{
    return isDate(value, Platform::current().regional);
}

std::int16_t toInteger(const Variant& value)
{
    return toWhole<std::int16_t>(value, "Integer");
}

std::int32_t toLong(const Variant& value)
{
    return toWhole<std::int32_t>(value, "Long");
}

std::int64_t toLongLong(const Variant& value)
{
    return toWhole<std::int64_t>(value, "LongLong");
}

double toDouble(const Variant& value)
{
    switch (value.kind()) {
    case Kind::Empty: return 0.0;
    case Kind::Null: throwNull("number");
    case Kind::Boolean: return value.asBoolean().number();
    case Kind::Integer: return value.asInteger();
    case Kind::Long: return value.asLong();
    case Kind::LongLong: return static_cast<double>(value.asLongLong());
    case Kind::Double: return value.asDouble();
    case Kind::Date: return value.asDate().days;
    case Kind::String: return numberOf(value.asString(), Platform::current().regional);
    case Kind::Object: return toDouble(valueOf(value.asObject(), "number"));
    case Kind::Array: break;
    }
    throwNoForm(value, "number");
}

Date toDate(const Variant& value)
{
    switch (value.kind()) {
    case Kind::Null: throwNull("date");
    case Kind::String:
        if (const auto date = parseDate(value.asString(), Platform::current().regional)) return *date;
        throwMismatch(value.asString(), "date");
    case Kind::Object: return toDate(valueOf(value.asObject(), "date"));
    case Kind::Array: throwNoForm(value, "date");
    // A number counts days.
    default: return dateOfNumber(toDouble(value));
    }
}

bool toBoolean(const Variant& value)
{
    switch (value.kind()) {
    case Kind::Null: throwNull("truth value");
    case Kind::LongLong: return value.asLongLong() != 0;
    case Kind::String: return truthOf(value.asString(), Platform::current().regional);
    case Kind::Object: return toBoolean(valueOf(value.asObject(), "truth value"));
    case Kind::Array: throwNoForm(value, "truth value");
    default: return toDouble(value) != 0.0;
    }
}

std::int16_t checkedInteger(std::int64_t value, std::string_view what)
{
    if (value < INT16_MIN || value > INT16_MAX)
        throwOverflow(std::string{what} + " (" + std::to_string(value) + ")", "Integer");
    return static_cast<std::int16_t>(value);
}

std::int32_t checkedLong(std::int64_t value, std::string_view what)
{
    if (value < INT32_MIN || value > INT32_MAX)
        throwOverflow(std::string{what} + " (" + std::to_string(value) + ")", "Long");
    return static_cast<std::int32_t>(value);
}

} // namespace tamarok::convert
