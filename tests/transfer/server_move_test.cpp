#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "row_reader.h"
#include "row_writer.h"
#include "server_catalogue.h"
#include "sql_batches.h"
#include "support/errors.h"
#include "table_hash.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_database/server_scripts.h"
#include "tamarok_database/transfer.h"
#include "tamarok_embedded/connect.h"
#include "transfer/server_database.h"
#include "transfer/values_table.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

/// Scripts and moves on the T-SQL server.
namespace tamarok::database {
namespace {

using test::ServerDatabase;

class ServerMove : public test::OnServer {};

std::unique_ptr<Store> memory()
{
    return embeddedStore(embedded::connectInMemory());
}

std::string valueOf(const ado::ConnectionRef& connection, const std::string& query)
{
    return textAt(rowsOf(connection, query).at(0), 0);
}

std::int64_t tableCount(const ServerDatabase& database)
{
    return std::stoll(valueOf(database.connect(), "SELECT COUNT(*) FROM INFORMATION_SCHEMA.TABLES"));
}

void expectSame(Store& master, Store& server)
{
    const tsql::SchemaDefinition schema = master.schema();
    for (const tsql::TableDefinition& table : schema.tables) {
        EXPECT_EQ(sumOf(master, table), sumOf(server, table)) << table.name;
        EXPECT_EQ(master.lastIdentity(table), server.lastIdentity(table)) << table.name;
    }
}

/// The first run ends in the midst of each script, as by a lost connection. Then all run twice.
TEST_F(ServerMove, ScriptsRunAgainAndGiveTheRowsOfTheEmbeddedDatabase)
{
    const ServerDatabase database;
    const auto master = memory();
    createMasterDatabase(*master->connection());
    const std::vector<ServerScript> scripts = serverScripts(master->connection());
    {
        const ado::ConnectionRef first = database.connect();
        for (const ServerScript& script : scripts) {
            const std::vector<std::string_view> batches = splitBatches(script.text);
            const std::size_t half = script.name == "01_tables.sql" ? batches.size() : batches.size() / 2;
            for (std::size_t i = 0; i < half; ++i)
                first->Execute(batches[i]);
        }
    }
    for (int run = 0; run < 2; ++run) {
        const ado::ConnectionRef connection = database.connect();
        for (const ServerScript& script : scripts)
            runScript(*connection, script.text);
    }
    const auto server = serverStore(database.connect());
    expectSame(*master, *server);
    EXPECT_EQ(valueOf(server->connection(), "SELECT COUNT(*) FROM sys.objects WHERE type = 'P' AND name LIKE 'tmk%'"),
              "3");
    server->connection()->Execute("EXEC tmk_OPTIONEN_INS 'MOVED', 4, '5.3.2024'");
    EXPECT_EQ(valueOf(server->connection(),
                      "SELECT YEAR(DATE_VALUE) * 10000 + MONTH(DATE_VALUE) * 100 + DAY(DATE_VALUE) FROM OPTIONEN WHERE "
                      "PROPERTY_ID = 'MOVED'"),
              "20240305");
}

/// A script that was misread writes nothing. A failing row takes its whole table with it, so that the next run writes
/// it.
TEST_F(ServerMove, ATableOfAScriptIsWrittenAsAWhole)
{
    const ServerDatabase database;
    const auto master = memory();
    createMasterDatabase(*master->connection());
    const std::string rows = serverScripts(master->connection()).at(3).text;
    runScript(*database.connect(), tableScript().text);
    // As a client sends it that takes UTF-8 for Windows-1252.
    const std::string misread = text::replaceAll(rows, "N'ä'", "N'Ã¤'");
    EXPECT_THROW(runScript(*database.connect(), misread), Error);
    EXPECT_EQ(valueOf(database.connect(), "SELECT COUNT(*) FROM HOLZART"), "0");
    const std::size_t at = rows.find("INSERT INTO dbo.HOLZART");
    const std::size_t end = rows.find("\n    COMMIT", at);
    std::string broken = rows;
    broken.insert(end, "\n    INSERT INTO dbo.HOLZART (ID) VALUES (NULL)");
    EXPECT_THROW(runScript(*database.connect(), broken), Error);
    EXPECT_EQ(valueOf(database.connect(), "SELECT COUNT(*) FROM HOLZART"), "0");
    runScript(*database.connect(), rows);
    EXPECT_NE(valueOf(database.connect(), "SELECT COUNT(*) FROM HOLZART"), "0");
}

TEST_F(ServerMove, TheSampleIsThatOfAFile)
{
    const ServerDatabase database;
    const auto sample = memory();
    createReferenceDatabase(*sample->connection(), {.logs = 60, .records = 5});
    runScript(*database.connect(), tableScript().text); // tables without rows may be there
    const auto server = serverStore(database.connect());
    const Move moved = loadReferenceDatabase(*sample, *server);
    EXPECT_EQ(moved.tables.size(), 326U);
    expectSame(*sample, *serverStore(database.connect()));
    test::expectError(errors::providerFailure, "rows in ACCESS_LEVELS",
                      [&] { loadReferenceDatabase(*sample, *server); });
}

void compareRows(RowReader& sender, RowReader& receiver, const tsql::TableDefinition& table)
{
    std::vector<Variant> sent;
    std::vector<Variant> arrived;
    while (sender.read(sent)) {
        ASSERT_TRUE(receiver.read(arrived)) << table.name;
        for (std::size_t i = 0; i < sent.size(); ++i)
            EXPECT_EQ(hashOf({&sent[i], 1}), hashOf({&arrived[i], 1}))
                << table.name << " row " << convert::toText(sent[0]) << ", column " << table.columns[i].name << ": "
                << (sent[i].isNull() ? "Null" : convert::toText(sent[i]).substr(0, 60)) << " arrived as "
                << (arrived[i].isNull() ? "Null" : convert::toText(arrived[i]).substr(0, 60));
    }
}

/// Value by value, so that a change names its column; as literals (the table with binary values) and as JSON.
TEST_F(ServerMove, EachValueArrives)
{
    const ServerDatabase database;
    const auto source = memory();
    test::makeValueTables(*source->connection());
    const auto server = serverStore(database.connect());
    for (const char* name : {"USER_TABLE", "USER_SHORT"}) {
        const tsql::SchemaDefinition schema = source->schema();
        const auto table = std::ranges::find(schema.tables, name, &tsql::TableDefinition::name);
        server->connection()->Execute(tsql::createTableText(*table));
        RowReader reader{*source, *table};
        RowWriter writer{*server, *table, reader.columns()};
        std::vector<Variant> row;
        while (reader.read(row))
            writer.write(row);
        writer.finish();
        RowReader sender{*source, *table};
        RowReader receiver{*server, *table};
        compareRows(sender, receiver, *table);
    }
}

TEST_F(ServerMove, ThereAndBackNothingChanges)
{
    const ServerDatabase database;
    const auto source = memory();
    test::makeValueTables(*source->connection());
    const auto back = memory();
    {
        const auto server = serverStore(database.connect());
        moveDatabase(*source, *server);
        test::expectError(errors::providerFailure, "is not empty", [&] { moveDatabase(*source, *server); });
    }
    const auto server = serverStore(database.connect());
    moveDatabase(*server, *back);
    for (const tsql::TableDefinition& table : source->schema().tables) {
        EXPECT_EQ(sumOf(*source, table), sumOf(*back, table)) << table.name;
        // The server does not tell the number of a table into which it has not inserted.
        if (table.name == "EMPTIED") continue;
        EXPECT_EQ(source->lastIdentity(table), back->lastIdentity(table)) << table.name;
    }
    for (const tsql::TableDefinition& table : back->schema().tables) {
        const bool indexed = text::equalsNoCase(table.name, "USER_TABLE");
        EXPECT_EQ(table.indexes.size(), indexed ? 1U : 0U) << table.name;
        EXPECT_EQ(table.primaryKey.size(), text::equalsNoCase(table.name, "PAIRS") ? 2U : 1U) << table.name;
    }
    // Each numbers its next row alike.
    for (Store* const store : {source.get(), server.get(), back.get()}) {
        for (const char* table : {"NUMBERED", "EMPTIED", "UNUSED"}) {
            const std::string column = table == std::string_view{"NUMBERED"} ? "(V) VALUES ('n')" : "(V) VALUES (1)";
            store->connection()->Execute("INSERT INTO " + std::string{table} + column);
        }
        EXPECT_EQ(valueOf(store->connection(), "SELECT MAX(N) FROM NUMBERED"), "4");
        EXPECT_EQ(valueOf(store->connection(), "SELECT MAX(N) FROM EMPTIED"), store == back.get() ? "1" : "3");
        EXPECT_EQ(valueOf(store->connection(), "SELECT MAX(N) FROM UNUSED"), "1");
    }
}

TEST_F(ServerMove, StoppedHalfWayItLeavesNothing)
{
    const ServerDatabase database;
    const auto source = memory();
    test::makeValueTables(*source->connection());
    const auto server = serverStore(database.connect());
    for (const char* phase : {"Rows", "Comparing"}) {
        EXPECT_THROW(moveDatabase(*source, *server,
                                  [&](const Progress& progress) {
                                      if (progress.phase == phase) throw std::runtime_error{"stop"};
                                  }),
                     std::runtime_error)
            << phase;
        EXPECT_EQ(tableCount(database), 0) << phase;
    }
}

TEST_F(ServerMove, ALostConnectionLeavesNothing)
{
    const ServerDatabase database;
    const auto source = memory();
    createReferenceDatabase(*source->connection(), {.logs = 20, .records = 2});
    const auto server = serverStore(database.connect());
    const auto close = [&](const Progress& progress) {
        if (progress.phase == "Rows") server->connection()->Close();
    };
    const Error error = test::failureOf([&] { moveDatabase(*source, *server, close); });
    EXPECT_NE(error.description.find("The target is as it was before"), std::string::npos) << error.description;
    EXPECT_EQ(tableCount(database), 0);
}

TEST_F(ServerMove, RefusesOtherTables)
{
    const ServerDatabase database;
    const auto sample = memory();
    createMasterDatabase(*sample->connection());
    const auto server = serverStore(database.connect());
    server->connection()->Execute("CREATE TABLE MINE (A INT)");
    test::expectError(errors::providerFailure, "other tables: MINE", [&] { loadReferenceDatabase(*sample, *server); });
    EXPECT_EQ(tableCount(database), 1);
}

TEST_F(ServerMove, NamesTablesThatAFileCannotHold)
{
    const ServerDatabase database;
    const auto server = serverStore(database.connect());
    server->connection()->Execute("CREATE TABLE STRANGE (A INT, B XML, C AS (A + 1))");
    test::expectError(errors::providerFailure, "column B of table STRANGE has the type XML", [&] { server->schema(); });
    test::expectError(errors::providerFailure, "column C of table STRANGE is computed", [&] { server->schema(); });
    server->connection()->Execute("DROP TABLE STRANGE");
    server->connection()->Execute("CREATE SCHEMA other");
    server->connection()->Execute("CREATE TABLE other.THERE (A INT)");
    test::expectError(errors::providerFailure, "table THERE stands in schema other", [&] { server->schema(); });
}

TEST_F(ServerMove, RefusesValuesThatTheLibraryWouldRound)
{
    const ServerDatabase database;
    const auto server = serverStore(database.connect());
    server->connection()->Execute("CREATE TABLE WIDE (A DECIMAL(28,10), T DATETIME2(7))");
    server->connection()->Execute("INSERT INTO WIDE VALUES ('12.5', '20240305 10:15:00.123')");
    const tsql::TableDefinition table = server->schema().tables.at(0);
    server->requireReadable(table);
    server->connection()->Execute("INSERT INTO WIDE VALUES ('123456789012345678.0123456789', NULL)");
    test::expectError(errors::providerFailure, "1 values of column A", [&] { server->requireReadable(table); });
    server->connection()->Execute("DELETE FROM WIDE");
    server->connection()->Execute("INSERT INTO WIDE VALUES (NULL, '20240305 10:15:00.123456')");
    test::expectError(errors::providerFailure, "1 values of column T", [&] { server->requireReadable(table); });
}

TEST_F(ServerMove, AViewIsNamed)
{
    const ServerDatabase database;
    const auto server = serverStore(database.connect());
    server->connection()->Execute("CREATE TABLE A (N INT NOT NULL PRIMARY KEY)");
    server->connection()->Execute("CREATE VIEW V AS SELECT N FROM A");
    const auto file = memory();
    const Move moved = moveDatabase(*server, *file);
    ASSERT_EQ(moved.omissions.size(), 1U);
    EXPECT_TRUE(text::equalsNoCase(moved.omissions[0], "the view V")) << moved.omissions[0];
}

} // namespace
} // namespace tamarok::database
