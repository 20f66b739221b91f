#include <array>

#include "areas/hunting.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t smallGameStream = 5'000'000'000'004;

constexpr std::array columns{
    textColumn("NUMMER"),
    textColumn("JAGDJAHR"),
    dayColumn("DATUM"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_ACCESS_LEVELS_ERSTELLER"),
    wholeColumn("ID_ACCESS_LEVELS_OBF"),
    wholeColumn("ID_BB_JAGDBEZIRKE"),
    wholeColumn("ID_PERSONAL_ERLEGER"),
    wholeColumn("ID_PERSONAL2"),
    wholeColumn("ID_BB_T_WILDART"),
    wholeColumn("ID_BB_T_JAGDART"),
    wholeColumn("ID_BB_T_LANDKREIS"),
    wholeColumn("ID_BB_T_TODESURSACHE"),
    wholeColumn("ID_BB_T_JAGERSTATUS"),
    wholeColumn("ID_WALDORT"),
    wholeColumn("STUCK"),
    wholeColumn("MANNLICH"),
    wholeColumn("WEIBLICH"),
    numberColumn("GEWICHT"),
    wholeColumn("SCHUTZEN"),
    wholeColumn("TREIBER"),
    wholeColumn("HUNDE"),
    textColumn("VERWERTUNG"),
    numberColumn("PREIS"),
    numberColumn("ERLOS"),
    flagColumn("UNTERSUCHT"),
    textColumn("BEMERKUNG"),
    dayColumn("ERSTELLUNGSDATUM"),
    dayColumn("STORNODATUM"),
};

consteval std::size_t at(std::string_view name)
{
    return placeOf(columns, name);
}

/// A species of small game or a predator (BB_T_WILDART).
struct Species {
    std::int32_t id;
    double kilograms; ///< of one piece
    double price;     ///< of one piece; 0 where there is no market
    std::int32_t mostPieces;
    std::uint32_t weight; ///< in a draw
};
constexpr std::array species{
    Species{5, 3.8, 9.0, 25, 6},  // hare
    Species{6, 6.2, 0.0, 4, 5},   // fox
    Species{7, 11.0, 0.0, 2, 1},  // badger
    Species{10, 1.2, 5.5, 60, 5}, // pheasant
    Species{11, 1.1, 4.0, 40, 4}, // mallard
    Species{13, 1.6, 0.0, 3, 2},  // stone marten
    Species{14, 1.6, 4.5, 15, 1}, // rabbit
    Species{15, 0.5, 2.0, 50, 2}, // wood pigeon
    Species{16, 7.5, 0.0, 4, 1},  // raccoon
};

/// A kind of hunting (BB_T_JAGDART) and whether it takes a party with beaters.
struct Hunt {
    std::int32_t id;
    bool takesParty;
    std::uint32_t weight;
};
constexpr std::array hunts{Hunt{1, false, 4}, Hunt{2, false, 2}, Hunt{4, true, 5}, Hunt{6, false, 2}};

constexpr std::int32_t broughtDown = 1;
constexpr std::int32_t killedInTraffic = 2;
constexpr std::int32_t counties = 4;
constexpr std::int32_t statesOfHunters = 4;

constexpr std::array<std::string_view, 5> remarks{"Gesellschaftsjagd", "Nachmittags abgebrochen, Nebel",
                                                  "Strecke gelegt am Forsthaus", "Besatz gering",
                                                  "Gemeinsame Jagd mit dem Nachbarrevier"};

/// Small game is hunted from September to January.
Date drawHuntingDay(Random& random, const ReferenceOptions& options)
{
    constexpr std::int32_t september = 9;
    while (true) {
        const Date day = drawDay(random, options);
        const std::int32_t month = toCivil(day).month;
        if (month >= september || month == 1) return day;
    }
}

void setPlaceAndDay(BulkInsert& row, Random& random, Date day, const HuntingKeys& keys, const ReferenceOptions& options)
{
    const HuntingDistrict& district = random.pick(keys.districts);
    row[at("JAGDJAHR")] = huntingYearOf(day).name;
    row[at("DATUM")] = day;
    row[at("ID_ACCESS_LEVELS")] = district.level;
    row[at("ID_ACCESS_LEVELS_OBF")] = district.office;
    row[at("ID_ACCESS_LEVELS_ERSTELLER")] = district.office;
    row[at("ID_BB_JAGDBEZIRKE")] = district.id;
    row[at("ID_BB_T_LANDKREIS")] = random.between(1, counties);
    row[at("ID_WALDORT")] = keys.pickPlace(random, district.level);
    row[at("ERSTELLUNGSDATUM")] = laterDay(day, random.between(0, 5), options);
    row[at("STORNODATUM")] = drawCancelDay(random, day, options);
}

/// Some pieces of a larger bag stay without a sex.
void setPieces(BulkInsert& row, Random& random, const Species& kind, std::int32_t pieces)
{
    const std::int32_t unknown = pieces > 4 && random.chance(300) ? random.between(1, 3) : 0;
    const std::int32_t males = random.between(0, pieces - unknown);
    row[at("ID_BB_T_WILDART")] = kind.id;
    row[at("STUCK")] = pieces;
    row[at("MANNLICH")] = males;
    row[at("WEIBLICH")] = pieces - unknown - males;
    row[at("GEWICHT")] = tenth(pieces * kind.kilograms * random.between(0.9, 1.1));
    row[at("UNTERSUCHT")] = random.chance(150);
}

void setHunt(BulkInsert& row, Random& random, const HuntingKeys& keys)
{
    const Hunt& hunt = random.pickWeighted(hunts);
    row[at("ID_BB_T_JAGDART")] = hunt.id;
    row[at("ID_BB_T_TODESURSACHE")] = broughtDown;
    row[at("ID_BB_T_JAGERSTATUS")] = random.between(1, statesOfHunters);
    row[at("ID_PERSONAL_ERLEGER")] = pickId(random, keys.hunters);
    row[at("SCHUTZEN")] = hunt.takesParty ? random.between(6, 24) : 1;
    row[at("TREIBER")] = hunt.takesParty ? random.between(5, 20) : 0;
    row[at("HUNDE")] = hunt.takesParty ? random.between(2, 9) : random.between(0, 1);
    if (hunt.takesParty) row[at("ID_PERSONAL2")] = pickId(random, keys.hunters);
}

void setProceeds(BulkInsert& row, Random& random, const Species& kind, std::int32_t pieces)
{
    if (kind.price == 0.0) {
        row[at("VERWERTUNG")] = random.chance(300) ? "Balg" : "Entsorgung";
        return;
    }
    const double price = cents(kind.price * random.between(0.85, 1.15));
    row[at("VERWERTUNG")] = random.chance(700) ? "Verkauf" : "Eigenbedarf";
    row[at("PREIS")] = price;
    row[at("ERLOS")] = cents(pieces * price);
}

} // namespace

void writeSmallGame(ado::Connection& connection, const ReferenceOptions& options, const HuntingKeys& keys)
{
    Random random{options.seed, smallGameStream};
    BulkInsert row{connection, "BB_STRECKE_NIEDER", columns};
    for (std::int32_t number = 1; number <= options.records; ++number) {
        const Species& kind = random.pickWeighted(species);
        const bool isRoadkill = random.chance(60);
        const std::int32_t pieces = isRoadkill ? 1 : random.between(1, kind.mostPieces);
        row.clear();
        row[at("NUMMER")] = "NW-" + paddedNumber(number, 5);
        const Date day = isRoadkill ? drawDay(random, options) : drawHuntingDay(random, options);
        setPlaceAndDay(row, random, day, keys, options);
        setPieces(row, random, kind, pieces);
        if (isRoadkill) {
            row[at("ID_BB_T_TODESURSACHE")] = killedInTraffic;
            row[at("VERWERTUNG")] = "Entsorgung";
        } else {
            setHunt(row, random, keys);
            setProceeds(row, random, kind, pieces);
        }
        if (random.chance(150)) row[at("BEMERKUNG")] = random.pick(remarks);
        row.insert();
    }
}

} // namespace tamarok::database
