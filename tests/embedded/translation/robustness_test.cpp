#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "embedded/translation/test_database.h"

#include "tamarok/error.h"

/// Extreme and broken texts: each must end in a translation or in an error with its place.
namespace tamarok::embedded::translation {
namespace {

using testing::HasSubstr;

/// Description of the refusal; empty if the text was accepted.
std::string refusal(const std::string& text)
{
    const std::optional<Error> error = refusalOf(text);
    if (!error) return {};
    EXPECT_EQ(error->number, errors::statementRefused);
    return error->description;
}

TEST(Robustness, UnbalancedQuotesAndBracketsNameTheirPlace)
{
    EXPECT_THAT(refusal("SELECT 'abc"), HasSubstr("Unclosed quotation mark"));
    EXPECT_THAT(refusal("SELECT\n  'abc''"), HasSubstr("(line 2, column 3)"));
    EXPECT_THAT(refusal("SELECT [abc"), HasSubstr("Unclosed quotation mark"));
    EXPECT_THAT(refusal("SELECT \"abc"), HasSubstr("Unclosed quotation mark"));
    EXPECT_THAT(refusal("SELECT 1 /* abc"), HasSubstr("Missing end comment mark"));
    EXPECT_THAT(refusal("SELECT (1"), HasSubstr("the statement ends where ')' is expected"));
    EXPECT_THAT(refusal("SELECT 1)"), HasSubstr("Incorrect syntax near ')'"));
    EXPECT_THAT(refusal("SELECT []"), HasSubstr("missing or empty"));
}

TEST(Robustness, ColumnsAreCountedInCharacters)
{
    EXPECT_THAT(refusal("SELECT 'äöü', §"), HasSubstr("(line 1, column 15)"));
}

TEST(Robustness, DeepNestingIsRefusedAndNotFollowed)
{
    EXPECT_EQ(refusal("SELECT " + repeated("(", 150) + "1" + repeated(")", 150)), "");
    EXPECT_THAT(refusal("SELECT " + repeated("(", 10000) + "1" + repeated(")", 10000)), HasSubstr("nested too deeply"));
    EXPECT_THAT(refusal("SELECT " + repeated("(", 10000)), HasSubstr("nested too deeply"));
    EXPECT_THAT(refusal("SELECT 1 WHERE " + repeated("NOT ", 10000) + "1=1"), HasSubstr("nested too deeply"));
    EXPECT_THAT(refusal("SELECT " + repeated("- ", 10000) + "1"), HasSubstr("nested too deeply"));
    EXPECT_THAT(refusal("SELECT " + repeated("ABS(", 10000) + "1"), HasSubstr("nested too deeply"));
    EXPECT_THAT(refusal("SELECT " + repeated("CASE WHEN 1=1 THEN ", 10000)), HasSubstr("nested too deeply"));
    EXPECT_THAT(refusal(repeated("SELECT * FROM (", 10000)), HasSubstr("nested too deeply"));
    EXPECT_THAT(refusal("SELECT * FROM " + repeated("(", 10000)), HasSubstr("nested too deeply"));
    EXPECT_THAT(refusal(repeated("IF 1=1 ", 10000)), HasSubstr("nested too deeply"));
    EXPECT_THAT(refusal(repeated("BEGIN ", 10000)), HasSubstr("nested too deeply"));
    EXPECT_THAT(refusal("SELECT 1" + repeated("+1", 100000)), HasSubstr("expression services limit"));
    EXPECT_THAT(refusal("SELECT 1" + repeated(" UNION ALL SELECT 1", 10000)), HasSubstr("nested too deeply"));
}

TEST(Robustness, AMegabyteOfSqlIsTranslated)
{
    TestDatabase database;
    std::string list = "SELECT COUNT(*) FROM LOGS WHERE ID_LOG IN (0";
    while (list.size() < 1024 * 1024)
        list += ",12345678";
    EXPECT_THAT(database.run(list + ")"), testing::ElementsAre("0"));
    std::string statements;
    while (statements.size() < 1024 * 1024)
        statements += "SELECT ID_LOG, LISTE FROM LOGS WHERE HA = 'FI'\n";
    EXPECT_EQ(ParsedBatch(statements).steps().size(), statements.size() / 47);
    std::string conditions = "SELECT 1 WHERE 1=1";
    for (int i = 1; i < 5000; ++i)
        conditions += " AND 1=1";
    EXPECT_THAT(database.run(conditions), testing::ElementsAre("1"));
}

TEST(Robustness, TextsBeyondTheLimitAreRefused)
{
    EXPECT_THAT(refusal(std::string(16U * 1024U * 1024U + 1, ' ')), HasSubstr("longer than 16 MB"));
}

TEST(Robustness, BytesThatAreNoTextAreRefused)
{
    EXPECT_THAT(refusal(std::string("SELECT 'a\0b'", 12)), HasSubstr("byte 0x00"));
    EXPECT_THAT(refusal("SELECT '\xFF'"), HasSubstr("byte 0xFF"));
    EXPECT_THAT(refusal("SELECT '\xC3"), HasSubstr("byte 0xC3"));
    EXPECT_EQ(refusal("SELECT 'ÄÖÜ €'"), "");
}

TEST(Robustness, GarbageIsNeverTakenForAStatement)
{
    const TestDatabase database;
    std::mt19937 random(20200131);
    int refused = 0;
    for (int round = 0; round < 2000; ++round) {
        std::string garbage;
        for (int i = 0; i < 60; ++i)
            garbage += static_cast<char>(random() % 256U);
        try {
            static_cast<void>(ParsedBatch(garbage).steps().size());
        } catch (const Error&) {
            ++refused;
        }
    }
    EXPECT_EQ(refused, 2000);
}

TEST(Robustness, StatementsTornAndShuffledEndInAnAnswer)
{
    const TestDatabase database;
    const std::vector<Fixture> fixtures = readFixtures("translations.txt");
    std::mt19937 random(7);
    int tried = 0;
    for (const Fixture& fixture : fixtures) {
        for (int round = 0; round < 8; ++round) {
            std::string text = fixture.given;
            text.erase(random() % text.size(), 1 + random() % 12U);
            ++tried;
            try {
                const ParsedBatch batch(text);
                for (std::size_t i = 0; i < batch.steps().size(); ++i) {
                    static_cast<void>(translateStep(batch, i, database, DateOrder::Dmy));
                }
            } catch (const Error& error) {
                EXPECT_THAT(error.description, HasSubstr("(line ")) << text;
            }
        }
    }
    EXPECT_EQ(tried, static_cast<int>(fixtures.size()) * 8);
}

} // namespace
} // namespace tamarok::embedded::translation
