#include <gtest/gtest.h>
#include <string>

#include "support/errors.h"
#include "support/surroundings.h"
#include "timber/statements.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"

namespace tamarok {
namespace {

using test::expectError;
using test::Surroundings;
using namespace test::statements;

class ConversionStatements : public ::testing::Test {
protected:
    double factor(bool onlyAssortment, double length = 2.5)
    {
        return Comm_Get{}.GetHolzTabValue(with.session, {}, "RM_UFA", 2, "FI", "IF", "rm", "B", "2a", onlyAssortment,
                                          "MR", length);
    }
    std::string quantity(bool invoicing, const char* prefix, const char* unit, const char* pattern) const
    {
        return Comm_CSel{}.MengeSQL(with.session, invoicing, prefix, unit, pattern);
    }

    Surroundings with{"de-AT"};
    const std::string defaults =
        "SELECT ISNULL(ATO_UFA,0) AS ATO_UFA,ISNULL(LUT_UFA,0) AS LUT_UFA,ISNULL(RM_UFA,0) AS RM_UFA,"
        "ISNULL(STK100_UFA,0) AS STK100_UFA FROM HOLZSORTE WHERE HS = 'IF'";
};

TEST_F(ConversionStatements, FactorRuleLetterByLetter)
{
    with.database.answer(std::string{factorRule}, 0.68, "RM_UFA");
    EXPECT_EQ(factor(true), 0.68);
    ASSERT_EQ(with.database.openedTexts(), std::vector<std::string>{std::string{factorRule}});
    EXPECT_EQ(with.database.opened[0].cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened[0].lockType, ado::LockType::ReadOnly);
    EXPECT_EQ(with.database.openCursors, 0);
}

TEST_F(ConversionStatements, DefaultsOfTheAssortmentOnlyWhereAskedFor)
{
    with.database.answerNoRow(std::string{factorRule});
    EXPECT_EQ(factor(false), 0.0);
    EXPECT_EQ(with.database.opened.size(), 1U);
    with.database.answer(defaults, 0.7, "RM_UFA");
    EXPECT_EQ(factor(true), 0.7);
    EXPECT_EQ(with.database.opened.back().text, defaults);
    EXPECT_EQ(with.database.openCursors, 0);
}

TEST_F(ConversionStatements, ALengthIsWrittenWithAPoint)
{
    expectError(errors::statementRefused, "LANGE_VON <= 12.25 ) AND (LANGE_BIS IS NULL OR LANGE_BIS >= 12.25 )  ORDER",
                [&] { factor(false, 12.25); });
    expectError(errors::statementRefused, "LANGE_VON <= 0 )", [&] { factor(false, 0.0); });
    expectError(errors::statementRefused, "LANGE_VON <= -1 )", [&] { factor(false, -1.0); });
}

TEST_F(ConversionStatements, AMissingFieldIsTheProvidersError)
{
    with.database.answer(std::string{factorRule}, 0.68, "ATO_UFA");
    expectError(errors::itemNotFound, "RM_UFA", [&] { factor(false); });
}

TEST_F(ConversionStatements, UnitCascadeLetterByLetter)
{
    const std::string cascade = filled(unitCascade, "5");
    EXPECT_EQ(quantity(true, "R", "5", "0.00"), "(" + cascade + ")");
    EXPECT_EQ(quantity(false, "A1", "5", "0.00"),
              "(CASE WHEN LOGS_RECH.A1_NAME IS NULL THEN (" + cascade + ") ELSE LOGS_RECH.A1_MENGE END)");
    EXPECT_TRUE(with.database.opened.empty());
}

TEST_F(ConversionStatements, InInvoicingThePrefixIsNotNamed)
{
    EXPECT_EQ(quantity(true, "PREFIX", "5", "0.00").find("PREFIX"), std::string::npos);
    with.session.strCustomer = "SACHSEN";
    EXPECT_EQ(quantity(true, "PREFIX", "5", "0.00").find("PREFIX"), std::string::npos);
}

TEST_F(ConversionStatements, ConversionTableLetterByLetter)
{
    with.session.strCustomer = "SACHSEN";
    EXPECT_EQ(quantity(true, "R", "5", "0.000"), "(" + filled(conversionTable, "5", "3") + ")");
    EXPECT_EQ(quantity(false, "R", "5", "0.000"), "(CASE WHEN LOGS_RECH.R_NAME IS NULL THEN (" +
                                                      filled(conversionTable, "5", "3") +
                                                      ") ELSE LOGS_RECH.R_MENGE END)");
}

TEST_F(ConversionStatements, DecimalsAreTheLengthOfThePatternLessTwo)
{
    with.session.strCustomer = "SACHSEN";
    for (const auto& [pattern, decimals] :
         {std::pair{"0.0", "1"}, {"0.00", "2"}, {"0.", "0"}, {"0", "-1"}, {"", "-2"}, {"#,##0.00", "6"}, {"ä.0", "1"}})
        EXPECT_EQ(quantity(true, "R", "1", pattern), "(" + filled(conversionTable, "1", decimals) + ")") << pattern;
}

TEST_F(ConversionStatements, TheKeyOfTheEditionIsExact)
{
    for (const char* customer : {"", "Sachsen", "SACHSEN ", "BB"}) {
        with.session.strCustomer = customer;
        EXPECT_EQ(quantity(true, "R", "5", "0.00"), "(" + filled(unitCascade, "5") + ")") << customer;
    }
}

TEST_F(ConversionStatements, PairsLetterByLetter)
{
    with.session.strCustomer = "SACHSEN";
    Variant pairs;
    expectError(errors::statementRefused, std::string{"No answer for: "}.append(conversionPairs),
                [&] { Comm_Set{}.MengeCalc(with.session, pairs, "1", "2"); });
    EXPECT_EQ(with.database.openedTexts(), std::vector<std::string>{std::string{conversionPairs}});
    // Without a pair the array holds one row, so that it is not loaded again.
    with.database.answerNoRow(std::string{conversionPairs});
    with.database.answer("SELECT 0,0,0", std::int32_t{0});
    expectError(errors::subscriptOutOfRange, "", [&] { Comm_Set{}.MengeCalc(with.session, pairs, "1", "2"); });
    EXPECT_EQ(with.database.opened.back().text, "SELECT 0,0,0");
    EXPECT_TRUE(pairs.isArray());
}

TEST_F(ConversionStatements, OtherEditionsLeaveTheArrayAlone)
{
    Variant pairs;
    EXPECT_EQ(Comm_Set{}.MengeCalc(with.session, pairs, "1", "2"), 0);
    EXPECT_TRUE(pairs.isEmpty());
    EXPECT_TRUE(with.database.opened.empty());
}

class CachedPairs : public ::testing::Test {
protected:
    CachedPairs() { with.session.strCustomer = "SACHSEN"; }

