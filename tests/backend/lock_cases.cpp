#include "backend_fixture.h"

namespace tamarok::ado::backend {

/// Two sessions: the fixture's holds rows, the other one has to wait a second at most.
class BackendLocks : public BackendTest {
protected:
    BackendLocks() : other{context->connect()}
    {
        other->CommandTimeout(1);
        fill(2);
    }
    void SetUp() override
    {
        if (const auto reason = quirk("no_row_locks")) GTEST_SKIP() << *reason;
    }

    std::shared_ptr<Recordset> hold(std::string_view rest)
    {
        return open(select("*", rest), CursorType::OpenDynamic, LockType::Pessimistic);
    }
    std::int64_t removeElsewhere(int whole)
    {
        return other->Execute("DELETE FROM " + table + " WHERE WHOLE = " + std::to_string(whole));
    }

    ConnectionRef other;
};

TEST_F(BackendLocks, RowStaysLockedUntilTheRecordsetCloses)
{
    const auto rows = hold("WHERE WHOLE = 1");
    const Error failure = failureOf([&] { removeElsewhere(1); });
    EXPECT_EQ(failure.number, errors::timeout);
    EXPECT_FALSE(failure.statement.empty());
    EXPECT_EQ(count("WHERE WHOLE = 1"), 1);
    EXPECT_EQ(removeElsewhere(2), 1) << "another row is free";
    rows->Close();
    EXPECT_EQ(removeElsewhere(1), 1);
}

TEST_F(BackendLocks, ChangeOfALockedRowWaitsToo)
{
    const auto rows = hold("WHERE WHOLE = 1");
    EXPECT_EQ(errorNumber([&] { other->Execute("UPDATE " + table + " SET AMOUNT = 1 WHERE WHOLE = 1"); }),
              errors::timeout);
    EXPECT_EQ(scalar(other, select("SHORT_TEXT", "WHERE WHOLE = 1")), Variant{"row 1"}) << "reading does not wait";
}

TEST_F(BackendLocks, LockFallsWhenTheRecordsetMoves)
{
    const auto rows = hold("ORDER BY WHOLE");
    rows->MoveNext();
    EXPECT_EQ(removeElsewhere(1), 1);
    EXPECT_EQ(errorNumber([&] { removeElsewhere(2); }), errors::timeout);
    rows->MoveNext();
    EXPECT_EQ(removeElsewhere(2), 1);
}

TEST_F(BackendLocks, LockFallsWithTheRecordsetAndWithTheConnection)
{
    hold("WHERE WHOLE = 1");
    EXPECT_EQ(removeElsewhere(1), 1);
    const auto rows = hold("WHERE WHOLE = 2");
    connection->Close();
    EXPECT_EQ(removeElsewhere(2), 1);
}

TEST_F(BackendLocks, SecondLockOnARowTimesOut)
{
    const auto rows = hold("WHERE WHOLE = 1");
    Recordset second;
    EXPECT_EQ(errorNumber([&] {
                  second.Open(select("*", "WHERE WHOLE = 1"), other, CursorType::OpenDynamic, LockType::Pessimistic);
              }),
              errors::timeout);
    EXPECT_EQ(second.State(), ObjectState::Closed);
    rows->Close();
    second.Open(select("*", "WHERE WHOLE = 1"), other, CursorType::OpenDynamic, LockType::Pessimistic);
    EXPECT_EQ(second.Fields().Item("WHOLE").Value(), Variant{1});
}

TEST_F(BackendLocks, RowInsertedAfterOpeningIsLockedByMoveFirst)
{
    const auto rows = open(select("*", words.rowLock + "WHERE ID IN (SELECT ID FROM " + table + " WHERE WHOLE = 9)"),
                           CursorType::OpenDynamic, LockType::Pessimistic);
    EXPECT_TRUE(rows->AtEOF());
    connection->Execute(words.noCount + insert("WHOLE", "9"));
    rows->MoveFirst();
    EXPECT_EQ(rows->Fields().Item("WHOLE").Value(), Variant{9});
    EXPECT_EQ(errorNumber([&] { removeElsewhere(9); }), errors::timeout);
    rows->Delete(1);
    rows->Close();
    EXPECT_EQ(count("WHERE WHOLE = 9"), 0);
}

TEST_F(BackendLocks, HolderMayWriteItsOwnRow)
{
    const auto rows = hold("WHERE WHOLE = 1");
    rows->Fields().Item("SHORT_TEXT").Value("mine");
    rows->Update();
    EXPECT_EQ(scalar(select("SHORT_TEXT", "WHERE WHOLE = 1")), Variant{"mine"});
    EXPECT_EQ(errorNumber([&] { removeElsewhere(1); }), errors::timeout) << "still locked after Update";
}

} // namespace tamarok::ado::backend
