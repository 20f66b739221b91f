#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "rights/lock_database.h"
#include "support/other_account.h"

namespace tamarok {
namespace {

/// Workstations that are processes of their own. Users are those of the reference data.
class LockProcesses : public ::testing::Test {
protected:
    static constexpr int huber = 2;
    static constexpr int pichler = 8;
    static constexpr int eder = 9;

    /// A workstation that has logged in.
    std::unique_ptr<test::ChildProcess> at(int user)
    {
        auto station = database.station(user);
        EXPECT_EQ(station->ask("login"), "true");
        return station;
    }

    test::LockDatabase database;
};

TEST_F(LockProcesses, LiveHolderRefusesAndAKilledOneNoLonger)
{
    const auto holder = at(huber);
    const auto other = at(eder);
    EXPECT_EQ(holder->ask("on LISTE 'L-1'"), "true");
    EXPECT_EQ(holder->ask("on LISTE 'L-2'"), "true");
    EXPECT_EQ(holder->ask("on LISTE 'L-1'"), "true") << "held already";
    EXPECT_EQ(database.count("LISTE = 'L-1'"), 1);
    EXPECT_EQ(other->ask("on LISTE 'L-1'"),
              "false Der Datensatz 'L-1' wird gerade vom Benutzer HUBER bearbeitet und ist gesperrt.");
    EXPECT_EQ(database.count("ID_USERS = 9"), 1) << "the session row alone";
    EXPECT_EQ(database.count("ID_USERS = 2"), 3);

    holder->kill();
    EXPECT_EQ(other->ask("on LISTE 'L-1'"), "true");
    EXPECT_EQ(database.count("ID_USERS = 2"), 0) << "all that the dead session left";
    EXPECT_EQ(other->ask("logout"), "false");
    EXPECT_EQ(database.count("LOGIN IS NOT NULL"), 0);
}

TEST_F(LockProcesses, StoppedHolderCountsAsAlive)
{
    const auto holder = at(huber);
    const auto other = at(eder);
    EXPECT_EQ(holder->ask("on RECHNUNG 'A1R-24-000001'"), "true");
    holder->stop();
    EXPECT_EQ(other->ask("on RECHNUNG 'A1R-24-000001'"),
              "false Der Beleg (Abrechnung 1) 'R-24-000001' wird gerade vom Benutzer HUBER bearbeitet und ist "
              "gesperrt.");
    EXPECT_EQ(database.count("RECHNUNG = 'A1R-24-000001'"), 1);
}

TEST_F(LockProcesses, HolderWhoseConnectionClosedWithoutLogOutIsDead)
{
    const auto holder = at(huber);
    const auto other = at(eder);
    EXPECT_EQ(holder->ask("on BELEGE 4"), "true");
    EXPECT_EQ(holder->ask("drop"), "dropped");
    EXPECT_EQ(database.count("ID_USERS = 2"), 2);
    EXPECT_EQ(other->ask("on BELEGE 4"), "true");
    EXPECT_EQ(database.count("ID_USERS = 2"), 0);
    EXPECT_EQ(holder->ask("logout"), "false") << "whose row has gone";
}

TEST_F(LockProcesses, HolderWhoLoggedOutButLeftLocksIsNoConflict)
{
    const auto holder = at(huber);
    const auto other = at(eder);
    EXPECT_EQ(holder->ask("on BELEGE 4"), "true");
    EXPECT_EQ(holder->ask("logout"), "false");
    EXPECT_EQ(other->ask("on BELEGE 4"), "true");
    EXPECT_EQ(database.count("BELEGE = 4"), 2) << "granted beside the row without session";
}

TEST_F(LockProcesses, ReleasedObjectIsFree)
{
    const auto holder = at(huber);
    const auto other = at(eder);
    EXPECT_EQ(holder->ask("on BELEGE 4"), "true");
    EXPECT_EQ(holder->ask("off"), "false");
    EXPECT_EQ(other->ask("on BELEGE 4"), "true");
    EXPECT_EQ(database.count("LOGIN IS NOT NULL"), 2) << "no session row is released";
}

TEST_F(LockProcesses, SameUserLoggingInTwiceIsRefusedUntilTheFirstSessionDies)
{
    const auto first = at(huber);
    EXPECT_EQ(first->ask("on BELEGE 4"), "true");
    const auto second = database.station(huber);
    EXPECT_EQ(second->ask("login"),
              "false Der Benutzer HUBER ist bereits an einem anderen Arbeitsplatz angemeldet.|Die Anmeldung wird "
              "abgebrochen.");
    EXPECT_EQ(database.count("ID_USERS = 2 AND LOGIN IS NOT NULL"), 1) << "the first session's";
    EXPECT_EQ(database.count("BELEGE IS NOT NULL"), 0) << "its object locks have gone all the same";
    first->kill();
    const auto third = at(huber);
    EXPECT_EQ(database.count("ID_USERS = 2"), 1);
}

TEST_F(LockProcesses, RefusedLoginIsARefusalWithoutTheTableOfTextsToo)
{
    const auto first = at(huber);
    database.connection->Execute("DROP TABLE STRINGS");
    const auto second = database.station(huber);
    EXPECT_EQ(second->ask("login"), "false  HUBER |");
}

TEST_F(LockProcesses, InvoiceWithOneListHeldElsewhereLeavesNothingLocked)
{
    const auto lists = database.column("SELECT DISTINCT TOP 3 LISTE FROM LOGS WHERE LISTE IS NOT NULL ORDER BY LISTE");
    ASSERT_EQ(lists.size(), 2U);
    database.connection->Execute("UPDATE LOGS_RECH SET R_NAME = 'R-MANY' WHERE ID_LOG IN (SELECT ID_LOG FROM LOGS "
                                 "WHERE LISTE IN (SELECT DISTINCT TOP 3 LISTE FROM LOGS ORDER BY LISTE))");
    const auto covered = database.column("SELECT DISTINCT LISTE FROM LOGS WHERE ID_LOG IN (SELECT ID_LOG FROM "
                                         "LOGS_RECH WHERE R_NAME = 'R-MANY')");
    ASSERT_EQ(covered.size(), 2U);
    const std::string name = covered.back().asString();

    const auto holder = at(huber);
    const auto other = at(eder);
    EXPECT_EQ(holder->ask("on LISTE '" + name + "'"), "true");
    EXPECT_EQ(other->ask("invoice R R-MANY"),
              "false Der Datensatz '" + name + "' wird gerade vom Benutzer HUBER bearbeitet und ist gesperrt.");
    EXPECT_EQ(database.count("ID_USERS = 9 AND LOGIN IS NULL"), 0);
    EXPECT_EQ(holder->ask("off"), "false");
    EXPECT_EQ(other->ask("invoice R R-MANY"), "true");
    EXPECT_EQ(database.count("ID_USERS = 9 AND LISTE IS NOT NULL"), static_cast<std::int32_t>(covered.size()));
    EXPECT_EQ(database.count("ID_USERS = 9 AND RECHNUNG = 'R R-MANY'"), 1);
}

TEST_F(LockProcesses, LocksOfUnknownUsersHinderNobodyAndAreLeftAlone)
{
    database.connection->Execute("INSERT INTO LOCK (ID_USERS,BELEGE) VALUES (999,4)");
    database.connection->Execute("INSERT INTO LOCK (BELEGE) VALUES (4)");
    const auto station = at(huber);
    EXPECT_EQ(station->ask("on BELEGE 4"), "true");
    EXPECT_EQ(database.count("BELEGE = 4"), 3);
    database.connection->Execute("INSERT INTO LOCK (ID_USERS,LOGIN) VALUES (999,'2024-01-01 00:00:00.000')");
    EXPECT_EQ(station->ask("off"), "false");
    EXPECT_EQ(station->ask("on BELEGE 4"), "true") << "a session row that nobody holds is dead";
    EXPECT_EQ(database.count("ID_USERS = 999"), 0);
}

TEST_F(LockProcesses, LocksOfASessionThatBeganDuringAProbeSurviveIt)
{
    const auto holder = at(huber);
    const auto prober = at(eder);
    const auto third = at(pichler);
    std::string answer;
    // The prober is stopped while it waits for the holder's old session row. If it is stopped before it has read
    // that row, it finds the new one instead and is refused; then the case is tried again.
    for (int tries = 0; tries < 10 && answer != "true"; ++tries) {
        EXPECT_EQ(holder->ask("on LISTE 'L-4'"), "true");
        prober->tell("on LISTE 'L-4'");
        while (database.count("ID_USERS = 9 AND LISTE = 'L-4'") == 0) {}
        for (int look = 0; look < 200; ++look)
            database.count("LISTE = 'L-4'");
        prober->stop();
        EXPECT_EQ(holder->ask("logout"), "false");
        EXPECT_EQ(holder->ask("login"), "true");
        EXPECT_EQ(holder->ask("on LISTE 'L-5'"), "true");
        prober->send(SIGCONT);
        answer = prober->line();
        EXPECT_EQ(database.count("ID_USERS = 2 AND LISTE = 'L-5'"), 1);
        EXPECT_EQ(database.count("ID_USERS = 2 AND LOGIN IS NOT NULL"), 1);
    }
    EXPECT_EQ(answer, "true") << "the old session's lock has gone";
    EXPECT_EQ(third->ask("on LISTE 'L-5'"),
              "false Der Datensatz 'L-5' wird gerade vom Benutzer HUBER bearbeitet und ist gesperrt.");
    EXPECT_EQ(holder->ask("on LISTE 'L-5'"), "true");
    EXPECT_EQ(database.count("LISTE = 'L-5'"), 1);
}

/// A second station under another account of the system.
class LockAccounts : public LockProcesses {
protected:
    void SetUp() override
    {
        if (!test::canChangeAccount())
            GTEST_SKIP() << "NOT TESTED: only root can start a station under another account";
        if (!std::filesystem::exists("/usr/bin/setpriv")) GTEST_SKIP() << "NOT TESTED: there is no setpriv";
    }
};

TEST_F(LockAccounts, AnotherAccountMeetsTheLocksAndIsRefusedEachTime)
{
    const auto holder = at(huber);
    EXPECT_EQ(holder->ask("on LISTE 'L-1'"), "true");
    database.openToAll();
    const auto other = database.stationOfNobody(eder);
    EXPECT_EQ(other->ask("login"), "true");
    const std::string refusal = "false Der Datensatz 'L-1' wird gerade vom Benutzer HUBER bearbeitet und ist gesperrt.";
    EXPECT_EQ(other->ask("on LISTE 'L-1'"), refusal);
    EXPECT_EQ(other->ask("on LISTE 'L-1'"), refusal);
    EXPECT_EQ(other->ask("on LISTE 'L-2'"), "true");
    EXPECT_EQ(holder->ask("on LISTE 'L-2'").substr(0, 5), "false") << "its session counts as alive";
    other->kill();
    EXPECT_EQ(holder->ask("on LISTE 'L-2'"), "true");
}

TEST_F(LockAccounts, WhoCannotLockHisRowIsNeitherLoggedInNorGrantedAnything)
{
    const auto holder = at(huber);
    EXPECT_EQ(holder->ask("on LISTE 'L-1'"), "true");
    database.openToAll();
    std::filesystem::permissions(database.file() + "-locks", std::filesystem::perms{0600});
    const auto other = database.stationOfNobody(eder);
    for (const char* const attempt : {"first", "second"}) {
        EXPECT_NE(other->ask("login"), "true") << attempt;
        EXPECT_EQ(other->ask("on LISTE 'L-1'").substr(0, 5), "error") << attempt;
    }
    EXPECT_EQ(database.count("LISTE = 'L-1'"), 1) << "the holder's row alone";
}

TEST_F(LockProcesses, BadColumnsAndKeysFailAndLeaveNoRow)
{
    const auto station = at(huber);
    EXPECT_EQ(station->ask("on NO_COLUMN 4").substr(0, 17), "error -2147217900");
    EXPECT_EQ(station->ask("on LISTE 'L'1'").substr(0, 17), "error -2147217900");
    EXPECT_EQ(station->ask("on LISTE 'L''1'"), "true") << "a quote that the caller has doubled";
    EXPECT_EQ(station->ask("invoice R R'1").substr(0, 17), "error -2147217900");
    EXPECT_EQ(database.column("SELECT LISTE FROM LOCK WHERE ID_USERS = 2 AND LOGIN IS NULL"),
              std::vector<Variant>{"L'1"});
}

} // namespace
} // namespace tamarok
