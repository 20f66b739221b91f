#include <chrono>
#include <filesystem>
#include <random>
#include <set>
#include <sys/socket.h>

#include "server_test.h"
#include "tamarok_odbc/backend.h"

#include "tamarok/backend_registry.h"
#include "tamarok/convert.h"
#include "tamarok/date.h"
#include "tamarok/platform.h"

namespace tamarok::odbc {

namespace {

std::size_t openDescriptors()
{
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator{"/proc/self/fd"}, {}));
}

std::set<int> sockets()
{
    std::set<int> found;
    for (const auto& entry : std::filesystem::directory_iterator{"/proc/self/fd"}) {
        std::error_code none;
        if (std::filesystem::read_symlink(entry.path(), none).string().starts_with("socket:"))
            found.insert(std::stoi(entry.path().filename().string()));
    }
    return found;
}

/// The value of a property of a text in ODBC style, without braces.
std::string property(const std::string& text, const std::string& name)
{
    const std::size_t start = text.find(";" + name + "=") + name.size() + 2;
    return text.substr(start, text.find(';', start) - start);
}

std::string replaced(std::string text, const std::string& what, const std::string& by)
{
    return text.replace(text.find(what), what.size(), by);
}

} // namespace

class OdbcOpening : public ServerTest {};
INSTANTIATE_TEST_SUITE_P(Servers, OdbcOpening,
                         ::testing::Values(TestServer::Tsql, TestServer::Postgres, TestServer::Sqlite), serverName);

TEST(OdbcDrivers, UnknownDriverIsNamedInTheFailure)
{
    const Error failure = failureOf([] { connectText("DRIVER={No Such Driver};SERVER=x;UID=u;PWD=hidden-word"); });
    EXPECT_EQ(failure.number, errors::providerFailure);
    EXPECT_FALSE(failure.sqlState.empty());
    EXPECT_EQ(std::string{failure.what()}.find("hidden-word"), std::string::npos) << failure.what();
}

TEST(OdbcDrivers, RegistryOpensTextsOfAdoStyle)
{
    if (!test::tsqlServer()) GTEST_SKIP() << "no T-SQL server";
    ado::BackendRegistry registry;
    registerBackend(registry);
    const std::string& text = tsqlText();
    const auto connection =
        registry.open("Provider=SQLOLEDB;Data Source=" + property(text, "SERVER") + "," + property(text, "PORT") +
                      ";Initial Catalog=master;User ID=" + property(text, "UID") + ";Password='" +
                      property(text, "PWD") + "';Persist Security Info=True");
    EXPECT_EQ(connection->ConnectionString().find("Password"), std::string::npos) << connection->ConnectionString();
    ado::Recordset rows;
    rows.Open("SELECT 1", connection);
    EXPECT_EQ(rows.Fields().Item(0).Value(), Variant{1});
}

TEST_P(OdbcOpening, WrongHostFails)
{
    if (GetParam() == TestServer::Sqlite) GTEST_SKIP() << "no host";
    const std::string text = replaced(connectionText(), "SERVER=127.0.0.1", "SERVER=127.0.0.1;Port=9");
    const auto without = text.substr(0, text.find("PORT=")) + text.substr(text.find(';', text.find("PORT=")) + 1);
    const std::size_t before = openDescriptors();
    EXPECT_EQ(errorNumber([&] { connectText(without); }), errors::providerFailure);
    EXPECT_EQ(openDescriptors(), before);
}

TEST_P(OdbcOpening, UnknownHostFailsWithoutShowingThePassword)
{
    if (GetParam() == TestServer::Sqlite) GTEST_SKIP() << "no host";
    std::string text = replaced(connectionText(), "SERVER=127.0.0.1", "SERVER=nowhere.invalid");
    text = replaced(text, "PWD=" + property(text, "PWD"), "PWD={hidden;word}");
    const std::size_t before = openDescriptors();
    const Error failure = failureOf([&] { connectText(text); });
    EXPECT_EQ(failure.number, errors::providerFailure);
    EXPECT_FALSE(failure.sqlState.empty());
    EXPECT_EQ(std::string{failure.what()}.find("hidden"), std::string::npos) << failure.what();
    EXPECT_EQ(openDescriptors(), before);
}

