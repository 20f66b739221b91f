#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <tuple>

#include "support/errors.h"
#include "support/platforms.h"

#include "tamarok/comm_set.h"
#include "tamarok/round_wood.h"

namespace tamarok {
namespace {

using test::platformOf;

/// A line of round wood as the form hands it over; each test changes what it is about.
struct Line {
    std::string pieces = "1";
    std::string diameter = "30";
    std::string length = "5";
    std::string bark = "0";
    bool followOn = false;
    std::string mode = "cm";
    bool sheath = false;
    std::string pattern = "0.00##";
    std::int16_t places = 2;

    std::string volume() const
    {
        return Comm_Set{}.CalculateRundKubatur(pieces, diameter, length, bark, followOn, mode, sheath, pattern, places);
    }
};

class RoundWood : public ::testing::Test {
    PlatformScope scope_{platformOf("en-GB")};
};

TEST_F(RoundWood, ThirtyCentimetresByFiveMetres)
{
    EXPECT_EQ((Line{.pattern = "0.00000", .places = 5}.volume()), "0.35343");
    EXPECT_EQ(Line{}.volume(), "0.35");
}

TEST_F(RoundWood, ThePieceIsRoundedBeforeItIsMultiplied)
{
    EXPECT_EQ((Line{.pieces = "10"}.volume()), "3.50");
    EXPECT_EQ((Line{.pieces = "10", .places = 4}.volume()), "3.534");
}

TEST_F(RoundWood, TheNumbersGiveTheVolumeOfTheTexts)
{
    const Regional regional = Regional::named("de-AT"); // not that of the platform
    for (const auto& [mode, text, volume] :
         {std::tuple{timber::BarkMode::None, "", "3,534"}, std::tuple{timber::BarkMode::Percent, "%", "3,181"},
          std::tuple{timber::BarkMode::Centimetres, "cm", "1,571"}}) {
        const timber::RoundWood wood{.pieces = 10, .diameter = 30, .length = 5, .bark = 10, .mode = mode};
        EXPECT_EQ(timber::barkMode(text), mode);
        EXPECT_EQ(timber::roundWoodVolume(wood, "0.000", 4, regional), volume);
        std::string withPoint = volume;
        std::ranges::replace(withPoint, ',', '.');
        EXPECT_EQ((Line{.pieces = "10", .bark = "10", .mode = text, .pattern = "0.000", .places = 4}.volume()),
                  withPoint);
    }
    EXPECT_EQ(timber::barkMode("CM"), timber::BarkMode::None);
    EXPECT_EQ(test::errorNumber([&] { timber::roundWoodVolume({.pieces = 1}, "0", 23, regional); }),
              errors::invalidArgument);
    const timber::RoundWood tooLarge{.pieces = 1, .diameter = 1e200, .length = 1};
    EXPECT_EQ(test::errorNumber([&] { timber::roundWoodVolume(tooLarge, "0", 2, regional); }), errors::overflow);
}

TEST_F(RoundWood, AFollowOnPieceCountsAsOneUnlessSheathed)
{
    EXPECT_EQ((Line{.pieces = "10", .followOn = true}.volume()), "0.35");
    EXPECT_EQ((Line{.pieces = "10", .followOn = true, .sheath = true}.volume()), "3.50");
    EXPECT_EQ((Line{.pieces = "10", .followOn = false, .sheath = true}.volume()), "3.50");
}

TEST_F(RoundWood, PercentComesOffTheVolume)
{
    EXPECT_EQ((Line{.bark = "10", .mode = "%", .pattern = "0.00000", .places = 5}.volume()), "0.31809");
    EXPECT_EQ((Line{.bark = "100", .mode = "%"}.volume()), "0.00");
    // Above 100 percent the volume is negative, and no failure.
    EXPECT_EQ((Line{.bark = "150", .mode = "%"}.volume()), "-0.18");
}

TEST_F(RoundWood, CentimetresComeOffTheDiameterOnce)
{
    EXPECT_EQ((Line{.bark = "2", .pattern = "0.00000", .places = 5}.volume()), "0.30788");
    EXPECT_EQ((Line{.bark = "30"}.volume()), "0.00");
    // More bark than wood squares the negative difference.
    EXPECT_EQ((Line{.bark = "60"}.volume()), "0.35");
}

TEST_F(RoundWood, AnyOtherModeNeverReadsTheBark)
{
    for (const char* mode : {"", "Cm", "CM", "%%", " %", "cm ", "mm"}) {
        EXPECT_EQ((Line{.bark = "2", .mode = mode}.volume()), "0.35") << mode;
        EXPECT_EQ((Line{.bark = "none", .mode = mode}.volume()), "0.35") << mode;
        EXPECT_EQ((Line{.bark = "", .mode = mode}.volume()), "0.00") << mode;
    }
}

TEST_F(RoundWood, AnEmptyTextGivesThePatternOfZero)
{
    for (const char* pattern : {"0.00", "0.000", "#,##0.00", "0"}) {
        const std::string zero = Comm_Set{}.CalculateSchichtKubatur("0", "1", pattern);
        EXPECT_EQ((Line{.pieces = "", .pattern = pattern}.volume()), zero);
        EXPECT_EQ((Line{.diameter = "", .pattern = pattern}.volume()), zero);
        EXPECT_EQ((Line{.length = "", .pattern = pattern}.volume()), zero);
        EXPECT_EQ((Line{.bark = "", .pattern = pattern}.volume()), zero);
    }
    EXPECT_EQ((Line{.pieces = "", .pattern = "0.00"}.volume()), "0.00");
    // Not even the other texts are read, nor the places.
    EXPECT_EQ((Line{.pieces = "x", .diameter = "y", .bark = "", .places = -1}.volume()), "0.00");
}

TEST_F(RoundWood, DiametersOfZeroAndBelow)
{
    EXPECT_EQ((Line{.diameter = "0"}.volume()), "0.00");
    EXPECT_EQ((Line{.diameter = "-30"}.volume()), "0.35");
    EXPECT_EQ((Line{.diameter = "0", .bark = "30"}.volume()), "0.35");
    EXPECT_EQ((Line{.length = "-5"}.volume()), "-0.35");
    EXPECT_EQ((Line{.pieces = "-2"}.volume()), "-0.70");
    EXPECT_EQ((Line{.pieces = "0"}.volume()), "0.00");
}

TEST_F(RoundWood, TheTradesPiIsNotThatOfTheLibrary)
{
    // 200 cm by 1000 m: 3141.6 m³, and not 3141.592653...
    EXPECT_EQ((Line{.diameter = "200", .length = "1000", .pattern = "0.000000", .places = 6}.volume()), "3141.600000");
}

TEST_F(RoundWood, TextsFollowTheRegionalSettings)
{
    const Line german{.pieces = "1.000", .diameter = "30,5", .length = "5,25", .pattern = "#,##0.000", .places = 3};
    {
        const PlatformScope scope{platformOf("de-DE")};
        EXPECT_EQ(german.volume(), "384,000");
    }
    const Line english{.pieces = "1,000", .diameter = "30.5", .length = "5.25", .pattern = "#,##0.000", .places = 3};
    EXPECT_EQ(english.volume(), "384.000");
}

class OtherWood : public ::testing::Test {
protected:
    Comm_Set set;
    PlatformScope scope{platformOf("de-AT")};
};

TEST_F(OtherWood, StackedMeasureTimesFactor)
{
    EXPECT_EQ(set.CalculateSchichtKubatur("0,7", "12,5", "0.000"), "8,750");
    EXPECT_EQ(set.CalculateSchichtKubatur("0,7", "-2", "0.0"), "-1,4");
    EXPECT_EQ(set.CalculateSchichtKubatur("-0,7", "-2", "0.0"), "0,0");
    EXPECT_EQ(set.CalculateSchichtKubatur("-0,7", "2", "0.0"), "0,0");
    EXPECT_EQ(set.CalculateSchichtKubatur("0", "2", "0.0"), "0,0");
    EXPECT_EQ(set.CalculateSchichtKubatur("0,7", "0", "0.0"), "0,0");
}

TEST_F(OtherWood, PolesByTheHundred)
{
    EXPECT_EQ(set.CalculateStangKubatur("3,2", "250", "0.000"), "8,000");
    // Unlike the stacked measure, a negative count is zero.
    EXPECT_EQ(set.CalculateStangKubatur("3,2", "-250", "0.000"), "0,000");
    EXPECT_EQ(set.CalculateStangKubatur("-3,2", "250", "0.000"), "0,000");
    EXPECT_EQ(set.CalculateStangKubatur("-3,2", "-250", "0.000"), "0,000");
    EXPECT_EQ(set.CalculateStangKubatur("0", "250", "0.000"), "0,000");
    EXPECT_EQ(set.CalculateStangKubatur("3,2", "0", "0.000"), "0,000");
}

TEST_F(OtherWood, AnEmptyTextGivesThePatternOfZero)
{
    EXPECT_EQ(set.CalculateSchichtKubatur("", "x", "0.00"), "0,00");
    EXPECT_EQ(set.CalculateSchichtKubatur("x", "", "0.00"), "0,00");
    EXPECT_EQ(set.CalculateStangKubatur("", "x", "0.00"), "0,00");
    EXPECT_EQ(set.CalculateStangKubatur("x", "", "0.00"), "0,00");
    EXPECT_EQ(set.CalculateStangKubatur("", "", "0.00"), "0,00");
}

} // namespace
} // namespace tamarok
