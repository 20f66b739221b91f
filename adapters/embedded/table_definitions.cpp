#include "tamarok_embedded/table_definitions.h"

#include <string>
#include <vector>

#include "column_values.h"
#include "failures.h"
#include "identity_numbers.h"
#include "parameters.h"
#include "schema_catalog.h"
#include "session.h"
#include "tamarok_tsql/type_rules.h"

#include "tamarok/error.h"

namespace tamarok::embedded {

namespace {

using tsql::DefinedColumn;
using tsql::TableDefinition;

/// The session is known by its type: a connection may belong to any back end.
Engine& engineOf(ado::Connection& connection)
{
    auto* const session = dynamic_cast<EmbeddedSession*>(&connection.session());
    if (session == nullptr)
        throw Error{errors::invalidArgument, "The connection is not one of the embedded database.",
                    std::string{sourceName}};
    return session->engine();
}

/// Runs a query with one parameter and passes each row to `read`.
template <class Read>
void readRows(const Database& database, std::string_view query, std::string_view parameter, Read read)
{
    const Compiled statement = database.compile(query);
    bindText(statement.get(), 1, parameter);
    while (database.step(statement.get()))
        read(statement.get());
}

/// The type as declared. An identity column is declared INTEGER, whatever whole type it was made with.
std::string declaredType(const std::string& declared, const tsql::TableColumn& known, const TableDefinition& table)
{
    if (known.identity) return "INT";
    if (known.type.kind == tsql::TypeKind::Unknown)
        throw Error{errors::providerFailure,
                    "Column '" + known.name + "' of table '" + table.name + "' has the type '" + declared +
                        "', which is none of the server's.",
                    std::string{sourceName}};
    return declared;
}

void readColumns(Engine& engine, TableDefinition& table, std::vector<std::string>& omissions)
{
    const tsql::Table* const known = engine.catalog().table(table.name);
    if (known == nullptr) return; // dropped by another session meanwhile
    readRows(engine.database(),
             "SELECT name,type,dflt_value FROM pragma_table_xinfo(?1,'main') WHERE hidden<>1 ORDER BY cid", table.name,
             [&](sqlite3_stmt* row) {
                 const tsql::TableColumn& told = known->columns.at(table.columns.size());
                 const bool isText = tsql::isText(told.type);
                 DefinedColumn column{told.name,
                                      declaredType(columnText(row, 1), told, table),
                                      told.identity,
                                      told.nullable,
                                      told.binary && isText,
                                      columnText(row, 2)};
                 if (!column.defaultValue.empty() && !tsql::isPlainDefault(column.defaultValue)) {
                     omissions.push_back("the default of column " + column.name + " of table " + table.name);
                     column.defaultValue.clear();
                 }
                 table.columns.push_back(std::move(column));
             });
}

/// The primary key in its own order; the identity column of a table is one by itself.
void readPrimaryKey(const Database& database, TableDefinition& table)
{
    readRows(database, "SELECT name FROM pragma_table_xinfo(?1,'main') WHERE pk>0 ORDER BY pk", table.name,
             [&](sqlite3_stmt* row) { table.primaryKey.push_back(columnText(row, 0)); });
}

std::vector<tsql::IndexPart> indexParts(const Database& database, const std::string& index)
{
    std::vector<tsql::IndexPart> parts;
    readRows(database, "SELECT name,\"desc\" FROM pragma_index_xinfo(?1,'main') WHERE key=1 ORDER BY seqno", index,
             [&](sqlite3_stmt* row) {
                 parts.push_back({columnText(row, 0), sqlite3_column_int(row, 1) != 0});
             });
    return parts;
}

/// Indexes are listed from the last one made to the first. Those that begin with "~" serve unique keys with Nulls.
void readIndexes(const Database& database, TableDefinition& table)
{
    readRows(database, "SELECT name,\"unique\",origin FROM pragma_index_list(?1,'main') ORDER BY seq DESC", table.name,
             [&](sqlite3_stmt* row) {
                 const std::string name = columnText(row, 0);
                 const std::string origin = columnText(row, 2);
                 if (origin == "pk" || name.starts_with('~')) return;
                 std::vector<tsql::IndexPart> parts = indexParts(database, name);
                 if (origin == "u") {
                     std::vector<std::string>& key = table.uniqueKeys.emplace_back();
                     for (const tsql::IndexPart& part : parts)
                         key.push_back(part.column);
                     return;
                 }
                 // In the file the name of the table stands before it.
                 const std::string own = name.substr(name.starts_with(table.name + ".") ? table.name.size() + 1 : 0);
                 table.indexes.push_back({own, sqlite3_column_int(row, 1) != 0, std::move(parts)});
             });
}

/// What SQLite enforces besides keys. A text in a default may look like a check, which then is named in vain.
void readConstraints(const Database& database, const TableDefinition& table, const std::string& definition,
                     std::vector<std::string>& omissions)
{
    if (definition.find("CHECK (") != std::string::npos) omissions.push_back("the checks of table " + table.name);
    readRows(database, "SELECT DISTINCT \"table\" FROM pragma_foreign_key_list(?1,'main')", table.name,
             [&](sqlite3_stmt* row) {
                 omissions.push_back("the reference from table " + table.name + " to " + columnText(row, 0));
             });
}

} // namespace

tsql::SchemaDefinition schemaDefinition(ado::Connection& connection)
{
    Engine& engine = engineOf(connection);
    const Database& database = engine.database();
    tsql::SchemaDefinition schema;
    readRows(database,
             "SELECT name,type,sql FROM main.sqlite_schema WHERE type IN('table','view') AND name NOT LIKE ?1 ESCAPE "
             "'\\' ORDER BY rowid",
             "sqlite\\_%", [&](sqlite3_stmt* row) {
                 const std::string name = columnText(row, 0);
                 if (columnText(row, 1) == "view") {
                     schema.omissions.push_back("the view " + name);
                     return;
                 }
                 TableDefinition table{.name = name};
                 readColumns(engine, table, schema.omissions);
                 readPrimaryKey(database, table);
                 readIndexes(database, table);
                 readConstraints(database, table, columnText(row, 2), schema.omissions);
                 schema.tables.push_back(std::move(table));
             });
    return schema;
}

std::int64_t lastIdentity(ado::Connection& connection, std::string_view table)
{
    return lastIdentity(engineOf(connection).database(), table);
}

void raiseIdentity(ado::Connection& connection, std::string_view table, std::int64_t number)
{
    raiseIdentity(engineOf(connection).database(), table, number);
}

} // namespace tamarok::embedded
