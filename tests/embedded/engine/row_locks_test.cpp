#include <chrono>

#include "child.h"
#include "row_locks.h"
#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

class RowLocksTest : public testing::Test {
protected:
    RowLocksTest()
    {
        run(connection_,
            "CREATE TABLE LOCK (ID INT IDENTITY(1,1) PRIMARY KEY, ID_USERS INT, LOGIN NVARCHAR(30)) "
            "CREATE TABLE OTHER (ID INT PRIMARY KEY) "
            "INSERT INTO LOCK (ID_USERS,LOGIN) VALUES (1,'a') INSERT INTO LOCK (ID_USERS,LOGIN) VALUES (2,'b') "
            "INSERT INTO LOCK (ID_USERS,LOGIN) VALUES (3,'c') INSERT INTO OTHER (ID) VALUES (1)");
    }

    std::string file() const { return (folder_ / "a.db").string(); }
    std::vector<std::string> holding(int id) const
    {
        std::string text = "SELECT * FROM LOCK WITH (ROWLOCK) WHERE ID = ";
        text.append(std::to_string(id));
        return {"hold", file(), text};
    }

    void expectTimeout(std::string_view text)
    {
        const auto before = std::chrono::steady_clock::now();
        const Error error = failureOf([&] { run(connection_, text, 1); });
        const auto waited = std::chrono::steady_clock::now() - before;
        EXPECT_EQ(error.number, errors::timeout) << error.description;
        EXPECT_EQ(error.nativeError, -2);
        EXPECT_EQ(error.sqlState, "HYT00");
        EXPECT_EQ(error.statement, text);
        EXPECT_NE(error.description.find("Timeout expired"), std::string::npos) << error.description;
        EXPECT_GE(waited, std::chrono::seconds{1}); // the whole time-out
    }

    Folder folder_;
    ado::ConnectionRef connection_ = create(folder_ / "a.db");
};

TEST_F(RowLocksTest, aLiveHolderKeepsItsRow)
{
    Child child{holding(1)};
    ASSERT_EQ(child.line(), "held");
    expectTimeout("DELETE FROM LOCK WHERE ID = 1");
    expectTimeout("UPDATE LOCK SET LOGIN = 'x' WHERE ID = 1");
    expectTimeout("DELETE FROM LOCK");
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM LOCK"), Variant{3}) << "reading is free";
    EXPECT_EQ(run(connection_, "UPDATE LOCK SET LOGIN = 'x' WHERE ID = 2", 1), 1) << "so are other rows";
    EXPECT_EQ(run(connection_, "DELETE FROM OTHER WHERE ID = 1", 1), 1) << "and other tables";
    EXPECT_EQ(run(connection_, "INSERT INTO LOCK (ID_USERS) VALUES (4)", 1), 1) << "and new rows";
    EXPECT_EQ(run(connection_, "DELETE FROM LOCK WHERE ID = 1 AND ID_USERS = 99", 1), 0);
}

TEST_F(RowLocksTest, aKilledHolderLetsGoAtOnce)
{
    Child child{holding(1)};
    ASSERT_EQ(child.line(), "held");
    child.kill();
    EXPECT_EQ(run(connection_, "DELETE FROM LOCK WHERE ID = 1", 1), 1);
}

TEST_F(RowLocksTest, aStoppedHolderCountsAsAlive)
{
    Child child{holding(1)};
    ASSERT_EQ(child.line(), "held");
    child.stop();
    expectTimeout("DELETE FROM LOCK WHERE ID = 1");
    EXPECT_EQ(run(connection_, "DELETE FROM LOCK WHERE ID = 2", 1), 1);
    child.kill();
    EXPECT_EQ(run(connection_, "DELETE FROM LOCK WHERE ID = 1", 1), 1);
}

TEST_F(RowLocksTest, aClosedConnectionLetsGo)
{
    Child child{holding(1)};
    ASSERT_EQ(child.line(), "held");
    child.tell("close");
    ASSERT_EQ(child.line(), "closed");
    EXPECT_EQ(run(connection_, "DELETE FROM LOCK WHERE ID = 1", 1), 1);
}

TEST_F(RowLocksTest, aWaitingStatementGoesOnWhenTheHolderDies)
{
    Child holder{holding(1)};
    ASSERT_EQ(holder.line(), "held");
    Child waiter{{"repeat", file(), "1 DELETE FROM LOCK WHERE ID = 1"}};
    ASSERT_EQ(waiter.line(), "ready");
    waiter.tell("go");
    // The write lock is free while it waits.
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(run(connection_, "UPDATE LOCK SET LOGIN = 'x' WHERE ID = 2", 1), 1);
    }
    holder.kill();
    EXPECT_EQ(waiter.line(), "done");
    EXPECT_EQ(waiter.wait(), 0);
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM LOCK WHERE ID = 1"), Variant{0});
}

