#include "server_catalogue.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "tamarok_tsql/names.h"
#include "tamarok_tsql/types.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::database {
namespace {

using tsql::DefinedColumn;
using tsql::TableDefinition;

/// Columns of columnsQuery.
namespace at {
constexpr std::size_t schema = 0;
constexpr std::size_t table = 1;
constexpr std::size_t column = 2;
constexpr std::size_t type = 3;
constexpr std::size_t length = 4;
constexpr std::size_t precision = 5;
constexpr std::size_t scale = 6;
constexpr std::size_t datePrecision = 7;
constexpr std::size_t nullable = 8;
constexpr std::size_t collation = 9;
constexpr std::size_t fallback = 10;
} // namespace at

// The queries are not joined: the open server takes 7 s for what it answers one by one in 1 s. INFORMATION_SCHEMA keeps
// the spelling of the names, which sys.columns of that server has in lower case.
constexpr std::string_view tablesQuery =
    "SELECT TABLE_SCHEMA, TABLE_NAME FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_TYPE = 'BASE TABLE'";

constexpr std::string_view columnsQuery =
    "SELECT TABLE_SCHEMA, TABLE_NAME, COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, NUMERIC_PRECISION, "
    "NUMERIC_SCALE, DATETIME_PRECISION, IS_NULLABLE, COLLATION_NAME, COLUMN_DEFAULT FROM INFORMATION_SCHEMA.COLUMNS "
    "ORDER BY TABLE_SCHEMA, TABLE_NAME, ORDINAL_POSITION";

constexpr std::string_view marksQuery =
    "SELECT T.name, C.name, C.is_identity FROM sys.tables AS T INNER JOIN sys.columns AS C ON C.object_id = "
    "T.object_id WHERE C.is_identity = 1 OR C.is_computed = 1";

constexpr std::string_view indexesQuery =
    "SELECT T.name, I.name, I.is_unique, I.is_primary_key, I.is_unique_constraint, I.has_filter, C.name, "
    "K.is_descending_key, K.is_included_column FROM sys.indexes AS I INNER JOIN sys.tables AS T ON T.object_id = "
    "I.object_id INNER JOIN sys.index_columns AS K ON K.object_id = I.object_id AND K.index_id = I.index_id INNER JOIN "
    "sys.columns AS C ON C.object_id = K.object_id AND C.column_id = K.column_id ORDER BY T.name, I.index_id, "
    "K.is_included_column, K.key_ordinal";

constexpr std::string_view objectsQuery =
    "SELECT O.type, O.name, P.name FROM sys.objects AS O LEFT JOIN sys.objects AS P ON P.object_id = "
    "O.parent_object_id WHERE O.is_ms_shipped = 0 AND O.type IN ('V', 'F', 'C', 'TR', 'P', 'FN', 'IF', 'TF') ORDER BY "
    "O.type, O.name";

struct ObjectKind {
    std::string_view type;
    std::string_view words;
};

constexpr std::array objectKinds{ObjectKind{"V", "the view "},      ObjectKind{"F", "the reference "},
                                 ObjectKind{"C", "the check "},     ObjectKind{"TR", "the trigger "},
                                 ObjectKind{"P", "the procedure "}, ObjectKind{"FN", "the function "},
                                 ObjectKind{"IF", "the function "}, ObjectKind{"TF", "the function "}};

/// The type as a declaration of a column has it.
std::string declaredType(const std::vector<Variant>& row)
{
    std::string type = text::toUpper(textAt(row, at::type));
    const std::int64_t length = numberAt(row, at::length);
    static constexpr std::array<std::string_view, 6> sized{"CHAR",     "VARCHAR", "NCHAR",
                                                           "NVARCHAR", "BINARY",  "VARBINARY"};
    if (std::ranges::find(sized, type) != sized.end())
        type += length < 0 ? std::string{"(MAX)"} : "(" + std::to_string(length) + ")";
    else if (type == "DECIMAL" || type == "NUMERIC")
        type += "(" + textAt(row, at::precision) + "," + textAt(row, at::scale) + ")";
    else if (type == "DATETIME2" || type == "TIME")
        type += "(" + textAt(row, at::datePrecision) + ")";
    return type;
}

/// A default without the parentheses that SQL Server puts around it, and the type that the open server puts behind.
std::string plainDefault(std::string value)
{
    while (value.starts_with('(') && value.ends_with(')'))
        value = value.substr(1, value.size() - 2);
    const std::size_t type = value.rfind("::");
    if (type != std::string::npos && value.find('\'', type) == std::string::npos) value.erase(type);
    return value;
}

/// Adds one column. What cannot be held goes to `problems`.
void addColumn(TableDefinition& table, const std::vector<Variant>& row, std::vector<std::string>& problems,
               std::vector<std::string>& omissions)
{
    DefinedColumn column;
    column.name = textAt(row, at::column);
    column.type = declaredType(row);
    column.nullable = text::equalsNoCase(textAt(row, at::nullable), "YES");
    column.binary = text::findNoCase(textAt(row, at::collation), "_bin") != 0;
    column.defaultValue = plainDefault(textAt(row, at::fallback));
    const std::string place = column.name + " of table " + table.name;
    if (tsql::parseDeclaredType(column.type).kind == tsql::TypeKind::Unknown)
        problems.push_back("column " + place + " has the type " + column.type);
    if (!column.defaultValue.empty() && !tsql::isPlainDefault(column.defaultValue)) {
        omissions.push_back("the default of column " + place);
        column.defaultValue.clear();
    }
    table.columns.push_back(std::move(column));
}

/// The open server adds the table's name and 32 digits to the name of an index.
std::string indexName(std::string name, const std::string& table)
{
    constexpr std::size_t digits = 32;
    const std::size_t added = table.size() + digits;
    if (name.size() <= added) return name;
    const std::string_view tail{name.data() + name.size() - digits, digits};
    const bool isMangled = tail.find_first_not_of("0123456789abcdef") == std::string_view::npos &&
                           tsql::sameName(name.substr(name.size() - added, table.size()), table);
    if (isMangled) name.resize(name.size() - added);
    return name;
}

/// A column's name as INFORMATION_SCHEMA spells it.
std::string spelled(const TableDefinition& table, const std::string& name)
{
    const auto found = std::ranges::find_if(
        table.columns, [&](const DefinedColumn& column) { return tsql::sameName(column.name, name); });
    return found == table.columns.end() ? name : found->name;
}

/// Adds one column of a key or an index; the rows come index by index.
void addIndexColumn(TableDefinition& table, const std::vector<Variant>& row, std::string& current,
                    std::vector<std::string>& omissions)
{
    const std::string name = textAt(row, 1);
    const bool isNew = current != table.name + "." + name;
    current = table.name + "." + name;
    const std::string column = spelled(table, textAt(row, 6));
    if (numberAt(row, 3) != 0) return table.primaryKey.push_back(column);
    if (numberAt(row, 4) != 0) {
        if (isNew) table.uniqueKeys.emplace_back();
        return table.uniqueKeys.back().push_back(column);
    }
    const bool isPlain = numberAt(row, 5) == 0 && numberAt(row, 8) == 0;
    if (!isPlain) {
        omissions.push_back("a filter or an included column of index " + name + " of table " + table.name);
        if (numberAt(row, 8) != 0) return;
    }
    if (isNew) table.indexes.push_back({indexName(name, table.name), numberAt(row, 2) != 0 && isPlain, {}});
    table.indexes.back().parts.push_back({column, numberAt(row, 7) != 0});
}

TableDefinition* tableNamed(tsql::SchemaDefinition& schema, std::string_view name)
{
    const auto found = std::ranges::find_if(
        schema.tables, [&](const TableDefinition& known) { return tsql::sameName(known.name, name); });
    return found == schema.tables.end() ? nullptr : &*found;
}

void readColumns(const ado::ConnectionRef& connection, tsql::SchemaDefinition& schema,
                 std::vector<std::string>& problems)
{
    std::set<std::pair<std::string, std::string>> tables;
    for (const std::vector<Variant>& row : rowsOf(connection, tablesQuery))
        tables.emplace(textAt(row, at::schema), textAt(row, at::table));
    for (const auto& [owner, name] : tables)
        if (!text::equalsNoCase(owner, "dbo"))
            problems.push_back(std::string{"table "}.append(name).append(" stands in schema ").append(owner));
    for (const std::vector<Variant>& row : rowsOf(connection, columnsQuery)) {
        const std::string name = textAt(row, at::table);
        const bool isTable = tables.contains({textAt(row, at::schema), name});
        if (!isTable || !text::equalsNoCase(textAt(row, at::schema), "dbo")) continue;
        if (schema.tables.empty() || schema.tables.back().name != name) schema.tables.push_back({.name = name});
        addColumn(schema.tables.back(), row, problems, schema.omissions);
    }
}

/// Identity and computed columns.
void readMarks(const ado::ConnectionRef& connection, tsql::SchemaDefinition& schema, std::vector<std::string>& problems)
{
    for (const std::vector<Variant>& row : rowsOf(connection, marksQuery)) {
        TableDefinition* const table = tableNamed(schema, textAt(row, 0));
        if (table == nullptr) continue;
        const std::string name = spelled(*table, textAt(row, 1));
        const auto column = std::ranges::find(table->columns, name, &DefinedColumn::name);
        if (column == table->columns.end()) continue;
        column->identity = numberAt(row, 2) != 0;
        if (!column->identity) problems.push_back("column " + name + " of table " + table->name + " is computed");
    }
}

void readIndexes(const ado::ConnectionRef& connection, tsql::SchemaDefinition& schema)
{
    std::string current;
    for (const std::vector<Variant>& row : rowsOf(connection, indexesQuery)) {
        TableDefinition* const table = tableNamed(schema, textAt(row, 0));
        if (table != nullptr) addIndexColumn(*table, row, current, schema.omissions);
    }
}

/// Views, constraints and code. The procedures of the system are not named: both ends have them.
void readObjects(const ado::ConnectionRef& connection, std::vector<std::string>& omissions)
{
    for (const std::vector<Variant>& row : rowsOf(connection, objectsQuery)) {
        const std::string type{text::trim(textAt(row, 0))};
        const std::string name = textAt(row, 1);
        if (type == "P" && text::equalsNoCase(text::left(name, 4), "tmk_")) continue;
        const auto* const kind = std::ranges::find(objectKinds, type, &ObjectKind::type);
        if (kind == objectKinds.end()) continue;
        const std::string parent = textAt(row, 2);
        omissions.push_back(std::string{kind->words} + name + (parent.empty() ? "" : " of table " + parent));
    }
}

[[noreturn]] void refuse(const std::vector<std::string>& problems)
{
    std::string list;
    for (const std::string& problem : problems)
        list.append(list.empty() ? "" : "; ").append(problem);
    throw Error{errors::providerFailure,
                "The embedded database cannot hold these tables: " + list +
                    ". Move them to another database of the server, or change the columns, and try again.",
                "moveDatabase"};
}

/// The server hides what a login has no right to.
void requireSight(const ado::ConnectionRef& connection)
{
    const Rows rows = rowsOf(connection, "SELECT HAS_PERMS_BY_NAME(DB_NAME(), 'DATABASE', 'SELECT')");
    if (numberAt(rows.at(0), 0) != 0) return;
    throw Error{
        errors::providerFailure,
        "The login may not read the whole database, so that the server might hide tables from it. GRANT SELECT TO "
        "it, or make it a member of db_owner.",
        "serverStore"};
}

} // namespace

