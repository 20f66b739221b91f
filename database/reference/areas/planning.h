#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "areas/area_keys.h"
#include "bulk_insert.h"
#include "random.h"
#include "tamarok_database/reference_options.h"

#include "tamarok/ado.h"
#include "tamarok/date.h"

// What the writers of work orders, plans, monthly work plans, the order catalogue and the provision of timber share.
namespace tamarok::database::planning {

/// The random streams of the area; each writer draws from its own.
enum class Stream : std::uint64_t {
    workOrders = 3'000'000'000'001,
    plans,
    linedPlans,
    orders,
    months,
    catalogue,
    lots
};

Random randomOf(const ReferenceOptions& options, Stream stream);

/// An INSERT statement whose columns are found by name when the program is compiled.
template <const auto& columns>
class Rows {
public:
    Rows(ado::Connection& connection, std::string_view table) : rows_{connection, table, columns} {}

    /// The value of the column at a place: rows[at<columns>("NAME")].
    Variant& operator[](std::size_t place) { return rows_[place]; }

    void clear() { rows_.clear(); }
    void insert() { rows_.insert(); }

private:
    BulkInsert rows_;
};

/// The place of a column. An unknown name does not compile.
template <const auto& columns>
consteval std::size_t at(std::string_view name)
{
    return placeOf(columns, name);
}

using Ids = std::vector<std::int32_t>;

/// Keys of a table by the number that users know.
using Numbers = std::map<std::string, std::int32_t, std::less<>>;

/// The key of a number; Null for an empty number and for one that the table lacks.
Variant keyOf(const Numbers& numbers, std::string_view number);

/// A place of work with its forest district.
struct Location {
    std::int32_t id = 0; ///< WALDORT.ID_WALDORT
    std::string name;
    double area = 0.0;        ///< hectares
    std::int32_t level = 0;   ///< ACCESS_LEVELS.ID of the district
    std::string district;     ///< number of the district, such as 1111
    std::string districtName; ///< such as Revier Hochstein 1
    Variant costCentre;       ///< KOSTENSTELLE.ID, Null for none
};

/// A kind of work that orders and plans consist of. Numbers are those of the key tables, empty for none.
struct Work {
    std::string_view name;
    std::string_view service;     ///< LEISTUNGSART
    std::string_view product;     ///< PRODUKT
    std::string_view technique;   ///< BB_T_LEI_ARBEITSVERFAHEREN
    std::string_view method;      ///< VERFAHREN
    std::string_view mark;        ///< BB_T_KZ_LEISTUNG
    std::string_view measure;     ///< BB_T_VOLLZUGSMASSNAHME
    std::string_view measureType; ///< BB_T_MASSNAHMETYP
    std::string_view costType;    ///< KOSTENART
    std::string_view unit;        ///< WARENEINHEIT
    std::int32_t least, most;     ///< quantity in that unit
    double hours;                 ///< hours per unit
    double cost;                  ///< euro per unit, paid to a contractor
    double revenue;               ///< euro per unit
    bool yieldsTimber;
};
inline constexpr std::array<Work, 8> works{{
    {"Durchforstung", "1110", "101", "20", "20", "10", "10", "10", "5000", "fm", 60, 480, 0.1, 26.5, 74.0, true},
    {"Endnutzung", "1120", "101", "10", "10", "10", "20", "10", "5000", "fm", 30, 260, 0.4, 34.0, 92.0, true},
    {"Rückung", "1130", "101", "30", "30", "20", "10", "10", "5000", "fm", 40, 320, 0.1, 14.5, 0.0, false},
    {"Käferholz", "1310", "103", "10", "10", "10", "60", "40", "5000", "fm", 10, 120, 0.5, 38.0, 61.0, true},
    {"Aufforstung", "1210", "102", "40", "", "30", "40", "20", "5100", "Stk", 400, 5000, 0.02, 1.2, 0.0, false},
    {"Kulturpflege", "1220", "102", "40", "", "30", "30", "30", "5000", "ha", 1, 7, 14.0, 560.0, 0.0, false},
    {"Jungbestandspflege", "1230", "102", "10", "10", "30", "30", "30", "5000", "ha", 1, 9, 18.0, 690.0, 0.0, false},
    {"Wegeinstandhaltung", "1410", "106", "", "", "40", "", "", "5000", "Std", 6, 80, 1.0, 64.0, 0.0, false},
}};

/// Keys of the tables that the area refers to.
struct Keys {
    /// Errors: provider failures.
    explicit Keys(ado::Connection& connection);

    std::vector<Location> locations;
    Ids owners, clients, contractors, carriers, customers; ///< PERSONAL.ID_PERSONAL
    Ids users, projects, objects, facilities, contracts, partnerGroups;
    Ids regions, seasons; ///< RELTABLE.ID of the first two free lists
    Ids chapters, titles; ///< HH_KAPITEL.ID, HH_TITEL.ID
    Ids species;          ///< HOLZART.ID of the common species
    Ids priorities, specialMarks;
    Numbers services, products, techniques, methods, marks, measures, measureTypes, costTypes, units;
    Numbers orderTypes, orderStates, monthStates; ///< BB_T_AUFTRAGSTYP, BB_T_AUFTRAGSSTATUS, BB_T_MAP_STATUS
};

/// A quantity of work with its hours and cost, to which totals add up.
struct Amount {
    double quantity = 0.0;
    double hours = 0.0;
    double price = 0.0; ///< euro per unit
    double cost = 0.0;  ///< quantity times price
};

/// Draws an amount of work.
Amount drawAmount(Random& random, const Work& work);

/// A work that fits the one before it: the same product, so that an order consists of related work.
const Work& drawRelated(Random& random, const Work& first);

/// The year of a day.
std::int32_t yearOf(Date day);

void writeWorkOrders(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);
void writePlans(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);
void writeLinedPlans(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);
void writeOrders(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);
void writeMonths(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);
void writeCatalogue(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);
void writeLots(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys);

} // namespace tamarok::database::planning
