#include <algorithm>
#include <gmock/gmock.h>
#include <malloc.h>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "database.h"
#include "test_database.h"

/// How deeply each construct can be nested, and how the message reads one level below. docs/embedded-database.md lists
/// the same numbers.
namespace tamarok::embedded::test {
namespace {

using testing::HasSubstr;

std::string repeated(std::string_view part, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += part;
    return text;
}

/// A construct around `core`, repeated; the whole is a statement.
struct Construct {
    std::string_view name;
    std::string_view begin; ///< of the statement
    std::string_view open;  ///< a level
    std::string_view core;
    std::string_view close; ///< a level
    std::string_view end;   ///< of the statement
    int depth;              ///< the deepest that runs
    std::string_view named; ///< by the message one level deeper

    std::string text(int levels) const
    {
        std::string result{begin};
        result += repeated(open, levels);
        result += core;
        return result.append(repeated(close, levels)).append(end);
    }
};

/// Empty if the statement runs, else the error's number and text.
std::string failure(const ado::ConnectionRef& connection, const std::string& text)
{
    try {
        const auto cursor = open(connection, text);
        while (cursor->next()) {}
        return {};
    } catch (const Error& error) {
        return std::to_string(error.nativeError) + " " + error.description;
    }
}

ado::ConnectionRef database()
{
    const auto connection = connectInMemory();
    run(connection, "CREATE TABLE T (A INT, B NVARCHAR(20), M MONEY, D DATETIME); "
                    "INSERT INTO T VALUES (1, 'x', 1.5, '20240305')");
    return connection;
}

constexpr Construct constructs[] = {
    // name, statement, level, core, level, statement, depth, name in the message
    {"a function in its first argument", "SELECT ", "ABS(", "A", ")", " FROM T", 30, "the function ABS"},
    {"a function of a text", "SELECT ", "UPPER(", "B", ")", " FROM T", 30, "the function UPPER"},
    {"a function in a later argument", "SELECT ", "CONCAT('x', ", "B", ")", " FROM T", 18, "the function CONCAT"},
    {"ISNULL in its first argument", "SELECT ", "ISNULL(", "A", ", 1)", " FROM T", 30, "the function ISNULL"},
    {"ISNULL in its second argument", "SELECT ", "ISNULL(NULL, ", "A", ")", " FROM T", 18, "the function ISNULL"},
    {"NULLIF", "SELECT ", "NULLIF(", "A", ", 5)", " FROM T", 30, "the function NULLIF"},
    {"CAST", "SELECT ", "CAST(CAST(", "A", " AS NVARCHAR(9)) AS INT)", " FROM T", 15, "CAST"},
    {"CAST to the same type", "SELECT ", "CAST(", "A", " AS NVARCHAR(9))", " FROM T", 197, "this expression"},
    {"a sum in parentheses", "SELECT ", "1 + (", "A", ")", " FROM T", 18, "the operator"},
    {"a text in parentheses", "SELECT ", "'x' + (", "B", ")", " FROM T", 197, "this expression"},
    {"CASE in THEN", "SELECT ", "CASE WHEN A = 1 THEN ", "A", " ELSE 0 END", " FROM T", 21, "CASE"},
    {"CASE in a later THEN", "SELECT ", "CASE WHEN A = 2 THEN 1 WHEN A = 1 THEN ", "A", " END", " FROM T", 20, "CASE"},
    {"CASE in ELSE", "SELECT ", "CASE WHEN A = 2 THEN 1 ELSE ", "A", " END", " FROM T", 23, "CASE"},
    {"CASE in WHEN", "SELECT ", "CASE WHEN ", "A", " = 1 THEN 1 ELSE 0 END", " FROM T", 30, "CASE"},
    {"CASE with an operand", "SELECT ", "CASE A WHEN 1 THEN ", "A", " ELSE 0 END", " FROM T", 21, "CASE"},
    {"IIF", "SELECT ", "IIF(A = 1, ", "A", ", 0)", " FROM T", 21, "CASE"},
    {"EXISTS", "SELECT 1 WHERE ", "EXISTS (SELECT 1 FROM T WHERE ", "1 = 1", ")", "", 12, "EXISTS"},
    {"a subquery in a condition", "SELECT 1 WHERE ", "1 = (SELECT MAX(A) FROM T WHERE ", "1 = 1", ")", "", 13,
     "the function MAX"},
    {"a subquery for one row", "SELECT 1 WHERE ", "1 = (SELECT A FROM T WHERE ", "1 = 1", ")", "", 13, "the subquery"},
    {"a subquery behind AND", "SELECT 1 WHERE ", "1 = 1 AND 1 = (SELECT MAX(A) FROM T WHERE ", "1 = 1", ")", "", 10,
     "the function MAX"},
    {"IN with a query", "SELECT 1 WHERE ", "1 IN (SELECT A FROM T WHERE ", "1 = 1", ")", "", 11, "the IN subquery"},
    {"a derived table", "SELECT * FROM ", "(SELECT * FROM ", "T", ") Q", "", 15, "the derived table Q"},
    {"NOT", "SELECT 1 FROM T WHERE ", "NOT ", "A = 1", "", "", 91, "NOT"},
    {"a sign", "SELECT ", "- ", "A", "", " FROM T", 88, "the sign"},
    {"a sign of a constant", "SELECT ", "- ", "1", "", "", 94, "the sign"},
    {"OR and AND in parentheses", "SELECT 1 FROM T WHERE ", "A = 2 OR (A = 1 AND (", "A = 1", "))", "", 18,
     "the AND condition"},
};

TEST(Nesting, EachConstructAtItsLimitAndBeyond)
{
    const auto connection = database();
    for (const Construct& construct : constructs) {
        int deepest = 0;
        while (deepest < 250 && failure(connection, construct.text(deepest + 1)).empty())
            ++deepest;
        EXPECT_EQ(deepest, construct.depth) << construct.name;
        const std::string message = failure(connection, construct.text(deepest + 1));
        EXPECT_THAT(message, testing::StartsWith("191 Some part of ")) << construct.name;
        EXPECT_THAT(message, HasSubstr(construct.named)) << construct.name;
        EXPECT_THAT(message, testing::ContainsRegex("\\(line 1, column [0-9]+\\)$")) << construct.name;
    }
}

std::string chainOf(std::string_view begin, std::string_view operand, std::string_view op, int operands,
                    std::string_view end)
{
    std::string text{begin};
    for (int i = 0; i < operands; ++i) {
        if (i != 0) text += op;
        text += operand;
    }
    return text.append(end);
}

/// A chain of operators, the number of operands that runs, and the error of one more.
struct Chain {
    std::string_view begin;
    std::string_view operand;
    std::string_view op;
    std::string_view end;
    int longest;
    std::string_view refusal;
};

constexpr Chain chains[] = {
    {"SELECT ", "1", " + ", "", 900, "8632 An expression services limit"},
    {"SELECT ", "A", " + ", " FROM T", 900, "8632 An expression services limit"},
    {"SELECT ", "A", " - ", " FROM T", 900, "8632 An expression services limit"},
    {"SELECT ", "1.5", " + ", "", 900, "8632 An expression services limit"},
    {"SELECT ", "M", " + ", " FROM T", 900, "8632 An expression services limit"},
    {"SELECT ", "CAST(A AS FLOAT)", " + ", " FROM T", 899, "8632 An expression services limit"},
    {"SELECT ", "'x'", " + ", "", 900, "8632 An expression services limit"},
    {"SELECT ", "B", " + ", " FROM T", 900, "8632 An expression services limit"},
    {"SELECT ", "B", " || ", " FROM T", 900, "8632 An expression services limit"},
    {"SELECT 1 FROM T WHERE ", "A = 1", " AND ", "", 5000, "8632 An expression services limit"},
    {"SELECT 1 FROM T WHERE ", "A = 1", " OR ", "", 5000, "8632 An expression services limit"},
    {"SELECT 1 FROM T WHERE ", "(A = 1 OR B = 'x')", " AND ", "", 5000, "8632 An expression services limit"},
    {"SELECT 1 FROM T WHERE ", "NOT B LIKE 'y%'", " AND ", "", 5000, "8632 An expression services limit"},
    // One call in the other.
    {"SELECT ", "1.5", " / ", "", 31, "191 Some part of"},
    {"SELECT D + ", "1", " + ", " FROM T", 30, "191 Some part of"},
    {"SELECT CAST(A AS FLOAT) / ", "A", " / ", " FROM T", 29, "191 Some part of"},
    {"", "SELECT 1", " UNION ALL ", "", 500, "191 A query joined of more than 500"},
};

TEST(Nesting, EachChainAtItsLimitAndBeyond)
{
    const auto connection = database();
    for (const Chain& chain : chains) {
        const auto text = [&](int operands) {
            return chainOf(chain.begin, chain.operand, chain.op, operands, chain.end);
        };
        EXPECT_EQ(failure(connection, text(std::min(chain.longest, 500))), "") << chain.operand << chain.op;
        EXPECT_EQ(failure(connection, text(chain.longest)), "") << chain.operand << chain.op;
        const std::string beyond = failure(connection, text(chain.longest + 1));
        EXPECT_THAT(beyond, HasSubstr(chain.refusal)) << chain.operand << chain.op;
        EXPECT_THAT(beyond, HasSubstr("(line 1, column ")) << chain.operand << chain.op;
    }
}

TEST(Nesting, LongChainsHaveTheValueOfShortOnes)
{
    const auto connection = database();
    EXPECT_EQ(valueOf(connection, chainOf("SELECT ", "A", " + ", 500, " FROM T")), Variant{std::int32_t{500}});
    EXPECT_EQ(valueOf(connection, chainOf("SELECT ", "A", " - ", 500, " FROM T")), Variant{std::int32_t{-498}});
    EXPECT_EQ(valueOf(connection, chainOf("SELECT LEN(", "B", " + ", 500, ") FROM T")), Variant{std::int32_t{500}});
    EXPECT_EQ(valueOf(connection, "SELECT (A + 7) * (A + 1) / (A + 1) - A FROM T"), Variant{std::int32_t{7}});
    EXPECT_EQ(valueOf(connection, "SELECT A + A - A * (A + A) / A % (A + 4) FROM T"), Variant{std::int32_t{0}});
    EXPECT_TRUE(valueOf(connection, chainOf("SELECT ", "A", " + ", 200, " + NULL FROM T")).isNull());
    // Each step is an int, as before: the sum overflows although the whole would fit.
    EXPECT_THAT(failure(connection, "SELECT A + 2147483647 - A - A FROM T"), testing::StartsWith("8115 "));
    // int + int is int; what follows is the next type's, which divides with decimal places.
    EXPECT_EQ(valueOf(connection, "SELECT A + A + 0.5 FROM T"), Variant{2.5});
    EXPECT_EQ(valueOf(connection, "SELECT A / (A + A) + 0.5 FROM T"), Variant{0.5});
    EXPECT_THAT(failure(connection, "SELECT A + A + B FROM T"), testing::StartsWith("245 "));
}

/// The text with the number in place of each "@".
std::string withBound(std::string_view text, int bound)
{
    std::string result;
    for (const char c : text) {
        if (c == '@') {
            result += std::to_string(bound);
        } else {
            result += c;
        }
    }
    return result;
}

TEST(Nesting, ADeepCaseTakesTheSameBranch)
{
    const auto connection = database();
    std::string searched = "0";
    std::string simple = "0";
    for (int level = 18; level > 0; --level) {
        const std::string number = std::to_string(level);
        searched.insert(0, "CASE WHEN A > @ THEN -" + number + " WHEN A <= @ THEN ");
        searched += " WHEN A = 99 THEN 1 ELSE -1 END";
        simple.insert(0, "CASE SIGN(A - @) WHEN 1 THEN -" + number + " WHEN 5 THEN 3 WHEN 0 THEN -2 WHEN -1 THEN ");
        simple += " ELSE NULL END";
        searched = withBound(searched, 20 - level);
        simple = withBound(simple, 20 - level);
    }
    // A = 1 passes every level down to the innermost value, A = 15 stops at the level of 14, NULL has no branch.
    run(connection, "INSERT INTO T (A) VALUES (15), (NULL)");
    const auto answers = [&](const std::string& text) {
        return columnOf(connection, "SELECT " + text + " FROM T ORDER BY A DESC");
    };
    EXPECT_THAT(answers(searched),
                testing::ElementsAre(Variant{std::int32_t{-6}}, Variant{std::int32_t{0}}, Variant{std::int32_t{-1}}));
    EXPECT_EQ(answers(simple)[0], Variant{std::int32_t{-2}});
}

TEST(Nesting, AMessageNamesThePlaceOfTheLevel)
{
    const auto connection = database();
    const std::string text = "SELECT 1,\n  " + repeated("ABS(", 40) + "A" + repeated(")", 40) + " FROM T";
    // The 33rd ABS, at which the parser gives up, stands behind 32 of four characters each and two blanks.
    EXPECT_EQ(failure(connection, text),
              "191 Some part of your SQL statement is nested too deeply. Rewrite the query or "
              "break it up into smaller queries. No deeper level is possible at the function "
              "ABS. (line 2, column 131)");
    const std::string update = "UPDATE T SET A = " + repeated("ABS(", 40) + "A" + repeated(")", 40);
    EXPECT_THAT(failure(connection, update), HasSubstr("at the function ABS. (line 1, column "));
    const std::string into = "SELECT " + repeated("ABS(", 40) + "A" + repeated(")", 40) + " AS X INTO #U FROM T";
    EXPECT_THAT(failure(connection, into), HasSubstr("at the function ABS. (line 1, column "));
    const std::string erase =
        "DELETE FROM T FROM T X WHERE " + repeated("ABS(", 40) + "X.A" + repeated(")", 40) + " = 1";
    EXPECT_THAT(failure(connection, erase), HasSubstr("at the function ABS. (line 1, column "));
}

/// Runs a batch in a process of its own. @return the most memory that the process took, in MiB
long peakOf(const std::string& text)
{
    const pid_t child = fork();
    if (child == 0) {
        const auto connection = connectInMemory();
        _exit(failure(connection, text).empty() ? 0 : 1);
    }
    int status = 0;
    rusage used{};
    wait4(child, &status, 0, &used);
    EXPECT_EQ(status, 0);
    return used.ru_maxrss / 1024;
}

/// How much memory a batch takes beyond that of a short one.
long memoryOf(const std::string& text)
{
#ifdef __GLIBC__
    // A child begins with the memory that earlier tests have freed, and would use that.
    malloc_trim(0);
#endif
    return peakOf(text) - peakOf("SELECT 1");
}

// The address sanitizer surrounds each allocation with guard bytes.
#ifdef __SANITIZE_ADDRESS__
constexpr long mostMemory = 400;
#else
constexpr long mostMemory = 200;
#endif

TEST(Memory, GrowsWithTheTextOfABatch)
{
    const auto selects = [](int count) { return repeated("SELECT 1;\n", count); };
    const auto inserts = [](int count) {
        return "CREATE TABLE #T (A INT);" + repeated("INSERT INTO #T VALUES (1);\n", count);
    };
    const long half = memoryOf(selects(50000));
    const long whole = memoryOf(selects(100000));
    EXPECT_LT(whole, mostMemory);
    EXPECT_LE(whole, 2 * half + half / 4 + 10) << "half the batch takes " << half << " MiB";
    EXPECT_LT(memoryOf(inserts(30000)), mostMemory);
}

TEST(Lists, HaveAMostNumberOfValues)
{
    const auto connection = database();
    const std::string list = "SELECT COUNT(*) FROM T WHERE A IN (" + repeated("1,", 99999) + "1)";
    EXPECT_EQ(failure(connection, list), "");
    const std::string both = list + " AND A IN (" + repeated("1,", 99998) + "1)"; // with the argument of COUNT
    EXPECT_EQ(failure(connection, both), "");
    const std::string beyond = failure(connection, both.substr(0, both.size() - 1) + ",\n1,1)");
    EXPECT_THAT(beyond, HasSubstr("the lists of the statement have more than 200000 values. (line 2, column "));
    // Each statement of a batch has lists of its own.
    EXPECT_EQ(failure(connection, both + "\n" + both), "");
    // A text of the greatest length is refused when the list has become too long, not at its end.
    EXPECT_THAT(failure(connection, "SELECT 1 WHERE 1 IN (" + repeated("1,", 7000000) + "1)"),
                HasSubstr("200000 values"));
}

TEST(TimeOut, EndsTheCompilationOfALongStatement)
{
    Database database{tsql::DateOrder::Mdy};
    const std::string longest = "SELECT (SELECT 1)" + repeated(" + (SELECT 1)", 900) + repeated(", (SELECT 1)", 900);
    database.deadline().arm(1);
    EXPECT_NO_THROW(static_cast<void>(database.compile(longest)));
    // Uses the second up.
    const auto endless = "WITH RECURSIVE C(X) AS (SELECT 1 UNION ALL SELECT X + 1 FROM C) SELECT max(X) FROM C";
    EXPECT_EQ(failureOf([&] { database.number(endless); }).number, errors::timeout);
    const Error error = failureOf([&] { static_cast<void>(database.compile(longest)); });
    EXPECT_EQ(error.number, errors::timeout);
    EXPECT_EQ(error.description, "Timeout expired: the statement was still being prepared.");
}

} // namespace
} // namespace tamarok::embedded::test
