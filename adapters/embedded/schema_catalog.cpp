#include "schema_catalog.h"

#include <string>

#include "columns.h"

namespace tamarok::embedded {

namespace {

constexpr std::string_view cookieQuery = "PRAGMA main.schema_version";
constexpr std::string_view namesQuery =
    "SELECT name,0 FROM main.sqlite_schema WHERE type IN('table','view') AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' "
    "UNION ALL SELECT name,1 FROM temp.sqlite_schema WHERE type='table'";

/// A column that SQLite keeps as the row's own number.
bool isRowNumber(std::string_view declaredType, std::int64_t keyColumns, bool inKey)
{
    return inKey && keyColumns == 1 && CompareNames{}(declaredType, "INTEGER") == false &&
           CompareNames{}("INTEGER", declaredType) == false;
}

} // namespace

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