TEST_F(RowLocksTest, twoConnectionsOfOneProcessHinderEachOther)
{
    const auto holder = connect(file());
    auto cursor = openEditable(holder, "SELECT * FROM LOCK WHERE ID = 1");
    ASSERT_TRUE(cursor->next());
    cursor->lockRow(cursor->rowKey());
    expectTimeout("DELETE FROM LOCK WHERE ID = 1");
    EXPECT_EQ(run(holder, "UPDATE LOCK SET LOGIN = 'own' WHERE ID = 1", 1), 1) << "not one's own";
    cursor->unlockRow();
    EXPECT_EQ(run(connection_, "UPDATE LOCK SET LOGIN = 'x' WHERE ID = 1", 1), 1);
    cursor->lockRow(1);
    cursor.reset();
    EXPECT_EQ(run(connection_, "DELETE FROM LOCK WHERE ID = 1", 1), 1) << "the cursor's end lets go";
}

TEST_F(RowLocksTest, theLockFollowsTheCursor)
{
    const auto holder = connect(file());
    const auto cursor = openEditable(holder, "SELECT * FROM LOCK");
    cursor->lockRow(1);
    cursor->lockRow(2);
    EXPECT_EQ(run(connection_, "UPDATE LOCK SET LOGIN = 'x' WHERE ID = 1", 1), 1);
    expectTimeout("UPDATE LOCK SET LOGIN = 'x' WHERE ID = 2");
    EXPECT_EQ(failureOf([&] { cursor->lockRow(99); }).number, static_cast<std::int32_t>(0x80040E23U));
    EXPECT_EQ(run(connection_, "UPDATE LOCK SET LOGIN = 'x' WHERE ID = 2", 1), 1);
}

TEST_F(RowLocksTest, twoCursorsOfOneConnectionShareALock)
{
    const auto holder = connect(file());
    auto first = openEditable(holder, "SELECT * FROM LOCK");
    auto second = openEditable(holder, "SELECT * FROM LOCK");
    first->lockRow(1);
    second->lockRow(1);
    first.reset();
    expectTimeout("DELETE FROM LOCK WHERE ID = 1");
    second.reset();
    EXPECT_EQ(run(connection_, "DELETE FROM LOCK WHERE ID = 1", 1), 1);
}

TEST_F(RowLocksTest, aSecondLockWaitsForTheFirst)
{
    Child child{holding(1)};
    ASSERT_EQ(child.line(), "held");
    const auto cursor = openEditable(connection_, "SELECT * FROM LOCK WHERE ID = 1", 1);
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(failureOf([&] { cursor->lockRow(1); }).number, errors::timeout);
    EXPECT_EQ(failureOf([&] {
                  cursor->updateRow(1, std::vector<ado::Assignment>{{2, Variant{"x"}}});
              }).number,
              errors::timeout);
    EXPECT_EQ(failureOf([&] { cursor->deleteRow(1); }).number, errors::timeout);
    child.kill();
    cursor->lockRow(1);
    cursor->deleteRow(1);
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM LOCK"), Variant{2});
}

TEST_F(RowLocksTest, aLockHoldsInsideTransactionsToo)
{
    Child child{holding(1)};
    ASSERT_EQ(child.line(), "held");
    connection_->session().begin();
    run(connection_, "UPDATE LOCK SET LOGIN = 'x' WHERE ID = 2", 1);
    expectTimeout("DELETE FROM LOCK WHERE ID = 1");
    connection_->session().commit();
    EXPECT_EQ(valueOf(connection_, "SELECT LOGIN FROM LOCK WHERE ID = 2"), Variant{"x"});
}

TEST_F(RowLocksTest, theLockFileMayBeDeletedWhileUnused)
{
    {
        const auto cursor = openEditable(connection_, "SELECT * FROM LOCK");
        cursor->lockRow(1);
    }
    ASSERT_TRUE(std::filesystem::remove(folder_ / "a.db-locks"));
    Child child{holding(1)};
    ASSERT_EQ(child.line(), "held");
    expectTimeout("DELETE FROM LOCK WHERE ID = 1");
}

TEST_F(RowLocksTest, heldSpansAreFoundAllAndExactly)
{
    RowLocks mine{file()};
    RowLocks other{file()};
    for (const std::int64_t row : {1, 2, 3, 7, 100, 4000000}) {
        ASSERT_TRUE(other.tryLock(RowLocks::position("LOCK", row)));
    }
    ASSERT_TRUE(other.tryLock(RowLocks::position("OTHER", 5)));
    const auto held = mine.heldByOthers("lock");
    for (const std::int64_t row : {0, 1, 2, 3, 4, 6, 7, 8, 99, 100, 101, 4000000, 4000001}) {
        const bool found = std::any_of(held.begin(), held.end(), [row](const RowLocks::Span& span) {
            return span.contains(RowLocks::position("LOCK", row));
        });
        const bool expected = row == 1 || row == 2 || row == 3 || row == 7 || row == 100 || row == 4000000;
        EXPECT_EQ(found, expected) << row;
    }
    EXPECT_TRUE(other.heldByOthers("LOCK").empty());
    EXPECT_FALSE(mine.tryLock(RowLocks::position("LOCK", 7)));
}

TEST_F(RowLocksTest, aDatabaseInMemoryKnowsNoOthers)
{
    const auto alone = connectInMemory();
    run(alone, "CREATE TABLE T (ID INT PRIMARY KEY) INSERT INTO T (ID) VALUES (1)");
    const auto cursor = openEditable(alone, "SELECT ID FROM T");
    cursor->lockRow(1);
    EXPECT_EQ(run(alone, "DELETE FROM T", 1), 1);
}

} // namespace
} // namespace tamarok::embedded::test
