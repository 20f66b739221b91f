#include "areas/planning.h"

#include <utility>

#include "areas/areas.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace planning {
namespace {

/// Reads pairs of number and key.
Numbers numbersOf(ado::Connection& connection, std::string_view query)
{
    Numbers numbers;
    for (const std::vector<Variant>& row : rowsOf(connection, query))
        numbers.emplace(convert::toText(row.at(0)), convert::toLong(row.at(1)));
    return numbers;
}

/// The forest locations of districts. A district has one cost centre at most; the lowest key wins.
std::vector<Location> readLocations(ado::Connection& connection)
{
    std::map<std::int32_t, std::int32_t> costCentres;
    for (const auto& row : rowsOf(connection, "SELECT ID_ACCESS_LEVELS, ID FROM KOSTENSTELLE WHERE ID_ACCESS_LEVELS "
                                              "IS NOT NULL AND ISNULL(DISABLE,0) = 0 ORDER BY ID"))
        costCentres.emplace(convert::toLong(row.at(0)), convert::toLong(row.at(1)));
    std::vector<Location> locations;
    for (const auto& row : rowsOf(connection, "SELECT WALDORT.ID_WALDORT, WALDORT.LANGNAME, WALDORT.FLAECHE, "
                                              "ACCESS_LEVELS.ID, ACCESS_LEVELS.NAME, ACCESS_LEVELS.NAME_LANG FROM "
                                              "WALDORT INNER JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = "
                                              "WALDORT.ID_ACCESS_LEVELS WHERE ACCESS_LEVELS.NAME LIKE 'REV %' "
                                              "ORDER BY WALDORT.ID_WALDORT")) {
        Location& location = locations.emplace_back();
        location.id = convert::toLong(row.at(0));
        location.name = convert::toText(row.at(1));
        location.area = convert::toDouble(row.at(2));
        location.level = convert::toLong(row.at(3));
        location.district = convert::toText(row.at(4)).substr(std::string_view{"REV "}.size());
        location.districtName = convert::toText(row.at(5));
        const auto found = costCentres.find(location.level);
        location.costCentre = found == costCentres.end() ? Variant{Null{}} : Variant{found->second};
    }
    return locations;
}

Ids partnersOf(ado::Connection& connection, std::string_view condition)
{
    return idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE " + std::string{condition} +
                                 " AND ISNULL(DISABLE,0) = 0 ORDER BY ID_PERSONAL");
}

/// The keys of a table of the forest enterprise's chart, by number.
Numbers chartOf(ado::Connection& connection, std::string_view table)
{
    return numbersOf(connection, "SELECT [NUMBER], ID FROM " + std::string{table} +
                                     " WHERE TABLE_NAME = 'FORST' AND ISNULL(DISABLE,0) = 0");
}

Numbers keyTableOf(ado::Connection& connection, std::string_view table)
{
    return numbersOf(connection, "SELECT NUMMER, ID FROM " + std::string{table});
}

Ids freeListOf(ado::Connection& connection, std::string_view list)
{
    return idsOf(connection, "SELECT ID FROM RELTABLE WHERE RELTABLE_ID = " + std::string{list} + " ORDER BY ID");
}

} // namespace

Keys::Keys(ado::Connection& connection) :
    locations{readLocations(connection)}, owners{partnersOf(connection, "WALDBESITZER = 1")},
    clients{partnersOf(connection, "WALDBESITZER = 1 AND LEISTUNGSART = 'FORST'")},
    contractors{partnersOf(connection, "GRUPPE = 'Unternehmer'")},
    carriers{partnersOf(connection, "GRUPPE = 'Frächter'")}, customers{partnersOf(connection, "KUNDE = 1")},
    users{idsOf(connection, "SELECT ID FROM USERS WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID")},
    projects{idsOf(connection, "SELECT ID FROM BB_T_PROJEKT_PLANUNG WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID")},
    objects{idsOf(connection, "SELECT ID FROM OBJEKT WHERE TABLE_NAME = 'FORST' AND ISNULL(DISABLE,0) = 0 ORDER BY "
                              "ID")},
    facilities{idsOf(connection, "SELECT ID FROM BB_T_OBJEKTE WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID")},
    contracts{idsOf(connection, "SELECT ID_VERTRAG FROM VERTRAEGE ORDER BY ID_VERTRAG")},
    partnerGroups{idsOf(connection, "SELECT ID FROM PA_GRUPPE ORDER BY ID")}, regions{freeListOf(connection, "11")},
    seasons{freeListOf(connection, "12")}, chapters{idsOf(
                                               connection,
                                               "SELECT ID FROM HH_KAPITEL WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID")},
    titles{idsOf(connection, "SELECT ID FROM HH_TITEL WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID")},
    species{idsOf(connection, "SELECT ID FROM HOLZART WHERE HA IN ('FI','TA','LA','KI','DG','BU','EI','AH') ORDER "
                              "BY ID")},
    priorities{idsOf(connection, "SELECT ID FROM BB_T_PRIORITAT ORDER BY ID")},
    specialMarks{idsOf(connection, "SELECT ID FROM SONDERMERKMAL WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID")},
    services{chartOf(connection, "LEISTUNGSART")}, products{chartOf(connection, "PRODUKT")},
    techniques{keyTableOf(connection, "BB_T_LEI_ARBEITSVERFAHEREN")}, methods{chartOf(connection, "VERFAHREN")},
    marks{keyTableOf(connection, "BB_T_KZ_LEISTUNG")}, measures{keyTableOf(connection, "BB_T_VOLLZUGSMASSNAHME")},
    measureTypes{keyTableOf(connection, "BB_T_MASSNAHMETYP")}, costTypes{chartOf(connection, "KOSTENART")},
    units{numbersOf(connection, "SELECT EINHEIT, EINHEIT_ID FROM WARENEINHEIT")}, orderTypes{keyTableOf(
                                                                                      connection, "BB_T_AUFTRAGSTYP")},
    orderStates{keyTableOf(connection, "BB_T_AUFTRAGSSTATUS")}, monthStates{keyTableOf(connection, "BB_T_MAP_STATUS")}
{}

Random randomOf(const ReferenceOptions& options, Stream stream)
{
    return Random{options.seed, static_cast<std::uint64_t>(stream)};
}

Variant keyOf(const Numbers& numbers, std::string_view number)
{
    const auto found = numbers.find(number);
    return found == numbers.end() ? Variant{Null{}} : Variant{found->second};
}

Amount drawAmount(Random& random, const Work& work)
{
    Amount amount;
    amount.quantity = random.between(work.least, work.most);
    amount.price = cents(work.cost * random.between(0.85, 1.2));
    amount.hours = tenth(amount.quantity * work.hours * random.between(0.8, 1.2));
    amount.cost = cents(amount.quantity * amount.price);
    return amount;
}

const Work& drawRelated(Random& random, const Work& first)
{
    for (;;) {
        const Work& work = random.pick(works);
        if (work.product == first.product) return work;
    }
}

std::int32_t yearOf(Date day)
{
    return toCivil(day).year;
}

} // namespace planning

void writePlanning(ado::Connection& connection, const ReferenceOptions& options)
{
    if (options.records == 0) return;
    const planning::Keys keys{connection};
    planning::writeWorkOrders(connection, options, keys);
    planning::writePlans(connection, options, keys);
    planning::writeLinedPlans(connection, options, keys);
    planning::writeOrders(connection, options, keys);
    planning::writeMonths(connection, options, keys);
    planning::writeCatalogue(connection, options, keys);
    planning::writeLots(connection, options, keys);
}

} // namespace tamarok::database
