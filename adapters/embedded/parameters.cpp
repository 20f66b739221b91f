#include "parameters.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>
#include <vector>

#include "failures.h"
#include "stored_date.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::embedded {

namespace {

using ado::DataType;

/// The kind of value that a parameter's declared type calls for.
enum class Wanted : std::uint8_t { AsIs, Whole, Real, Truth, Text };

/// Dates, identifiers and Variant parameters are bound as they are; the statement's functions convert them.
Wanted wantedOf(DataType type)
{
    switch (type) {
    case DataType::SmallInt:
    case DataType::Integer:
    case DataType::TinyInt:
    case DataType::UnsignedTinyInt:
    case DataType::BigInt: return Wanted::Whole;
    case DataType::Single:
    case DataType::Double:
    case DataType::Currency:
    case DataType::Decimal:
    case DataType::Numeric: return Wanted::Real;
    case DataType::Boolean: return Wanted::Truth;
    case DataType::Char:
    case DataType::WChar:
    case DataType::VarChar:
    case DataType::VarWChar:
    case DataType::LongVarChar:
    case DataType::LongVarWChar:
    case DataType::BSTR: return Wanted::Text;
    default: return Wanted::AsIs;
    }
}

/// True if a value of that kind needs no conversion.
bool fits(Variant::Kind kind, Wanted wanted)
{
    using enum Variant::Kind;
    switch (kind) {
    case Empty:
    case Null: return true;
    case Integer:
    case Long:
    case LongLong: return wanted == Wanted::AsIs || wanted == Wanted::Whole;
    case Double: return wanted == Wanted::AsIs || wanted == Wanted::Real;
    case Boolean: return wanted == Wanted::AsIs || wanted == Wanted::Truth;
    case String:
    case Date: // its text form is the database's, not the regional one
        return wanted == Wanted::AsIs || wanted == Wanted::Text;
    default: return wanted == Wanted::AsIs;
    }
}

constexpr bool isBinary(DataType type) noexcept
{
    return type == DataType::Binary || type == DataType::VarBinary || type == DataType::LongVarBinary;
}

/// Returns the bytes of a binary value, which is shown as 0x and two digits a byte. Error 13 for another text.
std::vector<std::uint8_t> bytesOf(std::string_view text)
{
    const std::string_view digits = text.substr(std::min<std::size_t>(text.size(), 2));
    std::vector<std::uint8_t> bytes(digits.size() / 2);
    bool isRight = text.starts_with("0x") && digits.size() % 2 == 0;
    for (std::size_t i = 0; isRight && i < bytes.size(); ++i) {
        const char* const pair = digits.data() + 2 * i;
        const auto [rest, problem] = std::from_chars(pair, pair + 2, bytes[i], 16);
        isRight = problem == std::errc{} && rest == pair + 2;
    }
    if (!isRight)
        throw Error{errors::typeMismatch, "A binary parameter is not 0x and an even number of hexadecimal digits.",
                    std::string{sourceName}};
    return bytes;
}

void bindBinary(sqlite3_stmt* statement, int position, std::string_view text)
{
    const std::vector<std::uint8_t> bytes = bytesOf(text);
    // No address would be Null.
    const void* const address = bytes.empty() ? static_cast<const void*>("") : bytes.data();
    sqlite3_bind_blob64(statement, position, address, bytes.size(), SQLITE_TRANSIENT);
}

/// Converts as the value types of the system do, with their errors.
Variant converted(const Variant& value, Wanted wanted)
{
    switch (wanted) {
    case Wanted::Whole: return convert::toLongLong(value);
    case Wanted::Real: return convert::toDouble(value);
    case Wanted::Truth: return convert::toBoolean(value);
    case Wanted::Text: return convert::toText(value);
    case Wanted::AsIs: break;
    }
    return value;
}

} // namespace

void bindText(sqlite3_stmt* statement, int position, std::string_view text)
{
    // An empty view may have no address, which SQLite would take for Null.
    const char* const bytes = text.data() != nullptr ? text.data() : "";
    sqlite3_bind_text64(statement, position, bytes, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

/// The stored form of each kind: dates as text of fixed length, Booleans as 0 and 1.
void bindValue(sqlite3_stmt* statement, int position, const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null: sqlite3_bind_null(statement, position); return;
    case Variant::Kind::Boolean: sqlite3_bind_int(statement, position, value.asBoolean() ? 1 : 0); return;
    case Variant::Kind::Integer: sqlite3_bind_int(statement, position, value.asInteger()); return;
    case Variant::Kind::Long: sqlite3_bind_int(statement, position, value.asLong()); return;
    case Variant::Kind::LongLong: sqlite3_bind_int64(statement, position, value.asLongLong()); return;
    case Variant::Kind::Double: sqlite3_bind_double(statement, position, value.asDouble()); return;
    case Variant::Kind::Date: bindText(statement, position, storedDate(value.asDate())); return;
    case Variant::Kind::String: bindText(statement, position, value.asString()); return;
    case Variant::Kind::Object:
    case Variant::Kind::Array: break;
    }
    throw Error{errors::typeMismatch,
                "A value of kind " + std::string{name(value.kind())} + " cannot be sent to the database.",
                std::string{sourceName}};
}

const ado::Parameter& parameterAt(std::span<const ado::Parameter> parameters, std::int32_t index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= parameters.size()) {
        throw failure(native::parameterMissing,
                      "No value was given for parameter " + std::to_string(index + 1) + " of the statement.");
    }
    return parameters[static_cast<std::size_t>(index)];
}

bool hasDeclaredType(const ado::Parameter& parameter)
{
    return fits(parameter.value.kind(), wantedOf(parameter.type));
}

Variant typedParameter(const ado::Parameter& parameter)
{
    return hasDeclaredType(parameter) ? parameter.value : converted(parameter.value, wantedOf(parameter.type));
}

void bindParameters(sqlite3_stmt* statement, std::span<const std::int32_t> wanted,
                    std::span<const ado::Parameter> parameters)
{
    int position = 0;
    for (const std::int32_t index : wanted) {
        const ado::Parameter& parameter = parameterAt(parameters, index);
        if (isBinary(parameter.type) && parameter.value.kind() == Variant::Kind::String) {
            bindBinary(statement, ++position, parameter.value.asString());
            continue;
        }
        // A value that needs no conversion is bound without a copy.
        if (hasDeclaredType(parameter)) {
            bindValue(statement, ++position, parameter.value);
        } else {
            bindValue(statement, ++position, typedParameter(parameter));
        }
    }
}

} // namespace tamarok::embedded
