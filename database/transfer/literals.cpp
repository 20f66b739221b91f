#include "literals.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "tamarok/date.h"
#include "tamarok/error.h"

namespace tamarok::database {
namespace {

using ado::DataType;

/// The shortest text from which the same number is read. A double takes at most 17 digits and an exponent, in fixed
/// notation at most 309 digits and as many decimals.
std::string numberText(double number, std::chars_format format)
{
    std::array<char, 1100> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, format);
    return {buffer.data(), result.ptr};
}

void appendDouble(std::string& text, double number, DataType type)
{
    if (type == DataType::Numeric || type == DataType::Decimal || type == DataType::Currency) {
        text.append("'").append(numberText(number, std::chars_format::fixed)).append("'");
        return;
    }
    text += numberText(number, std::chars_format::scientific);
}

template <std::size_t Size, class... Parts>
void appendFormatted(std::string& text, const char* format, Parts... parts)
{
    std::array<char, Size> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), format, parts...);
    text.append(buffer.data(), static_cast<std::size_t>(length));
}

/// No server reads these forms by its date order. SMALLDATETIME takes no fraction, so that zeros are left out.
void appendDate(std::string& text, Date date, DataType type)
{
    const CivilTime civil = toCivil(date);
    const bool hasTime = civil.hour != 0 || civil.minute != 0 || civil.second != 0 || civil.millisecond != 0;
    text += '\'';
    if (type != DataType::DBTime) {
        appendFormatted<32>(text, "%04d%02d%02d", civil.year, civil.month, civil.day);
        if (hasTime) text += ' ';
    }
    if (hasTime || type == DataType::DBTime)
        appendFormatted<32>(text, "%02d:%02d:%02d", civil.hour, civil.minute, civil.second);
    if (civil.millisecond != 0) appendFormatted<16>(text, ".%03d", civil.millisecond);
    text += '\'';
}

bool isBinary(DataType type) noexcept
{
    return type == DataType::Binary || type == DataType::VarBinary || type == DataType::LongVarBinary;
}

/// Characters that end a part of a text.
enum class Break : std::uint8_t { None, Zero, LineEnd, Variable };

Break breakAt(std::string_view value, std::size_t at)
{
    const char c = value[at];
    const char previous = at == 0 ? ' ' : value[at - 1];
    if (c == '\0') return Break::Zero;
    if (previous == '\\' && (c == '\n' || c == '\r')) return Break::LineEnd;
    return previous == '$' && c == '(' ? Break::Variable : Break::None;
}

/// Parts are added with + as NVARCHAR(MAX), since a sum of limited texts is cut.
void appendParts(std::string& text, std::string_view value)
{
    text += "CAST(N'' AS NVARCHAR(MAX)) + N'";
    for (std::size_t i = 0; i < value.size(); ++i) {
        switch (breakAt(value, i)) {
        case Break::Zero: text += "' + NCHAR(0) + N'"; continue;
        case Break::LineEnd:
        case Break::Variable: text += "' + N'"; break;
        case Break::None: break;
        }
        text.append(value[i] == '\'' ? 2U : 1U, value[i]);
    }
    text += '\'';
}

} // namespace

void appendTextLiteral(std::string& text, std::string_view value)
{
    for (std::size_t i = 0; i < value.size(); ++i)
        if (breakAt(value, i) != Break::None) return appendParts(text, value);
    text += "N'";
    for (const char c : value)
        text.append(c == '\'' ? 2U : 1U, c);
    text += '\'';
}

void appendLiteral(std::string& text, const Variant& value, DataType type)
{
    switch (value.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null: text += "NULL"; return;
    case Variant::Kind::Boolean: text += value.asBoolean() ? '1' : '0'; return;
    case Variant::Kind::Integer: text += std::to_string(value.asInteger()); return;
    case Variant::Kind::Long: text += std::to_string(value.asLong()); return;
    case Variant::Kind::LongLong: text += std::to_string(value.asLongLong()); return;
    case Variant::Kind::Double: appendDouble(text, value.asDouble(), type); return;
    case Variant::Kind::Date: appendDate(text, value.asDate(), type); return;
    case Variant::Kind::String:
        // Binary values are read as 0x and their digits, which is their literal.
        if (isBinary(type))
            text += value.asString();
        else
            appendTextLiteral(text, value.asString());
        return;
    default: break;
    }
    throw Error{errors::typeMismatch, "A value of kind " + std::string{name(value.kind())} + " is none of a column.",
                "Literal"};
}

} // namespace tamarok::database