Rows rowsOf(const ado::ConnectionRef& connection, std::string_view query)
{
    Rows rows;
    ado::Recordset records;
    for (records.Open(query, connection); !records.AtEOF(); records.MoveNext()) {
        std::vector<Variant>& row = rows.emplace_back();
        for (std::int32_t i = 0; i < records.Fields().Count(); ++i)
            row.push_back(records.Fields().Item(i).Value());
    }
    return rows;
}

std::string textAt(const std::vector<Variant>& row, std::size_t column)
{
    return row.at(column).isNull() ? std::string{} : convert::toText(row[column]);
}

std::int64_t numberAt(const std::vector<Variant>& row, std::size_t column)
{
    const Variant& value = row.at(column);
    if (value.isNull()) return 0;
    if (value.kind() == Variant::Kind::Boolean) return value.asBoolean() ? 1 : 0;
    return convert::toLongLong(value);
}

tsql::SchemaDefinition readServerSchema(const ado::ConnectionRef& connection)
{
    requireSight(connection);
    tsql::SchemaDefinition schema;
    std::vector<std::string> problems;
    readColumns(connection, schema, problems);
    readMarks(connection, schema, problems);
    if (!problems.empty()) refuse(problems);
    readIndexes(connection, schema);
    readObjects(connection, schema.omissions);
    return schema;
}

} // namespace tamarok::database
