#include "check/table_shapes.h"

#include <algorithm>
#include <array>

#include "check/rows.h"
#include "tamarok_embedded/catalogue.h"
#include "tamarok_tsql/schema.h"
#include "tamarok_tsql/type_rules.h"

#include "tamarok/text.h"

namespace tamarok::cli::check {

namespace {

/// max_length counts bytes; -1 stands for max. TYPE_NAME of the system's type sees through types of the user.
constexpr std::string_view serverQuery =
    "SELECT s.name, o.name, c.name, TYPE_NAME(c.system_type_id), c.max_length, c.precision, c.scale, "
    "CAST(c.is_nullable AS INT), CAST(c.is_identity AS INT), c.collation_name, "
    "CASE WHEN c.default_object_id <> 0 OR c.is_computed = 1 THEN 1 ELSE 0 END "
    "FROM sys.columns c INNER JOIN sys.objects o ON o.object_id = c.object_id "
    "INNER JOIN sys.schemas s ON s.schema_id = o.schema_id "
    "WHERE o.type IN ('U','V') AND (s.name = SCHEMA_NAME() OR s.name = 'dbo') "
    "ORDER BY CASE WHEN s.name = SCHEMA_NAME() THEN 0 ELSE 1 END, o.object_id, c.column_id";

constexpr std::string_view keylessQuery =
    "SELECT s.name, o.name FROM sys.objects o INNER JOIN sys.schemas s ON s.schema_id = o.schema_id "
    "WHERE o.type = 'U' AND NOT EXISTS (SELECT 1 FROM sys.indexes i WHERE i.object_id = o.object_id AND i.is_unique = "
    "1)";

/// Positions in the rows of the first query, and of schema and table in the second one.
namespace at {
constexpr std::size_t schema = 0;
constexpr std::size_t table = 1;
constexpr std::size_t column = 2;
constexpr std::size_t type = 3;
constexpr std::size_t bytes = 4;
constexpr std::size_t precision = 5;
constexpr std::size_t scale = 6;
constexpr std::size_t nullable = 7;
constexpr std::size_t identity = 8;
constexpr std::size_t collation = 9;
constexpr std::size_t hasDefault = 10;
} // namespace at

using Row = std::vector<std::string>;

constexpr std::array<std::string_view, 2> wideTypes{"NVARCHAR", "NCHAR"};
constexpr std::array<std::string_view, 4> narrowTypes{"VARCHAR", "CHAR", "VARBINARY", "BINARY"};
constexpr std::array<std::string_view, 2> scaledTypes{"DECIMAL", "NUMERIC"};

/// The declaration of a column's type, such as "NVARCHAR(40)".
std::string declarationOf(const Row& row)
{
    std::string type = text::toUpper(row.at(at::type));
    const bool wide = std::ranges::find(wideTypes, type) != wideTypes.end();
    if (wide || std::ranges::find(narrowTypes, type) != narrowTypes.end()) {
        const std::string& bytes = row.at(at::bytes);
        const std::int32_t size = std::stoi(bytes);
        type += "(" + (size < 0 ? "MAX" : std::to_string(wide ? size / 2 : size)) + ")";
    } else if (std::ranges::find(scaledTypes, type) != scaledTypes.end()) {
        type += "(" + row.at(at::precision) + "," + row.at(at::scale) + ")";
    }
    return type;
}

/// True for a collation that tells upper from lower case, by its name.
bool isExact(std::string_view collation)
{
    const std::string name = text::toUpper(collation) + "_";
    return name.find("_BIN") != std::string::npos || name.find("_CS_") != std::string::npos;
}

ColumnShape columnOf(const Row& row)
{
    ColumnShape column;
    column.name = row.at(at::column);
    column.declared = declarationOf(row);
    column.type = tsql::parseDeclaredType(column.declared);
    column.nullable = row.at(at::nullable) == "1";
    column.identity = row.at(at::identity) == "1";
    column.hasDefault = row.at(at::hasDefault) == "1";
    column.collation = row.at(at::collation);
    column.exact = isExact(column.collation);
    return column;
}

ColumnShape columnOf(const tsql::TableColumn& declared)
{
    ColumnShape column;
    column.name = declared.name;
    column.type = declared.type;
    column.declared = tsql::declaredText(declared.type);
    column.identity = declared.identity;
    column.nullable = declared.nullable;
    column.inKey = declared.inKey;
    column.exact = declared.binary && tsql::isText(declared.type);
    return column;
}

} // namespace

const ColumnShape* TableShape::column(std::string_view wanted) const
{
    const auto found =
        std::ranges::find_if(columns, [&](const ColumnShape& each) { return tsql::sameName(each.name, wanted); });
    return found == columns.end() ? nullptr : &*found;
}

TableShapes embeddedTables(ado::Connection& connection)
{
    TableShapes all;
    for (const tsql::Table& table : embedded::tables(connection)) {
        TableShape& shape = all[table.name];
        shape.name = table.name;
        for (const tsql::TableColumn& column : table.columns)
            shape.columns.push_back(columnOf(column));
    }
    return all;
}

// The login's own schema comes first; a table of the second one with the same name is another table.
TableShapes serverTables(const ado::ConnectionRef& connection)
{
    TableShapes all;
    std::map<std::string, std::string, NameLess> schemaOf;
    for (const Row& row : readTexts(connection, serverQuery)) {
        const std::string& name = row.at(at::table);
        const std::string& schema = schemaOf.emplace(name, row.at(at::schema)).first->second;
        if (schema != row.at(at::schema)) continue;
        TableShape& shape = all[name];
        shape.name = name;
        shape.schema = schema;
        shape.columns.push_back(columnOf(row));
    }
    for (const Row& row : readTexts(connection, keylessQuery)) {
        const auto found = all.find(row.at(at::table));
        if (found != all.end() && found->second.schema == row.at(at::schema)) found->second.hasKey = false;
    }
    return all;
}

} // namespace tamarok::cli::check
