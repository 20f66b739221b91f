#include <chrono>

#include "server_test.h"
#include "support/child_process.h"

#include "tamarok/convert.h"

namespace tamarok::odbc {

using test::ChildProcess;

/// Locks between processes, and the limits of waits.
class OdbcLocks : public ServerTest {
protected:
    void SetUp() override
    {
        ServerTest::SetUp();
        if (!connection) return;
        table = makeTable("CODE " + std::string{word("NVARCHAR(10)", "VARCHAR(10)", "")} +
                          " NOT NULL, PART INT NOT NULL, NOTE VARCHAR(20), PRIMARY KEY (CODE, PART)");
        for (const char* const row : {"'ä', 1, 'one'", "'ä', 2, 'two'", "'b', 1, 'three'"})
            connection->Execute("INSERT INTO " + table + " VALUES (" + row + ")");
    }
    std::string rowText() const { return "SELECT * FROM " + table + " WHERE CODE = 'ä' AND PART = 1"; }
    std::int64_t touch(int part) const
    {
        return connection->Execute("UPDATE " + table +
                                   " SET NOTE = 'x' WHERE CODE = 'ä' AND PART = " + std::to_string(part));
    }

    std::string table;
};
INSTANTIATE_TEST_SUITE_P(Servers, OdbcLocks, ::testing::Values(TestServer::Tsql, TestServer::Postgres), serverName);

TEST_P(OdbcLocks, AnotherProcessHoldsARowUntilItReleasesIt)
{
    ChildProcess child{LOCK_CHILD, {connectionText(), rowText()}};
    ASSERT_EQ(child.line(), "held");
    connection->CommandTimeout(1);
    const Error failure = failureOf([&] { touch(1); });
    EXPECT_EQ(failure.number, errors::timeout) << failure.what();
    EXPECT_EQ(touch(2), 1) << "another row is free";
    EXPECT_EQ(scalar("SELECT NOTE FROM " + table + " WHERE CODE = 'ä' AND PART = 1"), Variant{"one"}) << "readers pass";
    EXPECT_EQ(connection->Execute("INSERT INTO " + table + " VALUES ('ä', 3, 'new')"), 1) << "and new rows";
    EXPECT_EQ(child.ask("go"), "released");
    EXPECT_EQ(touch(1), 1);
}

TEST_P(OdbcLocks, KilledHolderGivesWay)
{
    ChildProcess child{LOCK_CHILD, {connectionText(), rowText()}};
    ASSERT_EQ(child.line(), "held");
    child.kill();
    connection->CommandTimeout(10);
    EXPECT_EQ(touch(1), 1);
}

TEST_P(OdbcLocks, TwoHoldersOfOneRow)
{
    const auto rows = open(rowText(), ado::CursorType::OpenDynamic, ado::LockType::Pessimistic);
    ChildProcess child{LOCK_CHILD, {connectionText(), rowText()}};
    EXPECT_TRUE(child.line().starts_with("error " + std::to_string(errors::timeout)));
    rows->Close();
    ChildProcess second{LOCK_CHILD, {connectionText(), rowText()}};
    EXPECT_EQ(second.line(), "held");
}

TEST_P(OdbcLocks, WaitIsBoundedByTheServerAndTheConnectionLives)
{
    ChildProcess child{LOCK_CHILD, {connectionText(), rowText()}};
    ASSERT_EQ(child.line(), "held");
    for (const int seconds : {1, 2, 1}) {
        connection->CommandTimeout(seconds);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(errorNumber([&] { touch(1); }), errors::timeout);
        EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds{seconds * 1000 - 200});
        EXPECT_EQ(scalar("SELECT 1"), Variant{1});
    }
}

