#include "ado_fixture.h"

namespace tamarok::ado {

class LockingTest : public AdoTest {
protected:
    std::shared_ptr<Recordset> openLocked(CursorType cursor = CursorType::OpenDynamic)
    {
        return open(cursor, LockType::Pessimistic);
    }
};

TEST_F(LockingTest, LocksTheRowItStandsOnAndNoOther)
{
    const auto rows = openLocked();
    EXPECT_EQ(database->takeLog(), (Log{std::string{"open "} + query, "lock 1"}));
    rows->MoveNext();
    EXPECT_EQ(database->takeLog(), (Log{"unlock", "lock 2"}));
    rows->Move(1);
    EXPECT_EQ(database->takeLog(), (Log{"unlock", "lock 3"}));
    rows->MovePrevious();
    EXPECT_EQ(database->takeLog(), (Log{"unlock", "lock 2"}));
    rows->MoveLast();
    EXPECT_EQ(database->takeLog(), (Log{"unlock", "lock 3"}));
    rows->MoveNext();
    EXPECT_EQ(database->takeLog(), Log{"unlock"});
    rows->MoveFirst();
    EXPECT_EQ(database->takeLog(), (Log{"restart", "lock 1"}));
    rows->MoveFirst();
    EXPECT_EQ(database->takeLog(), (Log{"unlock", "restart", "lock 1"}));
    rows->Close();
    EXPECT_EQ(database->takeLog(), (Log{"unlock", "close cursor"}));
}

TEST_F(LockingTest, DestructionGivesUpTheLock)
{
    openLocked();
    EXPECT_EQ(database->log, (Log{std::string{"open "} + query, "lock 1", "unlock", "close cursor"}));
}

TEST_F(LockingTest, ClosingTheConnectionGivesUpTheLockFirst)
{
    const auto rows = openLocked();
    database->takeLog();
    connection->Close();
    EXPECT_EQ(database->log, (Log{"unlock", "close cursor", "end session"}));
}

TEST_F(LockingTest, BookmarkAbsolutePositionAndGetRowsMoveTheLock)
{
    const auto rows = openLocked(CursorType::OpenKeyset);
    const Variant first = rows->Bookmark();
    rows->AbsolutePosition(2);
    database->takeLog();
    rows->Bookmark(first);
    EXPECT_EQ(database->takeLog(), (Log{"unlock", "lock 1"}));
    rows->AbsolutePosition(3);
    EXPECT_EQ(database->takeLog(), (Log{"unlock", "lock 3"}));
    rows->AbsolutePosition(1);
    database->takeLog();
    rows->GetRows(2);
    EXPECT_EQ(database->takeLog(), (Log{"unlock", "lock 3"}));
}

TEST_F(LockingTest, ForwardOnlyLocksToo)
{
    const auto rows = openLocked(CursorType::OpenForwardOnly);
    rows->MoveNext();
    EXPECT_EQ(errorNumber([&] { rows->MovePrevious(); }), errors::badCursorOperation);
    EXPECT_EQ(errorNumber([&] { rows->MoveFirst(); }), errors::badCursorOperation);
    EXPECT_EQ(database->log, (Log{std::string{"open "} + query, "lock 1", "unlock", "lock 2"}));
}

TEST_F(LockingTest, OptimisticAndReadOnlyTakeNoLocks)
{
    for (const LockType lock : {LockType::ReadOnly, LockType::Optimistic, LockType::BatchOptimistic})
        open(CursorType::OpenKeyset, lock)->MoveNext();
    EXPECT_EQ(database->log, (Log(3, std::string{"open "} + query)));
}

TEST_F(LockingTest, EmptyRecordsetLocksNothing)
{
    species->rows.clear();
    const auto rows = openLocked();
    EXPECT_EQ(database->log, Log{std::string{"open "} + query});
    species->rows[7] = {7, "Kiefer", 70.0};
    rows->MoveFirst();
    EXPECT_EQ(database->log.back(), "lock 7");
}

TEST_F(LockingTest, RowLockedByOthersFailsOpen)
{
    species->lockedByOthers = {1};
    Recordset rows;
    const Error failure =
        failureOf([&] { rows.Open(query, connection, CursorType::OpenDynamic, LockType::Pessimistic); });
    EXPECT_EQ(failure.number, errors::timeout);
    EXPECT_EQ(failure.statement, query);
    EXPECT_EQ(rows.State(), ObjectState::Closed);
    EXPECT_EQ(database->openCursors, 0);
}

TEST_F(LockingTest, MoveToARowLockedByOthersLeavesNoCurrentRowAndCanBeRepeated)
{
    const auto rows = openLocked(CursorType::OpenKeyset);
    species->lockedByOthers = {2};
    database->takeLog();
    EXPECT_EQ(errorNumber([&] { rows->MoveNext(); }), errors::timeout);
    EXPECT_EQ(database->takeLog(), (Log{"unlock", "lock 2"}));
    EXPECT_EQ(errorNumber([&] { id(*rows); }), errors::noCurrentRecord);
    EXPECT_EQ(rows->AbsolutePosition(), positionUnknown);
    EXPECT_FALSE(rows->AtEOF() || rows->AtBOF());
    EXPECT_EQ(errorNumber([&] { rows->MoveNext(); }), errors::timeout);
    species->lockedByOthers.clear();
    rows->MoveNext();
    EXPECT_EQ(id(*rows), Variant{2});
    rows->Close();
}

TEST_F(LockingTest, GivesTheValuesThatStandUnderTheLock)
{
    species->beforeLock = [&](std::int64_t key) { species->rows.at(key)[1] = "changed while waiting"; };
    EXPECT_EQ(openLocked()->Fields().Item("NAME").Value(), Variant{"changed while waiting"});
}

TEST_F(LockingTest, PassesOverARowThatWentWhileItsLockWasWaitedFor)
{
    species->beforeLock = [&](std::int64_t key) {
        if (key == 1) species->rows.erase(key);
    };
    EXPECT_EQ(id(*openLocked()), Variant{2});
}

TEST_F(LockingTest, PassesOverARowThatTheBackEndFindsGone)
{
    species->goneForLocks = {1, 2};
    const auto rows = openLocked(CursorType::OpenKeyset);
    EXPECT_EQ(id(*rows), Variant{3});
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    species->goneForLocks = {1, 2, 3};
    const auto none = openLocked();
    EXPECT_TRUE(none->AtEOF() && none->AtBOF());
}

TEST_F(LockingTest, RowsThatCannotBeLockedAreRefused)
{
    species->updatable = false;
    EXPECT_EQ(errorNumber([&] { openLocked(); }), errors::readOnlyRecordset);
    EXPECT_EQ(database->openCursors, 0);
}

TEST_F(LockingTest, CloneTakesNoLocksAndIsReadOnly)
{
    const auto rows = openLocked();
    database->takeLog();
    const auto clone = rows->Clone();
    clone->MoveNext();
    EXPECT_TRUE(database->log.empty());
    EXPECT_EQ(errorNumber([&] { clone->Delete(); }), errors::readOnlyRecordset);
    rows->Close();
    EXPECT_EQ(database->log, Log{"unlock"});
    clone->Close();
}

TEST_F(LockingTest, DeletionOfTheLockedRowEndsItsLock)
{
    const auto rows = openLocked();
    database->takeLog();
    rows->Delete(1);
    EXPECT_EQ(database->takeLog(), (Log{"delete 1", "unlock"}));
    rows->Close();
    EXPECT_EQ(database->takeLog(), Log{"close cursor"});
}

TEST_F(LockingTest, NewRowIsLockedOnceItIsSaved)
{
    const auto rows = openLocked(CursorType::OpenKeyset);
    database->takeLog();
    rows->AddNew();
    rows->Fields().Item("NAME").Value("Kiefer");
    EXPECT_TRUE(database->log.empty());
    rows->Update();
    EXPECT_EQ(database->log, (Log{"insert 1", "unlock", "lock 4"}));
}

} // namespace tamarok::ado
