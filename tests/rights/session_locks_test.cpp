#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "rights/workstation.h"
#include "support/errors.h"

#include "tamarok/comm_lock.h"

namespace tamarok {
namespace {

using test::failureOf;
using test::ShownMessage;
using Texts = std::vector<std::string>;

const std::string stampStatement = "SELECT CONVERT(varchar,GETDATE(),121)";
const std::string stamp = "2024-05-17 08:15:00.123";
const std::string held = "lock open SELECT * FROM LOCK WITH (ROWLOCK) WHERE ID IN (SELECT ID FROM LOCK WHERE ID_USERS ="
                         " 7 AND LOGIN = '2024-05-17 08:15:00.123')";
const std::string sessionRows = "SELECT ID FROM LOCK WHERE ID_USERS = 7 AND LOGIN IS NOT NULL";
const std::string objectRows = "SELECT ID FROM LOCK WHERE LOGIN IS NULL AND ID_USERS = 7";
const std::string insertSession =
    "lock execute SET NOCOUNT ON\r\nINSERT INTO LOCK (ID_USERS,LOGIN) VALUES (7,'2024-05-17 08:15:00.123')";
const std::string ownName = "SELECT NAME FROM USERS WHERE ID = 7";

class SessionLocks : public ::testing::Test {
protected:
    SessionLocks() { at.database.addValue(stampStatement, "", stamp); }

    bool logIn()
    {
        // The session row is there from the second run of the held statement on.
        const std::string statement = held.substr(std::string{"lock open "}.size());
        at.database.addAnswer(statement, {"ID"}, {});
        at.database.addValue(statement, "ID", 31);
        return lock.LogIn(rsLock, at.session, at.dbLock);
    }
    void expectTimeoutsRestored() const
    {
        EXPECT_EQ(at.session.db_ADO->CommandTimeout(), 41);
        EXPECT_EQ(at.dbLock->CommandTimeout(), 17);
    }
    /// Sent with that time-out.
    std::int32_t timeoutOf(const std::string& what) const { return at.database.find(what).timeoutSeconds; }