TEST_P(OdbcLocks, StatementThatRunsTooLongMeetsTheLimit)
{
    connection->CommandTimeout(1);
    const Error failure =
        failureOf([&] { connection->Execute("SELECT 1 WHERE CAST(pg_sleep(20) AS VARCHAR(9)) = ''"); });
    EXPECT_EQ(failure.number, errors::timeout) << failure.what();
    if (isPostgres()) {
        EXPECT_EQ(scalar("SELECT 1"), Variant{1}) << "the server has ended the statement";
        return;
    }
    // The T-SQL server bounds waits for locks alone: the driver's limit ends the call, and with it the connection.
    EXPECT_NE(failure.description.find("lost"), std::string::npos) << failure.what();
    expectError(errors::providerFailure, "lost", [&] { connection->Execute("SELECT 1"); });
}

TEST_P(OdbcLocks, DeletedRowIsNoTimeOut)
{
    const auto rows = open("SELECT * FROM " + table + " ORDER BY CODE, PART", ado::CursorType::OpenDynamic,
                           ado::LockType::Pessimistic);
    const auto other = connect();
    rows->MoveFirst();
    other->Execute("DELETE FROM " + table + " WHERE NOTE = 'two'");
    std::string notes;
    for (; !rows->AtEOF(); rows->MoveNext())
        notes += convert::toText(rows->Fields().Item("NOTE").Value()) + " ";
    EXPECT_EQ(notes.find("two"), std::string::npos) << notes;
    EXPECT_NE(notes.find("three"), std::string::npos) << notes;
}

TEST_P(OdbcLocks, DeleteOfTheHeldRowIsWrittenAtOnce)
{
    const auto rows = open(rowText(), ado::CursorType::OpenDynamic, ado::LockType::Pessimistic);
    rows->Delete(1);
    const auto other = connect();
    ado::Recordset left;
    left.Open("SELECT COUNT(*) FROM " + table, other);
    EXPECT_EQ(convert::toLong(left.Fields().Item(0).Value()), 2);
}

TEST_P(OdbcLocks, RollbackOfTheCallerIsToldByTheFailure)
{
    connection->BeginTrans();
    touch(1);
    const Error failure = failureOf([&] { scalar("SELECT CAST('a' AS INT)"); });
    EXPECT_NE(failure.description.find("rolled back"), std::string::npos) << failure.what();
    const Error commit = failureOf([&] { connection->CommitTrans(); });
    EXPECT_EQ(commit.nativeError, 3902);
    const Error rollback = failureOf([&] { connection->RollbackTrans(); });
    EXPECT_EQ(rollback.nativeError, 3903);
}

TEST_P(OdbcLocks, TransactionsNest)
{
    connection->BeginTrans();
    connection->BeginTrans();
    touch(1);
    connection->CommitTrans();
    connection->RollbackTrans();
    EXPECT_EQ(scalar("SELECT NOTE FROM " + table + " WHERE CODE = 'ä' AND PART = 1"), Variant{"one"});
}

class OdbcEdits : public ServerTest {};
INSTANTIATE_TEST_SUITE_P(Servers, OdbcEdits,
                         ::testing::Values(TestServer::Tsql, TestServer::Postgres, TestServer::Sqlite), serverName);

TEST_P(OdbcEdits, KeysMayBeTextsOfSeveralColumnsAndMayChange)
{
    const std::string table =
        makeTable("CODE VARCHAR(10) NOT NULL, PART INT NOT NULL, NOTE VARCHAR(20), PRIMARY KEY (CODE, PART)");
    const auto rows =
        open("SELECT NOTE, PART, CODE FROM " + table, ado::CursorType::OpenKeyset, ado::LockType::Optimistic);
    for (int part = 1; part <= 3; ++part) {
        rows->AddNew();
        rows->Fields().Item("CODE").Value("ä b");
        rows->Fields().Item("PART").Value(part);
        rows->Fields().Item("NOTE").Value(std::to_string(part));
        rows->Update();
    }
    rows->Fields().Item("PART").Value(30);
    rows->Update();
    rows->Fields().Item("NOTE").Value("changed");
    rows->Update();
    EXPECT_EQ(scalar("SELECT NOTE FROM " + table + " WHERE PART = 30"), Variant{"changed"});
    rows->MoveFirst();
    rows->Delete();
    EXPECT_EQ(convert::toLong(scalar("SELECT COUNT(*) FROM " + table)), 2);
}

