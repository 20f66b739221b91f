#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <poll.h>
#include <unistd.h>

#include "apps/check_lines.h"
#include "apps/server_installation.h"
#include "odbc/support/servers.h"
#include "tamarok_database/scripts.h"
#include "tamarok_odbc/connect.h"

#include "tamarok/ado.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

/// `tamarok check --odbc` on the T-SQL server that the environment names; skipped, with one loud line, without it.
namespace tamarok::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

std::string databaseName(const char* purpose)
{
    return "tamarok_check_" + std::string{purpose} + "_" + std::to_string(::getpid());
}

/// A database of a test on the T-SQL server.
class ScratchDatabase {
public:
    explicit ScratchDatabase(const char* purpose) : name_{databaseName(purpose)}, text_{tsqlDatabase(name_)} {}
    ScratchDatabase(const ScratchDatabase&) = delete;
    ScratchDatabase& operator=(const ScratchDatabase&) = delete;
    ~ScratchDatabase()
    {
        try {
            dropTsqlDatabase(name_);
        } catch (const Error& error) {
            ADD_FAILURE() << error.description;
        }
    }

    const std::string& text() const { return text_; }

private:
    std::string name_;
    std::string text_;
};

/// A connection text with another value of one of its properties.
std::string withValue(const std::string& text, const std::string& property, const std::string& value)
{
    const std::size_t begin = text.find(property + "=") + property.size() + 1;
    return text.substr(0, begin) + value + text.substr(text.find(';', begin));
}

class CheckServer : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (!tsqlServer()) return;
        database_ = std::make_unique<ScratchDatabase>("sound");
        installation_ = database_->text();
        makeInstallation(odbc::connectText(installation_));
    }
    static void TearDownTestSuite() { database_.reset(); }

    void SetUp() override
    {
        if (!tsqlServer()) GTEST_SKIP() << "no T-SQL server";
        connection_ = odbc::connectText(installation_);
    }

    /// Checks the database of a connection text. @return its lines
    static CheckLines check(int status, const std::string& connectionText, const std::vector<std::string>& more = {})
    {
        std::vector<std::string> words{"--odbc", connectionText};
        words.insert(words.end(), more.begin(), more.end());
        const Outcome outcome = runCheck(words);
        EXPECT_EQ(outcome.status, status) << outcome.output << outcome.errors;
        EXPECT_EQ(outcome.errors, "");
        return CheckLines{outcome.output};
    }

    static std::string text(const ado::ConnectionRef& connection, const std::string& query)
    {
        ado::Recordset rows;
        rows.Open(query, connection);
        return rows.AtEOF() ? std::string{} : convert::toText(rows.Fields().Item(0).Value());
    }

    static inline std::unique_ptr<ScratchDatabase> database_;
    static inline std::string installation_; ///< the connection text of a sound database
    ado::ConnectionRef connection_;          ///< to it
};

TEST_F(CheckServer, ASoundDatabaseIsRightAndStaysAsItIs)
{
    const auto before = dumpOf(connection_);
    const CheckLines lines = check(0, installation_);
    EXPECT_THAT(lines.wrong(), IsEmpty());
    EXPECT_THAT(lines.of("server"), StartsWith("ok: "));
    EXPECT_EQ(lines.of("tables"), "ok: 326 tables with 3653 columns are as the library needs them");
    for (const std::string procedure : {"tmk_MODELS_INS", "tmk_NodeVisible", "tmk_OPTIONEN_INS"})
        EXPECT_EQ(lines.of("procedure " + procedure), "ok: its text is that of this version");
    EXPECT_THAT(lines.of("texts"), StartsWith("ok: 3913 of 3913"));
    EXPECT_EQ(lines.of("rights"), "ok: the login may use all 329 tables and procedures");
    EXPECT_EQ(lines.of("list LOG"), "ok: 5 rows");
    EXPECT_EQ(lines.of("selection HOLZART_VALID"), "ok: 1 rows");
    EXPECT_EQ(lines.of("option written"), "ok: in a transaction that was rolled back");
    EXPECT_EQ(lines.of("object lock"), "ok: taken and released in a transaction that was rolled back");
    EXPECT_EQ(lines.of("row lock"), "ok: a second connection does not get the held row, and reads it");
    EXPECT_TRUE(dumpOf(connection_) == before) << "the check has changed the database";
}

