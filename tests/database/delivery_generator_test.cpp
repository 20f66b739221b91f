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
    for (const std::int64_t logs : {std::int64_t{-1}, std::int64_t{100'000'001}}) {
        try {
            const DeliveryGenerator generator{masterKeys(), {logs, 1}};
            ADD_FAILURE() << logs << " logs were accepted";
        } catch (const Error& error) {
            EXPECT_EQ(error.number, errors::invalidArgument);
            EXPECT_NE(error.description.find(std::to_string(logs)), std::string::npos) << error.description;
        }
    }
}

TEST(DeliveryGenerator, DatesRiseThroughThreeYearsUpToTheBaseDate)
{
    const ReferenceOptions options{20000, 1};
    DeliveryGenerator generator{masterKeys(), options};
    double first = 0.0;
    double last = 0.0;
    std::size_t lists = 0;
    for (Delivery delivery; generator.next(delivery);) {
        for (const TimberList& list : delivery.lists) {
            EXPECT_GE(list.date.days, last);
            if (first == 0.0) first = list.date.days;
            last = list.date.days;
            ++lists;
        }
    }
    EXPECT_EQ(first, options.baseDate.days - 3 * 365);
    EXPECT_EQ(last, options.baseDate.days - 3.0) << "a list has the date of its first log";
    EXPECT_EQ(lists, 498U);
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
    EXPECT_EQ(names.size(), 1062U);
    EXPECT_TRUE(names.contains("L22-000001")) << *names.begin();
}

/// Numbers of measured lines of a harvest, by what they are.
struct Harvest {
    std::size_t lines = 0;
    std::size_t notInvoiced = 0;
    std::map<std::string_view, std::size_t> bySpecies;
    std::map<profile::Measure, std::size_t> byMeasure;
    std::map<std::size_t, std::size_t> byVersion;
};

Harvest harvestOf(const ReferenceOptions& options)
{
    Harvest harvest;
    DeliveryGenerator generator{masterKeys(), options};
    for (Delivery delivery; generator.next(delivery);) {
        std::size_t lines = 0;
        for (const TimberList& list : delivery.lists) {
            lines += list.lines.size();
            for (const LogLine& line : list.lines)
                ++harvest.bySpecies[line.species->code];
        }
        harvest.lines += lines;
        harvest.byMeasure[delivery.kind->measure] += lines;
        for (const Document& document : delivery.documents)
            harvest.byVersion[document.version] += lines;
        if (delivery.documents.empty()) harvest.notInvoiced += lines;
    }
    return harvest;
}

TEST(DeliveryGenerator, EverySpeciesMeasureAndVersionOccursAsOftenAsTheProfileSays)
{
    const Harvest harvest = harvestOf({50000, 1});
    EXPECT_EQ(harvest.lines, 50000U);
    EXPECT_EQ(harvest.bySpecies.size(), profile::species.size());
    EXPECT_EQ(harvest.byMeasure.size(), profile::kinds.size());
    EXPECT_EQ(harvest.byVersion.size(), versionCount);
    // The profile gives spruce 56 % and single logs 60 % of the lines, carriers 60 % and contractors 45 % of the
    // invoiced.
    EXPECT_EQ(harvest.bySpecies.at("FI"), 27783U);
    EXPECT_EQ(harvest.byMeasure.at(profile::Measure::Logs), 30251U);
    EXPECT_EQ(harvest.byVersion.at(profile::carrierVersion), 28020U);
    EXPECT_EQ(harvest.byVersion.at(2), 20611U);
    EXPECT_EQ(harvest.byVersion.at(profile::invoiceVersion), 47027U);
    EXPECT_EQ(harvest.notInvoiced, harvest.lines - harvest.byVersion.at(profile::invoiceVersion));
}

} // namespace
} // namespace tamarok::database
