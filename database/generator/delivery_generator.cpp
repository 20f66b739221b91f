// The order of the random draws fixes the generated data: a seed must give the same rows in every version.
// A new draw goes behind all existing ones of its delivery.
#include "delivery_generator.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "record_names.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

using profile::Kind;
using profile::Measure;

constexpr double daysOfData = 3.0 * 365.0;
constexpr std::int64_t maximumLogs = 100'000'000;

/// Draws the assortment (HOLZSORTE.HS) of most lines of a list.
std::string_view drawAssortment(const Kind& kind, Random& random)
{
    switch (kind.measure) {
    case Measure::Logs:
        if (random.chance(150)) return "LA";
        return random.chance(250) ? "AB" : "BL";
    case Measure::Mill: return random.chance(300) ? "AB" : "BL";
    case Measure::Lots:
    case Measure::Tariff: return "BL";
    case Measure::Stacked:
        if (random.chance(500)) return "IF";
        return random.chance(500) ? "IS" : "IP";
    case Measure::Firewood: return "BR";
    case Measure::Weight: return random.chance(600) ? "IF" : "SH";
    case Measure::Chips: return "HG";
    case Measure::Poles: break;
    }
    return "ST";
}

/// Of the lists measured in the forest, 55 % deduct bark in centimetres and 15 % in percent.
BarkRule drawBarkRule(const Kind& kind, Random& random)
{
    if (kind.measure != Measure::Logs && kind.measure != Measure::Lots) return {};
    const std::uint32_t drawn = random.below(100);
    if (drawn < 55) return {2, BarkUnit::Centimetres};
    if (drawn < 70) return {3, BarkUnit::Percent};
    return {};
}

/// Returns LISTENART.LISTENART of a list.
std::int16_t listKindOf(Measure measure)
{
    if (measure == Measure::Mill) return 2;
    return measure == Measure::Tariff ? 3 : 1;
}

/// Draws a key from 1 to `count` in `perMille` of the cases.
std::optional<std::int32_t> drawOptionalKey(std::uint32_t perMille, std::int32_t count, Random& random)
{
    if (!random.chance(perMille)) return std::nullopt;
    return random.between(1, count);
}

} // namespace

DeliveryGenerator::DeliveryGenerator(const MasterKeys& keys, const ReferenceOptions& options) :
    keys_{keys}, options_{options}, measurement_{keys}, settlements_{keys, options_}
{
    if (options.logs < 0 || options.logs > maximumLogs)
        throw Error{errors::invalidArgument,
                    "The number of logs must lie between 0 and 100,000,000; it is " + std::to_string(options.logs) +
                        ".",
                    "DeliveryGenerator"};
}

bool DeliveryGenerator::next(Delivery& delivery)
{
    delivery = Delivery{};
    if (logs_ >= options_.logs) return false;
    delivery.number = ++deliveries_;
    Random random{options_.seed, static_cast<std::uint64_t>(delivery.number)};
    delivery.kind = &random.pickWeighted(profile::kinds);
    for (std::int32_t lists = random.between(1, 3); lists > 0 && logs_ < options_.logs; --lists) {
        delivery.lists.push_back(makeList(*delivery.kind, random));
        logs_ += static_cast<std::int64_t>(delivery.lists.back().lines.size());
    }
    delivery.isProvided = random.chance(80);
    settlements_.addDocuments(delivery, random);
    return true;
}

TimberList DeliveryGenerator::makeList(const Kind& kind, Random& random)
{
    TimberList list;
    list.date = nextListDate();
    list.name = listName(list.date, ++lists_);
    const MasterKeys::Place& place = random.pick(keys_.places());
    list.place = place.id;
    list.level = place.level;
    list.user = random.pick(keys_.users());
    list.owner = random.pick(keys_.partners("Waldbesitzer"));
    list.listKind = listKindOf(kind.measure);
    drawStand(kind, list, random);
    drawPlanning(list, random);

    // The last list is cut so that exactly the wanted number of logs is made.
    const std::int64_t drawnCount = random.between(20, 60);
    list.lines.resize(static_cast<std::size_t>(std::min(drawnCount, options_.logs - logs_)));
    std::int32_t number = 0;
    for (LogLine& line : list.lines) {
        line.number = ++number;
        measurement_.measure(kind, list, line, random);
    }
    return list;
}

/// The dates rise evenly with the number of logs, over three years up to the base date.
Date DeliveryGenerator::nextListDate() const
{
    const double share = static_cast<double>(logs_) / static_cast<double>(options_.logs);
    return Date{std::trunc(options_.baseDate.days - daysOfData * (1.0 - share))};
}

void DeliveryGenerator::drawStand(const Kind& kind, TimberList& list, Random& random) const
{
    list.mainSpecies = &random.pickWeighted(profile::species);
    list.secondSpecies = &random.pickWeighted(profile::species);
    list.diameterShift = 4.0 * random.normal();
    list.felling = random.pick(keys_.fellings());
    // ZN is the felling after a calamity, which alone has a cause.
    if (list.felling == "ZN") list.calamity = random.pick(keys_.calamities());
    list.assortment = drawAssortment(kind, random);
    list.bark = drawBarkRule(kind, random);
    list.pile = random.between(1, 60);
    list.saleKind = drawOptionalKey(850, keys_.count("VERKAUFSART"), random);
}

void DeliveryGenerator::drawPlanning(TimberList& list, Random& random) const
{
    // The first four relation lists are filled more often than the others.
    for (std::size_t slot = 0; slot < list.relations.size(); ++slot)
        if (random.chance(slot < 4 ? 700 : 200))
            list.relations[slot] = random.pick(keys_.relations(static_cast<std::int32_t>(slot) + 1));
    list.workOrder = drawOptionalKey(400, keys_.count("ARBEITSAUFTRAG_KOPF"), random);
    // Each work order has three items; the items are numbered consecutively over all orders.
    if (list.workOrder) list.workOrderItem = (*list.workOrder - 1) * 3 + random.between(1, 3);
    list.plannedOrder = drawOptionalKey(250, keys_.count("ARBEITSAUFTRAG_KOPF_PLANN"), random);
    list.product = drawOptionalKey(800, keys_.count("PRODUKT"), random);
    list.object = drawOptionalKey(200, keys_.count("OBJEKT"), random);
    list.method = drawOptionalKey(900, keys_.count("VERFAHREN"), random);
    list.project = drawOptionalKey(500, keys_.count("BB_T_PROJEKT_PLANUNG"), random);
    list.order = drawOptionalKey(450, keys_.count("BB_T_AUFTRAGS_PLANUNG"), random);
}

} // namespace tamarok::database
