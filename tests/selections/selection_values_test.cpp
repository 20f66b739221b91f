#include <gtest/gtest.h>
#include <string>

#include "selection_values.h"
#include "support/errors.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok::selections {
namespace {

std::string fillForKey(std::string_view key, std::string_view statement)
{
    return fillStatement(TmkVar{}, key, {}, statement);
}

std::string fill(std::string_view statement, std::string_view fields = {})
{
    return fillStatement(TmkVar{}, "KEY", fields, statement);
}

std::string fillForOracle(std::string_view statement, std::string_view fields = {})
{
    TmkVar session;
    session.bolOracle = true;
    return fillStatement(session, "KEY", fields, statement);
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
        SCOPED_TRACE(statement);
        test::expectError(errors::subscriptOutOfRange, "field 1", [&] { fill(statement, "x"); });
    }
}

TEST(Placeholders, InsertFieldsVerbatim)
{
    EXPECT_EQ(fill("'{P0}' {P1}", "O'Neil\tAND {P0}"), "'O'Neil' AND {P0}");
    EXPECT_EQ(fill("{UP0}", "süd"), "SÜD");
    EXPECT_EQ(fillForKey("MENGEN", "{Typ}"), "MENGEN");
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
    EXPECT_EQ(fillForOracle("{ISNULL}|{LONG}|{TOP}|{ROWNUM}|{DUAL}|{CONCAT}|{NOTEXT}", ""),
              "NVL|LONG_|| AND rownum=1|FROM DUAL||||NULL");
}

TEST(Placeholders, OfUnknownNameOrIndexAreErrorFive)
{
    for (const std::string_view statement : {"{WORD}", "{}", "{p0}", "{isnull}", "{P x}", "{P10}", "{P0"}) {
        EXPECT_EQ(test::errorNumber([&] { fill(statement, "x"); }), errors::invalidArgument) << statement;
    }
}

TEST(Choices, TakeTheFirstFormForAFilledField)
{
    EXPECT_EQ(fill("a{P0? AND {P0}: }b", "x=1"), "a AND x=1b");
    EXPECT_EQ(fill("a{P0? AND {P0}: }b", ""), "a b");
    EXPECT_EQ(fill("{P0? = {P0}: IS NULL }", ""), " IS NULL ");
    EXPECT_EQ(fillForOracle("{P0?{ISNULL}(X,0) = '{P0}':}", "1"), "NVL(X,0) = '1'");
}

TEST(Choices, CompareFieldsTestTheirPresenceAndTheDialect)
{
    EXPECT_EQ(fill("{P0=4?w:n}", "4"), "w");
    EXPECT_EQ(fill("{P0=4?w:n}", "44"), "n");
    EXPECT_EQ(fill("{GIVEN1?g:n}", "x"), "n");
    EXPECT_EQ(fill("{GIVEN1?g:n}", "x\t"), "n");
    EXPECT_EQ(fill("{GIVEN1?g:n}", "x\ty"), "g");
    EXPECT_EQ(fill("{ORACLE?o:s}"), "s");
    EXPECT_EQ(fillForOracle("{ORACLE?o:s}", ""), "o");
    EXPECT_EQ(fillForKey("PERSONAL_VALID_KUNDE", "{KEYPART?{KEYPART} = 1:all}"), "KUNDE = 1");
    EXPECT_EQ(fillForKey("PERSONAL_VALID", "{KEYPART?{KEYPART} = 1:all}"), "all");
}

TEST(AssortmentFilter, FollowsTheKindOfMeasurement)
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
        EXPECT_EQ(fill("{ASSORTMENTS}", kind), " WHERE ISNULL(DISABLE,0)=0" + std::string{filter}) << kind;
        EXPECT_EQ(fillForOracle("{ASSORTMENTS}", kind), " WHERE NVL(DISABLE,0)=0" + std::string{filter}) << kind;
    }
}

TEST(LocationFilter, ComparesTheLevelsThatThePathGives)
{
    EXPECT_EQ(fill("{LOCATION}", ""), "");
    EXPECT_EQ(fill("{LOCATION}", "01/ a"), " AND UPPER(WALDORT.WO1) = '01' AND UPPER(WALDORT.WO2) = 'A'");
    EXPECT_EQ(fill("{LOCATION}", "01//ü"), " AND UPPER(WALDORT.WO1) = '01' AND UPPER(WALDORT.WO3) = 'Ü'");
    EXPECT_EQ(fill("{LOCATION}", "1/2/3/4/5/6/7").substr(fill("{LOCATION}", "1/2/3/4/5").size()),
              " AND UPPER(WALDORT.WO6) = '6/7'");
}

} // namespace
} // namespace tamarok::selections
