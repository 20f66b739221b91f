#include "areas/people_work.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "tamarok/convert.h"

namespace tamarok::database::people {
namespace {

constexpr std::array groups{WageGroup{"LG1", 12.4}, WageGroup{"LG2", 14.15}, WageGroup{"LG3", 15.9},
                            WageGroup{"LG4", 17.35}};

double rateOf(const Variant& group)
{
    if (group.isString())
        for (const WageGroup& row : groups)
            if (group.asString() == row.name) return row.rate;
    return groups.front().rate;
}

std::vector<KeyPair> readPairs(ado::Connection& connection, std::string_view query)
{
    std::vector<KeyPair> pairs;
    for (const std::vector<Variant>& row : rowsOf(connection, query))
        pairs.push_back({convert::toLong(row.at(0)), row.at(1).isNull() ? 0 : convert::toLong(row.at(1))});
    return pairs;
}

/// Partners who work and are persons: contractors are companies without a first name.
std::vector<Worker> readWorkers(ado::Connection& connection)
{
    std::vector<Worker> workers;
    for (const std::vector<Variant>& row :
         rowsOf(connection,
                "SELECT ID_PERSONAL, ID_ACCESS_LEVELS, LOHNGRUPPE FROM PERSONAL WHERE ARBEITER = 1 AND "
                "VORNAME IS NOT NULL AND ID_ACCESS_LEVELS IS NOT NULL AND ISNULL(DISABLE,0) = 0 ORDER BY ID_PERSONAL"))
        workers.push_back({convert::toLong(row.at(0)), convert::toLong(row.at(1)), rateOf(row.at(2))});
    return workers;
}

} // namespace

std::span<const WageGroup> wageGroups() noexcept
{
    return groups;
}

WorkKeys readWorkKeys(ado::Connection& connection)
{
    const auto ids = [&](std::string_view query) { return idsOf(connection, query); };
    const auto pairs = [&](std::string_view query) { return readPairs(connection, query); };
    WorkKeys keys;
    keys.workers = readWorkers(connection);
    keys.districts = ids("SELECT ID FROM ACCESS_LEVELS WHERE RIGHT(ACCESS_LEVELS,2) <> '00' ORDER BY ID");
    keys.services = pairs("SELECT ID, PRODUKT_ID FROM LEISTUNGSART WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID");
    keys.orders = pairs("SELECT ID, ID_BB_T_PROJEKT_PLANUNG FROM BB_T_AUFTRAGS_PLANUNG ORDER BY ID");
    keys.places = pairs("SELECT ID_WALDORT, ID_ACCESS_LEVELS FROM WALDORT ORDER BY ID_WALDORT");
    keys.costCentres = pairs("SELECT ID, ID_ACCESS_LEVELS FROM KOSTENSTELLE ORDER BY ID");
    keys.costTypes = ids("SELECT ID FROM KOSTENART WHERE ISNULL(ERLOSE,0) = 0 AND ISNULL(DISABLE,0) = 0 ORDER BY ID");
    keys.methods = ids("SELECT ID FROM BB_T_LEI_ARBEITSVERFAHEREN ORDER BY ID");
    keys.procedures = ids("SELECT ID FROM VERFAHREN ORDER BY ID");
    keys.objects = ids("SELECT ID FROM OBJEKT WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID");
    keys.facilities = ids("SELECT ID FROM BB_T_OBJEKTE ORDER BY ID");
    keys.marks = ids("SELECT ID FROM BB_T_KZ_LEISTUNG ORDER BY ID");
    keys.owners = ids("SELECT ID_PERSONAL FROM PERSONAL WHERE WALDBESITZER = 1 ORDER BY ID_PERSONAL");
    keys.users = ids("SELECT ID FROM USERS WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID");
    return keys;
}

const KeyPair& pickOf(Random& random, const std::vector<KeyPair>& pairs, std::int32_t other)
{
    // The tables are small, so that a search is cheap.
    std::vector<const KeyPair*> fitting;
    for (const KeyPair& pair : pairs)
        if (pair.other == other) fitting.push_back(&pair);
    return fitting.empty() ? random.pick(pairs) : *random.pick(fitting);
}

Variant keyOf(std::int32_t id)
{
    return id == 0 ? Variant{Null{}} : Variant{id};
}

bool isHarvest(std::int32_t product)
{
    // Timber production of the enterprise and of the managed estate.
    constexpr std::array harvestProducts{1, 7};
    return std::ranges::find(harvestProducts, product) != harvestProducts.end();
}

} // namespace tamarok::database::people
