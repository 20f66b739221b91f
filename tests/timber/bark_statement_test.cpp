#include <gtest/gtest.h>
#include <string>

#include "support/errors.h"
#include "support/surroundings.h"
#include "timber/statements.h"

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
    struct Entry {
        const char* diameter;
        const char* table = "-1";
        const char* date = "17.05.2024";
        bool isComputed = true;
        const char* mode = "cm";
        const char* species = "FI";
        const char* typed = "7,5";
    };
    std::string ask(const Entry& entry)
    {
        return set.CalculateRinde(with.session, entry.typed, entry.species, entry.mode, entry.diameter,
                                  entry.isComputed, entry.table, entry.date);
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
    EXPECT_EQ(ask({.diameter = "30,5"}), "0,00");
    ASSERT_EQ(with.database.opened.size(), 1U);
    EXPECT_EQ(with.database.opened[0].text, any);
    EXPECT_EQ(with.database.opened[0].cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened[0].lockType, ado::LockType::ReadOnly);
    EXPECT_EQ(with.database.openCursors, 0);

    with.database.answerNoRow(filled(bark, "30.5", " AND ISNULL(RINDENTABELLE,0) = 0"));
    EXPECT_EQ(ask({.diameter = "30,5", .table = "0"}), "0,00");
    with.database.answerNoRow(filled(bark, "30.5", " AND RINDENTABELLE = 2"));
    EXPECT_EQ(ask({.diameter = "30,5", .table = "2"}), "0,00");
    with.database.answerNoRow(filled(bark, "30.5", " AND RINDENTABELLE = "));
    EXPECT_EQ(ask({.diameter = "30,5", .table = ""}), "0,00");
    with.database.answerNoRow(filled(bark, "30.5", " AND RINDENTABELLE =  0"));
    EXPECT_EQ(ask({.diameter = "30,5", .table = " 0"}), "0,00");
}

TEST_F(BarkStatement, AnEmptyDateIsToday)
{
    with.database.answerNoRow(filled(bark, "30", ""));
    EXPECT_EQ(ask({.diameter = "30", .date = ""}), "0,00");
}

TEST_F(BarkStatement, TheDiameterGoesInAsTyped)
{
    with.database.answerNoRow(filled(bark, "030.50", ""));
    EXPECT_EQ(ask({.diameter = "030,50"}), "0,00");
    with.database.answerNoRow(filled(bark, "-3", ""));
    EXPECT_EQ(ask({.diameter = "-3"}), "0,00");
}

TEST_F(BarkStatement, NothingIsAskedWithoutDiameterSpeciesOrMode)
{
    expectNothingAsked(ask({.diameter = "0"}), "0,00");
    expectNothingAsked(ask({.diameter = ""}), "0,00");
    expectNothingAsked(ask({.diameter = "0,00"}), "0,00");
    expectNothingAsked(ask({.diameter = "30", .species = ""}), "0,00");
    expectNothingAsked(ask({.diameter = "30", .mode = ""}), "0,00");
}

TEST_F(BarkStatement, WithoutComputationTheTypedTextComesBackUnderThePattern)
{
    expectNothingAsked(ask({.diameter = "30", .isComputed = false}), "7,50");
    expectNothingAsked(ask({.diameter = "0", .isComputed = false}), "7,50");
    expectNothingAsked(ask({.diameter = "", .isComputed = false}), "7,50");
    expectNothingAsked(ask({.diameter = "30", .isComputed = false, .typed = "0,125"}), "0,13");
    expectNothingAsked(ask({.diameter = "30", .isComputed = false, .typed = ""}), "");
    expectNothingAsked(ask({.diameter = "30", .isComputed = false, .typed = "about 5"}), "about 5");
    expectNothingAsked(ask({.diameter = "30", .isComputed = false, .typed = "-0,001"}), "0,00");
}

TEST_F(BarkStatement, ADiameterThatIsNoNumberFailsEvenWithoutComputation)
{
    expectError(errors::typeMismatch, "\"thick\" in field tmpDurch",
                [&] { ask({.diameter = "thick", .isComputed = false}); });
    expectError(errors::typeMismatch, "tmpDurch", [&] { ask({.diameter = "30 cm"}); });
    EXPECT_TRUE(with.database.opened.empty());
}

} // namespace
} // namespace tamarok
