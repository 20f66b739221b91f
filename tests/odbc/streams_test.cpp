#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "server_test.h"

#include "tamarok/convert.h"
#include "tamarok/date.h"

namespace tamarok::odbc {

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

/// Largest resident memory of this process so far, in KiB.
std::int64_t peakMemory()
{
    std::ifstream status{"/proc/self/status"};
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) return std::stoll(line.substr(6));
    return 0;
}

/// TAMAROK_STREAM_ROWS sets another number for a longer run.
std::int64_t streamedRows()
{
    constexpr std::int64_t otherwise = 300'000;
    const char* const wanted = std::getenv("TAMAROK_STREAM_ROWS");
    return wanted == nullptr ? otherwise : std::stoll(wanted);
}

} // namespace

class OdbcStreams : public ServerTest {};
INSTANTIATE_TEST_SUITE_P(Servers, OdbcStreams,
                         ::testing::Values(TestServer::Tsql, TestServer::Postgres, TestServer::Sqlite), serverName);

TEST_P(OdbcStreams, ManyRowsComeInOrderAndInBoundedMemory)
{
    const std::int64_t count = streamedRows();
    // Without this option SQLite's driver reads whole results.
    if (GetParam() == TestServer::Sqlite) connection = connectText(connectionText() + ";StepAPI=1");
    scalar("SELECT 1");
    const std::int64_t before = peakMemory();
    const auto rows = open(numbers(count, "N, N * 2 AS D"));
    rows->MoveNext();
    std::int64_t sum = 1;
    std::int64_t seen = 1;
    for (; !rows->AtEOF(); rows->MoveNext(), ++seen)
        sum += convert::toLongLong(rows->Fields().Item(0).Value());
    EXPECT_EQ(seen, count);
    EXPECT_EQ(sum, count * (count + 1) / 2);
    const std::int64_t grown = peakMemory() - before;
    std::cout << count << " rows: the peak memory grew by " << grown << " KiB to " << peakMemory() << " KiB\n";
    // The address sanitizer keeps freed memory for a while.
    if (!isSanitized) {
        EXPECT_LT(grown, 20'000) << "KiB";
    }
}

TEST_P(OdbcStreams, LongColumnsMayStandAnywhere)
{
    const std::string longType = word("NVARCHAR(MAX)", "TEXT", "NTEXT");
    const std::string table = makeTable("ID INT NOT NULL PRIMARY KEY, L1 " + longType + ", A INT, L2 " + longType +
                                        ", B VARCHAR(10), L3 " + longType);
    const std::string text(5000, 'x');
    connection->Execute("INSERT INTO " + table + " VALUES (1, '" + text + "1', 11, NULL, 'b1', '')");
    connection->Execute("INSERT INTO " + table + " VALUES (2, NULL, NULL, '" + text + "2', NULL, 'c2')");
    const auto rows = open("SELECT L1, ID, A, L2, B, L3 FROM " + table + " ORDER BY ID");
    EXPECT_EQ(rows->Fields().Item("L3").Value(), Variant{""});
    EXPECT_EQ(rows->Fields().Item("L1").Value(), Variant{text + "1"}) << "asked for out of order";
    EXPECT_EQ(rows->Fields().Item("A").Value(), Variant{11});
    EXPECT_EQ(rows->Fields().Item("B").Value(), Variant{"b1"});
    EXPECT_EQ(rows->Fields().Item("L2").Value(), Variant{Null{}});
    rows->MoveNext();
    EXPECT_EQ(rows->GetRows().elements(), (std::vector<Variant>{Null{}, 2, Null{}, text + "2", Null{}, "c2"}));
}

TEST_P(OdbcStreams, TextsOfMoreThanAMegabyte)
{
    const std::string table = makeTable("ID INT NOT NULL PRIMARY KEY, L " + word("NTEXT", "TEXT", "NTEXT"));
    // The text is read in parts, so that characters of two units meet the ends of parts. SQLite's driver breaks them.
    const std::string words = word("Lärche 🌲, Fichte; ", "Lärche 🌲, Fichte; ", "Lärche, Fichte; ");
    std::string text;
    while (text.size() < 3'000'000)
        text += words;
    ado::Command command;
    command.ActiveConnection = connection;
    command.CommandText = "INSERT INTO " + table + " (ID, L) VALUES (1, ?)";
    command.Parameters() = {
        command.CreateParameter("", ado::DataType::LongVarWChar, ado::ParameterDirection::Input, 0, text)};
    command.Execute();
    EXPECT_EQ(scalar("SELECT L FROM " + table), Variant{text});
}

TEST_P(OdbcStreams, ThreeHundredColumns)
{
    std::string list;
    for (int column = 0; column < 300; ++column)
        list += (column == 0 ? "N + " : ", N + ") + std::to_string(column) + " AS C" + std::to_string(column);
    const auto rows = open(numbers(3, list));
    EXPECT_EQ(rows->Fields().Count(), 300);
    const VariantArray taken = rows->GetRows();
    EXPECT_EQ(convert::toLong(taken.elements()[299]), 300);
    EXPECT_EQ(convert::toLong(taken.elements().back()), 302);
}

TEST_P(OdbcStreams, OtherStatementsMayRunWhileARecordsetIsHalfRead)
{
    const auto rows = open(numbers(200'000, "N, 'text of row' AS T"));
    for (int row = 1; row < 1000; ++row)
        rows->MoveNext();
    EXPECT_EQ(convert::toLong(rows->Fields().Item(0).Value()), 1000);
    EXPECT_EQ(convert::toLong(scalar("SELECT 7")), 7);
    EXPECT_EQ(convert::toLong(rows->Fields().Item(0).Value()), 1000) << "the row stays";
    std::int64_t last = 0;
    std::int64_t seen = 999;
    for (; !rows->AtEOF(); rows->MoveNext(), ++seen)
        last = convert::toLongLong(rows->Fields().Item(0).Value());
    EXPECT_EQ(seen, 200'000);
    EXPECT_EQ(last, 200'000);
}

TEST_P(OdbcStreams, RecordsetDroppedHalfReadFreesTheConnection)
{
    for (int turn = 0; turn < 5; ++turn) {
        auto rows = open(numbers(100'000));
        rows->MoveNext();
        rows.reset();
        EXPECT_EQ(convert::toLong(scalar("SELECT 5")), 5);
    }
}

TEST_P(OdbcStreams, NestedRecordsetsOverManyRows)
{
    const auto outer = open(numbers(300));
    std::int64_t sum = 0;
    for (; !outer->AtEOF(); outer->MoveNext())
        sum += convert::toLongLong(scalar("SELECT " + convert::toText(outer->Fields().Item(0).Value())));
    EXPECT_EQ(sum, 300 * 301 / 2);
}

TEST_P(OdbcStreams, FailureBehindGoodRowsIsNotLost)
{
    if (GetParam() == TestServer::Sqlite) GTEST_SKIP() << "SQLite divides by zero and gives Null";
    const auto readAll = [this](bool interrupted) {
        const auto rows = open(numbers(2000, "N, 100 / (1500 - N) AS Q"));
        if (interrupted) scalar("SELECT 1");
        while (!rows->AtEOF())
            rows->MoveNext();
    };
    EXPECT_EQ(errorNumber([&] { readAll(false); }), errors::statementRefused);
    EXPECT_EQ(errorNumber([&] { readAll(true); }), errors::statementRefused);
    EXPECT_EQ(convert::toLong(scalar("SELECT 3")), 3) << "the connection goes on working";
}

TEST_P(OdbcStreams, BatchesGiveTheirFirstResultAndTheirLastFailure)
{
    if (GetParam() == TestServer::Sqlite) GTEST_SKIP() << "the driver takes one statement at a time";
    const auto rows = open("SELECT 1 AS A; SELECT 2 AS B");
    EXPECT_EQ(rows->Fields().Item("A").Value(), Variant{1});
    rows->MoveNext();
    EXPECT_TRUE(rows->AtEOF());
    EXPECT_EQ(convert::toLong(scalar("SELECT 3")), 3);
    EXPECT_NE(errorNumber([&] { connection->Execute("SELECT 1; SELECT 1 / 0"); }), 0);
    EXPECT_EQ(convert::toLong(scalar("SELECT 3")), 3);
}

TEST_P(OdbcStreams, TypesBesidesThoseOfTheLibrary)
{
    if (GetParam() == TestServer::Sqlite) GTEST_SKIP() << "SQLite has no such types";
    const auto rows =
        open(word("SELECT CAST(-1234.567 AS DECIMAL(10,3)) AS A, CAST('2024-03-05' AS DATE) AS B, "
                  "CAST('10:11:12.345' AS TIME) AS C, CAST(0x01FF AS VARBINARY(5)) AS D, "
                  "CAST('6F9619FF-8B86-D011-B42D-00C04FC964FF' AS UNIQUEIDENTIFIER) AS E, CAST(1.5 AS REAL) AS F, "
                  "CAST(12.34 AS MONEY) AS G, CAST('20240305 23:59:59.997' AS DATETIME) AS H",
                  "SELECT CAST(-1234.567 AS DECIMAL(10,3)) AS A, CAST('2024-03-05' AS DATE) AS B, "
                  "CAST('10:11:12' AS TIME(0)) AS C, CAST('\\x01FF' AS BYTEA) AS D, "
                  "CAST('6F9619FF-8B86-D011-B42D-00C04FC964FF' AS UUID) AS E, CAST(1.5 AS REAL) AS F, "
                  "CAST(12.34 AS DECIMAL(10,2)) AS G, CAST('2024-03-05 23:59:59.997' AS TIMESTAMP) AS H",
                  ""));
    const auto value = [&rows](const char* name) { return rows->Fields().Item(name).Value(); };
    EXPECT_EQ(value("A"), Variant{-1234.567});
    EXPECT_EQ(value("B"), Variant{makeDate(2024, 3, 5)});
    EXPECT_EQ(value("C"), Variant{fromCivil({1899, 12, 30, 10, 11, 12, isTsql() ? 345 : 0})});
    EXPECT_EQ(value("D"), Variant{"0x01FF"});
    EXPECT_EQ(convert::toText(value("E")).size(), 36U);
    EXPECT_EQ(value("F"), Variant{1.5});
    EXPECT_EQ(value("G"), Variant{12.34});
    EXPECT_EQ(value("H"), Variant{fromCivil({2024, 3, 5, 23, 59, 59, 997})});
}

TEST_P(OdbcStreams, DriversLeaveLiteralsAndCommentsAlone)
{
    // SQLite's driver counts the marks in comments.
    const std::string comments = GetParam() == TestServer::Sqlite ? "" : " /* why? don't */ -- and? {d}";
    const auto rows = open("SELECT 'what? {fn now()} it''s' AS A, 1 AS B" + comments);
    EXPECT_EQ(rows->Fields().Item("A").Value(), Variant{"what? {fn now()} it's"});
    EXPECT_EQ(convert::toLong(rows->Fields().Item("B").Value()), 1);
}

TEST_P(OdbcStreams, NullOfEveryType)
{
    if (!isTsql()) GTEST_SKIP() << "the shared suite has the types of the other servers";
    for (
        const char* const type :
        {"INT",           "BIGINT",          "SMALLINT",   "TINYINT",  "BIT",           "FLOAT",         "REAL",
         "DECIMAL(10,2)", "MONEY",           "SMALLMONEY", "DATETIME", "SMALLDATETIME", "DATE",          "TIME",
         "DATETIME2",     "CHAR(5)",         "VARCHAR(5)", "NCHAR(5)", "NVARCHAR(5)",   "NVARCHAR(MAX)", "VARCHAR(MAX)",
         "VARBINARY(5)",  "UNIQUEIDENTIFIER"})
        EXPECT_EQ(scalar("SELECT CAST(NULL AS " + std::string{type} + ")"), Variant{Null{}}) << type;
}

/// Each unit without partner becomes U+FFFD; a pair stays one character, also where it meets the end of a part.
TEST(OdbcBrokenTexts, SurrogatesWithoutPartnerAreReplaced)
{
    const std::string replaced = "\xEF\xBF\xBD";
    const auto connection = connectText(std::string{"DRIVER="}.append(BAD_UNITS_DRIVER).append(";SERVER=x"));
    ado::Recordset rows;
    rows.Open("SELECT S, L FROM T", connection);
    EXPECT_EQ(rows.Fields().Item("S").Value(), Variant{replaced + "a" + replaced + "b" + replaced + "🌲c" + replaced});
    std::string wanted = "x";
    for (int pair = 0; pair < 100'000; ++pair)
        wanted += "🌲";
    EXPECT_EQ(rows.Fields().Item("L").Value(), Variant{wanted + replaced});
    rows.MoveNext();
    EXPECT_TRUE(rows.AtEOF());
}

} // namespace tamarok::odbc
