#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "apps/check_lines.h"
#include "support/other_account.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/ado.h"

/// `tamarok check --db`.
namespace tamarok::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class CheckFile : public testing::Test {
protected:
    CheckFile() { fs::permissions(folder_.path(), fs::perms{0755}); }

    /// Damages the file by a session of its own.
    void execute(const std::vector<std::string>& statements) const
    {
        const auto connection = embedded::connect(file_);
        for (const std::string& statement : statements)
            connection->Execute(statement);
    }

    /// Checks the file, which must stay as it is. @return its lines
    CheckLines check(int status, const std::vector<std::string>& more = {}) const
    {
        const auto before = folder_.contents();
        std::vector<std::string> words{"--db", file_};
        words.insert(words.end(), more.begin(), more.end());
        const Outcome outcome = runCheck(words);
        EXPECT_EQ(outcome.status, status) << outcome.output << outcome.errors;
        EXPECT_EQ(outcome.errors, "");
        EXPECT_TRUE(folder_.contents() == before) << "the check has changed a file";
        return CheckLines{outcome.output};
    }

    ScratchFolder folder_;
    std::string file_ = makeDatabase(folder_, 20);
};

TEST_F(CheckFile, ASoundDatabaseIsRight)
{
    const CheckLines lines = check(0);
    EXPECT_THAT(lines.wrong(), IsEmpty());
    EXPECT_EQ(lines.of("tables"), "ok: 326 tables with 3653 columns are as the library needs them");
    EXPECT_EQ(lines.of("procedure tmk_OPTIONEN_INS"), "ok: built in");
    EXPECT_THAT(lines.of("texts"), StartsWith("ok: 3913 of 3913"));
    EXPECT_EQ(lines.of("list LOG"), "ok: 5 rows");
    EXPECT_EQ(lines.of("selection HOLZART_VALID"), "ok: 1 rows");
    EXPECT_THAT(lines.of("option written"), HasSubstr("copy of the table in memory"));
    EXPECT_THAT(lines.of("object lock"), HasSubstr("copy of the table in memory"));
    EXPECT_THAT(lines.of("row lock"), StartsWith("skipped: "));
}

TEST_F(CheckFile, EachFaultHasItsLineAndRemedy)
{
    execute({"DROP TABLE BB_JAGDHUNDE", "ALTER TABLE LOGS DROP COLUMN KUBATUR",
             "ALTER TABLE STRINGS DROP COLUMN SHORT_FRENCH", "ALTER TABLE STRINGS ADD SHORT_FRENCH NVARCHAR(20)",
             "ALTER TABLE STRINGS DROP COLUMN SHORT_ENGLISH", "ALTER TABLE STRINGS ADD SHORT_ENGLISH NVARCHAR(80)",
             "ALTER TABLE MODELS DROP COLUMN MODEL", "ALTER TABLE MODELS ADD MODEL FLOAT",
             "DELETE FROM STRINGS WHERE ID_STRING IN (4887,20036)",
             "UPDATE STRINGS SET FRENCH = NULL WHERE ID_STRING = 19"});
    const CheckLines lines = check(1);
    EXPECT_EQ(lines.of("table BB_JAGDHUNDE"), "missing: run its CREATE TABLE of database/schema/03_lockable_heads.sql");
    EXPECT_EQ(lines.of("column LOGS.KUBATUR"), "missing: ALTER TABLE [LOGS] ADD [KUBATUR] FLOAT");
    EXPECT_THAT(lines.of("column STRINGS.SHORT_FRENCH"),
                StartsWith("different: NVARCHAR(20) instead of NVARCHAR(60): the embedded database does not change"));
    EXPECT_EQ(lines.of("column STRINGS.SHORT_ENGLISH"), "no line") << "a wider text is no fault";
    EXPECT_THAT(lines.of("column MODELS.MODEL"), StartsWith("different: FLOAT instead of NVARCHAR("));
    EXPECT_EQ(lines.of("texts"), "missing: 2 are missing (4887, 20036): copy them from a new database (tamarok init)");
    EXPECT_EQ(lines.of("texts in FRENCH"), "missing: 1 are empty (19): copy them from a new database (tamarok init)");
    EXPECT_THAT(lines.of("list LOG"), StartsWith("failed: ")) << "it reads the missing column";
    EXPECT_THAT(lines.of("list LOG"), HasSubstr("see the missing columns above"));
    EXPECT_THAT(lines.of("list BBHAB"), StartsWith("ok: "));
}

