#include "tamarok_database/server_scripts.h"

#include <algorithm>
#include <map>

#include "resources.h"
#include "row_reader.h"
#include "row_writer.h"
#include "sql_batches.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

/// Settings that an index or a procedure of the server depends on, and without which a failed batch would leave half
/// of its work.
constexpr std::string_view head =
    "-- Made by tamarok_server_scripts from the files of database/schema and database/data. Do not edit.\n"
    "SET QUOTED_IDENTIFIER ON\nSET ANSI_NULLS ON\nSET ANSI_PADDING ON\nSET NOCOUNT ON\nSET XACT_ABORT ON\nGO\n";

/// A client that reads the file in another character set than UTF-8 would write broken umlauts.
constexpr std::string_view characterCheck =
    "IF LEN(N'ä') <> 1\n"
    "    RAISERROR(N'This script must be read as UTF-8, by sqlcmd with the option -f 65001.', 16, 1)\nELSE ";

constexpr std::size_t rowsOfStatement = 500;

/// The text behind `words`, up to the next blank; empty where the batch does not have them at the start of a line.
std::string_view nameBehind(std::string_view batch, std::string_view words)
{
    for (std::size_t at = batch.find(words); at != std::string_view::npos; at = batch.find(words, at + 1)) {
        if (at != 0 && batch[at - 1] != '\n') continue;
        const std::string_view name = batch.substr(at + words.size());
        return name.substr(0, name.find_first_of(" (\n"));
    }
    return {};
}

/// The name of the table that a CREATE INDEX batch names, empty for another batch.
std::string_view indexedTable(std::string_view batch)
{
    if (nameBehind(batch, "CREATE INDEX ").empty() && nameBehind(batch, "CREATE UNIQUE INDEX ").empty()) return {};
    constexpr std::string_view on = " ON ";
    const std::string_view name = batch.substr(batch.find(on) + on.size());
    return name.substr(0, name.find(' '));
}

std::string_view trimEnd(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(" \r\n") + 1);
}

/// The lines of a text, each behind four blanks.
std::string indented(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (end != 0) result.append("    ").append(text.substr(0, end));
        result += '\n';
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result;
}

std::string withOwner(std::string_view text, std::string_view words)
{
    std::string result{text};
    result.insert(result.find(words) + words.size(), "dbo.");
    return result;
}

using Indexes = std::multimap<std::string_view, std::string_view>;

/// The indexes by the names of their tables.
Indexes allIndexes()
{
    Indexes indexes;
    for (const Resource& file : resources("schema"))
        for (const std::string_view batch : splitBatches(file.text))
            if (const std::string_view table = indexedTable(batch); !table.empty()) indexes.emplace(table, batch);
    return indexes;
}

/// A table and its indexes come together, so that a table that is there has them all.
void appendTable(std::string& text, std::string_view batch, std::string_view table, const Indexes& indexes)
{
    const std::size_t create = batch.find("CREATE TABLE ");
    text.append(batch.substr(0, create));
    text.append("IF OBJECT_ID(N'dbo.").append(table).append("', N'U') IS NULL\nBEGIN\n    BEGIN TRANSACTION\n");
    text += indented(withOwner(trimEnd(batch.substr(create)), "CREATE TABLE "));
    const auto [first, last] = indexes.equal_range(table);
    for (auto index = first; index != last; ++index)
        text += indented(withOwner(trimEnd(index->second), " ON "));
    text += "    COMMIT TRANSACTION\nEND\nGO\n";
}

std::string columnNames(const std::vector<RowColumn>& columns, std::string_view prefix = {})
{
    std::string names;
    for (const RowColumn& column : columns)
        names.append(names.empty() ? "" : ", ").append(prefix).append(tsql::bracketed(column.name));
    return names;
}

/// Reads up to `rowsOfStatement` rows; none after the last one.
std::vector<std::vector<Variant>> nextRows(RowReader& reader)
{
    std::vector<std::vector<Variant>> rows;
    std::vector<Variant> row;
    while (rows.size() < rowsOfStatement && reader.read(row))
        rows.push_back(row);
    return rows;
}

/// The rows as the lines of a VALUES clause with all columns.
std::string valuesText(const std::vector<std::vector<Variant>>& rows, const std::vector<RowColumn>& columns)
{
    std::string text = RowWriter::statementOf({}, rows, columns, std::vector<bool>(columns.size(), false));
    return text.substr(text.find('\n') + 1);
}

