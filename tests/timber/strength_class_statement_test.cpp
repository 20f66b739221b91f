#include <array>
#include <gtest/gtest.h>
#include <string>

#include "support/errors.h"
#include "support/surroundings.h"
#include "timber/class_rule.h"

#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"

namespace tamarok {
namespace {

using test::bothSettings;
using test::ClassRule;
using test::expectError;
using test::overBark;
using test::secondBounds;
using test::Surroundings;
using test::underBark;

class StrengthClassStatement : public ::testing::Test {
protected:
    /// The statement for a diameter on the first or second bounds, among all classes or some.
    static std::string statement(const std::string& diameter, bool second = false, const std::string& ids = {})
    {
        const std::string where =
            second
                ? " FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON_OR <= " + diameter + " AND DM_BIS_OR >= " + diameter
                : " FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON <= " + diameter + " AND DM_BIS >= " + diameter;
        const std::string list = ids.empty() ? "" : " AND ID IN (" + ids + ")";
        return "SELECT (CASE WHEN EXISTS(SELECT *" + where + list + ") THEN (SELECT TOP 1 STKL" + where + list +
               ") ELSE (SELECT TOP 1 STKL FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON IN (SELECT MAX(DM_VON) FROM "
               "STKL WHERE ISNULL(DISABLE,0)=0)" +
               list + ") END)";
    }

    std::string ask(const char* diameter, const char* mode, const char* bark, ClassRule rule, const char* ids = "")
    {
        return set.MakeStkl("typed", diameter, mode, bark, with.session.db_ADO, rule.deductsByOption, rule.computesBark,
                            false, ids);
    }

    /// Expects that this question sends the statement for `searched`.
    void expectSearch(const std::string& searched, const char* diameter, const char* mode, const char* bark,
                      ClassRule rule)
    {
        const std::string expected = statement(searched, rule.deductsByOption && !rule.computesBark);
        with.database.answer(expected, "2b");
        EXPECT_EQ(ask(diameter, mode, bark, rule), "2b") << searched;
        EXPECT_EQ(with.database.opened.back().text, expected);
    }

