#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

#include "delivery_generator.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

const MasterKeys& masterKeys()
{
    static const MasterKeys keys;
    return keys;
}

/// Mixes what a delivery holds into one number.
class Checksum {
public:
    void add(std::uint64_t value) { sum_ = (sum_ ^ value) * 0x100000001B3U; }
    void add(double value) { add(std::bit_cast<std::uint64_t>(value)); }
    void add(std::string_view text)
    {
        for (const char letter : text)
            add(static_cast<std::uint64_t>(static_cast<unsigned char>(letter)));
    }
    std::uint64_t value() const { return sum_; }

private:
    std::uint64_t sum_ = 0xCBF29CE484222325U;
};

std::uint64_t checksum(const ReferenceOptions& options)
{
    Checksum sum;
    DeliveryGenerator generator{masterKeys(), options};
    for (Delivery delivery; generator.next(delivery);) {
        for (const TimberList& list : delivery.lists) {
            sum.add(list.name);
            sum.add(list.date.days);
            for (const LogLine& line : list.lines) {
                sum.add(line.species->code);
                sum.add(line.volume);
                for (const double price : line.price)
                    sum.add(price);
            }
        }
        for (const Document& document : delivery.documents)
            sum.add(document.name);
    }
    return sum.value();
}

TEST(DeliveryGenerator, SeedFixesTheRowsOnEveryMachine)
{
    EXPECT_EQ(checksum({5000, 1}), 12529136231378062827U);
    EXPECT_EQ(checksum({5000, 2}), 7379215404270002621U);
}

TEST(DeliveryGenerator, MakesExactlyTheWantedNumberOfLogs)
{
    for (const std::int64_t wanted : {0, 1, 19, 20, 61, 1000}) {
        DeliveryGenerator generator{masterKeys(), {wanted, 3}};
        std::int64_t made = 0;
        for (Delivery delivery; generator.next(delivery);)
            for (const TimberList& list : delivery.lists)
                made += static_cast<std::int64_t>(list.lines.size());
        EXPECT_EQ(made, wanted);
    }
}

TEST(DeliveryGenerator, RefusesNumbersOutOfRange)
{
    EXPECT_THROW((DeliveryGenerator{masterKeys(), {-1, 1}}), Error);
    EXPECT_THROW((DeliveryGenerator{masterKeys(), {100'000'001, 1}}), Error);
}

TEST(DeliveryGenerator, DatesRiseThroughThreeYearsUpToTheBaseDate)
{
    const ReferenceOptions options{20000, 1};
    DeliveryGenerator generator{masterKeys(), options};
    double first = 0.0;
    double last = 0.0;
    for (Delivery delivery; generator.next(delivery);) {
        for (const TimberList& list : delivery.lists) {
            EXPECT_GE(list.date.days, last);
            if (first == 0.0) first = list.date.days;
            last = list.date.days;
        }
    }
    EXPECT_EQ(first, options.baseDate.days - 3 * 365);
    EXPECT_LE(last, options.baseDate.days);
    EXPECT_GT(last, options.baseDate.days - 5.0);
}

TEST(DeliveryGenerator, NamesOfListsAndDocumentsAreUnique)
{
    DeliveryGenerator generator{masterKeys(), {20000, 1}};
    std::set<std::string> names;
    for (Delivery delivery; generator.next(delivery);) {
        for (const TimberList& list : delivery.lists)
            EXPECT_TRUE(names.insert(list.name).second) << list.name;
        for (const Document& document : delivery.documents)
            EXPECT_TRUE(names.insert(document.name).second) << document.name;
    }
}

TEST(DeliveryGenerator, VolumesFollowTheTradeFormula)
{
    DeliveryGenerator generator{masterKeys(), {20000, 1}};
    std::size_t checked = 0;
    for (Delivery delivery; generator.next(delivery);) {
        if (delivery.kind->measure != profile::Measure::Logs) continue;
        for (const TimberList& list : delivery.lists) {
            for (const LogLine& line : list.lines) {
                EXPECT_EQ(line.volume, logVolume(*line.diameter, *line.length, line.bark, list.bark.unit));
                EXPECT_GT(line.volume, 0.0);
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 5000U);
}

TEST(DeliveryGenerator, HarvestLooksLikeThatOfAForestEnterprise)
{
    DeliveryGenerator generator{masterKeys(), {50000, 1}};
    std::map<std::string_view, std::size_t> species;
    std::map<profile::Measure, std::size_t> measures;
    std::size_t logs = 0;
    std::size_t unsettled = 0;
    std::set<std::size_t> versions;
    for (Delivery delivery; generator.next(delivery);) {
        for (const Document& document : delivery.documents)
            versions.insert(document.version);
        for (const TimberList& list : delivery.lists) {
            measures[delivery.kind->measure] += list.lines.size();
            for (const LogLine& line : list.lines)
                ++species[line.species->code];
            logs += list.lines.size();
            if (delivery.documents.empty()) unsettled += list.lines.size();
        }
    }
    EXPECT_GT(species["FI"], logs * 4 / 10) << "spruce dominates";
    EXPECT_EQ(species.size(), profile::species.size());
    EXPECT_EQ(measures.size(), profile::kinds.size());
    EXPECT_EQ(versions.size(), versionCount);
    EXPECT_GT(unsettled, 0U);
    EXPECT_LT(unsettled, logs / 5);
}

} // namespace
} // namespace tamarok::database
