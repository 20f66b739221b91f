#include "database/delivery_generator.h"

#include <algorithm>
#include <string>

#include "database/random.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

using profile::Kind;
using profile::Measure;

constexpr double daysOfData = 3.0 * 365.0;
constexpr std::int64_t mostLogs = 100'000'000;

std::string listName(Date date, std::int64_t number)
{
    std::string digits = std::to_string(number);
    if (digits.size() < 6) digits.insert(0, 6 - digits.size(), '0');
    return "L" + std::to_string(toCivil(date).year).substr(2) + "-" + digits;
}

std::string_view ordinaryAssortment(const Kind& kind, Random& random)
{
    switch (kind.measure) {
    case Measure::Logs: return random.chance(150) ? "LA" : random.chance(250) ? "AB" : "BL";
    case Measure::Mill: return random.chance(300) ? "AB" : "BL";
    case Measure::Lots:
    case Measure::Tariff: return "BL";
    case Measure::Stacked: return random.chance(500) ? "IF" : random.chance(500) ? "IS" : "IP";
    case Measure::Firewood: return "BR";
    case Measure::Weight: return random.chance(600) ? "IF" : "SH";
    case Measure::Chips: return "HG";
    case Measure::Poles: break;
    }
    return "ST";
}

BarkRule barkRule(const Kind& kind, Random& random)
{
    if (kind.measure != Measure::Logs && kind.measure != Measure::Lots) return {};
    const std::uint32_t drawn = random.below(100);
    if (drawn < 55) return {2, 0};
    if (drawn < 70) return {3, 1};
    return {};
}

/// A key from 1 to `count` in `perMille` of the cases.
std::optional<std::int32_t> sometimes(std::uint32_t perMille, std::int32_t count, Random& random)
{
    if (!random.chance(perMille)) return std::nullopt;
    return random.between(1, count);
}

} // namespace

DeliveryGenerator::DeliveryGenerator(const MasterKeys& keys, const ReferenceOptions& options) :
    keys_{keys}, options_{options}, measurement_{keys}, settlements_{keys, options_}
{
    if (options.logs < 0 || options.logs > mostLogs)
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
    delivery.kind = &weighted(profile::kinds, random);
    for (std::int32_t lists = random.between(1, 3); lists > 0 && logs_ < options_.logs; --lists) {
        delivery.lists.push_back(list(delivery, random));
        logs_ += static_cast<std::int64_t>(delivery.lists.back().lines.size());
    }
    delivery.provided = random.chance(80);
    settlements_.settle(delivery, random);
    return true;
}

TimberList DeliveryGenerator::list(const Delivery& delivery, Random& random)
{
    TimberList list;
    const double share = static_cast<double>(logs_) / static_cast<double>(options_.logs);
    list.date =
        Date{static_cast<double>(static_cast<std::int64_t>(options_.baseDate.days - daysOfData * (1.0 - share)))};
    list.name = listName(list.date, ++lists_);
    const MasterKeys::Place& place = random.pick(keys_.places());
    list.place = place.id;
    list.level = place.level;
    list.user = random.pick(keys_.users());
    list.owner = random.pick(keys_.partners("Waldbesitzer"));
    list.listKind = delivery.kind->measure == Measure::Mill ? 2 : delivery.kind->measure == Measure::Tariff ? 3 : 1;
    describeStand(delivery, list, random);
    describePlanning(list, random);

    const std::int64_t wanted = random.between(20, 60);
    const auto count = static_cast<std::size_t>(std::min(wanted, options_.logs - logs_));
    list.lines.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        list.lines[i].number = static_cast<std::int32_t>(i) + 1;
        measurement_.measure(*delivery.kind, list, list.lines[i], random);
    }
    return list;
}

void DeliveryGenerator::describeStand(const Delivery& delivery, TimberList& list, Random& random) const
{
    const Kind& kind = *delivery.kind;
    list.mainSpecies = &weighted(profile::species, random);
    list.secondSpecies = &weighted(profile::species, random);
    list.diameterShift = 4.0 * random.bell();
    list.felling = random.pick(keys_.fellings());
    if (list.felling == "ZN") list.calamity = random.pick(keys_.calamities());
    list.assortment = ordinaryAssortment(kind, random);
    list.bark = barkRule(kind, random);
    list.pile = random.between(1, 60);
    list.saleKind = sometimes(850, keys_.count("VERKAUFSART"), random);
}

void DeliveryGenerator::describePlanning(TimberList& list, Random& random) const
{
    for (std::size_t slot = 0; slot < list.relations.size(); ++slot)
        if (random.chance(slot < 4 ? 700 : 200))
            list.relations[slot] = random.pick(keys_.relations(static_cast<std::int32_t>(slot) + 1));
    list.workOrder = sometimes(400, keys_.count("ARBEITSAUFTRAG_KOPF"), random);
    // Three items belong to each order, numbered through.
    if (list.workOrder) list.workOrderItem = (*list.workOrder - 1) * 3 + random.between(1, 3);
    list.plannedOrder = sometimes(250, keys_.count("ARBEITSAUFTRAG_KOPF_PLANN"), random);
    list.product = sometimes(800, keys_.count("PRODUKT"), random);
    list.object = sometimes(200, keys_.count("OBJEKT"), random);
    list.method = sometimes(900, keys_.count("VERFAHREN"), random);
    list.project = sometimes(500, keys_.count("BB_T_PROJEKT_PLANUNG"), random);
    list.order = sometimes(450, keys_.count("BB_T_AUFTRAGS_PLANUNG"), random);
}

} // namespace tamarok::database
