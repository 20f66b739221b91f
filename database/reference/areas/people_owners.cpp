#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "areas/people_rows.h"
#include "areas/people_writers.h"

#include "tamarok/convert.h"

namespace tamarok::database::people {
namespace {

using ado::DataType;

/// A forest owner with the level and the size of his forest.
struct Owner {
    std::int32_t id;
    Variant level;
    double hectares;
};

/// A forest location.
struct Place {
    std::int32_t id;
    double hectares;
};

std::vector<Owner> readOwners(ado::Connection& connection)
{
    std::vector<Owner> owners;
    for (const std::vector<Variant>& row : rowsOf(
             connection, "SELECT ID_PERSONAL, ID_ACCESS_LEVELS, ISNULL(HEKTAR,0) FROM PERSONAL WHERE WALDBESITZER = 1 "
                         "ORDER BY ID_PERSONAL"))
        owners.push_back({convert::toLong(row.at(0)), row.at(1), convert::toDouble(row.at(2))});
    return owners;
}

/// Four owners of five have a contract of management with the level in which their forest lies.
void writeContracts(ado::Connection& connection, const ReferenceOptions& options, const std::vector<Owner>& owners,
                    Random& random)
{
    constexpr std::array columns{BulkInsert::Column{"ID_PERSONAL", DataType::Integer},
                                 BulkInsert::Column{"ID_ACCESS_LEVELS", DataType::Integer},
                                 BulkInsert::Column{"VERTRAGSNUMMER"},
                                 BulkInsert::Column{"VERTRAGSDATUM", DataType::Date},
                                 BulkInsert::Column{"VERTRAGSENDE", DataType::Date},
                                 BulkInsert::Column{"FLAECHE", DataType::Double},
                                 BulkInsert::Column{"ENTGELT", DataType::Double},
                                 BulkInsert::Column{"BEMERKUNG"}};
    constexpr std::array remarks{"Auszeige und Holzverkauf", "nur Holzverkauf", "Betreuung samt Forstschutz",
                                 "Betreuung samt Wegerhaltung"};
    BulkInsert contracts{connection, "WALDB_VERWALTUNG", columns};
    std::int32_t number = 0;
    for (const Owner& owner : owners) {
        if (!random.chance(800)) continue;
        const Date begin = dayBefore(options, random, 3 * 365);
        const bool hasEnded = random.chance(120);
        const Date end{std::min(begin.days + random.between(180, 700), dayOf(options.baseDate).days)};
        insertRow(contracts,
                  {owner.id, owner.level, "WB-" + std::to_string(toCivil(begin).year) + "-" + paddedNumber(++number, 3),
                   begin, hasEnded ? Variant{end} : Variant{Null{}}, owner.hectares,
                   rounded(owner.hectares * random.between(14.0, 26.0)), sometimes(random, 600, random.pick(remarks))});
    }
}

/// Each owner has one to four forest locations, whole or in part, up to the size of his forest.
void writePlaces(ado::Connection& connection, const ReferenceOptions& options, const std::vector<Owner>& owners,
                 Random& random)
{
    constexpr std::array columns{
        BulkInsert::Column{"ID_PERSONAL", DataType::Integer}, BulkInsert::Column{"ID_WALDORT", DataType::Integer},
        BulkInsert::Column{"FLAECHE", DataType::Double},      BulkInsert::Column{"ANTEIL", DataType::Double},
        BulkInsert::Column{"GUELTIG_VON", DataType::Date},    BulkInsert::Column{"GUELTIG_BIS", DataType::Date}};
    std::vector<Place> places;
    for (const std::vector<Variant>& row :
         rowsOf(connection, "SELECT ID_WALDORT, ISNULL(FLAECHE,0) FROM WALDORT ORDER BY ID_WALDORT"))
        places.push_back({convert::toLong(row.at(0)), convert::toDouble(row.at(1))});
    BulkInsert assignments{connection, "WB_WALDORT_ZUORD", columns};
    for (const Owner& owner : owners) {
        const std::uint32_t first = random.below(static_cast<std::uint32_t>(places.size()));
        const std::int32_t count = random.between(1, 4);
        double remaining = owner.hectares;
        for (std::int32_t i = 0; i < count && remaining > 0; ++i) {
            // Neighbouring locations, each at most once.
            const Place& place = places[(first + static_cast<std::size_t>(i)) % places.size()];
            if (place.hectares <= 0) continue;
            const double whole = random.chance(600) ? 1.0 : random.between(0.5, 0.99);
            const double area = rounded(std::min(place.hectares * whole, remaining), 4);
            const Date begin = dayBefore(options, random, 3 * 365);
            const bool hasEnded = random.chance(60);
            insertRow(assignments, {owner.id, place.id, area, rounded(100.0 * area / place.hectares), begin,
                                    hasEnded ? Variant{dayOf(options.baseDate)} : Variant{Null{}}});
            remaining = rounded(remaining - area, 4);
        }
    }
}

/// Forest owners and dealers sell in up to three years and to one or two destinations a year.
void writeSalesOf(ado::Connection& connection, const ReferenceOptions& options, Random& random)
{
    constexpr std::array columns{BulkInsert::Column{"ID_PERSONAL", DataType::Integer},
                                 BulkInsert::Column{"ID_BB_T_VERKAUFSZIEL", DataType::Integer},
                                 BulkInsert::Column{"JAHR", DataType::Integer},
                                 BulkInsert::Column{"EXPORT", DataType::Boolean},
                                 BulkInsert::Column{"MENGE", DataType::Double},
                                 BulkInsert::Column{"UMSATZ", DataType::Double}};
    const std::vector<std::int32_t> sellers =
        idsOf(connection,
              "SELECT ID_PERSONAL FROM PERSONAL WHERE WALDBESITZER = 1 OR GRUPPE = 'Handel' ORDER BY ID_PERSONAL");
    const std::vector<std::int32_t> destinations = idsOf(connection, "SELECT ID FROM BB_T_VERKAUFSZIEL ORDER BY ID");
    const std::int32_t lastYear = toCivil(options.baseDate).year;
    BulkInsert sales{connection, "PERSONAL_VERKAUFSZIEL", columns};
    for (const std::int32_t seller : sellers) {
        for (std::int32_t year = lastYear - random.between(0, 2); year <= lastYear; ++year) {
            const std::int32_t count = random.between(1, 2);
            for (std::int32_t i = 0; i < count; ++i) {
                const double quantity = rounded(random.between(20.0, 1400.0), 3);
                insertRow(sales, {seller, pickId(random, destinations, 10), year, random.chance(280), quantity,
                                  rounded(quantity * random.between(48.0, 105.0))});
            }
        }
    }
}

/// Seven partners of ten have free fields: access, contact, storage and hours of a visit, kilometres, and visits.
void writeFreeFields(ado::Connection& connection, const ReferenceOptions& options, Random& random)
{
    constexpr std::array columns{BulkInsert::Column{"ID_PERSONAL", DataType::Integer},
                                 BulkInsert::Column{"TEXT1"},
                                 BulkInsert::Column{"TEXT2"},
                                 BulkInsert::Column{"TEXT3"},
                                 BulkInsert::Column{"TEXT4"},
                                 BulkInsert::Column{"TEXT5"},
                                 BulkInsert::Column{"ZAHL1", DataType::Double},
                                 BulkInsert::Column{"ZAHL2", DataType::Double},
                                 BulkInsert::Column{"ZAHL3", DataType::Double},
                                 BulkInsert::Column{"DATUM1", DataType::Date},
                                 BulkInsert::Column{"DATUM2", DataType::Date}};
    constexpr std::array accesses{"LKW mit Anhänger", "LKW ohne Anhänger", "nur bei Frost", "nur Traktor"};
    constexpr std::array contacts{"vormittags erreichbar", "abends erreichbar", "nur schriftlich", "über den Sohn"};
    constexpr std::array storage{"Lagerplatz am Hof", "Lagerplatz an der Gemeindestraße", "kein Lagerplatz"};
    constexpr std::array skills{"Motorsägenkurs", "Seilkrankurs", "Harvesterausbildung", "Forstfacharbeiterprüfung"};
    constexpr std::array newsletters{"Rundschreiben per Post", "Rundschreiben per E-Mail", "kein Rundschreiben"};
    BulkInsert fields{connection, "PERSONAL_FREE", columns};
    for (const std::int32_t partner : idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL ORDER BY ID_PERSONAL")) {
        if (!random.chance(700)) continue;
        const Date visit = dayBefore(options, random, 2 * 365);
        insertRow(fields, {partner, random.pick(accesses), random.pick(contacts), random.pick(storage),
                           sometimes(random, 500, random.pick(skills)), random.pick(newsletters),
                           rounded(random.between(0.5, 85.0)), static_cast<double>(random.between(0, 6)),
                           rounded(random.between(0.25, 4.0)), visit,
                           Date{std::min(visit.days + random.between(30, 400), dayOf(options.baseDate).days)}});
    }
}

} // namespace

void writeForestOwners(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random = randomOf(options, Stream::owners);
    const std::vector<Owner> owners = readOwners(connection);
    writeContracts(connection, options, owners, random);
    writePlaces(connection, options, owners, random);
    writeSalesOf(connection, options, random);
    writeFreeFields(connection, options, random);
}

} // namespace tamarok::database::people
