#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "embedded/functions/scratch_database.h"
#include "functions/collation.h"

namespace tamarok::embedded::functions {
namespace {

struct Pair {
    std::string_view smaller;
    std::string_view larger;
};

TEST(Collation, EqualInCaseExpansionsAndTrailingBlanksOnly)
{
    constexpr Pair equal[] = {{"a", "A"},
                              {"Fichte", "FICHTE "},
                              {"ä", "Ä"},
                              {"éà", "ÉÀ  "},
                              {"žluťoučký", "ŽLUŤOUČKÝ"},
                              {"", "   "},
                              {"ω", "Ω"},
                              {"дуб", "ДУБ"},
                              {"ß", "ẞ"},
                              {"a b", "A B"},
                              {"x\xC3", "X\xC3"},
                              {"ß", "ss"},
                              {"Straße", "STRASSE "},
                              {"æ", "AE"},
                              {"Œuvre", "oeuvre"},
                              {"Þór", "thór"},
                              {"ĳ", "ij"}};
    for (const Pair& pair : equal) {
        EXPECT_EQ(compareTexts(pair.smaller, pair.larger), 0) << pair.smaller << " " << pair.larger;
        EXPECT_EQ(compareTexts(pair.larger, pair.smaller), 0) << pair.smaller << " " << pair.larger;
    }
}

TEST(Collation, OrderedPairs)
{
    constexpr Pair ordered[] = {
        {"a", "ä"},       {"ä", "b"},         {"A", "ä"},         {"Ä", "B"},  {"äb", "az"},  {"s", "ß"},
        {"ß", "st"},      {"a", "a b"},       {"a b", "ab"},      {"9", "a"},  {"!", "0"},    {"-", "0"},
        {"_", "1"},       {"§", "0"},         {"10", "9"},        {"a", "aa"}, {"o", "ö"},    {"ö", "ø"},
        {"ø", "p"},       {"z", "α"},         {"ω", "а"},         {"sr", "ß"}, {"ßa", "ssb"}, {"é", "è"},
        {"cote", "coté"}, {"coté", "côte"},   {"", "a"},          {" a", "a"}, {"a\t", "a!"}, {"a", "æ"},
        {"æ", "af"},      {"a", "a\xCC\x88"}, {"a\xCC\x88", "b"}, {"ı", "j"},  {"i", "ı"},    {"i", "İ"}};
    for (const Pair& pair : ordered) {
        EXPECT_LT(compareTexts(pair.smaller, pair.larger), 0) << pair.smaller << " " << pair.larger;
        EXPECT_GT(compareTexts(pair.larger, pair.smaller), 0) << pair.smaller << " " << pair.larger;
    }
}

TEST(Collation, EmbeddedNulsCount)
{
    using namespace std::string_view_literals;
    EXPECT_NE(compareTexts("a\0b"sv, "a\0c"sv), 0);
    EXPECT_EQ(compareTexts("a\0b"sv, "A\0B "sv), 0);
    EXPECT_NE(compareTexts("a\0"sv, "a"sv), 0);
}

/// Any texts, broken UTF-8 included: antisymmetric and transitive.
TEST(Collation, IsATotalOrder)
{
    constexpr std::string_view pieces[] = {"a", "A",  "b",    "ä",    "Ä",    "ß",        "ss", " ",
                                           "-", "1",  "é",    "\xC3", "\xA4", "\xE2\x82", "€",  "\xCC\x81",
                                           "æ", "ae", "\x01", "z",    "o",    "ø",        "ж",  "\xF0\x9F\x8C\xB2"};
    std::mt19937 random{4711};
    std::vector<std::string> texts;
    for (int index = 0; index < 120; ++index) {
        std::string text;
        for (auto size = random() % 5; size > 0; --size)
            text += pieces[random() % std::size(pieces)];
        texts.push_back(text);
    }
    for (const auto& a : texts) {
        for (const auto& b : texts) {
            const int ab = compareTexts(a, b);
            ASSERT_EQ(ab > 0, compareTexts(b, a) < 0) << a << " " << b;
            if (ab > 0) continue;
            for (const auto& c : texts) {
                if (compareTexts(b, c) > 0) continue;
                ASSERT_LE(compareTexts(a, c), 0) << a << " " << b << " " << c;
            }
        }
    }
}

TEST(Collation, GovernsSortingGroupingAndExtremes)
{
    ScratchDatabase database;
    database.run("CREATE TABLE WOOD (NAME TEXT COLLATE TAMAROK);"
                 "INSERT INTO WOOD VALUES ('Buche'),('ahorn'),('Ärle'),('AHORN '),('Zeder'),('buche'),('arle'),"
                 "('1a'),('-x'),('Eiche')");
    EXPECT_EQ(database.rows("SELECT NAME FROM WOOD ORDER BY NAME, rowid"),
              "'-x'|'1a'|'ahorn'|'AHORN '|'arle'|'Ärle'|'Buche'|'buche'|'Eiche'|'Zeder'");
    EXPECT_EQ(database.rows("SELECT count(*) FROM WOOD GROUP BY NAME ORDER BY NAME"), "1|1|2|1|1|2|1|1");
    EXPECT_EQ(database.rows("SELECT count(DISTINCT NAME) FROM WOOD"), "8");
    EXPECT_EQ(database.rows("SELECT max(NAME) FROM WOOD"), "'Zeder'");
    EXPECT_EQ(database.rows("SELECT NAME FROM WOOD WHERE NAME = 'eiche '"), "'Eiche'");
    EXPECT_EQ(database.rows("SELECT NAME FROM WOOD WHERE NAME IN ('ZEDER','ärle  ') ORDER BY 1"), "'Ärle'|'Zeder'");
}

} // namespace
} // namespace tamarok::embedded::functions
