#include <array>
#include <gtest/gtest.h>
#include <string>

#include "support/platforms.h"

#include "tamarok/comm_set.h"
#include "tamarok/text.h"

namespace tamarok {
namespace {

using test::platformOf;

/// Decimals at which the two roundings differ, written with a point. The length is that of a log of 200 cm
/// whose unrounded volume is exactly the double of `number`.
struct HardDecimal {
    const char* number;
    const char* length;
    const char* halfEven; ///< rounded to two decimals as the pieces are
    const char* pattern2; ///< under "0.00"
    const char* pattern0; ///< under "0"
    const char* pattern5; ///< under "0.00000"
};

constexpr std::array<HardDecimal, 7> hardDecimals{{
    {"0.125", "0.0397886427298192", "0.12000", "0.13", "0", "0.12500"},
    {"1.005", "0.3199006875477463", "1.00000", "1.01", "1", "1.00500"},
    {"2.675", "0.8514769544181308", "2.68000", "2.68", "3", "2.67500"},
    {"24.995", "7.956137000254647", "25.00000", "25.00", "25", "24.99500"},
    {"0.285", "0.09071810542398777", "0.28000", "0.29", "0", "0.28500"},
    {"1E-05", "0.000003183091418385536", "0.00000", "0.00", "0", "0.00001"},
    {"12345678901234.5", "3929742456466.291", "12345678901234.50000", "12345678901234.50", "12345678901235",
     "12345678901234.50000"},
}};

class HardDecimals : public ::testing::TestWithParam<std::string> {
protected:
    /// A number written with a point in the test as the settings have it.
    std::string regional(const char* number) const
    {
        return text::replaceAll(number, ".", Platform::current().regional.decimal);
    }

    Comm_Set set;
    PlatformScope scope{platformOf(GetParam())};
};

TEST_P(HardDecimals, PatternsRoundHalvesAwayFromZeroOnTheDecimalForm)
{
    for (const HardDecimal& hard : hardDecimals) {
        SCOPED_TRACE(hard.number);
        const std::string number = regional(hard.number);
        EXPECT_EQ(set.CalculateSchichtKubatur("1", number, "0.00"), regional(hard.pattern2));
        EXPECT_EQ(set.CalculateSchichtKubatur("1", number, "0"), regional(hard.pattern0));
        EXPECT_EQ(set.CalculateSchichtKubatur("1", number, "0.00000"), regional(hard.pattern5));
        EXPECT_EQ(set.CalculateStangKubatur("100", number, "0.00"), regional(hard.pattern2));
        // A negative number rounds alike, and what rounds to nothing has no sign.
        const bool vanishes = std::string_view{hard.pattern2}.find_first_not_of("0.") == std::string_view::npos;
        EXPECT_EQ(set.CalculateSchichtKubatur("1", std::string{"-"}.append(number), "0.00"),
                  std::string{vanishes ? "" : "-"}.append(regional(hard.pattern2)));
    }
}

TEST_P(HardDecimals, PiecesRoundHalvesToEvenOnTheScaledDouble)
{
    for (const HardDecimal& hard : hardDecimals) {
        SCOPED_TRACE(hard.number);
        const std::string length = regional(hard.length);
        EXPECT_EQ(set.CalculateRundKubatur("1", "200", length, "0", false, "", false, "0.00000", 2),
                  regional(hard.halfEven));
    }
}

TEST_P(HardDecimals, BothRoundingsInOneCall)
{
    const auto volume = [&](const char* length, std::int16_t places) {
        return set.CalculateRundKubatur("1", "200", regional(length), "0", false, "cm", false, "0.00", places);
    };
    // 0.125 m³: the piece to two places is 0.12; to three places it stays, and the pattern gives 0.13.
    EXPECT_EQ(volume("0.0397886427298192", 2), regional("0.12"));
    EXPECT_EQ(volume("0.0397886427298192", 3), regional("0.13"));
    EXPECT_EQ(volume("0.3199006875477463", 2), regional("1.00"));
    EXPECT_EQ(volume("0.3199006875477463", 3), regional("1.01"));
    EXPECT_EQ(volume("0.09071810542398777", 2), regional("0.28"));
    EXPECT_EQ(volume("0.09071810542398777", 3), regional("0.29"));
}

TEST_P(HardDecimals, NumbersArePrintedWithoutGrouping)
{
    EXPECT_EQ(set.CalculateSchichtKubatur("1", "1234567", ""), "1234567");
    EXPECT_EQ(set.CalculateSchichtKubatur("1", regional("0.00001"), ""), "1E-05");
    EXPECT_EQ(set.CalculateSchichtKubatur("1", regional("12345678901234.5"), ""), regional("12345678901234.5"));
}

std::string nameOf(const ::testing::TestParamInfo<std::string>& info)
{
    return text::replaceAll(info.param, "-", "_");
}

INSTANTIATE_TEST_SUITE_P(CommaAndPoint, HardDecimals,
                         ::testing::Values("de-DE", "de-AT", "de-CH", "fr-FR", "cs-CZ", "en-US", "en-GB"), nameOf);

} // namespace
} // namespace tamarok
