#include "schema_catalog.h"

#include <string>

#include "column_values.h"
#include "parameters.h"

namespace tamarok::embedded {

namespace {

// A number that SQLite changes with every definition; a cheap way to notice those of other sessions.
constexpr std::string_view cookieQuery = "PRAGMA main.schema_version";
// Temporary tables come last and so replace a table of the same name.
constexpr std::string_view namesQuery =
    "SELECT name,0 FROM main.sqlite_schema WHERE type IN('table','view') AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' "
    "UNION ALL SELECT name,1 FROM temp.sqlite_schema WHERE type='table'";

/// True for a column that is the row key of SQLite.
bool isRowNumber(std::string_view declaredType, std::int64_t keyColumns, bool inKey)
{
    return inKey && keyColumns == 1 && CompareNames{}(declaredType, "INTEGER") == false &&
           CompareNames{}("INTEGER", declaredType) == false;
}

} // namespace

/// Reads what is missing: the names at the first call, the columns of a table at its first use.
const tsql::Table* SchemaCatalog::table(std::string_view name) const
{
    if (!loaded_) {
        loadNames();
    }
    const auto found = entries_.find(name);
    if (found == entries_.end()) {
        return nullptr;
    }
    Entry& entry = found->second;
    if (!entry.table) {
        entry.table = loadTable(found->first, entry.temporary);
    }
    return &*entry.table;
}

void SchemaCatalog::forget()
{
    entries_.clear();
    loaded_ = false;
    ++generation_;
}

void SchemaCatalog::refresh()
{
    if (loaded_ && database_.number(cookieQuery) != cookie_) {
        forget();
    }
}

void SchemaCatalog::loadNames() const
{
    cookie_ = database_.number(cookieQuery);
    const Compiled statement = database_.compile(namesQuery);
    while (database_.step(statement.get())) {
        entries_.insert_or_assign(columnText(statement.get(), 0),
                                  Entry{sqlite3_column_int(statement.get(), 1) != 0, std::nullopt});
    }
    loaded_ = true;
}

/// Types are read back from their declarations. `pk` is the position in the primary key; the sum over all rows counts
/// the key columns. Hidden columns of virtual tables are left out.
tsql::Table SchemaCatalog::loadTable(const std::string& name, bool temporary) const
{
    static constexpr std::string_view query =
        "SELECT name,type,pk>0,sum(pk>0)OVER() FROM pragma_table_xinfo(?1,?2) WHERE hidden<>1 ORDER BY cid";
    tsql::Table table;
    table.name = name;
    const Compiled statement = database_.compile(query);
    bindText(statement.get(), 1, name);
    bindText(statement.get(), 2, temporary ? "temp" : "main");
    while (database_.step(statement.get())) {
        const std::string declared = columnText(statement.get(), 1);
        tsql::TableColumn column;
        column.name = columnText(statement.get(), 0);
        column.type = tsql::parseDeclaredType(declared);
        column.identity = isRowNumber(declared, sqlite3_column_int64(statement.get(), 3),
                                      sqlite3_column_int(statement.get(), 2) != 0);
        table.columns.push_back(std::move(column));
    }
    return table;
}

} // namespace tamarok::embedded
