#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

struct ColumnCase {
    const char* declaration;
    ado::DataType type;
    std::int32_t size;
    const char* literal;
    Variant value;
};

class ResultColumns : public testing::TestWithParam<ColumnCase> {};

TEST_P(ResultColumns, haveTypeSizeAndValue)
{
    const ColumnCase& row = GetParam();
    const auto connection = connectInMemory();
    run(connection, std::string{"CREATE TABLE T (C "} + row.declaration + " NULL)");
    const auto empty = open(connection, "SELECT C FROM T");
    ASSERT_EQ(empty->columns().size(), 1U);
    const ado::ColumnInfo& info = empty->columns().front();
    EXPECT_EQ(info.type, row.type);
    EXPECT_EQ(info.definedSize, row.size);
    EXPECT_EQ(info.name, "C");
    EXPECT_EQ(info.baseTable, "T");
    EXPECT_EQ(info.baseColumn, "C");
    EXPECT_FALSE(empty->next());

    run(connection, std::string{"INSERT INTO T (C) VALUES ("} + row.literal + ")");
    EXPECT_EQ(valueOf(connection, "SELECT C FROM T"), row.value);
    run(connection, "UPDATE T SET C = NULL");
    EXPECT_EQ(valueOf(connection, "SELECT C FROM T"), Variant{Null{}});
}

const Date someDay = makeDate(2024, 2, 29);

INSTANTIATE_TEST_SUITE_P(
    Table, ResultColumns,
    testing::Values(
        ColumnCase{"BIT", ado::DataType::Boolean, 2, "1", true},
        ColumnCase{"TINYINT", ado::DataType::UnsignedTinyInt, 1, "255", std::int16_t{255}},
        ColumnCase{"SMALLINT", ado::DataType::SmallInt, 2, "-32768", std::int16_t{-32768}},
        ColumnCase{"INT", ado::DataType::Integer, 4, "2147483647", std::int32_t{2147483647}},
        ColumnCase{"BIGINT", ado::DataType::BigInt, 8, "9007199254740993", std::int64_t{9007199254740993}},
        ColumnCase{"REAL", ado::DataType::Single, 4, "0.5", 0.5},
        ColumnCase{"FLOAT", ado::DataType::Double, 8, "1234567.123456789", 1234567.123456789},
        ColumnCase{"DECIMAL(10,2)", ado::DataType::Numeric, 19, "12.345", 12.35},
        ColumnCase{"MONEY", ado::DataType::Currency, 8, "3", 3.0},
        ColumnCase{"CHAR(4)", ado::DataType::Char, 4, "'ab'", "ab  "},
        ColumnCase{"NCHAR(3)", ado::DataType::WChar, 3, "'ä'", "ä  "},
        ColumnCase{"VARCHAR(20)", ado::DataType::VarChar, 20, "'Fichte'", "Fichte"},
        ColumnCase{"NVARCHAR(40)", ado::DataType::VarWChar, 40, "'Föhre'", "Föhre"},
        ColumnCase{"VARCHAR(MAX)", ado::DataType::LongVarChar, 2147483647, "'x'", "x"},
        ColumnCase{"NVARCHAR(MAX)", ado::DataType::LongVarWChar, 1073741823, "'x'", "x"},
        ColumnCase{"TEXT", ado::DataType::LongVarChar, 2147483647, "'x'", "x"},
        ColumnCase{"NTEXT", ado::DataType::LongVarWChar, 1073741823, "'x'", "x"},
        ColumnCase{"DATE", ado::DataType::DBDate, 6, "'2024-02-29'", someDay},
        ColumnCase{"DATETIME", ado::DataType::DBTimeStamp, 16, "'20240229 06:00:00'", Date{someDay.days + 0.25}},
        ColumnCase{"SMALLDATETIME", ado::DataType::DBTimeStamp, 16, "'20240229 12:00:29'", Date{someDay.days + 0.5}},
        ColumnCase{"DATETIME2", ado::DataType::DBTimeStamp, 16, "'1850-01-01'", makeDate(1850, 1, 1)}),
    [](const auto& row) {
        std::string name = row.param.declaration;
        std::erase_if(name, [](char c) { return std::string_view{"(),"}.find(c) != std::string_view::npos; });
        return name;
    });

