#include <algorithm>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

#include "rights/workstation.h"
#include "support/errors.h"

#include "tamarok/comm_lock.h"
#include "tamarok/component.h"

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
        at.database.answerNoRow(statement, "ID");
        at.database.addValue(statement, "ID", 31);
        return lock.LogIn(&rsLock, at.session, at.dbLock);
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
        EXPECT_TRUE(lock.LogIn(&rsLock, at.session, at.dbLock));
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
    EXPECT_TRUE(lock.LogIn(&rsLock, at.session, nullptr));
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

TEST_F(SessionLocks, LoginIsRefusedIfItsRowCannotBeWritten)
{
    at.database.addValue(ownName, "NAME", "HUBER");
    at.database.fail(insertSession);
    for (const char* const attempt : {"first", "second"}) {
        at.database.clearRecord();
        EXPECT_FALSE(logIn()) << attempt;
        EXPECT_EQ(at.sent(), (Texts{"lock open " + stampStatement, held, "main open " + sessionRows,
                                    "main open " + objectRows, insertSession, "main open " + ownName}))
            << "there is no row to move to";
        EXPECT_EQ(at.messages->shown.back(), (ShownMessage{"T4887 HUBER T4888\r\nT4889", 48, "Tamarok"}));
        expectTimeoutsRestored();
        rsLock.Close();
    }
    EXPECT_EQ(at.messages->shown.size(), 2U);
}

TEST_F(SessionLocks, LoginIsRefusedIfItsRowCannotBeLocked)
{
    at.database.addValue(ownName, "NAME", "HUBER");
    // MoveFirst reads the row, then locks it. Either may fail, and the row may have gone in between.
    for (const char* const failing : {"lock lock 1", "lock restart"}) {
        at.database.fail(failing);
        at.database.clearRecord();
        EXPECT_FALSE(logIn()) << failing;
        EXPECT_EQ(at.sent().back(), "main open " + ownName);
        EXPECT_EQ(at.messages->shown.back(), (ShownMessage{"T4887 HUBER T4888\r\nT4889", 48, "Tamarok"}));
        expectTimeoutsRestored();
        rsLock.Close();
    }
}

TEST_F(SessionLocks, LoginIsRefusedIfAProbeHasDeletedItsRowBeforeItWasLocked)
{
    at.database.answerNoRow(held.substr(std::string{"lock open "}.size()));
    EXPECT_FALSE(lock.LogIn(&rsLock, at.session, at.dbLock));
    EXPECT_EQ(at.sent(), (Texts{"lock open " + stampStatement, held, "main open " + sessionRows,
                                "main open " + objectRows, insertSession, "lock restart", "main open " + ownName}));
    EXPECT_EQ(at.messages->shown.size(), 1U);
    expectTimeoutsRestored();
}

TEST_F(SessionLocks, RefusedLoginReadsItsTextsInTheOrderInWhichTheyAreShown)
{
    at.database.fail(insertSession);
    EXPECT_FALSE(logIn());
    EXPECT_EQ(at.loc.asked, (std::vector<int>{4887, 4888, 4889}));
}

TEST_F(SessionLocks, UnreadableTextsDoNotTurnARefusedLoginIntoAnError)
{
    at.database.addValue(ownName, "NAME", "HUBER");
    at.database.fail(insertSession);
    at.loc.unreadable = {4888};
    EXPECT_FALSE(logIn());
    EXPECT_EQ(at.messages->shown.back().text, "T4887 HUBER \r\nT4889");
    rsLock.Close();
    at.loc.unreadable = {4887, 4888, 4889};
    EXPECT_FALSE(logIn());
    EXPECT_EQ(at.messages->shown.back().text, " HUBER \r\n");
    expectTimeoutsRestored();
}

TEST_F(SessionLocks, OnlyAnOperationWithLocksNeedsTheRecordset)
{
    EXPECT_EQ(failureOf([&] { lock.LogIn(nullptr, at.session, at.dbLock); }).number, errors::objectNotSet);
    EXPECT_EQ(at.sent(), Texts{});
    expectTimeoutsRestored();
    at.session.bolLan = false;
    EXPECT_TRUE(lock.LogIn(nullptr, at.session, nullptr));
    EXPECT_FALSE(lock.LogOut(nullptr, "True"));
    EXPECT_FALSE(lock.LogOut(nullptr, "False"));
    EXPECT_EQ(failureOf([&] { lock.LogOut(nullptr, "perhaps"); }).number, errors::typeMismatch);
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
    EXPECT_EQ(failureOf([&] { lock.LogIn(&rsLock, at.session, nullptr); }).number, errors::objectNotSet);
    EXPECT_TRUE(at.messages->shown.empty());
}