/// The library makes a row for an option that it reads and that has none; the check must not.
TEST_F(CheckServer, OptionsWithoutRowsStayWithoutRows)
{
    connection_->Execute("DELETE FROM OPTIONEN");
    const auto before = dumpOf(connection_);
    const CheckLines lines = check(0, installation_);
    EXPECT_THAT(lines.of("key rows"), HasSubstr("where you do not use them: OPTIONEN"));
    EXPECT_THAT(lines.of("list LOG, grouped"), StartsWith("ok: "));
    EXPECT_TRUE(dumpOf(connection_) == before) << "the check has changed the database";
}

/// The text of a procedure with other comments, blanks and names in brackets.
std::string reformatted(const std::string& procedure)
{
    for (const database::ProcedureScript& script : database::procedureScripts()) {
        if (script.name != procedure) continue;
        const std::string batch = withNewestCollation(script.text.substr(script.text.find("CREATE PROCEDURE")));
        const std::string named = text::replaceAll(batch, "CREATE PROCEDURE " + procedure,
                                                   "/* ours */ create   procedure [dbo].[" + procedure + "]\n");
        return text::replaceAll(text::replaceAll(named, "    ", "\t"), "SET NOCOUNT ON", "set nocount on; -- quiet");
    }
    return {};
}

/// Each fault is made, seen and mended again.
constexpr std::array damages{
    "DROP TABLE BB_JAGDHUNDE",
    "ALTER TABLE LOGS DROP COLUMN KUBATUR",
    "ALTER TABLE STRINGS DROP COLUMN SHORT_FRENCH",
    "ALTER TABLE STRINGS ADD SHORT_FRENCH NVARCHAR(20)",
    "ALTER TABLE STRINGS DROP COLUMN SHORT_ENGLISH",
    "ALTER TABLE STRINGS ADD SHORT_ENGLISH NVARCHAR(80)",
    "ALTER TABLE MODELS DROP COLUMN MODEL",
    "ALTER TABLE MODELS ADD MODEL FLOAT",
    "DELETE FROM STRINGS WHERE ID_STRING IN (4887,20036)",
    "UPDATE STRINGS SET FRENCH = NULL WHERE ID_STRING = 19",
    "DROP PROCEDURE tmk_MODELS_INS",
    "DROP PROCEDURE tmk_OPTIONEN_INS",
    "DROP PROCEDURE tmk_NodeVisible",
    "CREATE PROCEDURE tmk_NodeVisible @strKey VARCHAR(200) AS BEGIN SET NOCOUNT ON END",
    "DROP TABLE FORMS_CONFIG",
    "CREATE TABLE FORMS_CONFIG (FORM_ID NVARCHAR(30) NOT NULL, PROPERTY_ID NVARCHAR(50) NOT NULL, NUMBER_VALUE INT NOT "
    "NULL)",
    "ALTER TABLE USERS DROP COLUMN NAME",
    "ALTER TABLE USERS ADD NAME NVARCHAR(80) COLLATE Latin1_General_CS_AS",
    "CREATE TABLE MY_OWN (ID INT)",
};