TEST_P(OdbcEdits, RowsWithoutKeyTakeNewRowsButNoChanges)
{
    const std::string table = makeTable("CODE VARCHAR(10), NOTE VARCHAR(20) DEFAULT 'given'");
    connection->Execute("INSERT INTO " + table + " VALUES ('a', 'one')");
    const std::string statement = "SELECT * FROM " + table;
    const auto rows = open(statement, ado::CursorType::OpenKeyset, ado::LockType::Optimistic);
    const auto expectRefused = [&] {
        expectError(errors::readOnlyRecordset, "whole key", [&] { rows->Delete(); });
        rows->Fields().Item("NOTE").Value("x");
        expectError(errors::readOnlyRecordset, "whole key", [&] { rows->Update(); });
        rows->CancelUpdate();
    };
    expectRefused();
    rows->Move(0);
    EXPECT_EQ(rows->Fields().Item("NOTE").Value(), Variant{"one"}) << "as it was read";
    rows->AddNew();
    rows->Fields().Item("CODE").Value("b");
    rows->Update();
    EXPECT_EQ(rows->Fields().Item("CODE").Value(), Variant{"b"});
    EXPECT_TRUE(rows->Fields().Item("NOTE").Value().isNull()) << "the default of the table cannot be read";
    rows->Move(0);
    EXPECT_EQ(rows->Fields().Item("CODE").Value(), Variant{"b"});
    expectRefused();
    EXPECT_EQ(scalar("SELECT NOTE FROM " + table + " WHERE CODE = 'b'"), Variant{"given"});
    EXPECT_EQ(convert::toLong(scalar("SELECT COUNT(*) FROM " + table)), 2);
    if (GetParam() == TestServer::Sqlite) return; // holds no rows
    EXPECT_EQ(errorNumber([&] { open(statement, ado::CursorType::OpenDynamic, ado::LockType::Pessimistic); }),
              errors::readOnlyRecordset);
}

TEST_P(OdbcEdits, HiddenKeyOfANewRowComesFromTheServer)
{
    const std::string table =
        makeTable(word("ID INT IDENTITY(1,1) PRIMARY KEY", "ID SERIAL PRIMARY KEY", "ID INTEGER PRIMARY KEY") +
                  ", CODE VARCHAR(10), NOTE VARCHAR(20)");
    connection->Execute("INSERT INTO " + table + " (CODE) VALUES ('a')");
    const auto rows = open("SELECT NOTE,CODE FROM " + table, ado::CursorType::OpenStatic, ado::LockType::Optimistic);
    for (const char* const code : {"b", "c"}) {
        rows->AddNew();
        rows->Fields().Item("CODE").Value(code);
        rows->Update();
    }
    EXPECT_EQ(convert::toLong(scalar("SELECT MAX(ID) FROM " + table)), 3);
    rows->MoveFirst();
    EXPECT_EQ(rows->Fields().Item("CODE").Value(), Variant{"a"});
    EXPECT_EQ(errorNumber([&] { rows->Delete(); }), errors::readOnlyRecordset);
}

TEST_P(OdbcEdits, KeyThatADefaultGivesIsKnownWhereTheServerTellsIt)
{
    const std::string table = makeTable("CODE VARCHAR(10) DEFAULT 'x' NOT NULL PRIMARY KEY, NOTE VARCHAR(20)");
    const auto rows = open("SELECT * FROM " + table, ado::CursorType::OpenKeyset, ado::LockType::Optimistic);
    rows->AddNew();
    rows->Fields().Item("NOTE").Value("new");
    rows->Update();
    EXPECT_EQ(scalar("SELECT CODE FROM " + table), Variant{"x"});
    EXPECT_EQ(rows->Fields().Item("NOTE").Value(), Variant{"new"});
    if (isTsql()) {
        EXPECT_TRUE(rows->Fields().Item("CODE").Value().isNull());
        expectError(errors::readOnlyRecordset, "whole key", [&] { rows->Delete(); });
        return;
    }
    EXPECT_EQ(rows->Fields().Item("CODE").Value(), Variant{"x"});
    rows->Delete();
    EXPECT_EQ(convert::toLong(scalar("SELECT COUNT(*) FROM " + table)), 0);
}

