#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <string>

#include "server_catalogue.h"
#include "support/errors.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_database/transfer.h"
#include "tamarok_embedded/connect.h"
#include "transfer/values_table.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

std::unique_ptr<Store> emptyStore()
{
    return embeddedStore(embedded::connectInMemory());
}

/// All that a definition says, for comparisons.
std::string shown(const tsql::SchemaDefinition& schema)
{
    std::string text;
    for (const tsql::TableDefinition& table : schema.tables) {
        text += tsql::createTableText(table) + "\n";
        for (const tsql::TableIndex& index : table.indexes)
            text += tsql::createIndexText(table, index) + "\n";
    }
    return text;
}

TEST(Move, KeepsEveryValueDefinitionAndNumber)
{
    const auto source = emptyStore();
    test::makeValueTables(*source->connection());
    const auto target = emptyStore();
    const Move moved = moveDatabase(*source, *target);
    EXPECT_TRUE(moved.omissions.empty());
    EXPECT_EQ(moved.tables.size(), 6U);
    EXPECT_EQ(shown(source->schema()), shown(target->schema()));
    for (const tsql::TableDefinition& table : source->schema().tables) {
        EXPECT_EQ(sumOf(*source, table), sumOf(*target, table)) << table.name;
        EXPECT_EQ(source->lastIdentity(table), target->lastIdentity(table)) << table.name;
    }
    target->connection()->Execute("INSERT INTO NUMBERED (V) VALUES ('d')");
    EXPECT_EQ(textAt(rowsOf(target->connection(), "SELECT MAX(N) FROM NUMBERED").at(0), 0), "4");
}

TEST(Move, TheReferenceDatabaseIsMoved)
{
    const auto source = emptyStore();
    createReferenceDatabase(*source->connection(), {.logs = 100, .records = 10});
    const auto target = emptyStore();
    const Move moved = moveDatabase(*source, *target);
    EXPECT_EQ(moved.tables.size(), 326U);
    EXPECT_TRUE(moved.omissions.empty());
    std::map<std::string, TableSum> sums;
    for (const MovedTable& table : moved.tables)
        sums[table.name] = table.target;
    EXPECT_EQ(sums["LOGS"].rows, 100);
    EXPECT_EQ(shown(source->schema()), shown(target->schema()));
}

TEST(Move, NamesWhatItLeavesOut)
{
    const auto source = emptyStore();
    source->connection()->Execute(
        "CREATE TABLE A (N INT NOT NULL PRIMARY KEY, C INT CHECK (C > 0), D INT DEFAULT (1 + 1))");
    source->connection()->Execute("CREATE TABLE B (N INT REFERENCES A (N))");
    source->connection()->Execute("CREATE VIEW V AS SELECT N FROM A");
    const auto target = emptyStore();
    const Move moved = moveDatabase(*source, *target);
    std::string all;
    for (const std::string& omission : moved.omissions)
        all += omission + "; ";
    for (const char* part : {"the checks of table A", "the default of column D of table A",
                             "the reference from table B to A", "the view V"})
        EXPECT_NE(all.find(part), std::string::npos) << all;
}

TEST(Move, RefusesATargetWithTables)
{
    const auto source = emptyStore();
    test::makeValueTables(*source->connection());
    const auto target = emptyStore();
    target->connection()->Execute("CREATE TABLE MINE (A INT)");
    test::expectError(errors::providerFailure, "MINE", [&] { moveDatabase(*source, *target); });
    EXPECT_EQ(target->schema().tables.size(), 1U);
}

TEST(Move, AnInterruptLeavesTheTargetEmpty)
{
    const auto source = emptyStore();
    createReferenceDatabase(*source->connection(), {.logs = 3000, .records = 10});
    const auto target = emptyStore();
    bool inRows = false;
    const auto interrupt = [&](const Progress& progress) {
        inRows = progress.phase == "Rows";
        if (inRows) throw std::runtime_error{"stop"};
    };
    EXPECT_THROW(moveDatabase(*source, *target, interrupt), std::runtime_error);
    EXPECT_TRUE(inRows);
    EXPECT_TRUE(target->schema().tables.empty());
}

TEST(Move, StoresAreOfTheirKind)
{
    test::expectError(errors::providerFailure, "no T-SQL server", [] { serverStore(embedded::connectInMemory()); });
}

TEST(Definitions, PlainDefaultsAreThoseThatEveryServerTakes)
{
    for (const char* plain : {"0", "-1.5", "'a''b'", "N'x'", "''", "GETDATE()", "NULL"})
        EXPECT_TRUE(tsql::isPlainDefault(plain)) << plain;
    for (const char* other : {"", "1+1", "'a'b'", "'", "f(1)", "1.2.3", "-"})
        EXPECT_FALSE(tsql::isPlainDefault(other)) << other;
}

} // namespace
} // namespace tamarok::database
