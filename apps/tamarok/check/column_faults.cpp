#include "check/column_faults.h"

#include "check/rows.h"

namespace tamarok::cli::check {

namespace {

using tsql::Type;
using tsql::TypeKind;

bool isSized(TypeKind kind)
{
    switch (kind) {
    case TypeKind::Char:
    case TypeKind::VarChar:
    case TypeKind::NChar:
    case TypeKind::NVarChar:
    case TypeKind::Binary: return true;
    default: return false;
    }
}

/// Whether each value of the expected type has room.
bool takes(const Type& found, const Type& expected)
{
    if (found.kind != expected.kind) return false;
    if (isSized(expected.kind)) return found.length < 0 || (expected.length >= 0 && found.length >= expected.length);
    if (expected.kind == TypeKind::Decimal)
        return found.scale >= expected.scale && found.precision - found.scale >= expected.precision - expected.scale;
    return found == expected;
}

/// @param nullability  " NULL", " NOT NULL", or "" for the server's own choice, which is NULL
std::string alteration(const TableShape& table, const ColumnShape& expected, bool onServer, const char* nullability)
{
    if (!onServer)
        return "the embedded database does not change columns: make a new database (tamarok init) and copy the rows";
    return "ALTER TABLE " + bracketed(table.name) + " ALTER COLUMN " + bracketed(expected.name) + " " +
           expected.declared + nullability;
}

} // namespace

std::string faultOf(const TableShape& table, const ColumnShape& expected, const ColumnShape& found, bool onServer)
{
    if (!takes(found.type, expected.type))
        return found.declared + " instead of " + expected.declared + ": " +
               alteration(table, expected, onServer, expected.nullable ? "" : " NOT NULL");
    if (expected.identity && !found.identity)
        return "it does not number the rows: make the table anew with " + expected.declared + " IDENTITY(1,1)";
    if (expected.nullable && !found.nullable && !found.hasDefault && !found.identity)
        return "it refuses Null: " + alteration(table, expected, onServer, " NULL");
    return {};
}

// A column that refuses Null cannot be added to a table with rows before it has values.
std::string addition(const TableShape& table, const ColumnShape& column)
{
    const std::string begin = "ALTER TABLE " + bracketed(table.name);
    const std::string type = bracketed(column.name) + " " + column.declared;
    if (column.identity) return begin + " ADD " + type + " IDENTITY(1,1) NOT NULL";
    if (column.nullable) return begin + " ADD " + type;
    return begin + " ADD " + type + "; fill it; " + begin + " ALTER COLUMN " + type + " NOT NULL";
}

} // namespace tamarok::cli::check