/// Texts come by their numbers, so that a run after an update adds the new ones. The customer's wording stays.
void appendTexts(std::string& text, Store& master, const tsql::TableDefinition& table)
{
    const std::string key = tsql::bracketed(table.primaryKey.front());
    RowReader reader{master, table};
    const std::vector<RowColumn> columns = reader.columns();
    const std::string names = columnNames(columns);
    for (auto rows = nextRows(reader); !rows.empty(); rows = nextRows(reader)) {
        text.append(characterCheck).append("INSERT INTO dbo.").append(table.name).append(" (").append(names);
        text.append(")\nSELECT ").append(columnNames(columns, "V.")).append(" FROM (VALUES\n");
        text.append(valuesText(rows, columns)).append("\n) AS V (").append(names);
        text.append(")\nWHERE NOT EXISTS (SELECT 1 FROM dbo.").append(table.name).append(" AS T WHERE T.");
        text.append(key).append(" = V.").append(key).append(")\nGO\n");
    }
}

/// The rows of a table come together. A table that has rows belongs to the customer.
void appendMasterTable(std::string& text, Store& master, const tsql::TableDefinition& table)
{
    RowReader reader{master, table};
    const std::vector<RowColumn> columns = reader.columns();
    const std::string name = "dbo." + table.name;
    auto rows = nextRows(reader);
    if (rows.empty()) return;
    text.append(characterCheck).append("IF NOT EXISTS (SELECT 1 FROM ").append(name).append(")\nBEGIN\n");
    text += "    BEGIN TRANSACTION\n";
    if (table.identity() != nullptr) text += "    SET IDENTITY_INSERT " + name + " ON\n";
    for (; !rows.empty(); rows = nextRows(reader))
        text += "    " + RowWriter::statementOf(name, rows, columns, std::vector<bool>(columns.size(), true)) + "\n";
    if (table.identity() != nullptr) text += "    SET IDENTITY_INSERT " + name + " OFF\n";
    text += "    COMMIT TRANSACTION\nEND\nGO\n";
}

} // namespace

ServerScript tableScript()
{
    const Indexes indexes = allIndexes();
    ServerScript script{"01_tables.sql", std::string{head}};
    for (const Resource& file : resources("schema")) {
        for (const std::string_view batch : splitBatches(file.text)) {
            const std::string_view table = nameBehind(batch, "CREATE TABLE ");
            if (!table.empty()) appendTable(script.text, batch, table, indexes);
        }
    }
    return script;
}

/// An empty procedure is made where there is none, and then changed, so that the rights on it stay.
ServerScript procedureScript()
{
    constexpr std::string_view create = "CREATE PROCEDURE ";
    ServerScript script{"02_procedures.sql", std::string{head}};
    for (const Resource& file : resources("procedures")) {
        for (const std::string_view batch : splitBatches(file.text)) {
            const std::string name{nameBehind(batch, create)};
            script.text.append("IF OBJECT_ID(N'dbo.").append(name).append("', N'P') IS NULL\n");
            script.text.append("    EXEC (N'CREATE PROCEDURE dbo.").append(name).append(" AS RETURN')\nGO\n");
            std::string alter{trimEnd(batch)};
            alter.replace(alter.find(create), create.size(), "ALTER PROCEDURE dbo.");
            script.text += alter + "\nGO\n";
        }
    }
    return script;
}

std::vector<ServerScript> serverScripts(const ado::ConnectionRef& master)
{
    const std::unique_ptr<Store> store = embeddedStore(master);
    ServerScript texts{"03_texts.sql", std::string{head}};
    ServerScript masterData{"04_master_data.sql", std::string{head}};
    const tsql::SchemaDefinition schema = store->schema();
    for (const tsql::TableDefinition& table : schema.tables) {
        if (table.name == "STRINGS")
            appendTexts(texts.text, *store, table);
        else
            appendMasterTable(masterData.text, *store, table);
    }
    return {tableScript(), procedureScript(), std::move(texts), std::move(masterData)};
}

void runScript(ado::Connection& connection, std::string_view script)
{
    for (const std::string_view batch : splitBatches(script))
        connection.Execute(batch);
}

} // namespace tamarok::database
