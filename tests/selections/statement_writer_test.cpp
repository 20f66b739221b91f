#include <gtest/gtest.h>
#include <string>

#include "statement_writer.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok::selections {
namespace {

std::string fill(std::string_view statement, std::string_view fields = {}, bool oracle = false,
                 std::string_view key = "KEY")
{
    TmkVar session;
    session.bolOracle = oracle;
    return StatementWriter{session, key, fields}.fill(statement);
}

TEST(Fields, AreCountedFromZeroAndDividedByTabs)
{
    const FieldVector fields{"a\t\tc"};
    EXPECT_EQ(fields[0], "a");
    EXPECT_EQ(fields[1], "");
    EXPECT_EQ(fields[2], "c");
    EXPECT_TRUE(fields.has(2));
    EXPECT_FALSE(fields.has(3));
    EXPECT_EQ(FieldVector{""}[0], "");
    EXPECT_EQ(FieldVector{"a\t"}[1], "");
}

TEST(Fields, BeyondTheLastOneAreErrorNine)
{
    for (const std::string_view statement : {"{P1}", "{N1}", "{UP1}", "{P1?a:b}", "{P1=4?a:b}"}) {
        try {
            fill(statement, "x");
            ADD_FAILURE() << statement;
        } catch (const Error& error) {
            EXPECT_EQ(error.number, errors::subscriptOutOfRange) << statement;
            EXPECT_NE(error.description.find("field 1"), std::string::npos) << error.description;
        }
    }
}

TEST(Placeholders, PasteFieldsAsTheyStand)
{
    EXPECT_EQ(fill("'{P0}' {P1}", "O'Neil\tAND {P0}"), "'O'Neil' AND {P0}");
    EXPECT_EQ(fill("{UP0}", "süd"), "SÜD");
    EXPECT_EQ(fill("{Typ}", "", false, "MENGEN"), "MENGEN");
}

TEST(Placeholders, NumbersFollowTheRegionalSettings)
{
    Platform platform;
    platform.regional = Regional::named("de-AT");
    const PlatformScope scope{platform};
    EXPECT_EQ(fill("{N0}", "12"), "12");
    EXPECT_EQ(fill("{N0}", "1,5"), "1,5");
    EXPECT_EQ(fill("{N0}", ""), "0");
    EXPECT_EQ(fill("{N0}", "FI"), "0");
}

TEST(Placeholders, WordsFollowTheDialect)
{
    EXPECT_EQ(fill("{ISNULL}|{LONG}|{TOP}|{ROWNUM}|{DUAL}|{CONCAT}|{NOTEXT}"), "ISNULL|LONG|TOP 1|||+|''");
    EXPECT_EQ(fill("{ISNULL}|{LONG}|{TOP}|{ROWNUM}|{DUAL}|{CONCAT}|{NOTEXT}", "", true),
              "NVL|LONG_|| AND rownum=1|FROM DUAL||||NULL");
}

TEST(Placeholders, OfUnknownNameAreRefused)
{
    for (const std::string_view statement : {"{WORD}", "{}", "{p0}", "{isnull}"})
        EXPECT_THROW(fill(statement, "x"), Error) << statement;
}

TEST(Choices, TakeTheFirstFormForAFilledField)
{
    EXPECT_EQ(fill("a{P0? AND {P0}: }b", "x=1"), "a AND x=1b");
    EXPECT_EQ(fill("a{P0? AND {P0}: }b", ""), "a b");
    EXPECT_EQ(fill("{P0? = {P0}: IS NULL }", ""), " IS NULL ");
    EXPECT_EQ(fill("{P0?{ISNULL}(X,0) = '{P0}':}", "1", true), "NVL(X,0) = '1'");
}

TEST(Choices, CompareGiveAndTellTheDialect)
{
    EXPECT_EQ(fill("{P0=4?w:n}", "4"), "w");
    EXPECT_EQ(fill("{P0=4?w:n}", "44"), "n");
    EXPECT_EQ(fill("{GIVEN1?g:n}", "x"), "n");
    EXPECT_EQ(fill("{GIVEN1?g:n}", "x\t"), "n");
    EXPECT_EQ(fill("{GIVEN1?g:n}", "x\ty"), "g");
    EXPECT_EQ(fill("{ORACLE?o:s}"), "s");
    EXPECT_EQ(fill("{ORACLE?o:s}", "", true), "o");
    EXPECT_EQ(fill("{KEYPART?{KEYPART} = 1:all}", "", false, "PERSONAL_VALID_KUNDE"), "KUNDE = 1");
    EXPECT_EQ(fill("{KEYPART?{KEYPART} = 1:all}", "", false, "PERSONAL_VALID"), "all");
}

TEST(Measure, EachKindHasItsFilter)
{
    const std::pair<std::string_view, std::string_view> kinds[] = {
        {"", ""},
        {"1", " AND RUND = 1"},
        {"2", " AND SCHICHT = 1"},
        {"3", " AND STANG = 1"},
        {"4", " AND GEWICHT = 1"},
        {"5", " AND WERK = 1"},
        {"6", " AND MANTEL = 1"},
        {"7", " AND HS IS NOT NULL"},
        {"01", " AND HS IS NOT NULL"},
        {"x", " AND HS IS NOT NULL"},
    };
    for (const auto& [kind, filter] : kinds) {
        EXPECT_EQ(fill("{MEASURE}", kind), " WHERE ISNULL(DISABLE,0)=0" + std::string{filter}) << kind;
        EXPECT_EQ(fill("{MEASURE}", kind, true), " WHERE NVL(DISABLE,0)=0" + std::string{filter}) << kind;
    }
}

TEST(Place, ComparesTheLevelsThatThePathGives)
{
    EXPECT_EQ(fill("{PLACE}", ""), "");
    EXPECT_EQ(fill("{PLACE}", "01/ a"), " AND UPPER(WALDORT.WO1) = '01' AND UPPER(WALDORT.WO2) = 'A'");
    EXPECT_EQ(fill("{PLACE}", "01//ü"), " AND UPPER(WALDORT.WO1) = '01' AND UPPER(WALDORT.WO3) = 'Ü'");
    EXPECT_EQ(fill("{PLACE}", "1/2/3/4/5/6/7").substr(fill("{PLACE}", "1/2/3/4/5").size()),
              " AND UPPER(WALDORT.WO6) = '6/7'");
}

} // namespace
} // namespace tamarok::selections