TEST_F(SessionLocks, LogOutDeletesTheSessionRowAndCloses)
{
    logIn();
    at.database.clearRecord();
    EXPECT_FALSE(lock.LogOut(&rsLock, "False"));
    EXPECT_EQ(rsLock.State(), ado::ObjectState::Open);
    EXPECT_EQ(at.sent(), Texts{});
    EXPECT_FALSE(lock.LogOut(&rsLock, "-1"));
    EXPECT_EQ(at.sent(), (Texts{"lock delete 1", "lock unlock", "lock close cursor"}));
    EXPECT_EQ(rsLock.State(), ado::ObjectState::Closed);
    EXPECT_FALSE(lock.LogOut(&rsLock, "True")) << "a second one fails inside and says nothing";
}

TEST_F(SessionLocks, LogOutClosesThoughTheRowCannotBeDeleted)
{
    logIn();
    at.database.fail("lock delete 1");
    EXPECT_FALSE(lock.LogOut(&rsLock, "True"));
    EXPECT_EQ(rsLock.State(), ado::ObjectState::Closed);
}

TEST_F(SessionLocks, LogOutNeedsABoolean)
{
    EXPECT_EQ(failureOf([&] { lock.LogOut(&rsLock, "perhaps"); }).number, errors::typeMismatch);
    EXPECT_EQ(failureOf([&] { lock.LogOut(&rsLock, ""); }).number, errors::typeMismatch);
}

