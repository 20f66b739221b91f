#include <chrono>
#include <memory>

#include "server_test.h"
#include "support/child_process.h"
#include "support/platforms.h"
#include "support/surroundings.h"

#include "tamarok/comm_lock.h"
#include "tamarok/convert.h"
#include "tamarok/tmkvar.h"

namespace tamarok::odbc {

namespace {

Platform officePlatform(const std::shared_ptr<test::RecordingMessageBox>& messages, test::LocScript& texts)
{
    Platform platform = test::platformOf("de-AT");
    platform.messageBox = messages;
    platform.makeLocService = [&texts] { return std::make_unique<test::ScriptedLocService>(texts); };
    return platform;
}

} // namespace

/// The sessions and locks of the library on the T-SQL server: what `Comm_Lock` sends is the same on every back end.
class OdbcSessions : public ServerTest {
protected:
    OdbcSessions() : scope_{officePlatform(messages, texts_)}
    {
        for (const int number : {4887, 4888, 4889, 4890, 4891, 4892, 4893})
            texts_.texts[number] = std::string{"T"}.append(std::to_string(number));
    }
    void SetUp() override
    {
        ServerTest::SetUp();
        if (!connection) return;
        connection->Execute("DROP TABLE IF EXISTS LOCK DROP TABLE IF EXISTS USERS");
        connection->Execute("CREATE TABLE LOCK (ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY, ID_USERS INT, "
                            "LOGIN NVARCHAR(50), LISTE NVARCHAR(20))");
        connection->Execute("CREATE TABLE USERS (ID INT NOT NULL PRIMARY KEY, NAME NVARCHAR(40)) "
                            "INSERT INTO USERS VALUES (1, N'HÜBER') INSERT INTO USERS VALUES (2, N'EDER')");
    }

    /// One workstation with both of its connections.
    struct Station {
        TmkVar session;
        ado::ConnectionRef dbLock;
        ado::Recordset rsLock;
    };
    std::unique_ptr<Station> station(std::int32_t user) const
    {
        auto made = std::make_unique<Station>();
        made->session.db_ADO = connect();
        made->session.bolLan = true;
        made->session.ID_User = user;
        made->dbLock = connect();
        return made;
    }
    static bool logIn(Station& at) { return Comm_Lock{}.LogIn(&at.rsLock, at.session, at.dbLock); }
    std::int32_t rowsOfLock() const { return convert::toLong(scalar("SELECT COUNT(*) FROM LOCK")); }

    std::shared_ptr<test::RecordingMessageBox> messages = std::make_shared<test::RecordingMessageBox>();

private:
    test::LocScript texts_;
    PlatformScope scope_;
};
INSTANTIATE_TEST_SUITE_P(Servers, OdbcSessions, ::testing::Values(TestServer::Tsql), serverName);

TEST_P(OdbcSessions, LiveSessionRefusesASecondLoginAndADeadOneDoesNot)
{
    auto first = station(1);
    ASSERT_TRUE(logIn(*first));
    EXPECT_EQ(first->dbLock->CommandTimeout(), 30);
    auto second = station(1);
    EXPECT_FALSE(logIn(*second));
    ASSERT_EQ(messages->shown.size(), 1U);
    EXPECT_EQ(messages->shown[0].text, "T4887 HÜBER T4888\r\nT4889");
    EXPECT_EQ(second->dbLock->CommandTimeout(), 30);
    EXPECT_EQ(rowsOfLock(), 1);
    first->rsLock.Close(); // as a workstation that has died: its row stays, its lock does not
    EXPECT_TRUE(logIn(*station(1)));
}

TEST_P(OdbcSessions, ObjectLockIsRefusedWhileItsHolderLives)
{
    const Comm_Lock locks;
    auto holder = station(1);
    auto other = station(2);
    ASSERT_TRUE(logIn(*holder));
    ASSERT_TRUE(logIn(*other));
    EXPECT_TRUE(locks.LockOn("LISTE", "'4711'", holder->session));
    EXPECT_FALSE(locks.LockOn("LISTE", "'4711'", other->session));
    ASSERT_EQ(messages->shown.size(), 1U);
    EXPECT_EQ(messages->shown[0].text, "T4890 '4711' T4892 HÜBER T4893");
    holder->dbLock->Close();
    EXPECT_TRUE(locks.LockOn("LISTE", "'4711'", other->session));
    locks.LockOff("LISTE", "'4711'", other->session);
    locks.LogOut(&other->rsLock, "True");
    EXPECT_EQ(rowsOfLock(), 0);
}

TEST_P(OdbcSessions, AnotherProcessHoldsAnObjectUntilItReleasesItOrIsKilled)
{
    const Comm_Lock locks;
    const std::vector<std::string> words{tsqlText(), "1", "LISTE", "'4711'"};
    auto other = station(2);
    ASSERT_TRUE(logIn(*other));
    test::ChildProcess holder{SESSION_CHILD, words};
    ASSERT_EQ(holder.line(), "held");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(locks.LockOn("LISTE", "'4711'", other->session));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::seconds{4}) << "the holder is given its time";
    ASSERT_EQ(messages->shown.size(), 1U);
    EXPECT_EQ(messages->shown[0].text, "T4890 '4711' T4892 HÜBER T4893");
    EXPECT_TRUE(locks.LockOn("LISTE", "'4712'", other->session)) << "another object is free";
    EXPECT_FALSE(logIn(*station(1))) << "the session of the process lives";
    EXPECT_EQ(holder.ask("go"), "released");
    EXPECT_TRUE(locks.LockOn("LISTE", "'4711'", other->session));
    locks.LockOff("LISTE", "'4711'", other->session);
    holder.kill();

    test::ChildProcess victim{SESSION_CHILD, words};
    ASSERT_EQ(victim.line(), "held") << "the killed session of the same user gives way";
    victim.kill();
    EXPECT_TRUE(locks.LockOn("LISTE", "'4711'", other->session));
    EXPECT_TRUE(logIn(*station(1)));
}

} // namespace tamarok::odbc
