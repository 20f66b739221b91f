#include "column_types.h"

#include <algorithm>
#include <array>

namespace tamarok::odbc {

namespace {

using ado::DataType;

/// Sizes that the recordset model reports for texts without a limit: 2^31 - 1 bytes, in characters of one byte and of
/// two.
constexpr std::int32_t longSize = 2147483647;
constexpr std::int32_t longWideSize = 1073741823;

/// Longer texts are read in parts: a block of rows would have to reserve the whole width for each row.
constexpr SQLULEN longestBound = 8000;

/// Size 0 means the declared length; `longType` is what a type without limit counts as.
struct TypeRow {
    SQLSMALLINT sqlType;
    DataType type;
    std::int32_t size;
    Reading reading;
    SQLSMALLINT cType;
    std::size_t width;
    DataType longType = DataType::Empty;
};

constexpr TypeRow text(SQLSMALLINT sqlType, DataType type, DataType longType)
{
    return {sqlType, type, 0, Reading::Text, SQL_C_WCHAR, 0, longType};
}

constexpr TypeRow date(SQLSMALLINT sqlType, DataType type, std::int32_t size, Reading reading)
{
    return {sqlType, type, size, reading, SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)};
}

constexpr TypeRow number(SQLSMALLINT sqlType, DataType type, std::int32_t size)
{
    return {sqlType, type, size, Reading::Double, SQL_C_DOUBLE, sizeof(SQLDOUBLE)};
}

constexpr std::array typeRows{
    TypeRow{SQL_BIT, DataType::Boolean, 2, Reading::Boolean, SQL_C_BIT, sizeof(SQLCHAR)},
    TypeRow{SQL_TINYINT, DataType::UnsignedTinyInt, 1, Reading::TinyInt, SQL_C_UTINYINT, sizeof(SQLCHAR)},
    TypeRow{SQL_SMALLINT, DataType::SmallInt, 2, Reading::SmallInt, SQL_C_SSHORT, sizeof(SQLSMALLINT)},
    TypeRow{SQL_INTEGER, DataType::Integer, 4, Reading::Integer, SQL_C_SLONG, sizeof(SQLINTEGER)},
    TypeRow{SQL_BIGINT, DataType::BigInt, 8, Reading::BigInt, SQL_C_SBIGINT, sizeof(SQLBIGINT)},
    number(SQL_REAL, DataType::Single, 4),
    number(SQL_FLOAT, DataType::Double, 8),
    number(SQL_DOUBLE, DataType::Double, 8),
    number(SQL_NUMERIC, DataType::Numeric, 19),
    number(SQL_DECIMAL, DataType::Numeric, 19),
    text(SQL_CHAR, DataType::Char, DataType::LongVarChar),
    text(SQL_VARCHAR, DataType::VarChar, DataType::LongVarChar),
    text(SQL_WCHAR, DataType::WChar, DataType::LongVarWChar),
    text(SQL_WVARCHAR, DataType::VarWChar, DataType::LongVarWChar),
    text(SQL_LONGVARCHAR, DataType::LongVarChar, DataType::LongVarChar),
    text(SQL_WLONGVARCHAR, DataType::LongVarWChar, DataType::LongVarWChar),
    text(sqlServerXml, DataType::LongVarWChar, DataType::LongVarWChar),
    text(sqlServerVariant, DataType::LongVarWChar, DataType::LongVarWChar),
    text(sqlServerDateTimeOffset, DataType::VarWChar, DataType::VarWChar),
    TypeRow{SQL_GUID, DataType::GUID, 16, Reading::Text, SQL_C_WCHAR, 40 * sizeof(SQLWCHAR)},
    date(SQL_TYPE_TIMESTAMP, DataType::DBTimeStamp, 16, Reading::Date),
    date(SQL_TYPE_DATE, DataType::DBDate, 6, Reading::Date),
    date(SQL_TYPE_TIME, DataType::DBTime, 6, Reading::TimeOfDay),
    date(sqlServerTime, DataType::DBTime, 6, Reading::TimeOfDay),
    TypeRow{SQL_BINARY, DataType::VarBinary, 0, Reading::Binary, SQL_C_BINARY, 0, DataType::LongVarBinary},
    TypeRow{SQL_VARBINARY, DataType::VarBinary, 0, Reading::Binary, SQL_C_BINARY, 0, DataType::LongVarBinary},
    TypeRow{SQL_LONGVARBINARY, DataType::LongVarBinary, 0, Reading::Binary, SQL_C_BINARY, 0, DataType::LongVarBinary},
};

constexpr TypeRow unknownType = text(SQL_UNKNOWN_TYPE, DataType::LongVarWChar, DataType::LongVarWChar);

std::int32_t sizeOfLong(DataType type)
{
    return type == DataType::LongVarWChar ? longWideSize : longSize;
}

} // namespace

// An unknown type is read as a text: every driver can convert to it.
ColumnType columnType(const DescribedType& described)
{
    const auto* const found = std::ranges::find(typeRows, described.sqlType, &TypeRow::sqlType);
    const TypeRow& row = found == typeRows.end() ? unknownType : *found;
    if (row.longType == DataType::Empty) return {row.type, row.size, row.reading, row.cType, row.width};
    // A type of variable length without a limit is described as the long type of its kind.
    const bool declaredLong = row.type == row.longType;
    if (declaredLong || described.size == 0 || described.size > longestBound)
        return {row.longType, sizeOfLong(row.longType), row.reading, row.cType, 0};
    // A text has room for characters of two units each, and for the zero at its end.
    const std::size_t width = row.cType == SQL_C_WCHAR ? (2 * described.size + 1) * sizeof(SQLWCHAR) : described.size;
    return {row.type, static_cast<std::int32_t>(described.size), row.reading, row.cType, width};
}

SQLSMALLINT sqlTypeOf(ado::DataType type)
{
    switch (type) {
    case DataType::Date: return SQL_TYPE_TIMESTAMP;
    case DataType::BSTR: return SQL_WVARCHAR;
    case DataType::Currency: return SQL_NUMERIC;
    default: break;
    }
    const auto* const found = std::ranges::find(typeRows, type, &TypeRow::type);
    return found == typeRows.end() ? SQLSMALLINT{SQL_WVARCHAR} : found->sqlType;
}

} // namespace tamarok::odbc
