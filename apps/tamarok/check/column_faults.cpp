#include "check/column_faults.h"

#include "check/rows.h"
#include "tamarok_tsql/table_definition.h"

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

std::string_view collationOf(const ColumnShape& column)
{
    return column.exact ? exactCollation : std::string_view{};
}

/// A column's name and type as a definition has them.
std::string definition(const ColumnShape& column, std::string_view collation)
{
    std::string text = tsql::bracketed(column.name);
    text.append(" ").append(column.declared);
    if (!collation.empty()) text.append(" COLLATE ").append(collation);
    return text;
}

std::string alterTable(std::string_view table)
{
    return "ALTER TABLE " + tsql::bracketed(table);
}

} // namespace

// Without a word about Null, ALTER COLUMN makes a column that takes it.
std::string alteration(std::string_view table, const ColumnShape& column, std::string_view collation)
{
    return alterTable(table) + " ALTER COLUMN " + definition(column, collation) + (column.nullable ? "" : " NOT NULL");
}

std::string keyAddition(const TableShape& table)
{
    std::string columns;
    for (const ColumnShape& column : table.columns) {
        if (!column.inKey) continue;
        if (!columns.empty()) columns += ", ";
        columns += tsql::bracketed(column.name);
    }
    if (columns.empty()) return {};
    return alterTable(table.name).append(" ADD PRIMARY KEY (").append(columns).append(")");
}

std::string faultOf(const TableShape& table, const ColumnShape& expected, const ColumnShape& found, bool onServer)
{
    const std::string remedy =
        onServer ? alteration(table.name, expected, collationOf(expected)) : std::string{newFile};
    if (!takes(found.type, expected.type)) return found.declared + " instead of " + expected.declared + ": " + remedy;
    if (expected.identity && !found.identity)
        return "it does not number the rows: make the table anew with " + expected.declared + " IDENTITY(1,1)";
    if (expected.nullable && !found.nullable && !found.hasDefault && !found.identity)
        return "it refuses Null: " + remedy + (onServer ? " NULL" : "");
    return {};
}

// A column that refuses Null cannot be added to a table with rows before it has values.
std::string addition(const TableShape& table, const ColumnShape& column, bool onServer)
{
    std::string add = alterTable(table.name) + " ADD " + definition(column, collationOf(column));
    if (column.identity) return onServer ? add + " IDENTITY(1,1) NOT NULL" : std::string{newFile};
    if (column.nullable || !onServer) return add;
    return add + "; fill it; " + alteration(table.name, column, collationOf(column));
}

} // namespace tamarok::cli::check