void expectSchemaFaults(const CheckLines& lines)
{
    EXPECT_THAT(lines.of("table BB_JAGDHUNDE"), StartsWith("missing: run database/sqlserver/01_tables.sql again"));
    EXPECT_EQ(lines.of("column LOGS.KUBATUR"), "missing: ALTER TABLE [LOGS] ADD [KUBATUR] FLOAT");
    EXPECT_EQ(lines.of("column STRINGS.SHORT_FRENCH"),
              "different: NVARCHAR(20) instead of NVARCHAR(60): ALTER TABLE [STRINGS] ALTER COLUMN [SHORT_FRENCH] "
              "NVARCHAR(60)");
    EXPECT_EQ(lines.of("column STRINGS.SHORT_ENGLISH"), "no line") << "a wider text is no fault";
    EXPECT_THAT(lines.of("column MODELS.MODEL"), StartsWith("different: FLOAT instead of NVARCHAR("));
    EXPECT_EQ(lines.of("column FORMS_CONFIG.NUMBER_VALUE"),
              "different: it refuses Null: ALTER TABLE [FORMS_CONFIG] ALTER COLUMN [NUMBER_VALUE] INT NULL");
    EXPECT_EQ(lines.of("key of FORMS_CONFIG"), "missing: its rows can be neither edited nor locked: ALTER TABLE "
                                               "[FORMS_CONFIG] ADD PRIMARY KEY ([FORM_ID], [PROPERTY_ID])");
    EXPECT_THAT(lines.of("collation of USERS.NAME"), HasSubstr(": ALTER TABLE [USERS] ALTER COLUMN [NAME] NVARCHAR("));
    EXPECT_THAT(lines.of("tables"), HasSubstr("1 tables and 0 columns of your own"));
}

void expectOtherFaults(const CheckLines& lines)
{
    EXPECT_EQ(lines.of("texts"), "missing: 2 are missing (4887, 20036): run database/sqlserver/03_texts.sql again");
    EXPECT_THAT(lines.of("texts in FRENCH"), StartsWith("missing: 1 are empty (19)"));
    EXPECT_THAT(lines.of("procedure tmk_MODELS_INS"), StartsWith("missing: run database/sqlserver/02_procedures.sql"));
    EXPECT_EQ(lines.of("procedure tmk_NodeVisible"), "different: its text is another than that of this version: run "
                                                     "database/sqlserver/02_procedures.sql again");
    EXPECT_EQ(lines.of("procedure tmk_OPTIONEN_INS"), "ok: its text is that of this version");
    EXPECT_THAT(lines.of("option written"), StartsWith("ok: "));
    EXPECT_THAT(lines.of("list LOG"), StartsWith("failed: "));
    EXPECT_THAT(lines.of("list BBHAB"), StartsWith("ok: "));
}

TEST_F(CheckServer, EachFaultHasItsLineAndRemedy)
{
    const ScratchDatabase database{"faults"};
    const auto connection = odbc::connectText(database.text());
    makeInstallation(connection);
    for (const char* const statement : damages)
        connection->Execute(statement);
    connection->Execute(reformatted("tmk_OPTIONEN_INS"));
    const auto before = dumpOf(connection);
    const CheckLines lines = check(1, database.text());
    EXPECT_TRUE(dumpOf(connection) == before) << "the check has changed the database";
    expectSchemaFaults(lines);
    expectOtherFaults(lines);

    // The remedies mend what they stand for. The open server knows no NULL in ALTER COLUMN.
    constexpr std::array mended{"column LOGS.KUBATUR", "column STRINGS.SHORT_FRENCH", "key of FORMS_CONFIG"};
    for (const char* const what : mended) {
        const std::string line = lines.of(what);
        connection->Execute(line.substr(line.find("ALTER TABLE")));
    }
    connection->Execute("DROP PROCEDURE tmk_OPTIONEN_INS");
    const CheckLines after = check(1, database.text());
    for (const char* const what : mended)
        EXPECT_EQ(after.of(what), "no line");
    EXPECT_EQ(after.of("list LOG"), "ok: 5 rows");
    EXPECT_THAT(after.of("procedure tmk_OPTIONEN_INS"), StartsWith("missing: "));
    EXPECT_THAT(after.of("option written"), StartsWith("skipped: "));
}