    test::Workstation at;
    ado::Recordset rsLock;
    Comm_Lock lock;
};

TEST_F(SessionLocks, SingleUserAndOracleOperationSendNothing)
{
    for (const bool oracle : {false, true}) {
        at.session.bolOracle = oracle;
        at.session.bolLan = oracle;
        EXPECT_TRUE(lock.LogIn(rsLock, at.session, at.dbLock));
        EXPECT_TRUE(lock.LockOn("LISTE", "'A'", at.session));
        EXPECT_FALSE(lock.LockOff("LISTE", "'A'", at.session));
        EXPECT_EQ(rsLock.State(), ado::ObjectState::Closed);
    }
    at.session.bolLan = false;
    EXPECT_TRUE(lock.LockRechnung("R-1", "R", at.session));
    lock.UnLockRechnung("R-1", "R", at.session);
    EXPECT_EQ(at.sent(), Texts{});
    EXPECT_TRUE(at.messages->shown.empty());
    expectTimeoutsRestored();
}

TEST_F(SessionLocks, SingleUserOperationNeedsNoConnection)
{
    at.session.bolLan = false;
    at.session.db_ADO = nullptr;
    EXPECT_TRUE(lock.LogIn(rsLock, at.session, nullptr));
    EXPECT_TRUE(lock.LockOn("LISTE", "'A'", at.session));
    EXPECT_FALSE(lock.LockOff("LISTE", "'A'", at.session));
}

TEST_F(SessionLocks, FirstLogin)
{
    EXPECT_TRUE(logIn());
    EXPECT_EQ(at.sent(), (Texts{"lock open " + stampStatement, held, "main open " + sessionRows,
                                "main open " + objectRows, insertSession, "lock restart", "lock lock 1"}));
    EXPECT_EQ(timeoutOf("lock open " + stampStatement), 17);
    EXPECT_EQ(timeoutOf(held), 5);
    EXPECT_EQ(timeoutOf(insertSession), 5);
    EXPECT_EQ(timeoutOf("main open " + sessionRows), 41);
    const test::Call& holding = at.database.find(held);
    EXPECT_EQ(holding.cursorType, ado::CursorType::OpenDynamic);
    EXPECT_EQ(holding.lockType, ado::LockType::Pessimistic);
    for (const std::string& reading :
         {"lock open " + stampStatement, "main open " + sessionRows, "main open " + objectRows}) {
        EXPECT_EQ(at.database.find(reading).cursorType, ado::CursorType::OpenForwardOnly) << reading;
        EXPECT_EQ(at.database.find(reading).lockType, ado::LockType::ReadOnly) << reading;
    }
    EXPECT_EQ(rsLock.Fields().Item("ID").Value(), Variant{31});
    EXPECT_TRUE(at.messages->shown.empty());
    expectTimeoutsRestored();
}

TEST_F(SessionLocks, LoginClearsDeadSessionsAndObjectLocks)
{
    at.database.addAnswer(sessionRows, {"ID"}, {{3}, {4}});
    at.database.addAnswer(objectRows, {"ID"}, {{8}, {9}});
    EXPECT_TRUE(logIn());
    EXPECT_EQ(at.sent(),
              (Texts{"lock open " + stampStatement, held, "main open " + sessionRows,
                     "lock execute DELETE FROM LOCK WHERE ID = 3", "lock execute DELETE FROM LOCK WHERE ID = 4",
                     "main open " + objectRows, "lock execute DELETE FROM LOCK WHERE ID = 8",
                     "lock execute DELETE FROM LOCK WHERE ID = 9", insertSession, "lock restart", "lock lock 1"}));
    EXPECT_EQ(timeoutOf("lock execute DELETE FROM LOCK WHERE ID = 3"), 5);
    expectTimeoutsRestored();
}

TEST_F(SessionLocks, SecondLoginOfAUserIsRefusedAndStillClearsHisObjectLocks)
{
    at.database.addAnswer(sessionRows, {"ID"}, {{3}, {4}});
    at.database.addAnswer(objectRows, {"ID"}, {{8}});
    at.database.addValue(ownName, "NAME", "HUBER");
    at.database.fail("lock execute DELETE FROM LOCK WHERE ID = 3");
    EXPECT_FALSE(logIn());
    EXPECT_EQ(at.sent(), (Texts{"lock open " + stampStatement, held, "main open " + sessionRows,
                                "lock execute DELETE FROM LOCK WHERE ID = 3", "main open " + objectRows,
                                "lock execute DELETE FROM LOCK WHERE ID = 8", "main open " + ownName}));
    EXPECT_EQ(at.messages->shown, (std::vector<ShownMessage>{{"T4887 HUBER T4888\r\nT4889", 48, "Tamarok"}}));
    EXPECT_EQ(rsLock.State(), ado::ObjectState::Open) << "on its empty row set";
    EXPECT_TRUE(rsLock.AtEOF());
    expectTimeoutsRestored();
}

TEST_F(SessionLocks, AnyFailureWhileClearingRefusesTheLogin)
{
    at.database.addAnswer(objectRows, {"ID"}, {{8}, {9}});
    at.database.fail("lock execute DELETE FROM LOCK WHERE ID = 8");
    EXPECT_FALSE(logIn());
    EXPECT_EQ(at.messages->shown, (std::vector<ShownMessage>{{"T4887  T4888\r\nT4889", 48, "Tamarok"}}))
        << "the user has no row";
    EXPECT_EQ(timeoutOf("lock execute DELETE FROM LOCK WHERE ID = 9"), 5) << "the rest is deleted all the same";
    expectTimeoutsRestored();
}

TEST_F(SessionLocks, UnreadableRowsRefuseTheLoginToo)
{
    at.database.fail("main open " + sessionRows);
    at.database.fail("main open " + ownName);
    EXPECT_FALSE(logIn());
    EXPECT_EQ(at.sent(), (Texts{"lock open " + stampStatement, held, "main open " + sessionRows,
                                "main open " + objectRows, "main open " + ownName}));
    EXPECT_EQ(at.messages->shown, (std::vector<ShownMessage>{{"T4887  T4888\r\nT4889", 48, "Tamarok"}}));
    expectTimeoutsRestored();
}

TEST_F(SessionLocks, LoginAnswersTrueThoughItsRowCouldNotBeWrittenOrHeld)
{
    at.database.fail(insertSession);
    EXPECT_TRUE(logIn());
    EXPECT_EQ(at.sent().back(), "lock lock 1") << "MoveFirst is tried all the same";
    rsLock.Close();
    at.database.fail("lock restart");
    EXPECT_TRUE(logIn());
    EXPECT_TRUE(at.messages->shown.empty());
    expectTimeoutsRestored();
}

TEST_F(SessionLocks, FailuresBeforeTheProbingFailTheLogin)
{
    at.database.fail(held);
    EXPECT_EQ(failureOf([&] { logIn(); }).number, errors::timeout);
    EXPECT_EQ(at.sent(), (Texts{"lock open " + stampStatement, held}));
    expectTimeoutsRestored();
    at.database.fail("lock open " + stampStatement);
    EXPECT_EQ(failureOf([&] { logIn(); }).number, errors::timeout);
    expectTimeoutsRestored();
    EXPECT_EQ(failureOf([&] { lock.LogIn(rsLock, at.session, nullptr); }).number, errors::objectNotSet);
    EXPECT_TRUE(at.messages->shown.empty());
}

TEST_F(SessionLocks, LogOutDeletesTheSessionRowAndCloses)
{
    logIn();
    at.database.clearRecord();
    EXPECT_FALSE(lock.LogOut(rsLock, "False"));
    EXPECT_EQ(rsLock.State(), ado::ObjectState::Open);
    EXPECT_EQ(at.sent(), Texts{});
    EXPECT_FALSE(lock.LogOut(rsLock, "-1"));
    EXPECT_EQ(at.sent(), (Texts{"lock delete 1", "lock unlock", "lock close cursor"}));
    EXPECT_EQ(rsLock.State(), ado::ObjectState::Closed);
    EXPECT_FALSE(lock.LogOut(rsLock, "True")) << "a second one fails inside and says nothing";
}

TEST_F(SessionLocks, LogOutClosesThoughTheRowCannotBeDeleted)
{
    logIn();
    at.database.fail("lock delete 1");
    EXPECT_FALSE(lock.LogOut(rsLock, "True"));
    EXPECT_EQ(rsLock.State(), ado::ObjectState::Closed);
}

TEST_F(SessionLocks, LogOutNeedsABoolean)
{
    EXPECT_EQ(failureOf([&] { lock.LogOut(rsLock, "perhaps"); }).number, errors::typeMismatch);
    EXPECT_EQ(failureOf([&] { lock.LogOut(rsLock, ""); }).number, errors::typeMismatch);
}

const std::string ownLock = "SELECT ID FROM LOCK WHERE ID_USERS = 7 AND BELEGE = 12";
const std::string insertLock = "main execute INSERT INTO LOCK (ID_USERS,BELEGE) VALUES (7,12)";
const std::string others = "SELECT ID_USERS FROM LOCK WHERE ID_USERS <> 7 AND BELEGE = 12 GROUP BY ID_USERS";

std::string sessionsOf(int holder)
{
    return "SELECT ID FROM LOCK WHERE ID_USERS = " + std::to_string(holder) + " AND LOGIN IS NOT NULL";
}
std::string rowsOf(int holder)
{
    return "SELECT ID FROM LOCK WHERE ID_USERS = " + std::to_string(holder);
}
std::string deletion(int row)
{
    return "main execute DELETE FROM LOCK WHERE ID = " + std::to_string(row);
}

class ObjectLocks : public SessionLocks {
protected:
    /// The user's own row, which only the second look finds.
    void ownRowIs(int id)
    {
        at.database.addAnswer(ownLock, {"ID"}, {});
        at.database.addValue(ownLock, "ID", id);
    }
    bool lockOn() { return lock.LockOn("BELEGE", "12", at.session); }
};

TEST_F(ObjectLocks, FreeObject)
{
    EXPECT_TRUE(lockOn());
    EXPECT_EQ(at.sent(), (Texts{"main open " + ownLock, insertLock, "main open " + others}));
    for (const test::Call& call : at.database.calls) {
        EXPECT_EQ(call.timeoutSeconds, 41) << call.what;
        EXPECT_EQ(call.cursorType, ado::CursorType::OpenForwardOnly);
        EXPECT_EQ(call.lockType, ado::LockType::ReadOnly);
    }
}

TEST_F(ObjectLocks, ObjectHeldBySelfIsGrantedWithoutAnotherRow)
{
    at.database.addValue(ownLock, "ID", 5);
    EXPECT_TRUE(lockOn());
    EXPECT_EQ(at.sent(), Texts{"main open " + ownLock});
}

TEST_F(ObjectLocks, LiveHolderRefuses)
{
    ownRowIs(50);
    at.database.addAnswer(others, {"ID_USERS"}, {{8}, {9}});
    at.database.addValue(sessionsOf(8), "ID", 20);
    at.database.fail(deletion(20));
    at.database.addValue("SELECT NAME FROM USERS WHERE ID = 8", "NAME", "EDER");
    at.database.addValue("SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = 12", "BELEGNUMMER", "B-77");
    EXPECT_FALSE(lockOn());
    EXPECT_EQ(at.sent(), (Texts{"main open " + ownLock, insertLock, "main open " + others, "main open " + sessionsOf(8),
                                deletion(20), "main open " + ownLock, deletion(50),
                                "main open SELECT NAME FROM USERS WHERE ID = 8",
                                "main open SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = 12"}))
        << "the second holder is not tested";
    EXPECT_EQ(at.messages->shown, (std::vector<ShownMessage>{{"T4890 'B-77' T4892 EDER T4893", 48, "Tamarok"}}));
    const std::vector<std::int32_t> expected{41, 41, 41, 5, 5, 5, 5, 5, 41};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(at.database.calls[i].timeoutSeconds, expected[i]) << at.database.calls[i].what;
    expectTimeoutsRestored();
}

TEST_F(ObjectLocks, DeadSessionLosesAllItsRows)
{
    at.database.addAnswer(others, {"ID_USERS"}, {{8}});
    at.database.addAnswer(sessionsOf(8), {"ID"}, {{20}, {21}});
    at.database.addAnswer(rowsOf(8), {"ID"}, {{22}, {23}});
    EXPECT_TRUE(lockOn());
    EXPECT_EQ(at.sent(), (Texts{"main open " + ownLock, insertLock, "main open " + others, "main open " + sessionsOf(8),
                                deletion(20), "main open " + rowsOf(8), deletion(22), deletion(23), deletion(21),
                                "main open " + rowsOf(8), deletion(22), deletion(23)}));
    EXPECT_TRUE(at.messages->shown.empty());
    expectTimeoutsRestored();
}

TEST_F(ObjectLocks, DeadSessionBesideALiveOneOfTheSameHolder)
{
    ownRowIs(50);
    at.database.addAnswer(others, {"ID_USERS"}, {{8}});
    at.database.addAnswer(sessionsOf(8), {"ID"}, {{20}, {21}});
    at.database.fail(deletion(21));
    at.database.addValue("SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = 12", "BELEGNUMMER", Null{});
    EXPECT_FALSE(lockOn());
    EXPECT_EQ(at.messages->shown, (std::vector<ShownMessage>{{"T4890 '' T4892  T4893", 48, "Tamarok"}}))
        << "no number, no name";
}

TEST_F(ObjectLocks, HolderWithoutSessionAndNullHolderAreNoConflict)
{
    at.database.addAnswer(others, {"ID_USERS"}, {{Null{}}, {8}, {9}});
    EXPECT_TRUE(lockOn());
    EXPECT_EQ(at.sent(), (Texts{"main open " + ownLock, insertLock, "main open " + others, "main open " + sessionsOf(8),
                                "main open " + sessionsOf(9)}));
}

TEST_F(ObjectLocks, LaterHolderIsTestedAfterADeadOne)
{
    ownRowIs(50);
    at.database.addAnswer(others, {"ID_USERS"}, {{8}, {9}});
    at.database.addValue(sessionsOf(8), "ID", 20);
    at.database.addValue(sessionsOf(9), "ID", 30);
    at.database.fail(deletion(30));
    at.database.addValue("SELECT NAME FROM USERS WHERE ID = 9", "NAME", "PICHLER");
    at.database.addValue("SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = 12", "BELEGNUMMER", "B-77");
    EXPECT_FALSE(lockOn());
    ASSERT_EQ(at.messages->shown.size(), 1U);
    EXPECT_EQ(at.messages->shown[0].text, "T4890 'B-77' T4892 PICHLER T4893");
}

TEST_F(ObjectLocks, FailuresWithinTheProbeAreNoErrors)
{
    ownRowIs(50);
    at.database.addAnswer(others, {"ID_USERS"}, {{8}, {9}});
    at.database.fail("main open " + sessionsOf(8));
    at.database.addValue(sessionsOf(9), "ID", 30);
    at.database.fail(deletion(30));
    at.database.fail(deletion(50));
    at.database.fail("main open SELECT NAME FROM USERS WHERE ID = 9");
    at.database.addValue("SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = 12", "BELEGNUMMER", "B-77");
    EXPECT_FALSE(lockOn());
    EXPECT_EQ(at.messages->shown, (std::vector<ShownMessage>{{"T4890 'B-77' T4892  T4893", 48, "Tamarok"}}));
    expectTimeoutsRestored();
}

TEST_F(ObjectLocks, FailuresOutsideTheProbeReachTheCaller)
{
    at.database.fail("main open " + others);
    EXPECT_EQ(failureOf([&] { lockOn(); }).number, errors::timeout);
    at.database.fail(insertLock);
    EXPECT_EQ(failureOf([&] { lockOn(); }).number, errors::timeout);
    EXPECT_EQ(at.sent().back(), insertLock);
    at.database.fail("main open " + ownLock);
    EXPECT_EQ(failureOf([&] { lockOn(); }).number, errors::timeout);
    expectTimeoutsRestored();
    at.session.db_ADO = nullptr;
    EXPECT_EQ(failureOf([&] { lockOn(); }).number, errors::objectNotSet);
    EXPECT_EQ(failureOf([&] { lock.LockOff("", "", at.session); }).number, errors::objectNotSet);
}

TEST_F(ObjectLocks, LockOffReleasesEveryObjectLock)
{
    const std::string all = "SELECT ID FROM LOCK WHERE ID_USERS = 7 AND LOGIN IS NULL ";
    at.database.addAnswer(all, {"ID"}, {{4}, {6}});
    EXPECT_FALSE(lock.LockOff("no column", "'", at.session));
    EXPECT_EQ(at.sent(), (Texts{"main open " + all, deletion(4), deletion(6)}));
    at.database.fail(deletion(4));
    EXPECT_EQ(failureOf([&] { lock.LockOff("", "", at.session); }).number, errors::timeout);
}

const std::string lists = "SELECT DISTINCT LISTE FROM LOGS WHERE ID_LOG IN (SELECT ID_LOG FROM LOGS_RECH WHERE "
                          "A1_NAME = 'R-24')";
const std::string releaseAll = "main open SELECT ID FROM LOCK WHERE ID_USERS = 7 AND LOGIN IS NULL ";

std::string lookFor(const std::string& condition)
{
    return "main open SELECT ID FROM LOCK WHERE ID_USERS = 7 AND " + condition;
}
std::string enter(const std::string& column, const std::string& key)
{
    return "main execute INSERT INTO LOCK (ID_USERS," + column + ") VALUES (7," + key + ")";
}
std::string othersWith(const std::string& condition)
{
    return "SELECT ID_USERS FROM LOCK WHERE ID_USERS <> 7 AND " + condition + " GROUP BY ID_USERS";
}

class InvoiceLocks : public ObjectLocks {
protected:
    InvoiceLocks() { at.database.addAnswer(lists, {"LISTE"}, {{"L1"}, {"L2"}}); }