TEST_F(CheckFile, TheRemedyOfAMissingColumnMendsIt)
{
    execute({"ALTER TABLE LOGS DROP COLUMN KUBATUR"});
    std::string remedy = check(1).of("column LOGS.KUBATUR");
    remedy.erase(0, remedy.find("ALTER"));
    execute({remedy});
    check(0);
}

/// LOCK numbers its rows, OPTIONEN compares its names exactly.
TEST_F(CheckFile, NumberingNullAndCollationOfColumnsCount)
{
    execute(
        {"DROP TABLE [LOCK]",
         "CREATE TABLE [LOCK] (ID INT NOT NULL PRIMARY KEY, ID_USERS INT NOT NULL, LOGIN NVARCHAR(30), LISTE "
         "NVARCHAR(40))",
         "DROP TABLE OPTIONEN",
         "CREATE TABLE OPTIONEN (PROPERTY_ID NVARCHAR(30) NOT NULL PRIMARY KEY, NUMBER_VALUE INT, DOUBLE_VALUE FLOAT, "
         "TEXT_VALUE NVARCHAR(100), DATE_VALUE SMALLDATETIME)"});
    const CheckLines lines = check(1);
    EXPECT_EQ(lines.of("column LOCK.ID"),
              "different: it does not number the rows: make the table anew with INT IDENTITY(1,1)");
    EXPECT_THAT(lines.of("column LOCK.ID_USERS"), StartsWith("different: it refuses Null"));
    EXPECT_EQ(lines.of("column LOCK.BELEGE"), "missing: ALTER TABLE [LOCK] ADD [BELEGE] INT");
    EXPECT_THAT(lines.of("collation of OPTIONEN.PROPERTY_ID"),
                StartsWith("different: it takes upper and lower case for the same"));
    EXPECT_THAT(lines.of("object lock"), StartsWith("failed: "));
}

TEST_F(CheckFile, WhatTheCustomerHasAddedIsNoFault)
{
    execute({"CREATE TABLE MY_OWN (ID INT)", "ALTER TABLE LOGS ADD MY_COLUMN INT",
             "UPDATE STRINGS SET GERMAN = 'Nadelholz' WHERE ID_STRING = 19", "DELETE FROM FORMS_CONFIG"});
    const CheckLines lines = check(0);
    EXPECT_THAT(lines.of("tables"), HasSubstr("1 tables and 1 columns of your own"));
    EXPECT_THAT(lines.of("texts"), HasSubstr("1 have another wording"));
    EXPECT_THAT(lines.of("key rows"), HasSubstr("FORMS_CONFIG"));
}

TEST_F(CheckFile, TheDateFormatOfTheSessionsCounts)
{
    EXPECT_EQ(check(0, {"--date-format", "DD-MM-YYYY"}).of("date order for DD-MM-YYYY"),
              "ok: '5-3-2024' is read as 5 March 2024");
    EXPECT_THAT(check(1, {"--date-format", "MM.DD.YYYY"}).of("date order for MM.DD.YYYY"),
                StartsWith("different: '3.5.2024' is read as 20240503 instead of 20240305: write 'Date Order=MDY'"));
    for (const std::string format : {"nonsense", "DD/MM/YYYY", "DD.MM", ""})
        EXPECT_THAT(check(1, {"--date-format", format}).of("date order for " + format),
                    StartsWith("different: not a date format"));
}

TEST_F(CheckFile, AnEmptyDatabaseIsTold)
{
    fs::remove(file_);
    embedded::connect(file_, {.mode = embedded::OpenMode::Create})->Close();
    const CheckLines lines = check(1);
    EXPECT_THAT(lines.of("tables"), StartsWith("missing: none of the 326 tables is there: make the database with"));
    EXPECT_EQ(lines.of("key rows"), "skipped: no table is known");
    EXPECT_THAT(lines.of("texts"), StartsWith("failed: "));
    EXPECT_EQ(lines.of("date order for DD.MM.YYYY"), "ok: '5.3.2024' is read as 5 March 2024");
}

