#include <gtest/gtest.h>
#include <random>

#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_csel.h"
#include "tamarok/text.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::Surroundings;

const Comm_CSel csel;

TEST(InsertToStr, AppendsBehindCommaAndBlank)
{
    EXPECT_EQ(csel.InsertToStr("", "A"), "A");
    EXPECT_EQ(csel.InsertToStr("A", ""), "A");
    EXPECT_EQ(csel.InsertToStr("A", "B"), "A, B");
    EXPECT_EQ(csel.InsertToStr("A", "A"), "A, A");
    EXPECT_EQ(csel.InsertToStr("", ""), "");
}

struct ListCase {
    const char* name;
    const char* list;
    const char* value;
    const char* result;
};

void PrintTo(const ListCase& listCase, std::ostream* out)
{
    *out << listCase.name;
}

class InsertToStr2 : public ::testing::TestWithParam<ListCase> {};

TEST_P(InsertToStr2, GivesTheList)
{
    const Surroundings with;
    const ListCase& c = GetParam();
    EXPECT_EQ(csel.InsertToStr2(Variant{c.list}, c.value, "R"), c.result);
    EXPECT_TRUE(with.messages->shown.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Lists, InsertToStr2,
    ::testing::Values(ListCase{"known part in another case", "a.x, b.y", "B.Y", "A.X,B.Y"},
                      ListCase{"inner comma stays", "ISNULL(A.X,0),B.Y", "C", "ISNULL(A.X,0),B.Y,C"},
                      ListCase{"nothing", "", "", ""}, ListCase{"blanks", "  ", "  ", ""},
                      ListCase{"first value", "", " a ", "A"}, ListCase{"no value", " a , b ", "", "A,B"},
                      ListCase{"value with a quote keeps its case", "A", "f('x')", "A,f('x')"},
                      ListCase{"quoted value differs from the upper-case part", "F('X')", "f('x')", "F('X'),f('x')"},
                      ListCase{"list with a quote keeps its case", "f('x'), b", "B", "f('x'),b,B"},
                      ListCase{"quotes divide as any character", "f('a,b')", "c", "f('a,b'),C"},
                      ListCase{"comma in a quote outside parentheses divides", "'a , b'", "c", "'a,b',C"},
                      ListCase{"brackets go", "[A].[X]", "[B].[y]", "A.X,B.Y"},
                      ListCase{"brackets hide no duplicate", "[A].[X]", "a.x", "A.X"},
                      ListCase{"reserved column keeps its brackets", "warenkatalog_temp.plan",
                               "WARENKATALOG_TEMP.[PLAN]", "WARENKATALOG_TEMP.[PLAN]"},
                      ListCase{"window expression becomes its column", "A",
                               "ROW_NUMBER() OVER(ORDER BY NN_POSITIONEN.NN_ID ASC)", "A,NN_POSITIONEN.NN_ID"},
                      ListCase{"window expression in the list stays",
                               "ROW_NUMBER() OVER(ORDER BY NN_POSITIONEN.NN_ID ASC)", "A",
                               "ROW_NUMBER() OVER(ORDER BY NN_POSITIONEN.NN_ID ASC),A"},
                      ListCase{"empty parts go", ",A,,B,", "C", "A,B,C"},
                      ListCase{"value is not divided", "A,B", "A,B", "A,B,A,B"},
                      ListCase{"comma behind a closing parenthesis too many divides nothing", "A),B", "C", "A),B,C"},
                      ListCase{"umlauts are letters", "ä.x", "Ä.X", "Ä.X"},
                      ListCase{"blank that a bracket leaves", "A", "[b ]", "A,B "}));

TEST(InsertToStr2Message, FromTextIsReportedAndUsed)
{
    const Surroundings with;
    EXPECT_EQ(csel.InsertToStr2(Variant{"from a, b"}, "c", "R"), "FROM A,B,C");
    EXPECT_EQ(with.messages->shown, (std::vector{test::ShownMessage{"ERROR in Sub InsertToStr2", 0, "Tamarok"}}));
    static_cast<void>(csel.InsertToStr2(Variant{"FROM"}, "FROM B", "R"));
    static_cast<void>(csel.InsertToStr2(Variant{"FROMAGE A"}, "B", "R"));
    EXPECT_EQ(with.messages->shown.size(), 1U);
}

TEST(InsertToStr2Message, ListMayBeAnyValueWithAText)
{
    const Surroundings with;
    EXPECT_EQ(csel.InsertToStr2(Variant{}, "a", "R"), "A");
    EXPECT_EQ(csel.InsertToStr2(Variant{std::int16_t{7}}, "a", "R"), "7,A");
    EXPECT_EQ(errorNumber([] { static_cast<void>(csel.InsertToStr2(Variant{Null{}}, "a", "R")); }),
              errors::invalidUseOfNull);
}

TEST(InsertToStr2Message, ListBeyondTheCountersRangeIsAnOverflow)
{
    const Surroundings with;
    EXPECT_EQ(csel.InsertToStr2(Variant{std::string(32767, 'A')}, "", "R").size(), 32767U);
    EXPECT_EQ(errorNumber([] { static_cast<void>(csel.InsertToStr2(Variant{std::string(32768, 'A')}, "", "R")); }),
              errors::overflow);
}

TEST(InsertToWhere, AddsAConditionOnce)
{
    EXPECT_EQ(csel.InsertToWhere("A = 1", ""), "A = 1");
    EXPECT_EQ(csel.InsertToWhere("", "A = 1"), "A = 1");
    EXPECT_EQ(csel.InsertToWhere("A = 1", "B = 2"), "A = 1 AND B = 2");
    EXPECT_EQ(csel.InsertToWhere("A = 1 AND B = 2", "b = 2"), "A = 1 AND B = 2");
    EXPECT_EQ(csel.InsertToWhere("A = 11", "A = 1"), "A = 11");
    EXPECT_EQ(csel.InsertToWhere("NAME = 'ÄRZTE'", "name = 'ärzte'"), "NAME = 'ÄRZTE'");
    EXPECT_EQ(csel.InsertToWhere("", ""), "");
}

TEST(InsertToWhereAbs, TakesAnyValueWithAText)
{
    const Surroundings with;
    EXPECT_EQ(csel.InsertToWhereAbs(Variant{}, "A = 1"), "A = 1");
    EXPECT_EQ(csel.InsertToWhereAbs(Variant{"A = 1"}, "a = 1"), "A = 1");
    EXPECT_EQ(csel.InsertToWhereAbs(Variant{"A = 1"}, "B"), "A = 1 AND B");
    EXPECT_EQ(csel.InsertToWhereAbs(Variant{"A = 1"}, ""), "A = 1");
    EXPECT_EQ(errorNumber([] { static_cast<void>(csel.InsertToWhereAbs(Variant{Null{}}, "a")); }),
              errors::invalidUseOfNull);
}

TEST(RemoveString, RemovesAsRepeatedSearchesFromTheStartDo)
{
    std::mt19937 random{1};
    const auto word = [&](std::size_t longest) {
        std::string letters(1 + random() % longest, 'a');
        for (char& letter : letters)
            letter = "ab"[random() % 2];
        return letters;
    };
    for (int round = 0; round < 2'000; ++round) {
        const std::string text = word(40);
        const std::string removed = word(5);
        std::string rest = text;
        for (std::size_t place = rest.find(removed); place != std::string::npos; place = rest.find(removed))
            rest.erase(place, removed.size());
        EXPECT_EQ(csel.RemoveString(text, removed), rest) << text << " / " << removed;
        EXPECT_EQ(csel.InsertToWhere(text, text::toUpper(removed)) == text, text.find(removed) != std::string::npos)
            << text << " / " << removed;
    }
}

TEST(RemoveString, RemovesAlsoWhatARemovalMakes)
{
    EXPECT_EQ(csel.RemoveString("A JOIN B JOIN C", " JOIN"), "A B C");
    EXPECT_EQ(csel.RemoveString("aabbab", "ab"), "");
    EXPECT_EQ(csel.RemoveString("xaabby", "ab"), "xy");
    EXPECT_EQ(csel.RemoveString("aaaa", "aaa"), "a");
    EXPECT_EQ(csel.RemoveString("abaababab", "abab"), "abaab");
    EXPECT_EQ(csel.RemoveString("abcababcabc", "abc"), "ab");
    EXPECT_EQ(csel.RemoveString("abcababcab", "abc"), "abab");
    EXPECT_EQ(csel.RemoveString("aabaabaaab", "aabaaa"), "aabb");
    EXPECT_EQ(csel.RemoveString("abc", "B"), "abc");
    EXPECT_EQ(csel.RemoveString("", "a"), "");
    EXPECT_EQ(errorNumber([] { static_cast<void>(csel.RemoveString("abc", "")); }), errors::invalidArgument);
}

struct SplitCase {
    const char* clause;
    const char* from;
    const char* where;
};

TEST(SplitClause, DividesAtTheFirstWhereOutsideParentheses)
{
    for (const SplitCase& c : {
             SplitCase{"FROM LOGS WHERE A = 1", "LOGS", "A = 1"},
             SplitCase{"FROM LOGS WHERE A IN (SELECT B FROM C WHERE D=1)", "LOGS", "A IN (SELECT B FROM C WHERE D=1)"},
             SplitCase{"FROM (SELECT B FROM C WHERE D=1) X WHERE A=1", "(SELECT B FROM C WHERE D=1) X", "A=1"},
             SplitCase{"  FROM LOGS  ", "LOGS", ""},
             SplitCase{"FROM LOGS WHERE A WHERE B", "LOGS", "A WHERE B"},
             SplitCase{"FROM LOGS where A", "LOGS where A", ""},
             SplitCase{"FROM", "", ""},
             SplitCase{"FROMAGE WHERE A", "AGE", "A"},
             SplitCase{"LOGS WHERE A = 1", "", ""},
             SplitCase{"WHERE A = 1", "", ""},
             SplitCase{"from LOGS WHERE A", "", ""},
         }) {
        std::string from = "old";
        std::string where = "old";
        csel.SplitClause(c.clause, from, where);
        EXPECT_EQ(from, c.from) << c.clause;
        EXPECT_EQ(where, c.where) << c.clause;
    }
}

TEST(SplitClause, BlankTextLeavesTheResultsAsTheyAre)
{
    for (const char* clause : {"", "   "}) {
        std::string from = "old from";
        std::string where = "old where";
        csel.SplitClause(clause, from, where);
        EXPECT_EQ(from, "old from");
        EXPECT_EQ(where, "old where");
    }
}

TEST(SplitClause, ResultMayBeTheTextItself)
{
    std::string clause = "FROM LOGS WHERE A IN (1, 2, 3, 4, 5, 6, 7, 8)";
    std::string where;
    csel.SplitClause(clause, clause, where);
    EXPECT_EQ(clause, "LOGS");
    EXPECT_EQ(where, "A IN (1, 2, 3, 4, 5, 6, 7, 8)");
}

TEST(SplitClause, TextBeyondTheCountersRangeIsAnOverflow)
{
    std::string from;
    std::string where;
    EXPECT_EQ(errorNumber([&] { csel.SplitClause("FROM " + std::string(32768, 'A'), from, where); }), errors::overflow);
}

TEST(OrderBy, AscendingUnlessTheCodeIsOne)
{
    EXPECT_EQ(csel.OrderBy("0", ""), "");
    EXPECT_EQ(csel.OrderBy("1", ""), "");
    EXPECT_EQ(csel.OrderBy("0", "A,B"), " ORDER BY A,B");
    EXPECT_EQ(csel.OrderBy("", "A"), " ORDER BY A");
    EXPECT_EQ(csel.OrderBy("-1", "A"), " ORDER BY A");
    EXPECT_EQ(csel.OrderBy("1", "A,ISNULL(B,0)"), " ORDER BY A DESC,ISNULL(B,0) DESC");
    EXPECT_EQ(csel.OrderBy("1", "A"), " ORDER BY A DESC");
    EXPECT_EQ(errorNumber([] { static_cast<void>(csel.OrderBy("1", std::string(32768, 'A'))); }), errors::overflow);
}

} // namespace
} // namespace tamarok