TEST_F(SessionLocks, ByNameNothingIsTakenForTheObjectsThatAreNotNeeded)
{
    const Variant nothing{ObjectRef{}};
    const Variant record{component::makeRecordObject(at.session)};
    std::vector<Variant> arguments{nothing, record, Variant{at.dbLock}};
    EXPECT_EQ(failureOf([&] { component::invoke("Comm_Lock", "LogIn", arguments); }).number, errors::objectNotSet);
    arguments = {nothing, Variant{"True"}};
    EXPECT_EQ(component::invoke("Comm_Lock", "LogOut", arguments), Variant{false});
    for (const bool oracle : {false, true}) {
        at.session.bolLan = oracle;
        at.session.bolOracle = oracle;
        arguments = {nothing, record, nothing};
        EXPECT_EQ(component::invoke("Comm_Lock", "LogIn", arguments), Variant{true});
    }
    EXPECT_EQ(at.sent(), Texts{});
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

TEST_F(ObjectLocks, RowsOfADeadSessionGoInAscendingOrderOfTheirIds)
{
    at.database.addAnswer(others, {"ID_USERS"}, {{8}});
    at.database.addValue(sessionsOf(8), "ID", 20);
    at.database.addAnswer(rowsOf(8), {"ID"}, {{100}, {9}, {30}, {"11"}});
    EXPECT_TRUE(lockOn());
    EXPECT_EQ(at.sent(),
              (Texts{"main open " + ownLock, insertLock, "main open " + others, "main open " + sessionsOf(8),
                     deletion(20), "main open " + rowsOf(8), deletion(9), deletion(11), deletion(30), deletion(100)}))
        << "as numbers, not as texts";
}

/// User 8 has logged out and in again while his old session 20 was tested. His new session is 30; 31 and 32 are the
/// locks that it has got meanwhile.
class HolderLoggedInAgain : public ObjectLocks {
protected:
    HolderLoggedInAgain()
    {
        ownRowIs(50);
        at.database.addAnswer(others, {"ID_USERS"}, {{8}});
        at.database.addAnswer(sessionsOf(8), {"ID"}, {{20}});
        at.database.addAnswer(rowsOf(8), {"ID"}, {{32}, {31}, {30}});
        at.database.fail(deletion(30));
        at.database.addValue("SELECT NAME FROM USERS WHERE ID = 8", "NAME", "EDER");
        at.database.addValue("SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = 12", "BELEGNUMMER", "B-77");
    }

    const Texts start{"main open " + ownLock, insertLock, "main open " + others};
    const Texts interruptedWipe{"main open " + sessionsOf(8), deletion(20), "main open " + rowsOf(8), deletion(30)};
    const Texts refusal{"main open " + ownLock, deletion(50), "main open SELECT NAME FROM USERS WHERE ID = 8",
                        "main open SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = 12"};
    const Texts askAnew{"main open " + others};

    static Texts join(std::initializer_list<Texts> parts)
    {
        Texts all;
        for (const Texts& part : parts)
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }
    void expectRefusal()
    {
        EXPECT_FALSE(lockOn());
        EXPECT_EQ(at.messages->shown, (std::vector<ShownMessage>{{"T4890 'B-77' T4892 EDER T4893", 48, "Tamarok"}}));
        expectTimeoutsRestored();
    }
};

TEST_F(HolderLoggedInAgain, TheWipeEndsAtHisSessionRowAndTheFreeObjectIsGranted)
{
    at.database.addAnswer(others, {"ID_USERS"}, {});
    EXPECT_TRUE(lockOn());
    EXPECT_EQ(at.sent(), join({start, interruptedWipe, askAnew})) << "31 and 32 stay";
    EXPECT_EQ(at.database.calls.back().timeoutSeconds, 5);
    EXPECT_TRUE(at.messages->shown.empty());
    expectTimeoutsRestored();
}

TEST_F(HolderLoggedInAgain, AndHoldsTheObjectAgain)
{
    at.database.addAnswer(sessionsOf(8), {"ID"}, {{30}});
    expectRefusal();
    EXPECT_EQ(at.sent(),
              join({start, interruptedWipe, askAnew, {"main open " + sessionsOf(8), deletion(30)}, refusal}));
}

TEST_F(HolderLoggedInAgain, AnotherHoldsTheObjectMeanwhile)
{
    at.database.addAnswer(others, {"ID_USERS"}, {{9}});
    at.database.addValue(sessionsOf(9), "ID", 40);
    EXPECT_TRUE(lockOn());
    EXPECT_EQ(
        at.sent(),
        join({start, interruptedWipe, askAnew, {"main open " + sessionsOf(9), deletion(40), "main open " + rowsOf(9)}}))
        << "a dead one";
}

TEST_F(HolderLoggedInAgain, AfterThreeQuestionsTheLockIsRefused)
{
    expectRefusal();
    EXPECT_EQ(at.sent(), join({start, interruptedWipe, askAnew, interruptedWipe, askAnew, interruptedWipe, askAnew,
                               interruptedWipe, refusal}));
    EXPECT_EQ(std::ranges::count(at.sent(), deletion(31)) + std::ranges::count(at.sent(), deletion(32)), 0);
}

TEST_F(HolderLoggedInAgain, UnreadableHoldersRefuseTheLock)
{
    at.database.failLater(1, "main open " + others);
    expectRefusal();
    EXPECT_EQ(at.sent(), join({start, interruptedWipe, askAnew, refusal}));
}

TEST_F(HolderLoggedInAgain, UnreadableRowsRefuseTheLock)
{
    at.database.fail("main open " + rowsOf(8));
    expectRefusal();
    EXPECT_EQ(at.sent(), join({start, {"main open " + sessionsOf(8), deletion(20), "main open " + rowsOf(8)}, refusal}))
        << "he may have a session that was not seen";
}

TEST_F(ObjectLocks, UnreadableSessionsRefuseTheLockAndLeaveTheHoldersRows)
{
    ownRowIs(50);
    at.database.addAnswer(others, {"ID_USERS"}, {{8}, {9}});
    at.database.fail("main open " + sessionsOf(8));
    at.database.addValue("SELECT NAME FROM USERS WHERE ID = 8", "NAME", "EDER");
    at.database.addValue("SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = 12", "BELEGNUMMER", "B-77");
    EXPECT_FALSE(lockOn());
    EXPECT_EQ(at.sent(), (Texts{"main open " + ownLock, insertLock, "main open " + others, "main open " + sessionsOf(8),
                                "main open " + ownLock, deletion(50), "main open SELECT NAME FROM USERS WHERE ID = 8",
                                "main open SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = 12"}));
    EXPECT_EQ(at.messages->shown, (std::vector<ShownMessage>{{"T4890 'B-77' T4892 EDER T4893", 48, "Tamarok"}}));
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
    at.database.addAnswer(others, {"ID_USERS"}, {{9}});
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