/// Each row of these stands for several rows of the table, or for none.
TEST_P(OdbcEdits, GroupsAndUnionsAreReadOnly)
{
    const std::string table = makeTable("ID INT NOT NULL PRIMARY KEY, CODE VARCHAR(10)");
    connection->Execute("INSERT INTO " + table + " VALUES (1, 'a')");
    for (const std::string& statement :
         {"SELECT DISTINCT CODE FROM " + table, "SELECT CODE, COUNT(*) AS N FROM " + table + " GROUP BY CODE",
          "SELECT CODE FROM " + table + " UNION SELECT CODE FROM " + table,
          "SELECT CODE FROM (SELECT CODE FROM " + table + " GROUP BY CODE) q"}) {
        const auto rows = open(statement, ado::CursorType::OpenStatic, ado::LockType::Optimistic);
        EXPECT_EQ(errorNumber([&] { rows->AddNew(); }), errors::readOnlyRecordset) << statement;
    }
}

TEST_P(OdbcEdits, UniqueIndexServesAsKey)
{
    const std::string table = makeTable("CODE VARCHAR(10) NOT NULL, NOTE VARCHAR(20)");
    connection->Execute("CREATE UNIQUE INDEX " + table + "_i ON " + table + " (CODE)");
    connection->Execute("INSERT INTO " + table + " VALUES ('a', 'one')");
    const auto rows = open("SELECT * FROM " + table, ado::CursorType::OpenKeyset, ado::LockType::Optimistic);
    rows->Fields().Item("NOTE").Value("two");
    rows->Update();
    EXPECT_EQ(scalar("SELECT NOTE FROM " + table), Variant{"two"});
}

TEST_P(OdbcEdits, ExpressionsAreReadAgainAfterAChange)
{
    const std::string table = makeTable("ID INT NOT NULL PRIMARY KEY, A INT");
    connection->Execute("INSERT INTO " + table + " VALUES (1, 10)");
    const auto rows =
        open("SELECT ID, A, A + 1 AS B FROM " + table, ado::CursorType::OpenKeyset, ado::LockType::Optimistic);
    rows->Fields().Item("A").Value(20);
    rows->Update();
    EXPECT_EQ(convert::toLong(rows->Fields().Item("B").Value()), 21);
    rows->Fields().Item("B").Value(5);
    EXPECT_EQ(errorNumber([&] { rows->Update(); }), errors::readOnlyRecordset);
}

TEST_P(OdbcEdits, ChangesAreCountedWhateverTheSessionReports)
{
    const std::string table = makeTable("ID INT NOT NULL PRIMARY KEY, A INT");
    connection->Execute("INSERT INTO " + table + " VALUES (1, 10)");
    const auto rows = open("SELECT * FROM " + table, ado::CursorType::OpenKeyset, ado::LockType::Optimistic);
    if (isTsql()) connection->Execute("SET NOCOUNT ON");
    connection->Execute("DELETE FROM " + table);
    EXPECT_EQ(errorNumber([&] { rows->Delete(); }), errors::rowDeleted);
}

TEST(OdbcServers, RowsThatCannotBeHeldAreRefused)
{
    const test::ScratchFolder folder;
    const auto connection = connectText(test::sqliteText((folder / "a.db").string()));
    connection->Execute("CREATE TABLE T (ID INTEGER PRIMARY KEY, A INT)");
    ado::Recordset rows;
    expectError(errors::readOnlyRecordset, "SQLite", [&] {
        rows.Open("SELECT * FROM T", connection, ado::CursorType::OpenDynamic, ado::LockType::Pessimistic);
    });
}

} // namespace tamarok::odbc