TEST_F(CheckServer, AnEmptyDatabaseIsTold)
{
    const ScratchDatabase database{"empty"};
    const CheckLines lines = check(1, database.text());
    EXPECT_THAT(lines.of("tables"), StartsWith("missing: none of the 326 tables is there: make the database"));
    EXPECT_EQ(lines.of("key rows"), "skipped: no table is known");
    EXPECT_EQ(lines.of("rights"), "skipped: no table and no procedure is known");
    EXPECT_THAT(lines.of("texts"), StartsWith("failed: "));
    EXPECT_THAT(lines.of("object lock"), StartsWith("failed: "));
}

/// The order of the connection text, and the format of the sessions.
TEST_F(CheckServer, AnotherDateOrderIsTold)
{
    EXPECT_THAT(check(1, installation_ + ";Date Order=MDY").of("date order for DD.MM.YYYY"),
                StartsWith("different: '5.3.2024' is read as 20240503 instead of 20240305: write 'Date Order=DMY'"));
    EXPECT_THAT(check(0, installation_ + ";Date Order=MDY", {"--date-format", "MM.DD.YYYY"}).wrong(), IsEmpty());
}

/// A login of its own, with few rights.
class Login {
public:
    explicit Login(const ado::ConnectionRef& connection) : connection_{connection}
    {
        connection_->Execute("CREATE LOGIN " + name + " WITH PASSWORD = 'geheim123'");
        connection_->Execute("CREATE USER " + name + " FOR LOGIN " + name);
    }
    Login(const Login&) = delete;
    Login& operator=(const Login&) = delete;
    ~Login()
    {
        for (const std::string& grant : granted_)
            undo("REVOKE " + grant + " FROM ");
        undo("DROP USER ");
        undo("DROP LOGIN ");
    }

    void grant(const std::string& right, const std::vector<std::string>& objects)
    {
        for (const std::string& object : objects) {
            granted_.push_back(std::string{right}.append(" ON ").append(object));
            connection_->Execute("GRANT " + granted_.back() + " TO " + name);
        }
    }

    const std::string name = "check_" + std::to_string(::getpid());

private:
    void undo(const std::string& words)
    {
        try {
            connection_->Execute(words + name);
        } catch (const Error& error) {
            ADD_FAILURE() << error.description;
        }
    }

    ado::ConnectionRef connection_;
    std::vector<std::string> granted_;
};

TEST_F(CheckServer, MissingRightsAreToldWithTheirGrants)
{
    Login login{connection_};
    const std::string low = withValue(withValue(installation_, "UID", login.name), "PWD", "geheim123");
    login.grant("SELECT", {"STRINGS", "LOGS", "HOLZART"});
    const Outcome outcome = runCheck({"--odbc", low});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output + outcome.errors, Not(HasSubstr("geheim123")));
    const CheckLines lines{outcome.output};
    const std::string words = "GRANT INSERT, UPDATE, DELETE ON ";
    const std::string to = " TO [" + login.name + "]";
    EXPECT_EQ(lines.of("right INSERT, UPDATE, DELETE"), "missing: on 3 tables (HOLZART, LOGS, STRINGS): " + words +
                                                            "[dbo].[HOLZART]" + to + "; " + words + "[dbo].[LOGS]" +
                                                            to + "; " + words + "[dbo].[STRINGS]" + to);
    EXPECT_THAT(lines.of("tables"), HasSubstr("or grant the login a right on what it does not see"));
    EXPECT_THAT(lines.of("procedure tmk_OPTIONEN_INS"), HasSubstr("or grant the login the right to execute it"));
    EXPECT_EQ(lines.of("selection HOLZART_GRID"), "ok: 27 rows");
    EXPECT_THAT(lines.of("list LOG"), StartsWith("failed: "));
    EXPECT_THAT(lines.of("object lock"), StartsWith("failed: "));

    login.grant("SELECT", {"OPTIONEN", "LOGS_RECH"});
    EXPECT_EQ(check(1, low).of("right INSERT, UPDATE, DELETE"),
              "missing: on 5 tables (HOLZART, LOGS, LOGS_RECH, OPTIONEN, STRINGS): " + words + "SCHEMA::[dbo]" + to);
}

