#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "tamarok_tsql/parsed_batch.h"
#include "test_database.h"

/// The text of a FROM clause of more tables than SQLite joins. What it gives is tested in tests/embedded/engine.
namespace tamarok::embedded::translation {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// A join for each number from `first` to `last`.
std::string joins(int first, int last, const std::string& kind = "LEFT")
{
    std::string text;
    for (int i = first; i <= last; ++i) {
        const std::string number = std::to_string(i);
        text.append(" ").append(kind).append(" JOIN HOLZART H").append(number);
        text.append(" ON H").append(number).append(".HA = LOGS.HA");
    }
    return text;
}

Step translated(const std::string& text)
{
    const TestDatabase database;
    const ParsedBatch batch(text);
    Step step = translateStep(batch, 0, database, DateOrder::Dmy);
    EXPECT_EQ(database.prepareError(step.text), "") << step.text;
    return step;
}

TEST(JoinNest, AsManyTablesAsSqliteJoinsAreNotNested)
{
    const std::string text = translated("SELECT LOGS.STK FROM LOGS" + joins(1, 63)).text;
    EXPECT_THAT(text, StartsWith("SELECT \"LOGS\".\"STK\" AS \"STK\" FROM \"LOGS\" AS \"LOGS\" LEFT JOIN"));
    EXPECT_THAT(text, Not(HasSubstr("~j")));
}

/// Only the columns that are used outside pass through: one for the list, one for the join behind.
TEST(JoinNest, OneTableMore)
{
    const std::string text = translated("SELECT LOGS.STK FROM LOGS" + joins(1, 64)).text;
    EXPECT_THAT(text, StartsWith("SELECT \"~j1\".\"1.STK\" AS \"STK\" FROM (SELECT \"LOGS\".\"HA\" AS \"1.HA\", "
                                 "\"LOGS\".\"STK\" AS \"1.STK\" FROM \"LOGS\" AS \"LOGS\" LEFT JOIN \"HOLZART\" AS "
                                 "\"H1\" ON \"H1\".\"HA\" = \"LOGS\".\"HA\" LEFT JOIN "));
    EXPECT_THAT(text, EndsWith(" ON \"H63\".\"HA\" = \"LOGS\".\"HA\" LIMIT -1) AS \"~j1\" LEFT JOIN \"HOLZART\" AS "
                               "\"H64\" ON \"H64\".\"HA\" = \"~j1\".\"1.HA\""));
}

/// Each level takes 63 further tables; columns of the innermost pass through both.
TEST(JoinNest, TwoLevels)
{
    const std::string text = translated("SELECT LOGS.STK, H100.ID FROM LOGS" + joins(1, 127)).text;
    EXPECT_THAT(text, StartsWith("SELECT \"~j2\".\"1.STK\" AS \"STK\", \"~j2\".\"101.ID\" AS \"ID\" FROM (SELECT "
                                 "\"~j1\".\"1.HA\" AS \"1.HA\", \"~j1\".\"1.STK\" AS \"1.STK\", \"H100\".\"ID\" AS "
                                 "\"101.ID\" FROM (SELECT \"LOGS\".\"HA\" AS \"1.HA\", "));
    EXPECT_THAT(text, HasSubstr(" LIMIT -1) AS \"~j1\" LEFT JOIN \"HOLZART\" AS \"H64\" ON "));
    EXPECT_THAT(text, HasSubstr(" LIMIT -1) AS \"~j2\" LEFT JOIN \"HOLZART\" AS \"H127\" ON "));
}

TEST(JoinNest, NoColumnIsUsed)
{
    const std::string text = translated("SELECT COUNT(*) FROM LOGS" + joins(1, 63) + " CROSS JOIN HOLZART").text;
    EXPECT_THAT(text, StartsWith("SELECT COUNT(*) FROM (SELECT 1 FROM \"LOGS\""));
}

/// Each condition is tested as far inside as its columns are known.
TEST(JoinNest, ConditionsAreTestedInside)
{
    const std::string text = translated("SELECT 1 AS E FROM LOGS" + joins(1, 70) +
                                        " WHERE LOGS.STK = ? AND H70.ID = 2 AND (H63.ID = ? AND H63.ID = H64.ID)")
                                 .text;
    EXPECT_THAT(text, HasSubstr(" WHERE \"LOGS\".\"STK\" = "));
    EXPECT_THAT(text, HasSubstr(" AND \"H63\".\"ID\" = "));
    EXPECT_THAT(text, EndsWith(" WHERE \"H70\".\"ID\" = 2 AND \"~j1\".\"64.ID\" = \"H64\".\"ID\""));
    EXPECT_THAT(text, Not(HasSubstr("1.STK")));
}

/// A RIGHT or FULL JOIN gives rows that a condition tested before it would not see.
TEST(JoinNest, ConditionsBehindARightJoin)
{
    const std::string from = "SELECT 1 AS E FROM LOGS" + joins(1, 70);
    const std::string where = " WHERE LOGS.STK IS NULL";
    for (const std::string kind : {"RIGHT", "FULL"}) {
        const std::string outside = translated(from + joins(71, 71, kind) + where).text;
        EXPECT_THAT(outside, EndsWith(" WHERE \"~j1\".\"1.STK\" IS NULL")) << kind;
        const std::string inside =
            translated("SELECT 1 AS E FROM LOGS" + joins(71, 71, kind) + joins(1, 70) + where).text;
        EXPECT_THAT(inside, HasSubstr(" WHERE \"LOGS\".\"STK\" IS NULL LIMIT -1)")) << kind;
    }
}

/// The derived tables of an inner query have other names, since the inner query may refer to the outer ones.
TEST(JoinNest, AnInnerQueryWithJoinsOfItsOwn)
{
    const std::string inner = "(SELECT MAX(X.ID) FROM HOLZART X" + joins(101, 170) + " WHERE X.HA = H1.HA)";
    const std::string text = translated("SELECT " + inner + " AS M FROM LOGS" + joins(1, 70)).text;
    EXPECT_THAT(text, HasSubstr("AS \"~j1\" LEFT JOIN \"HOLZART\" AS \"H64\""));
    EXPECT_THAT(text, HasSubstr("AS \"~j2\" LEFT JOIN \"HOLZART\" AS \"H164\""));
    EXPECT_THAT(text, HasSubstr("WHERE \"X\".\"HA\" = \"~j1\".\""));
}

/// SQLite's plan: its lines, in order.
std::vector<std::string> planOf(const std::string& text)
{
    TestDatabase database;
    const ParsedBatch batch(text);
    return database.runStep("EXPLAIN QUERY PLAN " + translateStep(batch, 0, database, DateOrder::Dmy).text);
}

/// Nothing is stored on the way, and each table is read by an index. SQLite leaves out joins of which nothing is used.
TEST(JoinNest, SqliteRunsTheDerivedTableRowByRow)
{
    const std::string from = "SELECT LOGS.STK, H1.ID, H50.ID, H127.ID FROM LOGS" + joins(1, 127);
    int searched = 0;
    int derived = 0;
    for (const std::string& line : planOf(from + " WHERE LOGS.ID_LOG = 7")) {
        EXPECT_THAT(line, Not(HasSubstr("MATERIALIZE")));
        EXPECT_THAT(line, Not(HasSubstr("AUTOMATIC")));
        EXPECT_THAT(line, Not(testing::ContainsRegex("SCAN (LOGS|H[0-9]+)")));
        if (testing::Value(line, HasSubstr("SEARCH LOGS USING INTEGER PRIMARY KEY (rowid=?)"))) ++searched;
        if (testing::Value(line, testing::ContainsRegex("SEARCH H[0-9]+ USING (COVERING )?INDEX"))) ++searched;
        if (testing::Value(line, HasSubstr("CO-ROUTINE ~j"))) ++derived;
    }
    EXPECT_EQ(searched, 4);
    EXPECT_EQ(derived, 2);
}

TEST(JoinNest, RowsToChangeAreFoundByTheirRowid)
{
    const Step update = translated("UPDATE LOGS SET STK = 1 FROM LOGS" + joins(1, 70));
    EXPECT_THAT(update.text,
                HasSubstr("FROM (SELECT \"~j1\".\"1\" AS \"k\", 1 AS \"c1\" FROM (SELECT \"LOGS\".rowid AS "
                          "\"1\", \"LOGS\".\"HA\" AS \"1.HA\" FROM \"LOGS\""));
    EXPECT_THAT(update.lockProbe, StartsWith("SELECT DISTINCT \"~j1\".\"1\" FROM (SELECT \"LOGS\".rowid AS \"1\""));
    const Step erase = translated("DELETE LOGS FROM LOGS" + joins(1, 70));
    EXPECT_EQ(erase.text, "DELETE FROM \"LOGS\" WHERE rowid IN (" + erase.lockProbe + ")");
    // A table beside FROM takes one of the 64 places.
    EXPECT_THAT(translated("UPDATE HOLZART SET ID = 1 FROM LOGS" + joins(1, 62)).text, Not(HasSubstr("~j")));
    EXPECT_THAT(translated("UPDATE HOLZART SET ID = 1 FROM LOGS" + joins(1, 63)).text, HasSubstr("~j1"));
}

} // namespace
} // namespace tamarok::embedded::translation