TEST(ResultValues, expressionsAreTyped)
{
    const auto connection = connectInMemory();
    EXPECT_EQ(valueOf(connection, "SELECT 1"), Variant{1});
    EXPECT_EQ(valueOf(connection, "SELECT 'a' + 'b'"), Variant{"ab"});
    EXPECT_EQ(valueOf(connection, "SELECT CAST(7 AS float)/2"), Variant{3.5});
    EXPECT_EQ(valueOf(connection, "SELECT NULL"), Variant{Null{}});
    EXPECT_EQ(valueOf(connection, "SELECT CAST(1 AS bit)"), Variant{true});
    EXPECT_EQ(valueOf(connection, "SELECT CONVERT(datetime,'31.12.1899',104)"), Variant{makeDate(1899, 12, 31)});
}

TEST(ResultValues, timesBeforeDayZeroKeepTheTimeOfDay)
{
    const auto connection = connectInMemory();
    EXPECT_EQ(valueOf(connection, "SELECT CAST('1899-12-29 06:00:00' AS datetime)"), Variant{Date{-1.25}});
}

class SessionTest : public testing::Test {
protected:
    SessionTest() { run(connection_, "CREATE TABLE T (ID INT PRIMARY KEY, N INT, S NVARCHAR(5))"); }

    void fill(int count)
    {
        for (int i = 1; i <= count; ++i) {
            run(connection_, "INSERT INTO T (ID,N) VALUES (" + std::to_string(i) + "," + std::to_string(i * 10) + ")");
        }
    }
    Variant value(std::string_view text) { return valueOf(connection_, text); }

    Folder folder_;
    ado::ConnectionRef connection_ = create(folder_ / "a.db");
};

TEST_F(SessionTest, countsTheRowsOfTheLastCountedStatement)
{
    EXPECT_EQ(run(connection_, "INSERT INTO T (ID,N) VALUES (1,1)"), 1);
    EXPECT_EQ(run(connection_, "INSERT INTO T (ID,N) SELECT 2,2 UNION ALL SELECT 3,3"), 2);
    EXPECT_EQ(run(connection_, "UPDATE T SET N = 0; DELETE FROM T WHERE ID = 1"), 1);
    EXPECT_EQ(run(connection_, "UPDATE T SET N = 0 WHERE ID = 99"), 0);
    EXPECT_EQ(run(connection_, "SELECT * FROM T"), -1);
    EXPECT_EQ(run(connection_, "SET NOCOUNT ON\r\nUPDATE T SET N = 0"), -1);
    EXPECT_EQ(run(connection_, "UPDATE T SET N = 0"), -1) << "SET NOCOUNT lasts as long as the session";
    EXPECT_EQ(run(connection_, "SET NOCOUNT OFF\r\nUPDATE T SET N = 0"), 2);
}

TEST_F(SessionTest, aFailingStatementLeavesNothing)
{
    fill(3);
    const Error error = failureOf([&] { run(connection_, "INSERT INTO T (ID,N) SELECT 10,1 UNION ALL SELECT 2,2"); });
    EXPECT_EQ(error.number, errors::constraintViolated);
    EXPECT_EQ(value("SELECT COUNT(*) FROM T"), Variant{3});
    failureOf([&] { run(connection_, "UPDATE T SET N = 100 / (ID - 3)"); });
    EXPECT_EQ(value("SELECT SUM(N) FROM T"), Variant{60});
}

TEST_F(SessionTest, earlierStatementsOfABatchStay)
{
    const std::string batch =
        "INSERT INTO T (ID) VALUES (1) INSERT INTO T (ID) VALUES (1) INSERT INTO T (ID) VALUES (2)";
    const Error error = failureOf([&] { run(connection_, batch); });
    EXPECT_EQ(error.statement, batch);
    EXPECT_EQ(value("SELECT COUNT(*) FROM T"), Variant{2}) << "a duplicate key ends its statement only";
}

TEST_F(SessionTest, transactions)
{
    ado::Session& session = connection_->session();
    session.begin();
    fill(2);
    session.rollback();
    EXPECT_EQ(value("SELECT COUNT(*) FROM T"), Variant{0});
    session.begin();
    fill(2);
    EXPECT_EQ(failureOf([&] { run(connection_, "INSERT INTO T (ID) VALUES (1)"); }).nativeError, 2627);
    session.commit();
    EXPECT_EQ(value("SELECT COUNT(*) FROM T"), Variant{2}) << "a refused statement does not end the transaction";
    EXPECT_EQ(failureOf([&] { session.commit(); }).nativeError, 3902);
    EXPECT_EQ(failureOf([&] { session.rollback(); }).nativeError, 3903);
    run(connection_, "BEGIN TRANSACTION DELETE FROM T ROLLBACK TRANSACTION");
    EXPECT_EQ(value("SELECT COUNT(*) FROM T"), Variant{2});
}

