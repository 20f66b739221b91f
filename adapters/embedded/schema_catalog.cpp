#include "schema_catalog.h"

#include <string>

#include "column_values.h"
#include "failures.h"
#include "parameters.h"
#include "tamarok_tsql/names.h"

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
    return inKey && keyColumns == 1 && tsql::sameName(declaredType, "INTEGER");
}

/// True for a column whose texts compare byte by byte.
bool isBinary(sqlite3* database, const char* schema, const std::string& table, const std::string& column)
{
    const char* collation = nullptr;
    const int code = sqlite3_table_column_metadata(database, schema, table.c_str(), column.c_str(), nullptr, &collation,
                                                   nullptr, nullptr, nullptr);
    return code == SQLITE_OK && tsql::sameName(collation, "BINARY");
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

std::vector<std::string> SchemaCatalog::names() const
{
    if (!loaded_) {
        loadNames();
    }
    std::vector<std::string> names;
    for (const auto& [name, entry] : entries_) {
        if (!entry.temporary) names.push_back(name);
    }
    return names;
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
    // The setting goes with its table: another table of that name begins without it.
    if (!entries_.contains(identityInsert_)) {
        identityInsert_.clear();
    }
}

/// Types are read back from their declarations. `pk` is the position in the primary key; the sum over all rows counts
/// the key columns. Hidden columns of virtual tables are left out.
tsql::Table SchemaCatalog::loadTable(const std::string& name, bool temporary) const
{
    static constexpr std::string_view query =
        "SELECT name,type,pk>0,sum(pk>0)OVER(),\"notnull\",name IN(SELECT i.name FROM pragma_index_list(?1,?2) AS l,"
        "pragma_index_info(l.name,?2) AS i WHERE l.\"unique\") "
        "FROM pragma_table_xinfo(?1,?2) WHERE hidden<>1 ORDER BY cid";
    const char* const schema = temporary ? "temp" : "main";
    tsql::Table table;
    table.name = name;
    table.identityInsert = tsql::sameName(name, identityInsert_);
    const Compiled statement = database_.compile(query);
    bindText(statement.get(), 1, name);
    bindText(statement.get(), 2, schema);
    while (database_.step(statement.get())) {
        const std::string declared = columnText(statement.get(), 1);
        const bool inPrimaryKey = sqlite3_column_int(statement.get(), 2) != 0;
        tsql::TableColumn column;
        column.name = columnText(statement.get(), 0);
        column.type = tsql::parseDeclaredType(declared);
        column.identity = isRowNumber(declared, sqlite3_column_int64(statement.get(), 3), inPrimaryKey);
        column.nullable = !column.identity && sqlite3_column_int(statement.get(), 4) == 0;
        column.inKey = inPrimaryKey || sqlite3_column_int(statement.get(), 5) != 0;
        column.binary = isBinary(database_.handle(), schema, name, column.name);
        table.columns.push_back(std::move(column));
    }
    return table;
}

/// What was translated before is out of date, since the setting decides whether an INSERT is refused.
void SchemaCatalog::setIdentityInsert(const std::string& table, bool on)
{
    if (!loaded_) {
        loadNames();
    }
    const bool same = tsql::sameName(identityInsert_, table);
    if (on && !identityInsert_.empty() && !same) {
        throw failure(native::identityInsertInUse, "IDENTITY_INSERT is already ON for table '" + identityInsert_ +
                                                       "'. Cannot perform SET operation for table '" + table + "'.");
    }
    if (on == same) {
        return;
    }
    identityInsert_ = on ? table : std::string{};
    forget();
}

} // namespace tamarok::embedded
