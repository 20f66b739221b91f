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

/// The date has its format everywhere; the decimal separator is regional.
TEST_F(Lists, TheTableShowsEachColumnInItsFormat)
{
    const std::vector<std::string> words{"list",    "LOG", "2",       "36", "--where", "LOGS.KUBATUR > 1",
                                         "--limit", "3",   "--locale"};
    auto german = words;
    german.push_back("de-AT");
    auto english = words;
    english.push_back("en-GB");
    EXPECT_THAT(on(german).output, testing::ContainsRegex(R"([0-9]{2}\.[0-9]{2}\.[0-9]{4} +[0-9]+,[0-9]{3}[^0-9])"));
    EXPECT_THAT(on(english).output, testing::ContainsRegex(R"([0-9]{2}\.[0-9]{2}\.[0-9]{4} +[0-9]+\.[0-9]{3}[^0-9])"));
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

TEST_F(Lists, TypesShowsEveryListTypeWithItsName)
{
    const Outcome german = on({"types"});
    EXPECT_EQ(german.status, 0) << german.errors;
    EXPECT_EQ(lines(german.output), 41U);
    EXPECT_TRUE(german.output.starts_with("ACL\tBerechtigungsebenen\tACCESS_LEVELS\t4\n")) << german.output;
    EXPECT_NE(german.output.find("\nVERTRAG\t"), std::string::npos);
    EXPECT_EQ(german.output.find('<'), std::string::npos) << "every type has a name";
    EXPECT_TRUE(on({"types", "--lang", "english"}).output.starts_with("ACL\tAccess levels\t"));
}

TEST_F(Lists, ColumnsHaveLabelsInEveryLanguage)
{
    EXPECT_EQ(on({"columns", "acl", "--lang", "FRENCH"}).output.substr(0, 38),
              "1\tClé\t\t\tACCESS_LEVELS.ACCESS_LEVELS\n2");
    for (const char* language : {"GERMAN", "ENGLISH", "FRENCH"}) {
        const Outcome columns = on({"columns", "BBHAB", "--lang", language});
        EXPECT_GT(lines(columns.output), 200U);
        EXPECT_EQ(columns.output.find("\tBBHAB "), std::string::npos) << "no column without a label";
    }
}

TEST_F(Lists, TakeLabelsAndTheirShortFormsAsWellAsIds)
{
    const std::string byIds = on({"list", "LOG", "1", "36", "--order", "36", "--limit", "5", "--format", "csv"}).output;
    ASSERT_EQ(lines(byIds), 6U) << byIds;
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"Liste", "Volumen"}, std::vector<std::string>{"liste", " volumen fm "},
          std::vector<std::string>{"1", "Volumen"}}) {
        const Outcome outcome =
            on({"list", "LOG", words[0], words[1], "--order", "Volumen", "--limit", "5", "--format", "csv"});
        EXPECT_EQ(outcome.output, byIds) << outcome.errors;
    }
    EXPECT_EQ(on({"list", "LOG", "List", "--lang", "ENGLISH", "--limit", "1"}).status, 0);
}

TEST_F(Lists, AnUnknownLabelIsNamedWithTheNearest)
{
    const Outcome unknown = on({"list", "LOG", "Volumn"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(unknown.errors, "tamarok: LOG has no column 'Volumn'; did you mean 'Volumen'?\n");
    EXPECT_EQ(on({"list", "LOG", "1", "--order", "Voluman"}).errors,
              "tamarok: LOG has no column 'Voluman'; did you mean 'Volumen'?\n");
    EXPECT_EQ(on({"list", "LOG", "qqqqqqqqqqqq"}).errors, "tamarok: LOG has no column 'qqqqqqqqqqqq'\n");
}

/// The first column of every list type, and the list of services with its temporary table.
TEST_F(Lists, EveryListTypeIsListed)
{
    std::istringstream types{on({"types"}).output};
    for (std::string line; std::getline(types, line);) {
        const std::string type = line.substr(0, line.find('\t'));
        for (const std::vector<std::string>& words :
             {std::vector<std::string>{"list", type, "1", "2", "--limit", "3"},
              std::vector<std::string>{"list", type, "1", "2", "--limit", "3", "--group"}}) {
            if (type == "ARTIKEL" || type == "KIZ") continue; // their first ids are others
            const Outcome outcome = on(words);
            EXPECT_EQ(outcome.status, 0) << type << ": " << outcome.errors;
        }
    }
    EXPECT_EQ(on({"list", "ARTIKEL", "460", "470", "--limit", "3"}).status, 0);
    EXPECT_GT(lines(on({"list", "BBLTN", "1", "2", "3", "--limit", "3"}).output), 2U);
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