TEST_F(SessionTest, aRolledBackTableIsUnknownAgain)
{
    connection_->session().begin();
    run(connection_, "CREATE TABLE U (A INT)");
    EXPECT_EQ(value("SELECT COUNT(*) FROM U"), Variant{0});
    connection_->session().rollback();
    EXPECT_EQ(failureOf([&] { value("SELECT COUNT(*) FROM U"); }).nativeError, 208);
}

TEST_F(SessionTest, batchesBranchAndCreate)
{
    const std::string_view text = "IF EXISTS (SELECT * FROM T WHERE ID = 1) SELECT 'there' ELSE SELECT 'not there'";
    EXPECT_EQ(value(text), Variant{"not there"});
    fill(1);
    EXPECT_EQ(value(text), Variant{"there"});
    EXPECT_EQ(value("CREATE TABLE #X (A INT) INSERT INTO #X (A) VALUES (5) SELECT A FROM #X"), Variant{5});
    EXPECT_EQ(value("SELECT A FROM #X"), Variant{5});
    EXPECT_EQ(failureOf([&] { valueOf(connect(folder_ / "a.db"), "SELECT A FROM #X"); }).nativeError, 208)
        << "a temporary table is its session's own";
}

TEST_F(SessionTest, whatStandsBehindTheFirstResultRunsToo)
{
    fill(3);
    const auto cursor = open(connection_, "SELECT ID FROM T ORDER BY ID DELETE FROM T WHERE ID > 1");
    EXPECT_EQ(value("SELECT COUNT(*) FROM T"), Variant{1});
    int rows = 0;
    while (cursor->next()) {
        ++rows;
    }
    EXPECT_EQ(rows, 3);
}

TEST_F(SessionTest, parameters)
{
    std::vector<ado::Parameter> parameters(3);
    parameters[0].type = ado::DataType::BigInt;
    parameters[0].value = "7"; // a text for a number's parameter
    parameters[1].type = ado::DataType::Integer;
    parameters[1].value = Null{};
    parameters[2].value = "it's";
    ado::Statement wanted = statement("INSERT INTO T (ID,N,S) VALUES (?,?,?)");
    wanted.parameters = parameters;
    EXPECT_EQ(connection_->session().execute(wanted), 1);
    EXPECT_EQ(value("SELECT ID FROM T WHERE N IS NULL AND S = 'it''s'"), Variant{7});
    wanted.parameters = std::span{parameters}.first(2);
    EXPECT_EQ(failureOf([&] { connection_->session().execute(wanted); }).number, errors::statementRefused);
}

TEST_F(SessionTest, aStatementWithoutResultGivesACursorWithoutColumns)
{
    const auto cursor = open(connection_, "INSERT INTO T (ID) VALUES (1)");
    EXPECT_TRUE(cursor->columns().empty());
    EXPECT_FALSE(cursor->next());
    EXPECT_FALSE(cursor->next());
    EXPECT_EQ(value("SELECT COUNT(*) FROM T"), Variant{1});
}

TEST_F(SessionTest, cursorEndsForGoodAndStartsAgainOnDemand)
{
    fill(2);
    const auto cursor = open(connection_, "SELECT ID FROM T ORDER BY ID");
    EXPECT_EQ(failureOf([&] { cursor->value(0); }).number, errors::noCurrentRecord);
    EXPECT_TRUE(cursor->next());
    EXPECT_TRUE(cursor->next());
    EXPECT_EQ(failureOf([&] { cursor->value(1); }).number, errors::itemNotFound);
    EXPECT_FALSE(cursor->next());
    EXPECT_FALSE(cursor->next());
    run(connection_, "INSERT INTO T (ID) VALUES (0)");
    cursor->restart();
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(cursor->value(0), Variant{0});
}

TEST_F(SessionTest, anOpenCursorHindersNoWriteAndShowsTheRowsAsTheyWere)
{
    fill(5);
    const auto cursor = open(connection_, "SELECT ID, N FROM T ORDER BY ID");
    ASSERT_TRUE(cursor->next());
    const auto other = connect(folder_ / "a.db");
    EXPECT_EQ(run(other, "UPDATE T SET N = -1", 1), 5);
    EXPECT_EQ(run(connection_, "UPDATE T SET N = N - 1", 1), 5);
    EXPECT_EQ(run(connection_, "INSERT INTO T (ID) SELECT ID + 100 FROM T", 1), 5);
    run(connection_, "DROP TABLE T");
    EXPECT_EQ(cursor->value(1), Variant{10});
    for (int i = 2; i <= 5; ++i) {
        ASSERT_TRUE(cursor->next());
        EXPECT_EQ(cursor->value(0), Variant{i});
        EXPECT_EQ(cursor->value(1), Variant{i * 10});
    }
    EXPECT_FALSE(cursor->next());
}

