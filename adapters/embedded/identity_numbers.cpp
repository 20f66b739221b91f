#include "identity_numbers.h"

#include <algorithm>
#include <array>

#include "column_values.h"
#include "parameters.h"

namespace tamarok::embedded {

namespace {

constexpr std::array<std::string_view, 2> schemas{"main", "temp"};

/// The schema of a table: temporary tables begin with #.
std::string_view schemaOf(std::string_view table)
{
    return table.starts_with('#') ? "temp" : "main";
}

/// Writes the schema's name and a point between two parts of a statement.
std::string in(std::string_view schema, std::string_view before, std::string_view after)
{
    return std::string{before}.append(schema).append(".").append(after);
}

/// SQLite makes its table of counters with the first table that needs it.
bool hasCounters(const Database& database, std::string_view schema)
{
    return database.number(in(schema, "SELECT EXISTS(SELECT 1 FROM ", "sqlite_schema WHERE name='sqlite_sequence')")) !=
           0;
}

bool tableExists(const Database& database, std::string_view table)
{
    const Compiled statement =
        database.compile(in(schemaOf(table), "SELECT 1 FROM ", "sqlite_schema WHERE type='table' AND name=?"));
    bindText(statement.get(), 1, table);
    return database.step(statement.get());
}

void runFor(const Database& database, std::string_view text, std::string_view table, std::int64_t number)
{
    const Compiled statement = database.compile(text);
    bindText(statement.get(), 1, table);
    sqlite3_bind_int64(statement.get(), 2, number);
    while (database.step(statement.get())) {}
}

} // namespace

IdentityNumbers::IdentityNumbers(const Database& database)
{
    for (const std::string_view schema : schemas) {
        if (!hasCounters(database, schema)) {
            continue;
        }
        const Compiled statement = database.compile(in(schema, "SELECT name,seq FROM ", "sqlite_sequence"));
        while (database.step(statement.get())) {
            entries_.push_back({columnText(statement.get(), 0), sqlite3_column_int64(statement.get(), 1)});
        }
    }
}

bool IdentityNumbers::isAheadOf(const Database& database) const
{
    return std::ranges::any_of(entries_, [&](const Entry& entry) {
        return entry.last > lastIdentity(database, entry.table) && tableExists(database, entry.table);
    });
}

void IdentityNumbers::restore(const Database& database) const
{
    for (const Entry& entry : entries_) {
        if (tableExists(database, entry.table)) {
            raiseIdentity(database, entry.table, entry.last);
        }
    }
}

std::int64_t lastIdentity(const Database& database, std::string_view table)
{
    if (!hasCounters(database, schemaOf(table))) {
        return 0;
    }
    const Compiled statement =
        database.compile(in(schemaOf(table), "SELECT seq FROM ", "sqlite_sequence WHERE name=?"));
    bindText(statement.get(), 1, table);
    return database.step(statement.get()) ? sqlite3_column_int64(statement.get(), 0) : 0;
}

/// A table that has given out no number yet has no counter, and a row key of SQLite that was declared without
/// AUTOINCREMENT never has one.
void raiseIdentity(const Database& database, std::string_view table, std::int64_t number)
{
    const std::string_view schema = schemaOf(table);
    if (!hasCounters(database, schema)) {
        return;
    }
    // Writing a counter sets SQLite's last rowid, which is @@IDENTITY.
    const sqlite3_int64 lastRow = sqlite3_last_insert_rowid(database.handle());
    runFor(database,
           in(schema, "INSERT INTO ", "sqlite_sequence(name,seq) SELECT ?1,?2 WHERE NOT EXISTS(SELECT 1 FROM ") +
               in(schema, "", "sqlite_sequence WHERE name=?1)"),
           table, number);
    runFor(database, in(schema, "UPDATE ", "sqlite_sequence SET seq=?2 WHERE name=?1 AND seq<?2"), table, number);
    sqlite3_set_last_insert_rowid(database.handle(), lastRow);
}

} // namespace tamarok::embedded
