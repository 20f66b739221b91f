#include <algorithm>

#include "reporter.h"
#include "row_reader.h"
#include "row_writer.h"
#include "server_catalogue.h"
#include "table_hash.h"
#include "tamarok_database/server_scripts.h"
#include "tamarok_database/transfer.h"
#include "tamarok_tsql/names.h"

#include "tamarok/error.h"
#include "tamarok/transaction.h"

namespace tamarok::database {
namespace {

using tsql::TableDefinition;

/// The first names of a list, for a message.
std::string firstNames(const std::vector<std::string>& names)
{
    constexpr std::size_t shown = 5;
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), shown); ++i)
        text.append(i == 0 ? "" : ", ").append(names[i]);
    return names.size() > shown ? text + " and " + std::to_string(names.size() - shown) + " more" : text;
}

void requireEmpty(Store& target)
{
    std::vector<std::string> names;
    const tsql::SchemaDefinition schema = target.schema();
    for (const TableDefinition& table : schema.tables)
        names.push_back(table.name);
    if (names.empty()) return;
    throw Error{errors::providerFailure,
                "The database to fill is not empty. It has the tables " + firstNames(names) +
                    ". Nothing was changed. Name an empty database (CREATE DATABASE name makes one).",
                "moveDatabase"};
}

/// Copies rows between the same table of two databases and counts the work done.
class Mover {
public:
    Mover(Store& source, Store& target, Reporter& reporter) : source_{source}, target_{target}, reporter_{reporter} {}

    /// Counts the rows that `move` and `verify` will read.
    void count(const std::vector<TableDefinition>& tables)
    {
        for (const TableDefinition& table : tables) {
            reporter_.reportThrottled({"Counting", 0, 1});
            const Rows rows = rowsOf(source_.connection(), "SELECT COUNT(*) FROM " + tsql::bracketed(table.name));
            total_ += numberAt(rows.at(0), 0);
        }
    }

    /// Copies the rows of a table and sums them as they are read.
    TableSum move(const TableDefinition& table)
    {
        TableSum sum;
        RowReader reader{source_, table};
        RowWriter writer{target_, table, reader.columns()};
        std::vector<Variant> row;
        while (reader.read(row)) {
            add(sum, row);
            writer.write(row);
            ++done_;
            reporter_.reportThrottled({"Rows", done_, total_});
        }
        writer.finish();
        if (table.identity() != nullptr) target_.raiseIdentity(table, source_.lastIdentity(table), sum.rows);
        return sum;
    }

    /// Reads the rows of the target back. Error 0x80004005 where they are not those that were written.
    void verify(const TableDefinition& table, MovedTable& moved)
    {
        moved.target = sumOf(target_, table);
        checked_ += moved.target.rows;
        reporter_.reportThrottled({"Comparing", checked_, total_});
        if (moved.target == moved.source) return;
        throw Error{errors::providerFailure,
                    "The " + std::to_string(moved.source.rows) + " rows of table " + table.name +
                        " did not arrive as they were sent: the target has " + std::to_string(moved.target.rows) +
                        " rows with another sum. Check the collation and the client character set of the connection.",
                    "moveDatabase"};
    }

private:
    Store& source_;
    Store& target_;
    Reporter& reporter_;
    std::int64_t total_ = 0;
    std::int64_t done_ = 0;
    std::int64_t checked_ = 0;
};

/// Moves the rows of all tables, then lets `finish` complete the target, and compares.
template <class Finish>
Move moveRows(Store& source, Store& target, const tsql::SchemaDefinition& schema, Reporter& reporter, Finish finish)
{
    Move result;
    result.omissions = schema.omissions;
    Mover mover{source, target, reporter};
    mover.count(schema.tables);
    for (const TableDefinition& table : schema.tables) {
        try {
            result.tables.push_back({table.name, mover.move(table), {}});
        } catch (Error& error) {
            throw error.addContext("Table " + table.name);
        }
    }
    finish();
    for (std::size_t i = 0; i < schema.tables.size(); ++i)
        mover.verify(schema.tables[i], result.tables[i]);
    return result;
}