TEST_F(SessionTest, aCursorThatHasNotBeenSteppedKeepsItsFirstRow)
{
    fill(2);
    const auto cursor = open(connection_, "SELECT ID FROM T ORDER BY ID");
    run(connection_, "DELETE FROM T");
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(cursor->value(0), Variant{1});
    EXPECT_TRUE(cursor->next());
    EXPECT_FALSE(cursor->next());
}

TEST_F(SessionTest, aWriteForEachRowOfTheSameTableEnds)
{
    fill(20);
    int rows = 0;
    for (const auto cursor = open(connection_, "SELECT ID FROM T"); cursor->next(); ++rows) {
        run(connection_, "INSERT INTO T (ID) SELECT MAX(ID) + 1 FROM T");
        ASSERT_LT(rows, 1000);
    }
    EXPECT_EQ(rows, 20);
}

TEST_F(SessionTest, aCursorOutlivesItsConnectionSafely)
{
    fill(2);
    const auto cursor = open(connection_, "SELECT ID FROM T");
    ASSERT_TRUE(cursor->next());
    connection_->Close();
    EXPECT_EQ(failureOf([&] { cursor->next(); }).number, errors::connectionClosed);
    EXPECT_EQ(failureOf([&] { cursor->value(0); }).number, errors::connectionClosed);
    EXPECT_EQ(failureOf([&] { cursor->restart(); }).number, errors::connectionClosed);
    EXPECT_EQ(cursor->columns().size(), 1U);
}

TEST_F(SessionTest, aFailureInALaterRowComesWithThatRow)
{
    fill(3);
    const auto cursor = open(connection_, "SELECT 10 / (ID - 3) FROM T ORDER BY ID");
    EXPECT_TRUE(cursor->next());
    EXPECT_TRUE(cursor->next());
    const Error error = failureOf([&] { cursor->next(); });
    EXPECT_EQ(error.nativeError, 8134);
    EXPECT_EQ(error.statement, "SELECT 10 / (ID - 3) FROM T ORDER BY ID");
    EXPECT_FALSE(cursor->next());
}

TEST_F(SessionTest, aFailureInARowReadAheadOfAWriteComesWithThatRow)
{
    fill(3);
    const auto cursor = open(connection_, "SELECT 10 / (ID - 3) FROM T ORDER BY ID");
    EXPECT_TRUE(cursor->next());
    EXPECT_EQ(run(connection_, "UPDATE T SET N = 0"), 3) << "the write does not suffer for it";
    EXPECT_TRUE(cursor->next());
    EXPECT_EQ(failureOf([&] { cursor->next(); }).nativeError, 8134);
    EXPECT_FALSE(cursor->next());
}

TEST_F(SessionTest, aSchemaChangeOfAnotherSessionIsSeen)
{
    fill(1);
    EXPECT_EQ(open(connection_, "SELECT * FROM T")->columns().size(), 3U);
    const auto other = connect(folder_ / "a.db");
    run(other, "DROP TABLE T CREATE TABLE T (ID INT, NAME NVARCHAR(7), MORE FLOAT, LAST BIT)");
    const auto cursor = open(connection_, "SELECT * FROM T");
    ASSERT_EQ(cursor->columns().size(), 4U);
    EXPECT_EQ(cursor->columns()[1].definedSize, 7);
    EXPECT_EQ(cursor->columns()[3].type, ado::DataType::Boolean);
}

TEST_F(SessionTest, dateFormatLasts)
{
    EXPECT_EQ(value("SELECT MONTH('02/03/2020')"), Variant{3});
    run(connection_, "SET DATEFORMAT mdy");
    EXPECT_EQ(value("SELECT MONTH('02/03/2020')"), Variant{2});
    run(connection_, "SET DATEFORMAT dmy");
    EXPECT_EQ(value("SELECT MONTH('02/03/2020')"), Variant{3});
}

TEST_F(SessionTest, translationCanBeLookedAt)
{
    const std::string text = translate(*connection_, "SELECT TOP 1 ID FROM T ORDER BY ID EXEC p");
    EXPECT_NE(text.find("LIMIT 1"), std::string::npos) << text;
    EXPECT_NE(text.find("-- EXEC p"), std::string::npos) << text;
    EXPECT_EQ(failureOf([&] { translate(*connection_, "SELECT * FROM NOWHERE"); }).nativeError, 208);
}

} // namespace
} // namespace tamarok::embedded::test