/// Tables without rows, and most tables not even made.
TEST_F(CheckFile, AHalfFilledDatabaseIsTold)
{
    fs::remove(file_);
    embedded::connect(file_, {.mode = embedded::OpenMode::Create})->Close();
    execute({"CREATE TABLE STRINGS (ID_STRING INT NOT NULL PRIMARY KEY, GERMAN NVARCHAR(255), ENGLISH NVARCHAR(255), "
             "FRENCH NVARCHAR(255))",
             "INSERT INTO STRINGS (ID_STRING, GERMAN, ENGLISH, FRENCH) VALUES (5, 'Nein', 'No', 'Non')"});
    const CheckLines lines = check(1);
    EXPECT_THAT(lines.of("tables"), StartsWith("missing: 325 tables (ACCESS_LEVELS, "));
    EXPECT_EQ(lines.of("column STRINGS.CUSTOM_FRENCH"),
              "missing: ALTER TABLE [STRINGS] ADD [CUSTOM_FRENCH] NVARCHAR(255)");
    EXPECT_THAT(lines.of("texts"), StartsWith("missing: 3912 are missing ("));
    execute({"DELETE FROM STRINGS"});
    EXPECT_THAT(check(1).of("key rows"), StartsWith("missing: no table of keys has rows: make the database with"));
}

TEST_F(CheckFile, WhatCannotBeOpenedIsTheErrorOfTheCommand)
{
    const Outcome missing = runCheck({"--db", folder_ / "none.db"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output, "");
    EXPECT_THAT(missing.errors, HasSubstr("none.db"));
    std::ofstream{folder_ / "text.db"} << "this is no database, but a text that is long enough to be one";
    const Outcome text = runCheck({"--db", folder_ / "text.db"});
    EXPECT_EQ(text.status, 1);
    EXPECT_THAT(text.errors, HasSubstr("text.db"));
    EXPECT_EQ(runCheck({"--db", file_, "--odbc", "DSN=none"}).status, 2);
}

TEST_F(CheckFile, ASessionThatWritesIsNotInTheWay)
{
    Program session{{"call", "--db", file_}};
    session.ask(R"({"exec":"BEGIN TRANSACTION; DELETE FROM LOCK; DELETE FROM LOGS"})");
    const Outcome outcome = runCheck({"--db", file_});
    EXPECT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_EQ(CheckLines{outcome.output}.of("list LOG"), "ok: 5 rows") << "what is not committed does not count";
    session.ask(R"({"exec":"ROLLBACK TRANSACTION"})");
    session.finish();
}

TEST_F(CheckFile, AFileThatTheAccountCannotWriteIsTold)
{
    if (!canChangeAccount()) GTEST_SKIP() << "root may write everything; another account cannot be taken";
    if (asOtherAccount([] { return std::to_string(::access(TAMAROK_PROGRAM, X_OK)); }) != "0")
        GTEST_SKIP() << "another account cannot reach the program";
    std::ofstream{file_ + "-locks"};
    for (const std::string& path : {file_, file_ + "-locks"})
        fs::permissions(path, fs::perms{0444});
    const auto before = folder_.contents();
    const CheckLines lines{asOtherAccount([&] { return runCheck({"--db", file_}).output; })};
    EXPECT_THAT(lines.wrong(),
                ElementsAre("right to write the file", "right to write the folder", "right to the file of row locks"));
    EXPECT_THAT(lines.of("right to write the file"),
                HasSubstr("give the account, or a group of it, the right to write"));
    EXPECT_EQ(lines.of("list LOG"), "ok: 5 rows");
    EXPECT_TRUE(folder_.contents() == before);
    fs::permissions(file_, fs::perms{0600});
    EXPECT_THAT(asOtherAccount([&] {
                    return runCheck({"--db", file_}).errors;
                }),
                HasSubstr("demo.db"))
        << "a file that cannot even be read";
}

TEST_F(CheckFile, TableAndJsonShowTheSameLines)
{
    const Outcome table = run({"check", "--db", file_});
    EXPECT_THAT(table.output, StartsWith("what "));
    EXPECT_THAT(table.output, HasSubstr("\ntexts "));
    const Outcome json = run({"check", "--db", file_, "--format", "json"});
    EXPECT_THAT(json.output, StartsWith(R"({"columns":["what","state","remark"],"rows":[)"));
    EXPECT_THAT(json.output, HasSubstr(R"(["list LOG","ok","5 rows"])"));
}

TEST_F(CheckFile, ProgressGoesToATerminalOnly)
{
    const Screen screen = runOnTerminal({"check", "--db", file_}, folder_ / "output.txt");
    EXPECT_EQ(screen.status, 0);
    EXPECT_THAT(screen.text, HasSubstr("selections"));
    EXPECT_THAT(screen.text, Not(HasSubstr("what")));
    EXPECT_EQ(run({"check", "--db", file_}).errors, "");
}

} // namespace
} // namespace tamarok::test