void createIndexes(Store& target, const tsql::SchemaDefinition& schema, Reporter& reporter)
{
    for (const TableDefinition& table : schema.tables) {
        for (const tsql::TableIndex& index : table.indexes)
            target.connection()->Execute(tsql::createIndexText(table, index));
        reporter.reportThrottled({"Indexes", 0, 1});
    }
}

/// No statement of a move has a limit: it may take as long as the rows do.
void removeLimits(Store& source, Store& target)
{
    source.connection()->CommandTimeout(0);
    target.connection()->CommandTimeout(0);
}

/// Runs what writes inside the transaction; an error tells that the transaction takes it back.
template <class Work>
auto allOrNothing(Work work)
{
    try {
        return work();
    } catch (Error& error) {
        error.description += " The target is as it was before; remove the cause and try again.";
        throw;
    }
}

/// The answer to the last step may get lost, and nobody knows then whether it was carried out.
void commit(ado::Transaction& transaction)
{
    try {
        transaction.commit();
    } catch (Error& error) {
        throw error.addContext("The rows are written, but the end of the transaction failed. If the target has tables "
                               "now, it is complete; otherwise try again");
    }
}

/// Error 0x80004005 for a table that is none of the schema or has rows.
void requireFillable(Store& server, const tsql::SchemaDefinition& schema)
{
    std::vector<std::string> strange;
    std::vector<std::string> filled;
    const tsql::SchemaDefinition present = server.schema();
    for (const TableDefinition& table : present.tables) {
        const bool known = std::ranges::any_of(
            schema.tables, [&](const TableDefinition& own) { return tsql::sameName(own.name, table.name); });
        if (!known)
            strange.push_back(table.name);
        else if (!rowsOf(server.connection(), "SELECT TOP 1 1 FROM " + tsql::bracketed(table.name)).empty())
            filled.push_back(table.name);
    }
    if (strange.empty() && filled.empty()) return;
    const std::string found =
        strange.empty() ? "rows in " + firstNames(filled) : "other tables: " + firstNames(strange);
    throw Error{errors::providerFailure,
                "The database is not empty. It has " + found +
                    ". Nothing was changed. Name a database of its own (CREATE DATABASE name makes one).",
                "loadReferenceDatabase"};
}

} // namespace

TableSum sumOf(Store& store, const TableDefinition& table)
{
    TableSum sum;
    RowReader reader{store, table};
    std::vector<Variant> row;
    while (reader.read(row))
        add(sum, row);
    return sum;
}

Move moveDatabase(Store& source, Store& target, const ProgressListener& progress)
{
    removeLimits(source, target);
    Reporter reporter{progress};
    requireEmpty(target);
    const ado::Transaction snapshot{*source.connection()}; // one state of all tables; ends by itself
    const tsql::SchemaDefinition schema = source.schema();
    for (const TableDefinition& table : schema.tables)
        source.requireReadable(table);
    ado::Transaction transaction{*target.connection()};
    Move result = allOrNothing([&] {
        for (const TableDefinition& table : schema.tables) {
            target.connection()->Execute(tsql::createTableText(table));
            reporter.reportThrottled({"Tables", 0, 1});
        }
        return moveRows(source, target, schema, reporter, [&] {
            createIndexes(target, schema, reporter);
            target.finish();
        });
    });
    commit(transaction);
    return result;
}

Move loadReferenceDatabase(Store& sample, Store& server, const ProgressListener& progress)
{
    removeLimits(sample, server);
    Reporter reporter{progress};
    const tsql::SchemaDefinition schema = sample.schema();
    requireFillable(server, schema);
    ado::Transaction transaction{*server.connection()};
    Move result = allOrNothing([&] {
        runPhase(reporter, "Tables", [&] { runScript(*server.connection(), tableScript().text); });
        return moveRows(sample, server, schema, reporter, [&] { server.finish(); });
    });
    commit(transaction);
    return result;
}

} // namespace tamarok::database