    std::int16_t ask(const char* assortment, const char* unit)
    {
        return Comm_Set{}.MengeCalc(with.session, pairs, assortment, unit);
    }
    void keep(std::vector<Variant> cells)
    {
        const auto rows = static_cast<std::int32_t>(cells.size() / 3);
        pairs = VariantArray{{0, 2}, {0, rows - 1}, std::move(cells)};
    }

    Surroundings with{"de-AT"};
    Variant pairs;
};

TEST_F(CachedPairs, TheFirstMatchingRowCounts)
{
    keep({std::int32_t{1}, std::int32_t{2}, std::int16_t{7}, std::int32_t{1}, std::int32_t{2}, std::int16_t{8},
          std::int32_t{3}, std::int32_t{4}, std::int16_t{9}});
    EXPECT_EQ(ask("1", "2"), 7);
    EXPECT_EQ(ask("3", "4"), 9);
    EXPECT_EQ(ask("3", "2"), 0);
    EXPECT_TRUE(with.database.opened.empty());
}

TEST_F(CachedPairs, KeysAreComparedAsTexts)
{
    keep({std::int32_t{1}, std::int32_t{2}, std::int16_t{7}});
    EXPECT_EQ(ask("01", "2"), 0);
    EXPECT_EQ(ask("1 ", "2"), 0);
    EXPECT_EQ(ask("1,0", "2"), 0);
    keep({"A", 1.5, std::int16_t{7}, std::int64_t{5'000'000'000}, std::int16_t{3}, std::int16_t{8}});
    EXPECT_EQ(ask("A", "1,5"), 7);
    EXPECT_EQ(ask("a", "1,5"), 0);
    EXPECT_EQ(ask("A", "1.5"), 0);
    EXPECT_EQ(ask("5000000000", "3"), 8);
}

TEST_F(CachedPairs, EmptyKeysAndNullsMatchNothing)
{
    keep({Null{}, std::int32_t{2}, std::int16_t{7}, "", "", std::int16_t{8}});
    EXPECT_EQ(ask("", ""), 0);
    EXPECT_EQ(ask("", "2"), 0);
    EXPECT_EQ(ask("1", ""), 0);
    EXPECT_EQ(ask("Null", "2"), 0);
}

TEST_F(CachedPairs, TheValueIsAnIntegerOrNothing)
{
    keep({std::int32_t{1}, std::int32_t{1}, Null{}, std::int32_t{1}, std::int32_t{2}, "x", std::int32_t{1},
          std::int32_t{3}, 2.5, std::int32_t{1}, std::int32_t{4}, "12", std::int32_t{1}, std::int32_t{5},
          std::int32_t{40'000}, std::int32_t{1}, std::int32_t{1}, std::int16_t{9}});
    EXPECT_EQ(ask("1", "1"), 0); // the first row decides, though the last one has a number
    EXPECT_EQ(ask("1", "2"), 0);
    EXPECT_EQ(ask("1", "3"), 2);
    EXPECT_EQ(ask("1", "4"), 12);
    expectError(errors::overflow, "", [&] { ask("1", "5"); });
}

TEST_F(CachedPairs, AnArrayOfAnotherShapeIsRefused)
{
    pairs = std::int32_t{1};
    expectError(errors::typeMismatch, "", [&] { ask("1", "2"); });
    pairs = VariantArray{{Variant{1}, Variant{2}, Variant{3}}};
    expectError(errors::subscriptOutOfRange, "", [&] { ask("1", "2"); });
    pairs = VariantArray{{0, 1}, {0, 0}, {Variant{1}, Variant{2}}};
    expectError(errors::subscriptOutOfRange, "", [&] { ask("1", "2"); });
    pairs = VariantArray{{1, 3}, {5, 5}, {Variant{1}, Variant{2}, Variant{4}}}; // any bounds will do
    EXPECT_EQ(ask("1", "2"), 4);
}

} // namespace
} // namespace tamarok
