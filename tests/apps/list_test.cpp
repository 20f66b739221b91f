#include <algorithm>
#include <string>

#include "apps/program.h"

namespace tamarok::test {
namespace {

class Lists : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        folder_ = std::make_unique<ScratchFolder>();
        database_ = makeDatabase(*folder_);
    }
    static void TearDownTestSuite() { folder_.reset(); }

    static Outcome on(std::vector<std::string> words)
    {
        words.insert(words.end(), {"--db", database_});
        return run(words);
    }

    static inline std::unique_ptr<ScratchFolder> folder_;
    static inline std::string database_;
};

std::size_t lines(const std::string& text)
{
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

TEST_F(Lists, SqlIsComposedByTheLibrary)
{
    const Outcome outcome = on({"sql", "LOG", "1", "36", "--where", "LOGS.KUBATUR > 1", "--order", "1", "--desc"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output,
              "SELECT LOGS.LISTE, LOGS.KUBATUR FROM LOGS INNER JOIN LOGS_RECH ON LOGS.ID_LOG = LOGS_RECH.ID_LOG "
              "WHERE LOGS.KUBATUR > 1 ORDER BY LOGS.LISTE DESC\n");
}

TEST_F(Lists, GroupingSumsMeasures)
{
    const Outcome outcome = on({"sql", "log", "22", "36", "--group", "--order", "22", "--limit", "3"});
    EXPECT_EQ(outcome.output, "SELECT TOP 3 LOGS.HA, SUM(LOGS.KUBATUR) FROM LOGS INNER JOIN LOGS_RECH ON LOGS.ID_LOG = "
                              "LOGS_RECH.ID_LOG GROUP BY LOGS.HA ORDER BY LOGS.HA\n");
}

TEST_F(Lists, BothDialectsGiveTheSameRows)
{
    const std::vector<std::string> words{"list", "LOG",     "22", "32",      "36", "280",      "--group", "--order",
                                         "22",   "--order", "32", "--limit", "7",  "--format", "csv"};
    const Outcome server = on(words);
    auto oracleWords = words;
    oracleWords.push_back("--oracle");
    const Outcome oracle = on(oracleWords);
    EXPECT_EQ(server.status, 0) << server.errors;
    EXPECT_EQ(oracle.status, 0) << oracle.errors;
    EXPECT_EQ(lines(server.output), 8U) << "header and 7 rows";
    EXPECT_EQ(server.output, oracle.output);
}

TEST_F(Lists, LimitBoundsTheRows)
{
    const Outcome outcome = on({"list", "LOG", "1", "36", "--limit", "5", "--format", "csv"});
    EXPECT_EQ(lines(outcome.output), 6U) << outcome.output;
}

TEST_F(Lists, TheTableFollowsTheRegionalSettings)
{
    const std::vector<std::string> words{"list",    "LOG", "2",       "36", "--where", "LOGS.KUBATUR > 1",
                                         "--limit", "3",   "--locale"};
    auto german = words;
    german.push_back("de-AT");
    auto english = words;
    english.push_back("en-GB");
    EXPECT_NE(on(german).output.find(','), std::string::npos);
    EXPECT_EQ(on(english).output.find(','), std::string::npos);
    EXPECT_NE(on(english).output.find('/'), std::string::npos);
}

TEST_F(Lists, JsonHoldsColumnsAndRows)
{
    const Outcome outcome = on({"list", "LOG", "20", "36", "--limit", "2", "--format", "json"});
    EXPECT_TRUE(outcome.output.starts_with("{\"columns\":[")) << outcome.output;
    EXPECT_TRUE(outcome.output.ends_with("]}\n")) << outcome.output;
    EXPECT_EQ(lines(outcome.output), 4U) << outcome.output;
}

TEST_F(Lists, UnknownTypesAndColumnsAreNamed)
{
    const Outcome type = on({"list", "NOTHING", "1"});
    EXPECT_EQ(type.status, 2);
    EXPECT_NE(type.errors.find("'NOTHING'"), std::string::npos) << type.errors;
    const Outcome column = on({"list", "LOG", "1", "485"});
    EXPECT_EQ(column.status, 2);
    EXPECT_NE(column.errors.find("LOG column 485"), std::string::npos) << column.errors;
    const Outcome order = on({"list", "LOG", "22", "36", "--group", "--order", "36"});
    EXPECT_EQ(order.status, 2);
    EXPECT_NE(order.errors.find("LOG column 36"), std::string::npos) << order.errors;
}

TEST_F(Lists, AWrongConditionIsAFailureInOneLine)
{
    for (const std::string condition : {"LOGS.KUBATUR > ", "'open", "((1=1)", "NOTHING = 1"}) {
        const Outcome outcome = on({"list", "LOG", "1", "--where", condition});
        EXPECT_EQ(outcome.status, 1) << condition;
        EXPECT_EQ(lines(outcome.errors), 1U) << outcome.errors;
    }
}

TEST_F(Lists, ColumnsShowsEveryColumnOfTheLogList)
{
    const Outcome outcome = on({"columns", "LOG"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    // Of the 580 rows, 568 and 569 are empty.
    EXPECT_EQ(lines(outcome.output), 578U);
    EXPECT_NE(outcome.output.find("\n36\tVolumen\t0.000\tSUM\tLOGS.KUBATUR\n"), std::string::npos);
    EXPECT_EQ(outcome.output.find("\n485\t"), std::string::npos);
}

TEST_F(Lists, AClosedPipeEndsTheProgramQuietly)
{
    Program child{{"columns", "LOG", "--db", database_}};
    child.closeOutput();
    const Outcome outcome = child.finish();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
}

} // namespace
} // namespace tamarok::test
