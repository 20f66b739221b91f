#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <vector>

#include "random.h"

namespace tamarok::database {
namespace {

TEST(Random, SeedAndStreamFixTheNumbersOnEveryMachine)
{
    // Seed 1 in stream 1 starts from the state 0, whose numbers are published with SplitMix64.
    Random published{1, 1};
    EXPECT_EQ(published.next(), 0xE220A8397B1DCDAFU);
    EXPECT_EQ(published.next(), 0x6E789E6AA1B965F4U);
    Random seeded{42};
    EXPECT_EQ(seeded.next(), 0x3BA920DC853904FAU);
    EXPECT_EQ(seeded.next(), 0xCF83E9D969B12D41U);
    EXPECT_EQ(Random(1, 2).next(), 0xBF45DC6DB9DC901FU);
    EXPECT_EQ(Random(2, 1).next(), 0x45C35442D09F4CD3U);
}

TEST(Random, BelowScalesTheUpperHalfOfTheNumber)
{
    Random random{42};
    std::vector<std::uint32_t> drawn;
    for (int i = 0; i < 8; ++i)
        drawn.push_back(random.below(100));
    EXPECT_EQ(drawn, (std::vector<std::uint32_t>{23, 81, 56, 60, 29, 61, 32, 56}));
}

TEST(Random, StaysWithinItsBounds)
{
    Random random{7};
    std::set<std::int32_t> seen;
    std::set<double> tenths;
    for (int i = 0; i < 10000; ++i) {
        EXPECT_LT(random.below(3), 3U);
        const double unit = random.unit();
        EXPECT_TRUE(unit >= 0.0 && unit < 1.0) << unit;
        const double normal = random.normal();
        EXPECT_TRUE(normal >= -3.0 && normal < 3.0) << normal;
        seen.insert(random.between(-2, 2));
        tenths.insert(random.tenths(11, 13));
    }
    EXPECT_EQ(seen, (std::set<std::int32_t>{-2, -1, 0, 1, 2}));
    EXPECT_EQ(tenths, (std::set<double>{1.1, 1.2, 1.3}));
    EXPECT_FALSE(random.chance(0));
    EXPECT_TRUE(random.chance(1000));
}

TEST(Random, ItemsAreDrawnByTheirWeight)
{
    struct Item {
        std::uint32_t weight;
        std::size_t place;
    };
    constexpr std::array<Item, 3> items{{{1, 0}, {0, 1}, {3, 2}}};
    Random random{5};
    std::array<int, 3> counts{};
    for (int i = 0; i < 10000; ++i)
        ++counts[random.pickWeighted(items).place];
    EXPECT_EQ(counts[1], 0) << "an item without weight is never drawn";
    EXPECT_NEAR(counts[0], 2500, 130) << "three standard deviations of a quarter of the draws";
    EXPECT_EQ(counts[0] + counts[2], 10000);
}

} // namespace
} // namespace tamarok::database
