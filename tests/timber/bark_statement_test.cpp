#include <gtest/gtest.h>
#include <string>

#include "support/surroundings.h"
#include "timber/statements.h"
#include "support/errors.h"

#include "tamarok/comm_set.h"

namespace tamarok {
namespace {

using test::expectError;
using test::Surroundings;
using test::statements::bark;
using test::statements::filled;

/// The statement is written out for species FI on 17.05.2024, the fixed day of the clock.
class BarkStatement : public ::testing::Test {
protected:
    std::string ask(const char* diameter, const char* table, const char* date = "17.05.2024", bool calculation = true,
                    const char* mode = "cm", const char* species = "FI", const char* typed = "7,5")
    {
        return set.CalculateRinde(with.session, typed, species, mode, diameter, calculation, table, date);
    }

    void expectNothingAsked(const std::string& result, const std::string& expected)
    {
        EXPECT_EQ(result, expected);
        EXPECT_TRUE(with.database.opened.empty());
    }

    Surroundings with{"de-AT"};
    Comm_Set set;
};

TEST_F(BarkStatement, LetterByLetterForEveryTable)
{
    const std::string any = filled(bark, "30.5", "");
    with.database.answerNoRow(any);
    EXPECT_EQ(ask("30,5", "-1"), "0,00");
    ASSERT_EQ(with.database.opened.size(), 1U);
    EXPECT_EQ(with.database.opened[0].text, any);
    EXPECT_EQ(with.database.opened[0].cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened[0].lockType, ado::LockType::ReadOnly);
    EXPECT_EQ(with.database.openCursors, 0);

    with.database.answerNoRow(filled(bark, "30.5", " AND ISNULL(RINDENTABELLE,0) = 0"));
    EXPECT_EQ(ask("30,5", "0"), "0,00");
    with.database.answerNoRow(filled(bark, "30.5", " AND RINDENTABELLE = 2"));
    EXPECT_EQ(ask("30,5", "2"), "0,00");
    with.database.answerNoRow(filled(bark, "30.5", " AND RINDENTABELLE = "));
    EXPECT_EQ(ask("30,5", ""), "0,00");
    with.database.answerNoRow(filled(bark, "30.5", " AND RINDENTABELLE =  0"));
    EXPECT_EQ(ask("30,5", " 0"), "0,00");
}

TEST_F(BarkStatement, AnEmptyDateIsToday)
{
    with.database.answerNoRow(filled(bark, "30", ""));
    EXPECT_EQ(ask("30", "-1", ""), "0,00");
}

TEST_F(BarkStatement, TheDiameterGoesInAsTyped)
{
    with.database.answerNoRow(filled(bark, "030.50", ""));
    EXPECT_EQ(ask("030,50", "-1"), "0,00");
    with.database.answerNoRow(filled(bark, "-3", ""));
    EXPECT_EQ(ask("-3", "-1"), "0,00");
}

TEST_F(BarkStatement, NothingIsAskedWithoutDiameterSpeciesOrMode)
{
    expectNothingAsked(ask("0", "-1"), "0,00");
    expectNothingAsked(ask("", "-1"), "0,00");
    expectNothingAsked(ask("0,00", "-1"), "0,00");
    expectNothingAsked(ask("30", "-1", "", true, "cm", ""), "0,00");
    expectNothingAsked(ask("30", "-1", "", true, ""), "0,00");
}

TEST_F(BarkStatement, WithoutComputationTheTypedTextComesBackUnderThePattern)
{
    expectNothingAsked(ask("30", "-1", "", false), "7,50");
    expectNothingAsked(ask("0", "-1", "", false), "7,50");
    expectNothingAsked(ask("", "-1", "", false), "7,50");
    expectNothingAsked(ask("30", "-1", "", false, "cm", "FI", "0,125"), "0,13");
    expectNothingAsked(ask("30", "-1", "", false, "cm", "FI", ""), "");
    expectNothingAsked(ask("30", "-1", "", false, "cm", "FI", "about 5"), "about 5");
    expectNothingAsked(ask("30", "-1", "", false, "cm", "FI", "-0,001"), "0,00");
}

TEST_F(BarkStatement, ADiameterThatIsNoNumberFailsEvenWithoutComputation)
{
    expectError(errors::typeMismatch, "\"thick\" in field tmpDurch", [&] { ask("thick", "-1", "", false); });
    expectError(errors::typeMismatch, "tmpDurch", [&] { ask("30 cm", "-1"); });
    EXPECT_TRUE(with.database.opened.empty());
}

} // namespace
} // namespace tamarok
