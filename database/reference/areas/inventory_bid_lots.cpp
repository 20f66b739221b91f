#include <algorithm>
#include <array>
#include <cmath>

#include "areas/inventory_bids.h"

namespace tamarok::database::bids {
namespace {

/// An assortment that is sold by bid.
struct Assortment {
    std::string_view code, group;
    double factor;   ///< of the price of sawlogs
    double diameter; ///< added to the species' mean diameter, in cm
    std::uint32_t weight;
};
constexpr std::array<Assortment, 5> assortments{{
    {"BL", "ST", 1.0, 4, 50},
    {"LA", "ST", 1.05, 2, 15},
    {"FU", "WH", 2.6, 16, 20},
    {"SC", "WH", 1.5, 10, 10},
    {"MA", "SO", 1.25, 0, 5},
}};

struct Quality {
    std::string_view code, group;
    double factor;
    std::uint32_t weight;
};
constexpr std::array<Quality, 5> qualities{{
    {"A", "WH", 1.35, 20},
    {"B", "NH", 1.0, 50},
    {"C", "NH", 0.82, 20},
    {"CX", "SH", 0.62, 5},
    {"F", "WH", 1.7, 5},
}};

/// Veneer logs are stronger and sold singly; the reserve price follows species, assortment and quality.
Line drawLine(Random& random)
{
    constexpr std::int32_t thinnest = 18;
    constexpr std::int32_t thickest = 95;
    Line line;
    line.species = &random.pickWeighted(profile::species);
    const Assortment& assortment = random.pickWeighted(assortments);
    const Quality& quality = random.pickWeighted(qualities);
    line.assortment = assortment.code;
    line.assortmentGroup = assortment.group;
    line.quality = quality.code;
    line.qualityGroup = quality.group;
    const double diameter = line.species->diameter + assortment.diameter + line.species->spread * random.normal();
    line.diameter = std::clamp(static_cast<std::int32_t>(std::lround(diameter)), thinnest, thickest);
    line.length = random.tenths(30, 80);
    line.pieces = assortment.group == "WH" ? 1 : random.between(1, 24);
    line.volume = thousandth(line.pieces * logVolume(line.diameter, line.length));
    line.reserve = std::round(line.species->price * assortment.factor * quality.factor);
    line.amount = cents(line.volume * line.reserve);
    return line;
}

void setSums(Lot& lot)
{
    for (const Line& line : lot.lines) {
        lot.pieces += line.pieces;
        lot.volume += line.volume;
        lot.reserve += line.amount;
    }
    lot.volume = thousandth(lot.volume);
    lot.reserve = cents(lot.reserve);
}

/// The highest bid wins where it comes near the reserve price; else the sale keeps the award open.
void decide(Random& random, Lot& lot)
{
    constexpr double leastPart = 0.97;
    if (lot.bids.empty()) return;
    lot.isSold = lot.bids.front().amount >= lot.reserve * leastPart;
    lot.bids.front().award = lot.isSold ? Award::given : Award::reserved;
    for (std::size_t i = 1; i < lot.bids.size(); ++i)
        lot.bids[i].award = random.chance(20) ? Award::withdrawn : Award::refused;
}

/// Bidders differ, and their prices lie around the reserve price; one lot in twenty finds no bidder.
void drawBids(Random& random, Lot& lot, std::int32_t bidders)
{
    constexpr std::int32_t mostBids = 6;
    const std::int32_t count = random.chance(50) ? 0 : random.between(1, std::min(mostBids, bidders));
    const std::int32_t first = random.between(0, bidders - 1);
    const double perCubicMetre = lot.reserve / lot.volume;
    for (std::int32_t i = 0; i < count; ++i) {
        const double price = cents(perCubicMetre * random.between(0.85, 1.6));
        lot.bids.push_back({1 + (first + i) % bidders, price, cents(price * lot.volume), Award::open});
    }
    std::ranges::stable_sort(lot.bids, std::ranges::greater{}, &Bid::price);
}

} // namespace

std::vector<Lot> drawLots(Random& random, std::int32_t bidders, bool decided)
{
    constexpr std::int32_t mostLots = 6;
    constexpr std::int32_t mostLines = 6;
    const std::int32_t count = random.between(1, mostLots);
    const bool hasUndivided = count > 1 && random.chance(300);
    std::vector<Lot> lots;
    for (std::int32_t i = 0; i < count; ++i) {
        Lot& lot = lots.emplace_back();
        lot.number = hasUndivided ? i : i + 1;
        for (std::int32_t lines = random.between(1, mostLines); lines > 0; --lines)
            lot.lines.push_back(drawLine(random));
        setSums(lot);
        if (lot.number == 0) continue;
        drawBids(random, lot, bidders);
        if (decided) decide(random, lot);
    }
    return lots;
}

} // namespace tamarok::database::bids