TEST_P(OdbcOpening, WrongPasswordFailsWithoutShowingIt)
{
    if (!isTsql()) GTEST_SKIP() << "this server asks for no password";
    const Error failure = failureOf([&] {
        connectText(replaced(connectionText(), "PWD=" + property(connectionText(), "PWD"), "PWD={hidden;wo}}rd'\"}"));
    });
    EXPECT_EQ(failure.number, errors::providerFailure);
    EXPECT_EQ(failure.description.find("hidden"), std::string::npos) << failure.description;
}

TEST_P(OdbcOpening, PasswordWithSpecialCharacters)
{
    if (!isTsql()) GTEST_SKIP() << "this server asks for no password";
    const std::string login = "tmt_" + std::to_string(std::random_device{}());
    connection->Execute("CREATE LOGIN " + login + " WITH PASSWORD = 'Aa1;x}y{=''\"z'");
    const std::string& server = tsqlText();
    const std::string start = server.substr(0, server.find("UID="));
    const auto special =
        connectText(start + "UID=" + login + ";PWD={Aa1;x}}y{='\"z};TDS_Version=7.4;ClientCharset=UTF-8");
    EXPECT_EQ(special->ConnectionString().find("Aa1"), std::string::npos) << special->ConnectionString();
    special->Close();
    // The server takes a moment to end the session of the login.
    for (int turn = 0; turn < 50; ++turn)
        if (errorNumber([&] { connection->Execute("DROP LOGIN " + login); }) == 0) return;
    ADD_FAILURE() << "the login " << login << " could not be dropped";
}

TEST_P(OdbcOpening, DateTextsAreReadInTheOrderOfTheConnection)
{
    if (GetParam() == TestServer::Sqlite) GTEST_SKIP() << "SQLite has no dates";
    const auto read = [](const ado::ConnectionRef& on, const std::string& text) {
        ado::Recordset rows;
        rows.Open("SELECT CAST('" + text + "' AS " + "DATE)", on);
        return rows.Fields().Item(0).Value();
    };
    EXPECT_EQ(read(connection, "5.3.2024"), Variant{makeDate(2024, 3, 5)});
    EXPECT_EQ(read(connection, "31.12.2050"), Variant{makeDate(2050, 12, 31)});
    EXPECT_EQ(read(connectText(connectionText() + ";Date Order=MDY"), "5.3.2024"), Variant{makeDate(2024, 5, 3)});
}

TEST_P(OdbcOpening, DateOrderThatTheServerDoesNotTakeIsRefused)
{
    if (GetParam() == TestServer::Sqlite) GTEST_SKIP() << "SQLite has no dates";
    expectError(errors::providerFailure, "Date Order", [&] { connectText(connectionText() + ";Date Order=YDM"); });
}

TEST_P(OdbcOpening, FormatOfTheSessionMustFitTheConnection)
{
    if (GetParam() == TestServer::Sqlite) GTEST_SKIP() << "SQLite has no dates";
    for (const char* const format : {"DD.MM.YYYY", "DD-MM-YYYY", "DMY"})
        EXPECT_EQ(errorNumber([&] { requireDateFormat(*connection, format); }), 0) << format;
    for (const char* const format : {"MM.DD.YYYY", "MDY"})
        expectError(errors::providerFailure, "Date Order", [&] { requireDateFormat(*connection, format); });
    EXPECT_EQ(errorNumber([&] { requireDateFormat(*connectText(connectionText() + ";Date Order=MDY"), "MM.DD.YYYY"); }),
              0);
}