/// Another session changes the table of locks and does not come to an end.
TEST_F(CheckServer, ALockedTableIsToldAndStopsNoOtherCheck)
{
    connection_->Execute("BEGIN TRANSACTION");
    connection_->Execute("ALTER TABLE [LOCK] ADD BLOCKED INT");
    const CheckLines lines = check(1, installation_);
    connection_->Execute("ROLLBACK TRANSACTION");
    EXPECT_THAT(lines.of("object lock"), StartsWith("failed: "));
    EXPECT_THAT(lines.of("object lock"), HasSubstr("another session holds what it needs"));
    EXPECT_THAT(lines.of("row lock"), StartsWith("ok: "));
    EXPECT_THAT(lines.of("list LOG"), StartsWith("ok: "));
}

/// The server ends the session of the check while it waits for the locked table.
TEST_F(CheckServer, ALostConnectionEndsWithAClearLine)
{
    connection_->Execute("BEGIN TRANSACTION");
    connection_->Execute("ALTER TABLE [LOCK] ADD BLOCKED INT");
    Program child{{"check", "--odbc", installation_, "--format", "csv"}};
    const auto admin = odbc::connectText(installation_);
    const std::string own = text(connection_, "SELECT @@SPID") + "," + text(admin, "SELECT @@SPID");
    const std::string blocked =
        "SELECT spid FROM sys.sysprocesses WHERE blocked <> 0 AND dbid = DB_ID() AND spid NOT IN (" + own + ")";
    // It waits for the table where it is seen several times in turn.
    std::string waiting;
    constexpr int enough = 20;
    for (int attempt = 0, seen = 0; attempt < 1200 && seen < enough; ++attempt) {
        ::poll(nullptr, 0, 50);
        const std::string found = text(admin, blocked);
        seen = !found.empty() && found == waiting ? seen + 1 : 0;
        waiting = found;
    }
    ASSERT_NE(waiting, "");
    admin->Execute("KILL " + waiting);
    const Outcome outcome = child.finish();
    connection_->Execute("ROLLBACK TRANSACTION");
    EXPECT_EQ(outcome.status, 1);
    const CheckLines lines{outcome.output};
    EXPECT_EQ(lines.wrong().size(), 1U) << outcome.output;
    EXPECT_THAT(lines.of(lines.wrong().at(0)), StartsWith("failed: The connection to the server is lost"));
    EXPECT_EQ(lines.of("row lock"), "skipped: the connection to the database is lost; run the check again");
}

TEST_F(CheckServer, WhatCannotBeOpenedIsTheErrorOfTheCommandWithoutThePassword)
{
    const std::string wrongPassword = withValue(installation_, "PWD", "geheim123");
    for (const std::string& wrong :
         {wrongPassword, withValue(wrongPassword, "SERVER", "127.0.0.3"), withValue(wrongPassword, "DRIVER", "none")}) {
        const Outcome outcome = runCheck({"--odbc", wrong});
        EXPECT_EQ(outcome.status, 1) << wrong;
        EXPECT_EQ(outcome.output, "") << wrong;
        EXPECT_THAT(outcome.errors, StartsWith("tamarok: ")) << wrong;
        EXPECT_THAT(outcome.errors, Not(HasSubstr("geheim123"))) << wrong;
    }
}

TEST(CheckOtherServer, ThatIsNoTsqlServerIsTold)
{
    if (!PostgresServer::isInstalled()) {
        tellSkipped("PostgreSQL: its programs are missing");
        GTEST_SKIP() << "PostgreSQL is not installed";
    }
    const PostgresServer postgres;
    const Outcome outcome = runCheck({"--odbc", postgres.connectionText()});
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    const CheckLines lines{outcome.output};
    EXPECT_THAT(lines.wrong(), ElementsAre("server"));
    EXPECT_THAT(lines.of("server"), StartsWith("different: not a T-SQL server"));
    EXPECT_EQ(lines.of("tables"), "skipped: the server is no T-SQL server");
    EXPECT_THAT(outcome.output + outcome.errors, Not(HasSubstr("no secret")));
}

} // namespace
} // namespace tamarok::test
