#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>

#include "embedded/translation/test_database.h"

#include "tamarok/error.h"

/// The translation of nested constructs is as long as the nesting is deep: no construct writes its operand twice.
namespace tamarok::embedded::translation {
namespace {

/// Each has a hole for the next level. Conditions are made values by CASE.
constexpr std::array constructs{
    "({} + 1)",
    "(1 + {})",
    "({} - STK)",
    "({} * STK)",
    "({} / STK)",
    "({} % STK)",
    "({} & 3)",
    "(3 | {})",
    "({} ^ 3)",
    "(3 ^ {})",
    "({} * 1.5)",
    "({} / 1.5)",
    "({} + KUBATUR)",
    "({} + BETRAG)",
    "({} + ?)",
    "(? - {})",
    "({} + 'x')",
    "('x' + {})",
    "({} || 'x')",
    "({} + LISTDATUM)",
    "(LISTDATUM - {})",
    "(-{})",
    "(~{})",
    "CASE WHEN {} = 1 THEN 1 ELSE 2 END",
    "CASE WHEN {} = 'x' THEN 1 ELSE 2 END",
    "CASE WHEN ? < {} THEN 1 ELSE 2 END",
    "CASE WHEN NOT {} <> 1 THEN 1 ELSE 2 END",
    "CASE WHEN {} IS NULL THEN 1 ELSE 2 END",
    "CASE WHEN {} BETWEEN 1 AND 2 THEN 1 ELSE 2 END",
    "CASE WHEN STK NOT BETWEEN 1 AND {} THEN 1 ELSE 2 END",
    "CASE WHEN {} IN (1, 2) THEN 1 ELSE 2 END",
    "CASE WHEN STK IN ({}, 2) THEN 1 ELSE 2 END",
    "CASE WHEN {} LIKE 'a%' THEN 1 ELSE 2 END",
    "CASE WHEN 'a' NOT LIKE {} THEN 1 ELSE 2 END",
    "CASE WHEN 'a' LIKE 'b' ESCAPE {} THEN 1 ELSE 2 END",
    "CASE WHEN {} = 1 AND STK = 2 THEN 1 ELSE 2 END",
    "CASE WHEN STK = 2 OR {} = 1 THEN 1 ELSE 2 END",
    "CASE WHEN STK IN (SELECT {}) THEN 1 ELSE 2 END",
    "CASE WHEN {} IN (SELECT STK FROM LOGS) THEN 1 ELSE 2 END",
    "CASE WHEN EXISTS (SELECT 1 FROM HOLZART WHERE {} = 1) THEN 1 ELSE 2 END",
    "CASE WHEN STK = 1 THEN {} ELSE 2 END",
    "CASE WHEN STK = 1 THEN {} WHEN STK = 2 THEN 3 END",
    "CASE WHEN STK = 1 THEN 2 ELSE {} END",
    "CASE {} WHEN 1 THEN 2 WHEN 3 THEN 4 END",
    "CASE STK WHEN {} THEN 2 ELSE 3 END",
    "CASE STK WHEN 1 THEN 2 WHEN 3 THEN {} ELSE 4 END",
    "IIF(STK = 1, {}, 2)",
    "ISNULL({}, 1)",
    "ISNULL(STK, {})",
    "ISNULL(HA, {})",
    "COALESCE({}, 1)",
    "COALESCE(STK, {}, 2)",
    "NULLIF({}, 1)",
    "NULLIF({}, 'x')",
    "NULLIF(STK, {})",
    "NULLIF({}, ?)",
    "CAST({} AS INT)",
    "CAST({} AS DECIMAL(10, 2))",
    "CAST({} AS NVARCHAR(10))",
    "CAST({} AS CHAR(10))",
    "CAST({} AS DATETIME)",
    "CONVERT(DATETIME, {}, 104)",
    "CONVERT(VARCHAR(20), {}, 104)",
    "ABS({})",
    "ROUND({}, 2)",
    "POWER({}, 2)",
    "LEN({})",
    "UPPER({})",
    "LEFT({}, 3)",
    "LEFT('abc', {})",
    "SUBSTRING({}, 1, 2)",
    "REPLACE({}, 'a', 'b')",
    "REPLACE('a', {}, 'b')",
    "CONCAT({}, 'a')",
    "CHARINDEX('a', {})",
    "DATEADD(day, {}, '20240305')",
    "DATEDIFF(day, {}, '20240305')",
    "DATEPART(year, {})",
    "NVL({}, 1)",
    "LPAD({}, 5)",
    "TO_CHAR({})",
    "(SELECT {})",
    "(SELECT MAX(STK) FROM LOGS WHERE STK = {})",
    "(SELECT TOP 1 STK FROM LOGS ORDER BY {})",
    "(SELECT TOP ({}) STK FROM LOGS)",
    "(SELECT SUM(STK) FROM LOGS GROUP BY STK HAVING SUM(STK) > {})",
    "(SELECT STK FROM LOGS WHERE ROWNUM <= 3 ORDER BY STK + {})",
    "(SELECT Q.X FROM (SELECT {} AS X) Q)",
    "(SELECT Q.X FROM (SELECT {} AS X FROM LOGS) Q (X))",
    "(SELECT {} UNION SELECT 1)",
    "(SELECT 'x' UNION ALL SELECT {})",
    "(SELECT L.STK FROM LOGS L LEFT JOIN HOLZART H ON L.STK = {})",
};

std::string filled(std::string_view construct, const std::string& inner)
{
    const std::size_t hole = construct.find("{}");
    return std::string(construct.substr(0, hole)) + inner + std::string(construct.substr(hole + 2));
}

/// Length of the translation of `depth` levels, in which both constructs take turns; nothing if it is refused, as when
/// the types do not go together.
std::optional<std::size_t> lengthOf(const TestDatabase& database, std::string_view a, std::string_view b, int depth)
{
    std::string text = "STK";
    for (int level = 0; level < depth; ++level)
        text = filled(level % 2 == 0 ? a : b, text);
    try {
        const ParsedBatch batch("SELECT " + text + " FROM LOGS");
        return translateStep(batch, 0, database, DateOrder::Dmy).text.size();
    } catch (const Error& error) {
        EXPECT_EQ(error.number, errors::statementRefused) << text;
        return std::nullopt;
    }
}

/// Whether eight levels more add as much as the eight before them, and not more.
void checkGrowth(const TestDatabase& database, std::string_view a, std::string_view b, int& measured)
{
    const auto four = lengthOf(database, a, b, 4);
    const auto twelve = lengthOf(database, a, b, 12);
    const auto twenty = lengthOf(database, a, b, 20);
    if (!four || !twelve || !twenty) return;
    ++measured;
    // A CASE that changes its form, a call that becomes a flat one: a few bytes a level.
    constexpr std::size_t slack = 400;
    EXPECT_LE(*twenty - *twelve, (*twelve - *four) + slack) << a << " in " << b;
}

TEST(Growth, EachConstructInItself)
{
    const TestDatabase database;
    int measured = 0;
    for (const char* const construct : constructs)
        checkGrowth(database, construct, construct, measured);
    EXPECT_GE(measured, 85);
}

TEST(Growth, EachConstructInEachOther)
{
    const TestDatabase database;
    int measured = 0;
    for (const char* const a : constructs) {
        for (const char* const b : constructs)
            checkGrowth(database, a, b, measured);
    }
    EXPECT_GE(measured, 6000);
}

/// 200 levels of NULLIF took all memory once.
TEST(Growth, AHundredLevelsOfNullIf)
{
    const TestDatabase database;
    const auto length = lengthOf(database, "NULLIF({}, 1)", "NULLIF({}, 'x')", 100);
    ASSERT_TRUE(length);
    EXPECT_LT(*length, 100U * 40U);
}

std::string refusal(const std::string& text)
{
    const std::optional<Error> error = refusalOf(text);
    return error ? std::to_string(error->nativeError) + " " + error->description : std::string{};
}

TEST(Growth, ATextThatBecomesTooLongIsRefused)
{
    using testing::HasSubstr;
    // The long text literal is as long as it was; the stars and the item names are not.
    EXPECT_THAT(refusal("SELECT " + repeated("*, ", 3000) + "1 FROM LOGS"), HasSubstr("1056 The number of elements"));
    EXPECT_THAT(refusal("SELECT " + repeated("1, ", 5000) + "1"), HasSubstr("1056 The number of elements"));
    EXPECT_THAT(refusal("SELECT " + repeated("EXISTS (SELECT * FROM LOGS) AND ", 4000) + "1 = 1"), HasSubstr("102 "));
    EXPECT_THAT(
        refusal("SELECT 1 WHERE 1 IN (" + repeated("(SELECT COUNT(*) FROM (SELECT * FROM LOGS) A), ", 8000) + "1)"),
        HasSubstr("8623 The query processor ran out of internal resources"));
    EXPECT_THAT(refusal("SELECT 1 FROM LOGS" + repeated(", LOGS", 300)), HasSubstr("106 Too many table names"));
    EXPECT_THAT(refusal("SELECT 1 FROM LOGS" + repeated(", LOGS", 1000000)), HasSubstr("106 Too many table names"));
}

/// The watch is asked in each phase, so that a time-out ends any of them.
TEST(Growth, AWatchEndsParsingAndTranslation)
{
    struct TimeOver {};
    const TestDatabase database;
    std::string list = "SELECT 1 WHERE 1 IN (0";
    for (int i = 0; i < 20000; ++i)
        list += ",1";
    list += ")";
    int asked = 0;
    const ParsedBatch counted(list, [&] { ++asked; });
    const int parsing = asked;
    EXPECT_GE(parsing, 40) << "lexer and parser";
    static_cast<void>(translateStep(counted, 0, database, DateOrder::Dmy));
    EXPECT_GE(asked - parsing, 30) << "binder and emitter";
    for (const int end : {1, parsing - 1, parsing + 1, asked - 1}) {
        int left = end;
        const auto watch = [&] {
            if (--left < 0) throw TimeOver{};
        };
        EXPECT_THROW(
            {
                const ParsedBatch batch(list, watch);
                static_cast<void>(translateStep(batch, 0, database, DateOrder::Dmy));
            },
            TimeOver)
            << end;
    }
}

} // namespace
} // namespace tamarok::embedded::translation
