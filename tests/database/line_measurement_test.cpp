#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "line_measurement.h"
#include "master_keys.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

TEST(LogVolume, FollowsHubersFormulaRoundedHalfToEven)
{
    EXPECT_EQ(logVolume(30.0, 5.0, 0.0, BarkUnit::None), 0.353);
    EXPECT_EQ(logVolume(30.0, 5.0, 99.0, BarkUnit::None), 0.353) << "without a unit the bark does not count";
    EXPECT_EQ(logVolume(30.0, 5.0, 2.0, BarkUnit::Centimetres), 0.308);
    EXPECT_EQ(logVolume(30.0, 5.0, 10.0, BarkUnit::Percent), 0.318);
    EXPECT_EQ(logVolume(30.0, 0.0, 0.0, BarkUnit::None), 0.0);
}

/// Measures `count` lines of a list of spruce and beech, as a kind of delivery has it.
std::vector<LogLine> measured(profile::Measure measure, const BarkRule& bark, std::size_t count)
{
    const MasterKeys keys;
    const LineMeasurement measurement{keys};
    const auto* const kind = std::find_if(profile::kinds.begin(), profile::kinds.end(),
                                          [&](const profile::Kind& item) { return item.measure == measure; });
    TimberList list;
    list.mainSpecies = &profile::species[0];
    list.secondSpecies = &profile::species[5];
    list.assortment = "BL";
    list.bark = bark;
    Random random{1};
    std::vector<LogLine> lines{count};
    for (LogLine& line : lines)
        measurement.measure(*kind, list, line, random);
    return lines;
}

TEST(LineMeasurement, SingleLogsHaveVolumeAndClassesOfTheirDiameter)
{
    const MasterKeys keys;
    for (const LogLine& line : measured(profile::Measure::Logs, {2, BarkUnit::Centimetres}, 500)) {
        EXPECT_EQ(line.volume, logVolume(*line.diameter, *line.length, line.bark, BarkUnit::Centimetres));
        EXPECT_EQ(line.quantity, line.volume);
        EXPECT_EQ(line.pieces, 1);
        const MasterKeys::StrengthClass& strength = keys.strengthClasses().at(*line.strength);
        EXPECT_GE(*line.diameter - line.bark, strength.from - 1e-9);
        EXPECT_LE(*line.diameter - line.bark, strength.to + 1e-9);
        EXPECT_EQ(line.volumeClass, keys.volumeClass(line.volume));
    }
}

TEST(LineMeasurement, LorryLoadsAreWeighed)
{
    for (const LogLine& line : measured(profile::Measure::Weight, {}, 100)) {
        EXPECT_EQ(*line.lorryGross, convert::roundHalfEven(*line.lorryTare + line.quantity, 2));
        EXPECT_EQ(line.volume, convert::roundHalfEven(line.quantity * line.species->airDryWeight, 3));
        EXPECT_FALSE(line.diameter);
        EXPECT_FALSE(line.strength);
    }
}

TEST(LineMeasurement, StackedWoodIsConvertedByItsFactor)
{
    for (const LogLine& line : measured(profile::Measure::Stacked, {}, 100)) {
        EXPECT_EQ(line.stackedFactor, line.species->isSoftwood() ? 0.68 : 0.63);
        EXPECT_EQ(line.volume, convert::roundHalfEven(line.quantity * line.stackedFactor, 3));
        EXPECT_TRUE(line.length == 2.0 || line.length == 3.0);
    }
    for (const LogLine& line : measured(profile::Measure::Firewood, {}, 20)) {
        EXPECT_EQ(line.stackedFactor, 0.62);
        EXPECT_EQ(line.length, 1.0);
    }
    for (const LogLine& line : measured(profile::Measure::Chips, {}, 20)) {
        EXPECT_EQ(line.stackedFactor, 0.4);
        EXPECT_EQ(line.length, 0.0);
        EXPECT_TRUE(line.energy);
    }
}

TEST(LineMeasurement, PolesAreCountedAndConvertedByTheHundred)
{
    for (const LogLine& line : measured(profile::Measure::Poles, {}, 100)) {
        EXPECT_EQ(line.pieceFactor, line.length == 9.0 ? 5.6 : 3.2);
        EXPECT_EQ(line.quantity, *line.pieces);
        EXPECT_EQ(line.volume, convert::roundHalfEven(*line.pieces * *line.pieceFactor / 100.0, 3));
    }
}

TEST(LineMeasurement, TariffLogsHaveAVolumeWithoutALength)
{
    std::size_t withZero = 0;
    const auto lines = measured(profile::Measure::Tariff, {}, 1000);
    for (const LogLine& line : lines) {
        EXPECT_TRUE(!line.length || line.length == 0.0);
        EXPECT_EQ(line.volume, convert::roundHalfEven(*line.diameter * *line.diameter * 0.00088, 3));
        if (line.length) ++withZero;
    }
    EXPECT_NEAR(static_cast<double>(withZero), 700.0, 45.0) << "three standard deviations of 70 %";
}

} // namespace
} // namespace tamarok::database