    Surroundings with{"de-AT"};
    Comm_Set set;
    Comm_Get get;
};

TEST_F(StrengthClassStatement, IsWrittenOut)
{
    EXPECT_EQ(statement("25"),
              "SELECT (CASE WHEN EXISTS(SELECT * FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON <= 25 AND DM_BIS >= "
              "25) THEN (SELECT TOP 1 STKL FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON <= 25 AND DM_BIS >= 25) ELSE "
              "(SELECT TOP 1 STKL FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON IN (SELECT MAX(DM_VON) FROM STKL "
              "WHERE ISNULL(DISABLE,0)=0)) END)");
    with.database.answer(statement("25"), "2b");
    EXPECT_EQ(ask("25", "", "", overBark), "2b");
    ASSERT_EQ(with.database.opened.size(), 1U);
    EXPECT_EQ(with.database.opened[0].cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened[0].lockType, ado::LockType::ReadOnly);
    EXPECT_EQ(with.database.openCursors, 0);
}

TEST_F(StrengthClassStatement, DiametersAreRoundedUnderThePattern)
{
    expectSearch("25", "24,995", "", "", overBark);
    expectSearch("24.99", "24,994", "", "", overBark);
    expectSearch("0.13", "0,125", "", "", overBark);
    expectSearch("1.01", "1,005", "", "", overBark);
    expectSearch("-3.5", "-3,5", "", "", overBark);
    expectSearch("1234.5", "1.234,5", "", "", overBark);
    expectSearch("0", "0,004", "", "", overBark);
}

TEST_F(StrengthClassStatement, WhatIsNoNumberCountsAsZero)
{
    expectSearch("0", "", "", "", overBark);
    expectSearch("0", "thick", "", "", overBark);
    expectSearch("30", "30", "%", "some", underBark);
    expectSearch("30", "30", "cm", "", underBark);
}

TEST_F(StrengthClassStatement, OptionAndKeyChooseDiameterAndBounds)
{
    expectSearch("30", "30", "cm", "2", overBark);
    expectSearch("28", "30", "cm", "2", underBark);
    expectSearch("30", "30", "cm", "2", secondBounds);
    expectSearch("30", "30", "cm", "2", bothSettings);
    EXPECT_EQ(with.database.opened[2].text, statement("30", true));
    EXPECT_EQ(with.database.opened[3].text, statement("30", false));
}

TEST_F(StrengthClassStatement, BarkComesOffByTheMode)
{
    expectSearch("27", "30", "%", "19", underBark); // 30 * sqrt(0.81)
    expectSearch("28.46", "30", "%", "10", underBark);
    expectSearch("0", "30", "%", "100", underBark);
    expectSearch("-5", "30", "cm", "35", underBark);
    for (const char* mode : {"", "Cm", "CM", "mm", "% "})
        expectSearch("30", "30", mode, "2", underBark);
}

TEST_F(StrengthClassStatement, MoreThanAHundredPercentIsAnInvalidArgument)
{
    expectError(errors::invalidArgument, "root", [&] { ask("30", "%", "100,01", underBark); });
    // Where the bark does not come off, it does not matter.
    expectSearch("30", "30", "%", "150", bothSettings);
}

TEST_F(StrengthClassStatement, ANegativePercentageThatIsTooLargeOverflows)
{
    expectError(errors::overflow, "diameter", [&] { ask("1E200", "%", "-1E300", underBark); });
}

TEST_F(StrengthClassStatement, TheListOfClassesStandsInAllThreePlaces)
{
    const std::string expected = statement("30", false, "3,4, 5");
    with.database.answer(expected, Null{});
    EXPECT_EQ(ask("30", "", "", overBark, "3,4, 5"), "");
    const std::string second = statement("30", true, "7");
    with.database.answer(second, "3a");
    EXPECT_EQ(ask("30", "", "", secondBounds, "7"), "3a");
}

TEST_F(StrengthClassStatement, ResultsAreTexts)
{
    with.database.answer(statement("30"), std::int32_t{4});
    EXPECT_EQ(ask("30", "", "", overBark), "4");
    with.database.answerNoRow(statement("30"));
    EXPECT_EQ(ask("30", "", "", overBark), "");
}

TEST_F(StrengthClassStatement, AClassThatIsNotComputedStaysWithoutAStatement)
{
    EXPECT_EQ(set.MakeStkl("3a", "x", "%", "200", {}, true, true, true, "1"), "3a");
    EXPECT_EQ(set.MakeStkl("", "30", "", "", {}, false, false, true, ""), "");
    EXPECT_TRUE(with.database.opened.empty());
    expectError(errors::objectNotSet, "", [&] { set.MakeStkl("", "30", "", "", {}, false, false, false, ""); });
}

TEST_F(StrengthClassStatement, QuestionsOfTheForm)
{
    with.database.answer("SELECT ISNULL(CALCULATION,0) AS CALCULATION FROM RINDENKENNZ WHERE RINDENKENNZ = 'MR'", true,
                         "CALCULATION");
    EXPECT_TRUE(get.GetCalculationRinden("MR", with.session.db_ADO));
    with.database.answer(
        "SELECT ISNULL(NOT_CALC_STKL,0) AS NOT_CALC_STKL FROM HOLZSORTE WHERE ISNULL(DISABLE,0) = 0 AND HS = 'BL'",
        std::int32_t{1}, "NOT_CALC_STKL");
    EXPECT_TRUE(get.GetCalculationSTKL("BL", with.session.db_ADO));
    with.database.answer("SELECT STKL FROM HOLZSORTE WHERE ISNULL(DISABLE,0)=0 AND HS = 'BL'", "2,3,4", "STKL");
    EXPECT_EQ(get.GetCalculationSTKL_ID("BL", with.session.db_ADO), "2,3,4");
    EXPECT_EQ(with.database.opened.size(), 3U);
    EXPECT_EQ(with.database.openCursors, 0);
}

TEST_F(StrengthClassStatement, EmptyKeysAskNothing)
{
    EXPECT_FALSE(get.GetCalculationRinden("", with.session.db_ADO));
    EXPECT_TRUE(get.GetCalculationSTKL("", with.session.db_ADO));
    EXPECT_EQ(get.GetCalculationSTKL_ID("", with.session.db_ADO), "");
    EXPECT_TRUE(with.database.opened.empty());
}

TEST_F(StrengthClassStatement, KeysGoInAsTheyStand)
{
    with.database.answerNoRow("SELECT STKL FROM HOLZSORTE WHERE ISNULL(DISABLE,0)=0 AND HS = 'O'Hara'");
    EXPECT_EQ(get.GetCalculationSTKL_ID("O'Hara", with.session.db_ADO), "");
}

} // namespace
} // namespace tamarok
