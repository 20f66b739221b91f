#include "parameter_values.h"

#include <algorithm>

#include "ado_failure.h"

#include "tamarok/convert.h"
#include "tamarok/date.h"
#include "tamarok/text.h"

// Conversion of parameter values before a command is sent, and the text of a procedure call for listeners.

namespace tamarok::ado {

namespace {

/// The kind of value of a parameter type.
struct Fit {
    DataType type;
    Variant::Kind kind; ///< a value of this kind needs no conversion
    Variant (*convert)(const Variant&);
};

// The conversions by one signature, for the table below.
Variant asText(const Variant& value)
{
    return convert::toText(value);
}
Variant asInteger(const Variant& value)
{
    return convert::toInteger(value);
}
Variant asLong(const Variant& value)
{
    return convert::toLong(value);
}
Variant asLongLong(const Variant& value)
{
    return convert::toLongLong(value);
}
Variant asDouble(const Variant& value)
{
    return convert::toDouble(value);
}
Variant asDate(const Variant& value)
{
    return convert::toDate(value);
}
Variant asBoolean(const Variant& value)
{
    return convert::toBoolean(value);
}

constexpr Fit fits[]{
    {DataType::VarChar, Variant::Kind::String, asText},     {DataType::VarWChar, Variant::Kind::String, asText},
    {DataType::Char, Variant::Kind::String, asText},        {DataType::WChar, Variant::Kind::String, asText},
    {DataType::LongVarChar, Variant::Kind::String, asText}, {DataType::LongVarWChar, Variant::Kind::String, asText},
    {DataType::BSTR, Variant::Kind::String, asText},        {DataType::SmallInt, Variant::Kind::Integer, asInteger},
    {DataType::Integer, Variant::Kind::Long, asLong},       {DataType::BigInt, Variant::Kind::LongLong, asLongLong},
    {DataType::Single, Variant::Kind::Double, asDouble},    {DataType::Double, Variant::Kind::Double, asDouble},
    {DataType::Date, Variant::Kind::Date, asDate},          {DataType::DBDate, Variant::Kind::Date, asDate},
    {DataType::DBTime, Variant::Kind::Date, asDate},        {DataType::DBTimeStamp, Variant::Kind::Date, asDate},
    {DataType::Boolean, Variant::Kind::Boolean, asBoolean},
};

/// Returns nothing for a type without a row; its values are sent unchanged.
const Fit* findFit(DataType type) noexcept
{
    const auto found = std::ranges::find(fits, type, &Fit::type);
    return found == std::end(fits) ? nullptr : &*found;
}

/// Returns whether a text has more characters than the parameter's size; size 0 means no limit.
bool tooLong(const Parameter& parameter, std::string_view text) noexcept
{
    // Counting characters is needed only if even the bytes exceed the size.
    const auto size = static_cast<std::size_t>(std::max(parameter.size, 0));
    return size != 0 && text.size() > size && text::length(text) > size;
}

bool fitsAsItIs(const Parameter& parameter)
{
    if (parameter.value.isNull()) return true;
    // Empty is sent as Null.
    if (parameter.value.isEmpty()) return false;
    const Fit* fit = findFit(parameter.type);
    if (!fit) return true;
    return parameter.value.kind() == fit->kind &&
           (fit->kind != Variant::Kind::String || !tooLong(parameter, parameter.value.asString()));
}

/// Converts the value to the parameter's type and cuts a text to its size.
void makeFit(Parameter& parameter)
{
    if (parameter.value.isEmpty()) parameter.value = Null{};
    const Fit* fit = findFit(parameter.type);
    if (!fit || parameter.value.isNull()) return;
    if (parameter.value.kind() != fit->kind) parameter.value = fit->convert(parameter.value);
    if (fit->kind == Variant::Kind::String && tooLong(parameter, parameter.value.asString()))
        parameter.value = text::left(parameter.value.asString(), static_cast<std::size_t>(parameter.size));
}

/// Names a parameter for an error message.
std::string place(std::size_t index, const Parameter& parameter)
{
    return "Parameter " + std::to_string(index + 1) + (parameter.name.empty() ? "" : " (" + parameter.name + ")");
}

std::string quoted(std::string_view text)
{
    std::string result{"'"};
    for (const char character : text) {
        if (character == '\'') result += '\'';
        result += character;
    }
    return result += '\'';
}

void appendPadded(std::string& text, std::int32_t number, std::size_t width)
{
    const std::string digits = std::to_string(number);
    text.append(width - std::min(width, digits.size()), '0');
    text += digits;
}

/// Returns 'yyyy-mm-dd hh:mm:ss'.
std::string quotedDate(Date date)
{
    const CivilTime parts = toCivil(date);
    std::string text{"'"};
    appendPadded(text, parts.year, 4);
    appendPadded(text += '-', parts.month, 2);
    appendPadded(text += '-', parts.day, 2);
    appendPadded(text += ' ', parts.hour, 2);
    appendPadded(text += ':', parts.minute, 2);
    appendPadded(text += ':', parts.second, 2);
    return text += '\'';
}

/// Returns a value as SQL literal. The text is for listeners only: the session receives the values themselves.
std::string literal(const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null: return "NULL";
    case Variant::Kind::Boolean: return value.asBoolean() ? "1" : "0";
    case Variant::Kind::Integer: return std::to_string(value.asInteger());
    case Variant::Kind::Long: return std::to_string(value.asLong());
    case Variant::Kind::LongLong: return std::to_string(value.asLongLong());
    case Variant::Kind::Double: return convert::toPlainText(value.asDouble());
    case Variant::Kind::Date: return quotedDate(value.asDate());
    case Variant::Kind::String: return quoted(value.asString());
    case Variant::Kind::Object:
    case Variant::Kind::Array: break;
    }
    fail(errors::typeMismatch, commandSource,
         "A parameter cannot have a value of kind " + std::string{name(value.kind())} + ".");
}

} // namespace

ParameterValues::ParameterValues(std::span<const Parameter> parameters) : values_{parameters}
{
    // Refuses all but input parameters, then copies the list only if a value must be converted: most lists are sent as
    // they are.
    for (std::size_t index = 0; index < parameters.size(); ++index)
        if (parameters[index].direction != ParameterDirection::Input &&
            parameters[index].direction != ParameterDirection::Unknown)
            fail(errors::readOnlyRecordset, commandSource,
                 place(index, parameters[index]) + " is not an input parameter; no other kind is supported.");
    if (std::ranges::all_of(parameters, fitsAsItIs)) return;
    fitted_.assign(parameters.begin(), parameters.end());
    for (std::size_t index = 0; index < fitted_.size(); ++index) {
        try {
            makeFit(fitted_[index]);
        } catch (Error& error) {
            throw error.addContext(place(index, fitted_[index]));
        }
    }
    values_ = fitted_;
}

std::string describeCall(const std::string& procedure, std::span<const Parameter> parameters)
{
    std::string text = "EXEC " + procedure;
    std::string_view separator = " ";
    for (const Parameter& parameter : parameters) {
        text += separator;
        text += literal(parameter.value);
        separator = ", ";
    }
    return text;
}

} // namespace tamarok::ado
