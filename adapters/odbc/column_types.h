#pragma once

#include <cstddef>
#include <cstdint>

#include "odbc_api.h"

#include "tamarok/ado_backend.h"

namespace tamarok::odbc {

/// How the value of a column is read; Text and the ones behind it have no fixed width.
enum class Reading : std::uint8_t {
    Boolean,
    TinyInt,
    SmallInt,
    Integer,
    BigInt,
    Double,
    Date,
    TimeOfDay,
    Text,
    Binary
};

/// What a driver tells of a column.
struct DescribedType {
    SQLSMALLINT sqlType = SQL_UNKNOWN_TYPE;
    SQLULEN size = 0; ///< characters, bytes or digits by the type; 0 for a text without limit
};

/// A column's type for the recordset model, and how its values are read.
struct ColumnType {
    ado::DataType type = ado::DataType::VarWChar;
    std::int32_t definedSize = 0;
    Reading reading = Reading::Text;
    SQLSMALLINT cType = SQL_C_WCHAR;
    std::size_t width = 0; ///< bytes of a bound value; 0 for a long column, which is read in parts
};

ColumnType columnType(const DescribedType& described);

/// The type of the database that a parameter of a type of the recordset model has.
SQLSMALLINT sqlTypeOf(ado::DataType type);

} // namespace tamarok::odbc
