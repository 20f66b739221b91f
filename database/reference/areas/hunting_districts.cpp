#include <array>

#include "areas/hunting.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t districtStream = 5'000'000'000'001;

constexpr std::array columns{
    wholeColumn("ID"),
    textColumn("NUMMER"),
    textColumn("NAME"),
    textColumn("BEZEICHNUNG"),
    textColumn("JAGDJAHR"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_BB_T_JAGDBEZIRKSART"),
    wholeColumn("ID_PERSONAL"),
    numberColumn("GESAMTFLACHE"),
    numberColumn("WALDFLACHE"),
    numberColumn("FELDFLACHE"),
    numberColumn("WASSERFLACHE"),
    numberColumn("BEFRIEDETE_FLACHE"),
    dayColumn("PACHTBEGINN"),
    dayColumn("PACHTENDE"),
    numberColumn("PACHTPREIS"),
    numberColumn("PACHTSUMME"),
    numberColumn("WILDSCHADENPAUSCHALE"),
    wholeColumn("PACHTER"),
    wholeColumn("BEGEHUNGSSCHEINE"),
    wholeColumn("HOCHSITZE"),
    wholeColumn("KIRRUNGEN"),
    numberColumn("WILDACKER"),
    wholeColumn("ZAUNLANGE"),
    textColumn("BEMERKUNG"),
    flagColumn("DISABLE"),
    dayColumn("ERSTELLUNGSDATUM"),
    dayColumn("STORNODATUM"),
};

consteval std::size_t at(std::string_view name)
{
    return placeOf(columns, name);
}

/// Kinds of hunting districts (BB_T_JAGDBEZIRKSART).
struct DistrictKind {
    std::int32_t id;
    std::string_view word;
    bool isLeased;
    std::uint32_t weight;
};
constexpr std::array kinds{
    DistrictKind{1, "Eigenjagd", false, 5},
    DistrictKind{2, "Gemeindejagd", true, 3},
    DistrictKind{3, "Pachtjagd", true, 4},
};

constexpr std::array<std::string_view, 10> parts{"Nord",     "Süd",       "Ost",         "West",     "Mitte",
                                                 "Hochwald", "Sonnseite", "Schattseite", "Talboden", "Almgebiet"};
constexpr std::array<std::string_view, 5> remarks{
    "Grenzverlauf im Norden strittig", "Wildquerung der Landesstraße", "Rotwildfütterung genehmigt",
    "Schwerpunktbejagung der Verjüngungsflächen", "Wildruhezone ab November"};

/// A forest district, the unit of which a hunting district is part.
struct Unit {
    std::int32_t id;
    std::string name; ///< without the leading word "Revier"
};

std::vector<Unit> forestDistricts(ado::Connection& connection)
{
    std::vector<Unit> units;
    for (const auto& row : rowsOf(connection, "SELECT ID, NAME_LANG FROM ACCESS_LEVELS WHERE "
                                              "RIGHT(ACCESS_LEVELS,2) <> '00' ORDER BY ID")) {
        std::string name = convert::toText(row[1]);
        units.push_back({convert::toLong(row[0]), name.substr(name.find(' ') + 1)});
    }
    return units;
}

/// The total is the sum of the kinds of land.
double setAreas(BulkInsert& row, Random& random)
{
    const double forest = cents(random.between(60.0, 900.0));
    const double fields = cents(random.between(5.0, 350.0));
    const double water = cents(random.between(0.1, 12.0));
    const double closed = cents(random.between(0.5, 25.0));
    const double total = cents(forest + fields + water + closed);
    row[at("WALDFLACHE")] = forest;
    row[at("FELDFLACHE")] = fields;
    row[at("WASSERFLACHE")] = water;
    row[at("BEFRIEDETE_FLACHE")] = closed;
    row[at("GESAMTFLACHE")] = total;
    row[at("WILDACKER")] = cents(random.between(0.2, 6.0));
    return total;
}

/// The rent is that of the area on which hunting is allowed.
void setLease(BulkInsert& row, Random& random, double area, const HuntingYear& year)
{
    constexpr std::int32_t yearsOfLease = 9;
    const double rent = cents(random.between(4.0, 28.0));
    row[at("PACHTBEGINN")] = year.first;
    row[at("PACHTENDE")] = makeDate(toCivil(year.first).year + yearsOfLease, 3, 31);
    row[at("PACHTPREIS")] = rent;
    row[at("PACHTSUMME")] = cents(area * rent);
    row[at("WILDSCHADENPAUSCHALE")] = 50.0 * random.between(2, 60);
    row[at("PACHTER")] = random.between(1, 4);
}

void setFacilities(BulkInsert& row, Random& random)
{
    row[at("BEGEHUNGSSCHEINE")] = random.between(0, 8);
    row[at("HOCHSITZE")] = random.between(3, 60);
    row[at("KIRRUNGEN")] = random.between(0, 12);
    row[at("ZAUNLANGE")] = 50 * random.between(0, 80);
    if (random.chance(250)) row[at("BEMERKUNG")] = random.pick(remarks);
}

void setDistrict(BulkInsert& row, Random& random, std::int32_t id, const Unit& unit, const ReferenceOptions& options)
{
    const DistrictKind& kind = random.pickWeighted(kinds);
    const Date created = drawDay(random, options);
    const HuntingYear year = huntingYearOf(created);
    const std::string name = unit.name + " " + std::string{random.pick(parts)};
    row[at("ID")] = id;
    row[at("NUMMER")] = "J-" + std::to_string(1000 + id);
    row[at("NAME")] = name;
    row[at("BEZEICHNUNG")] = std::string{kind.word} + " " + name;
    row[at("JAGDJAHR")] = year.name;
    row[at("ID_ACCESS_LEVELS")] = unit.id;
    row[at("ID_BB_T_JAGDBEZIRKSART")] = kind.id;
    const double area = setAreas(row, random);
    if (kind.isLeased) setLease(row, random, area, year);
    setFacilities(row, random);
    row[at("DISABLE")] = random.chance(20);
    row[at("ERSTELLUNGSDATUM")] = created;
    row[at("STORNODATUM")] = drawCancelDay(random, created, options);
}

} // namespace

void writeHuntingDistricts(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random{options.seed, districtStream};
    const std::vector<Unit> units = forestDistricts(connection);
    const std::vector<std::int32_t> holders =
        idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE WALDBESITZER = 1 ORDER BY ID_PERSONAL");
    BulkInsert row{connection, "BB_JAGDBEZIRKE", columns};
    for (std::int32_t id = lastId(connection, "BB_JAGDBEZIRKE") + 1; id <= options.records; ++id) {
        row.clear();
        setDistrict(row, random, id, random.pick(units), options);
        row[at("ID_PERSONAL")] = pickId(random, holders, 20);
        row.insert();
    }
}

} // namespace tamarok::database