TEST_P(OdbcOpening, ProceduresLearnTheRegionalOrder)
{
    if (!isTsql()) GTEST_SKIP() << "session contexts are T-SQL's";
    connection->Execute("DROP PROCEDURE IF EXISTS tmt_order");
    connection->Execute(
        "CREATE PROCEDURE tmt_order AS SELECT CONVERT(VARCHAR(3), SESSION_CONTEXT(N'tamarok_date_order')) AS O");
    const auto order = [this](const char* locale) {
        Platform platform = Platform::current();
        platform.regional = Regional::named(locale);
        const PlatformScope scope{platform};
        ado::Recordset rows;
        rows.Open("tmt_order", connection, ado::CursorType::OpenForwardOnly, ado::LockType::ReadOnly, 4);
        return rows.Fields().Item(0).Value();
    };
    EXPECT_EQ(order("de-AT"), Variant{"dmy"});
    EXPECT_EQ(order("en-US"), Variant{"mdy"});
    connection->Execute("DROP PROCEDURE tmt_order");
}

TEST_P(OdbcOpening, HousekeepingIsNotTold)
{
    std::vector<std::string> told;
    connection->listen([&told](std::string_view statement) { told.emplace_back(statement); });
    connection->CommandTimeout(7);
    scalar("SELECT 1");
    EXPECT_EQ(told, std::vector<std::string>{"SELECT 1"});
}

TEST_P(OdbcOpening, ClosedConnectionsLeaveNothingBehind)
{
    connect()->Close();
    const std::size_t before = openDescriptors();
    for (int turn = 0; turn < 3; ++turn) {
        const auto other = connect();
        ado::Recordset rows;
        rows.Open(numbers(1000), other);
        other->Close();
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(OdbcLostConnection, ServerThatStopsWhileRowsAreRead)
{
    if (!test::PostgresServer::isInstalled()) GTEST_SKIP() << "no PostgreSQL";
    connectText(postgres().connectionText())->Close();
    const std::size_t before = openDescriptors();
    auto connection = connectText(postgres().connectionText());
    ado::Recordset rows;
    rows.Open("SELECT N, repeat('x', 1000) FROM generate_series(1, 1000000) AS q(N)", connection);
    rows.MoveNext();
    postgres().stop();
    const Error failure = failureOf([&] {
        while (!rows.AtEOF())
            rows.MoveNext();
    });
    EXPECT_EQ(failure.number, errors::providerFailure) << failure.what();
    for (int turn = 0; turn < 2; ++turn)
        expectError(errors::providerFailure, "lost", [&] { connection->Execute("SELECT 1"); });
    rows.Close();
    connection->Close();
    connection.reset();
    EXPECT_EQ(openDescriptors(), before);
    postgres().start();
    connection = connectText(postgres().connectionText());
    EXPECT_EQ(connection->Execute("SELECT 1"), -1);
}

/// Cuts the connections of this process that were opened since `before`, as a broken line does.
void cutConnections(const std::set<int>& before)
{
    for (const int descriptor : sockets())
        if (!before.contains(descriptor)) ::shutdown(descriptor, SHUT_RDWR);
}

TEST_P(OdbcOpening, BrokenLineShowsWithTheNextCallAndLeavesNothingBehind)
{
    if (GetParam() == TestServer::Sqlite) GTEST_SKIP() << "no line";
    const std::set<int> before = sockets();
    auto victim = connect();
    cutConnections(before);
    const Error failure = failureOf([&] { victim->Execute("SELECT 1"); });
    EXPECT_EQ(failure.number, errors::providerFailure) << failure.what();
    expectError(errors::providerFailure, "lost", [&] { victim->Execute("SELECT 1"); });
    victim.reset();
    EXPECT_EQ(sockets(), before);
}

TEST_P(OdbcOpening, BrokenLineWhileRowsAreRead)
{
    if (GetParam() == TestServer::Sqlite) GTEST_SKIP() << "no line";
    const std::set<int> before = sockets();
    auto victim = connect();
    ado::Recordset rows;
    rows.Open(numbers(500'000, "N, N + 1 AS M"), victim);
    rows.MoveNext();
    cutConnections(before);
    const Error failure = failureOf([&] {
        while (!rows.AtEOF())
            rows.MoveNext();
    });
    EXPECT_EQ(failure.number, errors::providerFailure) << failure.what();
    expectError(errors::providerFailure, "lost", [&] { victim->Execute("SELECT 1"); });
    rows.Close();
    victim.reset();
    EXPECT_EQ(sockets(), before);
}

} // namespace tamarok::odbc
