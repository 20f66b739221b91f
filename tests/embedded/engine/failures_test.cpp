#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

constexpr std::string_view schema =
    "CREATE TABLE P (ID INT PRIMARY KEY, A INT NOT NULL, B NVARCHAR(3), C INT CHECK (C > 0), U INT UNIQUE) "
    "CREATE UNIQUE INDEX IX_P ON P (B) "
    "INSERT INTO P (ID,A,B,C,U) VALUES (1,1,'x',1,1)";

struct FailureCase {
    const char* name;
    const char* statement;
    std::int32_t number;
    std::int32_t nativeError;
    const char* sqlState;
    const char* text; ///< part of the description
};

class Failures : public testing::TestWithParam<FailureCase> {};

TEST_P(Failures, carryNumberStateTextAndStatement)
{
    const FailureCase& row = GetParam();
    const auto connection = connectInMemory();
    run(connection, schema);
    const Error error = failureOf([&] {
        const auto cursor = open(connection, row.statement);
        while (cursor->next()) {
            cursor->value(0);
        }
    });
    EXPECT_EQ(error.number, row.number) << error.description;
    EXPECT_EQ(error.nativeError, row.nativeError) << error.description;
    EXPECT_EQ(error.sqlState, row.sqlState);
    EXPECT_EQ(error.source, "Tamarok embedded database");
    EXPECT_EQ(error.statement, row.statement);
    EXPECT_NE(error.description.find(row.text), std::string::npos) << error.description;
    EXPECT_EQ(valueOf(connection, "SELECT COUNT(*) FROM P"), Variant{1});
}

INSTANTIATE_TEST_SUITE_P(
    Table, Failures,
    testing::Values(
        FailureCase{"primaryKey", "INSERT INTO P (ID,A) VALUES (1,1)", errors::constraintViolated, 2627, "23000",
                    "duplicate key in table 'P'"},
        FailureCase{"uniqueConstraint", "INSERT INTO P (ID,A,U) VALUES (2,1,1)", errors::constraintViolated, 2627,
                    "23000", "P.U"},
        FailureCase{"uniqueIndex", "INSERT INTO P (ID,A,B) VALUES (2,1,'X')", errors::constraintViolated, 2601, "23000",
                    "P.B"},
        FailureCase{"null", "INSERT INTO P (ID,A) VALUES (2,NULL)", errors::constraintViolated, 515, "23000",
                    "column 'A', table 'P'"},
        FailureCase{"check", "INSERT INTO P (ID,A,C) VALUES (2,1,0)", errors::constraintViolated, 547, "23000",
                    "CHECK"},
        FailureCase{"conversion", "SELECT CAST('x' AS int)", errors::statementRefused, 245, "22018", "'x'"},
        FailureCase{"conversionInWrite", "UPDATE P SET A = B", errors::statementRefused, 245, "22018", "'x'"},
        FailureCase{"noDate", "SELECT CAST('yesterday' AS datetime)", errors::statementRefused, 241, "22007", ""},
        FailureCase{"noDay", "SELECT CAST('31.31.2020' AS datetime)", errors::statementRefused, 242, "22007", "31.31"},
        FailureCase{"division", "SELECT 1/(ID-1) FROM P", errors::statementRefused, 8134, "22012", ""},
        FailureCase{"overflow", "SELECT 2147483647+ID FROM P", errors::statementRefused, 8115, "22003", ""},
        FailureCase{"unknownTable", "SELECT * FROM NOWHERE", errors::statementRefused, 208, "42S02", "NOWHERE"},
        FailureCase{"unknownColumn", "SELECT NOTHING FROM P", errors::statementRefused, 207, "42S22", "NOTHING"},
        FailureCase{"unknownProcedure", "EXEC nobody 1", errors::statementRefused, 2812, "42000",
                    "Could not find stored procedure 'nobody'."}),
    [](const auto& row) { return std::string{row.param.name}; });

TEST(Failures, syntaxNamesThePosition)
{
    const auto connection = connectInMemory();
    const Error error = failureOf([&] { run(connection, "SELECT FROM WHERE"); });
    EXPECT_EQ(error.number, errors::statementRefused);
    EXPECT_EQ(error.source, "Tamarok embedded database");
    EXPECT_NE(error.description.find("line 1"), std::string::npos) << error.description;
}

TEST(Failures, aTooLongTextIsRefused)
{
    const auto connection = connectInMemory();
    run(connection, schema);
    const Error error = failureOf([&] { run(connection, "UPDATE P SET B = 'long text'"); });
    EXPECT_EQ(error.nativeError, 2628);
    EXPECT_EQ(error.sqlState, "22001");
    EXPECT_EQ(valueOf(connection, "SELECT B FROM P"), Variant{"x"});
}

} // namespace
} // namespace tamarok::embedded::test