    /// User 8, whose session 20 is alive, holds what the condition names.
    void holdElsewhere(const std::string& condition)
    {
        at.database.addValue(othersWith(condition), "ID_USERS", 8);
        at.database.addValue(sessionsOf(8), "ID", 20);
        at.database.fail(deletion(20));
        at.database.addValue("SELECT NAME FROM USERS WHERE ID = 8", "NAME", "EDER");
    }
};

TEST_F(InvoiceLocks, InvoiceAndAllItsLists)
{
    EXPECT_TRUE(lock.LockRechnung("R-24", "A1", at.session));
    EXPECT_EQ(at.sent(),
              (Texts{lookFor("RECHNUNG = 'A1R-24'"), enter("RECHNUNG", "'A1R-24'"),
                     "main open " + othersWith("RECHNUNG = 'A1R-24'"), "main open " + lists, lookFor("LISTE = 'L1'"),
                     enter("LISTE", "'L1'"), "main open " + othersWith("LISTE = 'L1'"), lookFor("LISTE = 'L2'"),
                     enter("LISTE", "'L2'"), "main open " + othersWith("LISTE = 'L2'")}));
}

TEST_F(InvoiceLocks, TypeIsPaddedOrCutToTwoCharacters)
{
    lock.LockRechnung("X", "R", at.session);
    EXPECT_EQ(at.sent().at(0), lookFor("RECHNUNG = 'R X'"));
    at.database.clearRecord();
    lock.LockRechnung("X", "A12", at.session);
    EXPECT_EQ(at.sent().at(0), lookFor("RECHNUNG = 'A1X'"));
    at.database.clearRecord();
    lock.LockRechnung("X", "", at.session);
    EXPECT_EQ(at.sent().at(0), lookFor("RECHNUNG = '  X'"));
}

TEST_F(InvoiceLocks, OneRefusedListReleasesAllAndTheOthersAreTriedAllTheSame)
{
    holdElsewhere("LISTE = 'L1'");
    EXPECT_FALSE(lock.LockRechnung("R-24", "A1", at.session));
    const Texts sent = at.sent();
    EXPECT_EQ(std::ranges::count(sent, enter("LISTE", "'L2'")), 1);
    EXPECT_EQ(std::ranges::count(sent, "main open " + lists), 2);
    EXPECT_EQ(std::ranges::count(sent, releaseAll), 2) << "once for each list";
    EXPECT_EQ(sent.back(), releaseAll);
    EXPECT_EQ(at.messages->shown, (std::vector<ShownMessage>{{"T4890 'L1' T4892 EDER T4893", 48, "Tamarok"}}));
}

TEST_F(InvoiceLocks, EachRefusedListShowsItsMessage)
{
    holdElsewhere("LISTE = 'L1'");
    holdElsewhere("LISTE = 'L2'");
    EXPECT_FALSE(lock.LockRechnung("R-24", "A1", at.session));
    ASSERT_EQ(at.messages->shown.size(), 2U);
    EXPECT_EQ(at.messages->shown[1].text, "T4890 'L2' T4892 EDER T4893");
}

TEST_F(InvoiceLocks, RefusedInvoiceDoesNotAskForItsListsAndKeepsOtherLocks)
{
    holdElsewhere("RECHNUNG = 'A1R-24'");
    EXPECT_FALSE(lock.LockRechnung("R-24", "A1", at.session));
    const Texts sent = at.sent();
    EXPECT_EQ(std::ranges::count(sent, "main open " + lists), 0);
    EXPECT_EQ(std::ranges::count(sent, releaseAll), 0);
    EXPECT_EQ(at.messages->shown, (std::vector<ShownMessage>{{"T4891 (T646) 'R-24' T4892 EDER T4893", 48, "Tamarok"}}));
}

TEST_F(InvoiceLocks, UnlockReleasesForTheInvoiceAndForEachList)
{
    lock.UnLockRechnung("R-24", "A1", at.session);
    EXPECT_EQ(at.sent(), (Texts{releaseAll, "main open " + lists, releaseAll, releaseAll}));
}

TEST_F(InvoiceLocks, OracleOperationReadsTheListsAndLocksNothing)
{
    at.session.bolOracle = true;
    EXPECT_TRUE(lock.LockRechnung("R-24", "A1", at.session));
    lock.UnLockRechnung("R-24", "A1", at.session);
    EXPECT_EQ(at.sent(), (Texts{"main open " + lists, "main open " + lists}));
}

} // namespace
} // namespace tamarok
