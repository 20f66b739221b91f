#include <gtest/gtest.h>

#include "dialect/sql_template.h"

#include "tamarok/tmkvar.h"

namespace tamarok::dialect {
namespace {

TEST(DialectOf, FollowsTheSession)
{
    TmkVar session;
    EXPECT_FALSE(of(session).isOracle);
    session.bolOracle = true;
    EXPECT_TRUE(of(session).isOracle);
}

TEST(Words, HaveOneSpellingInEachDialect)
{
    struct {
        std::string_view pattern;
        std::string_view sqlServer;
        std::string_view oracle;
    } const cases[] = {
        {"{ISNULL}(A,0)", "ISNULL(A,0)", "NVL(A,0)"},
        {"A{CONCAT}B", "A+B", "A||B"},
        {"A{+}B", "A + B", "A || B"},
        {"A{CR}B", "A + CHAR(13) + B", "A || CHR(13) || B"},
        {"{NOTEXT}", "''", "NULL"},
        {"{LONG}", "LONG", "LONG_"},
        {"SELECT 1 {DUAL}", "SELECT 1 ", "SELECT 1 FROM DUAL"},
        {"{ZEROS}", "REPLICATE(0,LEN(ACCESS_LEVELS))", "LPAD('0',LEN(ACCESS_LEVELS),'0')"},
        {"<{TOP}>", "<TOP 1>", "<>"},
        {"A=1{ROWNUM}", "A=1", "A=1 AND rownum=1"},
        {"{SELECTFIRST}A FROM B{WHEREFIRST}", "SELECT TOP 1 A FROM B", "SELECT A FROM B WHERE rownum = 1"},
        {"{SELECTNONE}A FROM B{WHERENONE}", "SELECT TOP 0 A FROM B", "SELECT A FROM B WHERE rownum=1"},
    };
    EXPECT_EQ(std::size(cases) + 2, std::size(words)) << "each word has a case, two cases have two words";
    for (const auto& [pattern, expectedSqlServer, expectedOracle] : cases) {
        EXPECT_EQ(fill(pattern, sqlServer), expectedSqlServer);
        EXPECT_EQ(fill(pattern, oracle), expectedOracle);
    }
}

TEST(Fill, InsertsNamedValuesVerbatim)
{
    EXPECT_EQ(fill("", sqlServer), "");
    EXPECT_EQ(fill("no placeholder", sqlServer), "no placeholder");
    EXPECT_EQ(fill("{A}{B}{A}", sqlServer, {{"A", "{B}'"}, {"B", ""}}), "{B}'{B}'");
    EXPECT_EQ(fill("<{ISNULL}>", oracle, {{"ISNULL", "the caller's value comes first"}}),
              "<the caller's value comes first>");
}

TEST(Fill, ChoosesByValueAndDialect)
{
    EXPECT_EQ(fill("{A?<{A}>:none}", sqlServer, {{"A", "x"}}), "<x>");
    EXPECT_EQ(fill("{A?<{A}>:none}", sqlServer, {{"A", ""}}), "none");
    EXPECT_EQ(fill("{A=x?same:other}", sqlServer, {{"A", "x"}}), "same");
    EXPECT_EQ(fill("{A=x?same:other}", sqlServer, {{"A", "xx"}}), "other");
    EXPECT_EQ(fill("{A=?empty:full}", sqlServer, {{"A", ""}}), "empty");
    EXPECT_EQ(fill("{ORACLE?o:s}", sqlServer), "s");
    EXPECT_EQ(fill("{ORACLE?o:s}", oracle), "o");
    EXPECT_EQ(fill("{A?{B?1:2}:{B?3:4}}", sqlServer, {{"A", ""}, {"B", "x"}}), "3");
    EXPECT_EQ(fill("{A?:}!", sqlServer, {{"A", "x"}}), "!");
}

TEST(Fill, RefusesMalformedTemplatesAndUnknownNames)
{
    for (const std::string_view pattern : {"{", "a{b", "{A?x", "{A?x}", "{A?x:y", "{A?{B:y}", "{NONE}", "{}", "{a}",
                                           "{isnull}", "{NONE?x:y}", "{ORACLE}"}) {
        try {
            fill(pattern, sqlServer, {{"A", "x"}});
            ADD_FAILURE() << pattern;
        } catch (const Error& error) {
            EXPECT_EQ(error.number, errors::invalidArgument) << pattern;
        }
    }
}

TEST(Placeholders, HaveANameAndAnArgument)
{
    struct {
        std::string_view text;
        std::string_view name;
        std::string_view argument;
    } const cases[] = {
        {"ROW 240", "ROW", "240"}, {"P0", "P", "0"}, {"PRICE A1", "PRICE", "A1"},
        {"Typ", "Typ", ""},        {"+", "+", ""},   {"", "", ""},
    };
    for (const auto& [text, name, argument] : cases) {
        const Placeholder placeholder = placeholderOf(text);
        EXPECT_EQ(placeholder.name, name) << text;
        EXPECT_EQ(placeholder.argument, argument) << text;
    }
}

TEST(NamesOnly, FindsNamesInTextsAndChoices)
{
    constexpr auto isA = [](std::string_view name) { return name == "A"; };
    static_assert(namesOnly("x{A}{ISNULL}{A?{CONCAT}:{ORACLE?{A}:}}", isA));
    static_assert(!namesOnly("x{B}", isA));
    static_assert(!namesOnly("{A?{B}:}", isA));
    static_assert(!namesOnly("{A?:{B}}", isA));
    static_assert(!namesOnly("{ORACLE}", isA));
    EXPECT_THROW(namesOnly("{A", isA), Error);
}

} // namespace
} // namespace tamarok::dialect
