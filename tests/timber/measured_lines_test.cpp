#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "support/platforms.h"

#include "tamarok/comm_set.h"

// Ten thousand measured lines, each computed a second time in whole numbers: diameters, lengths and
// bark have two decimals, so the volume of a piece is a fraction of whole numbers, which is rounded
// exactly. The two must agree in every letter unless the exact volume lies so near a tie that the
// double's own error (a few units in the last place, taken as 16) decides; then one of the two
// neighbours is right.

namespace tamarok {
namespace {

using test::platformOf;

__extension__ using Wide = __int128;

enum class Bark : std::uint8_t { Percent, Centimetres, None };

struct MeasuredLine {
    std::int64_t pieces;
    std::int64_t diameter; ///< hundredths of a centimetre
    std::int64_t length;   ///< hundredths of a metre
    std::int64_t bark;     ///< hundredths of a percent or a centimetre
    Bark mode;
    bool followOn;
    bool sheath;
    int places;
    int decimals; ///< of the pattern
};

MeasuredLine drawLine(std::mt19937_64& engine)
{
    const auto between = [&](std::int64_t low, std::int64_t high) {
        return std::uniform_int_distribution<std::int64_t>{low, high}(engine);
    };
    MeasuredLine line{};
    line.pieces = between(1, 4) == 1 ? between(2, 400) : 1;
    line.diameter = between(1, 3) == 1 ? between(7, 90) * 100 : between(700, 12'000);
    line.length = between(1, 3) == 1 ? between(2, 20) * 100 : between(100, 2'500);
    line.mode = static_cast<Bark>(between(0, 2));
    line.bark = line.mode == Bark::Percent ? between(0, 12'000) : between(0, 600);
    line.followOn = between(1, 5) == 1;
    line.sheath = between(1, 2) == 1;
    line.places = static_cast<int>(between(0, 4));
    line.decimals = static_cast<int>(between(0, 4));
    return line;
}

Wide powerOfTen(int exponent)
{
    Wide power = 1;
    for (int step = 0; step < exponent; ++step)
        power *= 10;
    return power;
}

/// Volume of a piece as a fraction: the denominator carries 10^6 of diameter and length, 10^4 of
/// 3.1416, 40000 of the formula, and 10^4 of the percentage.
struct Fraction {
    Wide numerator;
    Wide largest; ///< numerator of the largest number in the double's computation, which its error follows
    Wide denominator = powerOfTen(14) * 40'000;
};

Fraction exactVolume(const MeasuredLine& line)
{
    const std::int64_t inner = line.mode == Bark::Centimetres ? line.diameter - line.bark : line.diameter;
    const std::int64_t share = line.mode == Bark::Percent ? line.bark : 0;
    const Wide whole = Wide{inner} * inner * line.length * 31'416;
    return {whole * (10'000 - share), whole * (10'000 + share)};
}

/// A fraction as a whole number of units of 10^-places, halves to even.
struct Rounded {
    Wide units;
    Wide other;   ///< the neighbour on the other side
    bool nearTie; ///< the double's own error may decide between them
};

Rounded roundHalfEven(Fraction fraction, int places)
{
    const Wide numerator = fraction.numerator * powerOfTen(places);
    const Wide magnitude = numerator < 0 ? -numerator : numerator;
    const Wide below = magnitude / fraction.denominator;
    const Wide rest = magnitude % fraction.denominator;
    const Wide fromTie =
        2 * rest > fraction.denominator ? 2 * rest - fraction.denominator : fraction.denominator - 2 * rest;
    const bool up = 2 * rest > fraction.denominator || (2 * rest == fraction.denominator && below % 2 == 1);
    const Wide units = up ? below + 1 : below;
    const Wide other = up ? below : below + 1;
    // |s - tie| <= largest * 16 * 2^-53, with fromTie = 2 * |s - tie| * denominator.
    const bool nearTie = fromTie <= 2 * (fraction.largest * powerOfTen(places) >> 49) + 1;
    return numerator < 0 ? Rounded{-units, -other, nearTie} : Rounded{units, other, nearTie};
}

/// Units of 10^-places under a pattern of `decimals` zeros, halves away from zero.
std::string patterned(Wide units, int places, int decimals, char separator)
{
    Wide magnitude = units < 0 ? -units : units;
    if (decimals >= places) {
        magnitude *= powerOfTen(decimals - places);
    } else {
        const Wide step = powerOfTen(places - decimals);
        magnitude = (magnitude + step / 2) / step;
    }
    std::string digits = std::to_string(static_cast<std::int64_t>(magnitude));
    const auto wanted = static_cast<std::size_t>(decimals) + 1;
    if (digits.size() < wanted) digits.insert(0, wanted - digits.size(), '0');
    if (decimals > 0) digits.insert(digits.size() - static_cast<std::size_t>(decimals), 1, separator);
    return units < 0 && magnitude != 0 ? "-" + digits : digits;
}

std::string hundredths(std::int64_t value, char separator)
{
    return patterned(value, 2, 2, separator);
}

class MeasuredLines : public ::testing::TestWithParam<std::string> {
protected:
    std::string measured(const MeasuredLine& line) const
    {
        static constexpr std::array<const char*, 3> modes{"%", "cm", ""};
        const std::string pattern =
            line.decimals == 0 ? std::string{"0"} : "0." + std::string(static_cast<std::size_t>(line.decimals), '0');
        return Comm_Set{}.CalculateRundKubatur(std::to_string(line.pieces), hundredths(line.diameter, separator_),
                                               hundredths(line.length, separator_), hundredths(line.bark, separator_),
                                               line.followOn, modes[static_cast<std::size_t>(line.mode)], line.sheath,
                                               pattern, static_cast<std::int16_t>(line.places));
    }

    PlatformScope scope_{platformOf(GetParam())};
    char separator_ = Platform::current().regional.decimal.front();
};

TEST_P(MeasuredLines, AgreeWithWholeNumbers)
{
    std::mt19937_64 engine{20240517};
    int nearTies = 0;
    for (int number = 0; number < 10'000; ++number) {
        const MeasuredLine line = drawLine(engine);
        const Rounded piece = roundHalfEven(exactVolume(line), line.places);
        const std::int64_t count = line.followOn && !line.sheath ? 1 : line.pieces;
        const std::string exact = patterned(piece.units * count, line.places, line.decimals, separator_);
        const std::string result = measured(line);
        if (piece.nearTie && result != exact) {
            ++nearTies;
            EXPECT_EQ(result, patterned(piece.other * count, line.places, line.decimals, separator_)) << number;
        } else {
            ASSERT_EQ(result, exact) << "line " << number << ": " << line.pieces << " pieces, diameter "
                                     << line.diameter << ", length " << line.length << ", bark " << line.bark;
        }
    }
    EXPECT_LE(nearTies, 10);
}

TEST_P(MeasuredLines, StackedAndPolesAgreeWithWholeNumbers)
{
    // The product of two numbers of two decimals has four, fewer than a double's 15 digits: no tie is near.
    std::mt19937_64 engine{7};
    std::uniform_int_distribution<std::int64_t> measure{-500'000, 500'000};
    std::uniform_int_distribution<std::int64_t> factor{1, 9'999};
    const Comm_Set set;
    for (int number = 0; number < 10'000; ++number) {
        const std::int64_t stacked = measure(engine);
        const std::int64_t share = factor(engine);
        ASSERT_EQ(set.CalculateSchichtKubatur(hundredths(share, separator_), hundredths(stacked, separator_), "0.000"),
                  patterned(Wide{stacked} * share, 4, 3, separator_))
            << stacked << " * " << share;
        const std::int64_t pieces = stacked > 0 ? stacked : 0;
        ASSERT_EQ(set.CalculateStangKubatur(hundredths(share, separator_), std::to_string(stacked), "0.000"),
                  patterned(Wide{pieces} * share, 4, 3, separator_))
            << stacked << " * " << share << " / 100";
    }
}

std::string nameOf(const ::testing::TestParamInfo<std::string>& info)
{
    return info.param == "de-AT" ? "Comma" : "Point";
}

INSTANTIATE_TEST_SUITE_P(Settings, MeasuredLines, ::testing::Values("de-AT", "en-GB"), nameOf);

} // namespace
} // namespace tamarok
