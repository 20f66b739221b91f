#include "parameters.h"

#include <algorithm>

#include "column_types.h"
#include "failures.h"
#include "wide_text.h"

#include "tamarok/convert.h"
#include "tamarok/date.h"

namespace tamarok::odbc {

namespace {

/// Longest text that is sent as a text of limited length.
constexpr std::size_t longestLimited = 4000;

constexpr bool isNarrow(ado::DataType type) noexcept
{
    return type == ado::DataType::Char || type == ado::DataType::VarChar || type == ado::DataType::LongVarChar;
}

bool isAscii(const std::string& text)
{
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

// The space is reserved first: the driver manager keeps the addresses of the values.
BoundParameters::BoundParameters(std::span<const ado::Parameter> parameters)
{
    bound_.reserve(parameters.size());
    for (const ado::Parameter& parameter : parameters)
        bound_.push_back(boundOf(parameter));
}

void BoundParameters::bind(SQLHANDLE statement)
{
    SQLUSMALLINT number = 0;
    for (Bound& bound : bound_) {
        SQLPOINTER const address = std::visit(
            [](auto& value) -> SQLPOINTER {
                if constexpr (requires { value.data(); })
                    return value.data();
                else
                    return &value;
            },
            bound.value);
        if (!succeeded(SQLBindParameter(statement, ++number, SQL_PARAM_INPUT, bound.cType, bound.sqlType, bound.size,
                                        bound.digits, address, 0, &bound.length)))
            throw failure(readDiagnostics(SQL_HANDLE_STMT, statement));
    }
}

/// The kind of the value decides its form; the type of the parameter matters for texts and for Null alone.
BoundParameters::Bound BoundParameters::boundOf(const ado::Parameter& parameter)
{
    const Variant& value = parameter.value;
    switch (value.kind()) {
    case Variant::Kind::Boolean:
        return {SQLCHAR{static_cast<bool>(value.asBoolean())}, SQL_C_BIT, SQL_BIT, 1, 0, sizeof(SQLCHAR)};
    case Variant::Kind::Integer: return {value.asInteger(), SQL_C_SSHORT, SQL_SMALLINT, 5, 0, sizeof(SQLSMALLINT)};
    case Variant::Kind::Long: return {SQLINTEGER{value.asLong()}, SQL_C_SLONG, SQL_INTEGER, 10, 0, sizeof(SQLINTEGER)};
    case Variant::Kind::LongLong:
        return {SQLBIGINT{value.asLongLong()}, SQL_C_SBIGINT, SQL_BIGINT, 19, 0, sizeof(SQLBIGINT)};
    case Variant::Kind::Double: return {value.asDouble(), SQL_C_DOUBLE, SQL_DOUBLE, 15, 0, sizeof(SQLDOUBLE)};
    case Variant::Kind::Date: return boundDate(value.asDate());
    case Variant::Kind::String: return boundText(value.asString(), parameter.type);
    case Variant::Kind::Empty:
    case Variant::Kind::Null: break;
    default: return boundText(convert::toText(value), parameter.type);
    }
    return {std::vector<SQLWCHAR>(1), SQL_C_WCHAR, sqlTypeOf(parameter.type), 1, 0, SQL_NULL_DATA};
}

/// A text goes out as wide text, so that no character is lost, unless its column is narrow and all of it is ASCII: then
/// the server compares without converting the column, and can use its index.
BoundParameters::Bound BoundParameters::boundText(const std::string& text, ado::DataType type)
{
    Bound bound;
    std::vector<SQLWCHAR> wide = toWide(text);
    const bool narrow = isNarrow(type) && isAscii(text);
    if (wide.size() > longestLimited)
        bound.sqlType = SQL_WLONGVARCHAR;
    else
        bound.sqlType = narrow ? SQL_VARCHAR : SQL_WVARCHAR;
    bound.size = std::max<std::size_t>(wide.size(), 1);
    bound.length = static_cast<SQLLEN>(wide.size() * sizeof(SQLWCHAR));
    wide.push_back(0);
    bound.value = std::move(wide);
    return bound;
}

/// A Date has milliseconds; the driver manager wants nanoseconds.
BoundParameters::Bound BoundParameters::boundDate(Date date)
{
    const CivilTime civil = toCivil(date);
    SQL_TIMESTAMP_STRUCT stamp{};
    stamp.year = static_cast<SQLSMALLINT>(civil.year);
    stamp.month = static_cast<SQLUSMALLINT>(civil.month);
    stamp.day = static_cast<SQLUSMALLINT>(civil.day);
    stamp.hour = static_cast<SQLUSMALLINT>(civil.hour);
    stamp.minute = static_cast<SQLUSMALLINT>(civil.minute);
    stamp.second = static_cast<SQLUSMALLINT>(civil.second);
    stamp.fraction = static_cast<SQLUINTEGER>(civil.millisecond) * 1'000'000U;
    return {stamp, SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, 23, 3, sizeof stamp};
}

ado::Parameter parameterOf(const Variant& value, ado::DataType type)
{
    ado::Parameter parameter;
    parameter.type = type;
    parameter.value = value;
    return parameter;
}

} // namespace tamarok::odbc
