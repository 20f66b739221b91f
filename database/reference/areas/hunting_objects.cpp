#include <algorithm>
#include <array>

#include "areas/hunting.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t objectStream = 5'000'000'000'006;

constexpr std::array columns{
    wholeColumn("ID"),
    textColumn("NUMMER"),
    textColumn("[SHORT]"),
    textColumn("[LONG]"),
    wholeColumn("ID_BB_T_OBJEKTGRUPPE"),
    wholeColumn("LDNR"),
    flagColumn("DISABLE"),
    textColumn("BEZEICHNUNG"),
    textColumn("KENNZEICHEN"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_KOSTENSTELLE"),
    wholeColumn("ID_PERSONAL"),
    wholeColumn("ID_BB_T_EINSATZART"),
    flagColumn("STANDART"),
    textColumn("HERSTELLER"),
    textColumn("TYP"),
    textColumn("SERIENNUMMER"),
    wholeColumn("BAUJAHR"),
    dayColumn("ANSCHAFFUNGSDATUM"),
    numberColumn("ANSCHAFFUNGSWERT"),
    wholeColumn("NUTZUNGSDAUER"),
    numberColumn("ABSCHREIBUNG"),
    numberColumn("RESTWERT"),
    wholeColumn("LEISTUNG_KW"),
    textColumn("KRAFTSTOFF"),
    wholeColumn("TANKINHALT"),
    wholeColumn("KM_STAND"),
    numberColumn("BETRIEBSSTUNDEN"),
    numberColumn("STUNDENSATZ"),
    numberColumn("KM_SATZ"),
    numberColumn("LANGE"),
    numberColumn("FLACHE"),
    textColumn("VERSICHERUNG"),
    dayColumn("PRUFUNG_BIS"),
    dayColumn("ABGANGSDATUM"),
    textColumn("BEMERKUNG"),
};

consteval std::size_t at(std::string_view name)
{
    return placeOf(columns, name);
}

/// What makes an object one of its group (BB_T_OBJEKTGRUPPE).
enum class Group : std::uint8_t { road = 1, building, recreation, vehicle, machine, device };

/// A kind of object. Rates are per kilometre for vehicles and per hour for machines and devices.
struct ObjectKind {
    Group group;
    std::string_view code; ///< begins the short name
    std::string_view name;
    std::int32_t use;  ///< BB_T_EINSATZART.ID
    double value;      ///< at purchase, in euro
    std::int32_t life; ///< in years
    std::int32_t kilowatts;
    std::int32_t tank; ///< in litres
    double rate;
    std::uint32_t weight; ///< in a draw
};
constexpr std::array<ObjectKind, 17> kinds{{
    {Group::road, "FS", "Forststraße", 3, 60000, 40, 0, 0, 0, 5},
    {Group::road, "RW", "Rückeweg", 3, 15000, 20, 0, 0, 0, 3},
    {Group::road, "BR", "Wegbrücke", 3, 85000, 50, 0, 0, 0, 1},
    {Group::building, "FH", "Forsthaus", 5, 260000, 60, 0, 0, 0, 1},
    {Group::building, "JH", "Jagdhütte", 6, 48000, 40, 0, 0, 0, 2},
    {Group::building, "GH", "Gerätehalle", 5, 120000, 40, 0, 0, 0, 1},
    {Group::recreation, "RP", "Rastplatz", 4, 4500, 15, 0, 0, 0, 2},
    {Group::recreation, "LP", "Lehrpfad", 4, 22000, 20, 0, 0, 0, 1},
    {Group::vehicle, "GW", "Geländewagen", 1, 36000, 8, 110, 75, 0.5, 8},
    {Group::vehicle, "KB", "Kleinbus", 1, 42000, 8, 96, 70, 0.62, 4},
    {Group::vehicle, "PR", "Pritschenwagen", 2, 39000, 8, 103, 80, 0.68, 3},
    {Group::machine, "HV", "Harvester", 2, 420000, 8, 180, 310, 185, 1},
    {Group::machine, "FW", "Forwarder", 2, 310000, 8, 150, 180, 128, 2},
    {Group::machine, "SK", "Seilkran", 2, 380000, 10, 170, 250, 165, 1},
    {Group::machine, "FT", "Forsttraktor", 2, 135000, 10, 92, 190, 74, 3},
    {Group::device, "MS", "Motorsäge", 2, 1150, 4, 4, 1, 7.5, 4},
    {Group::device, "FR", "Freischneider", 2, 780, 5, 2, 1, 5.5, 2},
}};

constexpr std::array<std::string_view, 6> makers{"Bergland",     "Waldtech",           "Nordforst",
                                                 "Alpina Werke", "Hochwald Maschinen", "Steirermobil"};
constexpr std::array<std::string_view, 8> places{"Grünau",   "Hochstein", "Moosbach",   "Lindwald",
                                                 "Birkfeld", "Kaltental", "Sonnleiten", "Auwald"};
constexpr std::array<std::string_view, 6> plates{"GU", "LE", "BM", "LZ", "WZ", "VO"};
constexpr std::array<std::string_view, 3> insurers{"Landesversicherung", "Waldbrandkasse", "Agrarversicherung"};
constexpr std::array<std::string_view, 4> remarks{"Winterausrüstung vorhanden", "Wartungsvertrag läuft",
                                                  "Ersatzbeschaffung geplant", "Standort wechselt im Herbst"};

bool hasEngine(Group group)
{
    return group == Group::vehicle || group == Group::machine || group == Group::device;
}

/// Value, yearly depreciation over the service life and what is left of it at the end of the data.
void setValue(BulkInsert& row, Random& random, const ObjectKind& kind, const ReferenceOptions& options)
{
    constexpr double daysOfYear = 365.25;
    const Date bought = drawDay(random, options);
    const double value = 10.0 * random.between(static_cast<std::int32_t>(kind.value * 0.085),
                                               static_cast<std::int32_t>(kind.value * 0.115));
    const double yearly = cents(value / kind.life);
    const auto years = static_cast<std::int32_t>((options.baseDate.days - bought.days) / daysOfYear);
    row[at("ANSCHAFFUNGSDATUM")] = bought;
    row[at("ANSCHAFFUNGSWERT")] = value;
    row[at("NUTZUNGSDAUER")] = kind.life;
    row[at("ABSCHREIBUNG")] = yearly;
    row[at("RESTWERT")] = cents(std::max(0.0, value - years * yearly));
    row[at("BAUJAHR")] = toCivil(bought).year - random.between(0, 2);
    row[at("PRUFUNG_BIS")] = Date{dayOf(options.baseDate).days + random.between(-30, 700)};
    if (random.chance(30)) row[at("ABGANGSDATUM")] = laterDay(bought, random.between(100, 900), options);
}

std::string plate(Random& random)
{
    constexpr char firstLetter = 'A';
    constexpr std::int32_t letters = 26;
    std::string text = std::string{random.pick(plates)} + " " + paddedNumber(random.between(1, 999), 3) + " ";
    for (int i = 0; i < 2; ++i)
        text += static_cast<char>(firstLetter + random.between(0, letters - 1));
    return text;
}

void setEngine(BulkInsert& row, Random& random, const ObjectKind& kind, std::int32_t id)
{
    const std::string_view maker = random.pick(makers);
    row[at("HERSTELLER")] = maker;
    row[at("TYP")] = std::string{kind.code} + " " + std::to_string(100 * random.between(1, 9) + kind.kilowatts);
    row[at("SERIENNUMMER")] =
        std::string{maker.substr(0, 2)} + paddedNumber(random.between(0, 999999), 6) + "-" + std::to_string(id);
    row[at("LEISTUNG_KW")] = kind.kilowatts;
    row[at("KRAFTSTOFF")] = kind.group == Group::device ? "Zweitaktgemisch" : "Diesel";
    row[at("TANKINHALT")] = kind.tank;
    row[at("VERSICHERUNG")] = random.pick(insurers);
    if (kind.group == Group::vehicle) {
        row[at("KENNZEICHEN")] = plate(random);
        row[at("KM_STAND")] = random.between(4000, 180000);
        row[at("KM_SATZ")] = cents(kind.rate * random.between(0.9, 1.1));
    } else {
        row[at("BETRIEBSSTUNDEN")] = random.tenths(500, 90000);
        row[at("STUNDENSATZ")] = cents(kind.rate * random.between(0.9, 1.1));
    }
}

void setStructure(BulkInsert& row, Random& random, const ObjectKind& kind)
{
    if (kind.group == Group::road)
        row[at("LANGE")] = random.tenths(800, 65000);
    else
        row[at("FLACHE")] = random.tenths(180, 9000);
}

/// The group's number begins the object's number, such as 40017.
void setName(BulkInsert& row, Random& random, const ObjectKind& kind, std::int32_t id)
{
    const auto group = static_cast<std::int32_t>(kind.group);
    const std::string name = std::string{kind.name} + " " + std::string{random.pick(places)};
    row[at("ID")] = id;
    row[at("NUMMER")] = std::to_string(group) + paddedNumber(id, 4);
    row[at("[SHORT]")] = std::string{kind.code} + paddedNumber(id, 4);
    row[at("[LONG]")] = name;
    row[at("BEZEICHNUNG")] = name + ", Nr. " + std::to_string(id);
    row[at("ID_BB_T_OBJEKTGRUPPE")] = group;
    row[at("LDNR")] = 10 * id;
    row[at("DISABLE")] = random.chance(20);
    row[at("ID_BB_T_EINSATZART")] = kind.use;
    row[at("STANDART")] = random.chance(50);
    if (random.chance(200)) row[at("BEMERKUNG")] = random.pick(remarks);
}

} // namespace

void writeObjects(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random{options.seed, objectStream};
    const auto levels = idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE RIGHT(ACCESS_LEVELS,4) <> '0000' "
                                          "ORDER BY ID");
    const auto costCentres = idsOf(connection, "SELECT ID FROM KOSTENSTELLE ORDER BY ID");
    const auto persons =
        idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE VORNAME IS NOT NULL ORDER BY ID_PERSONAL");
    BulkInsert row{connection, "BB_T_OBJEKTE", columns};
    for (std::int32_t id = lastId(connection, "BB_T_OBJEKTE") + 1; id <= options.records; ++id) {
        const ObjectKind& kind = random.pickWeighted(kinds);
        row.clear();
        setName(row, random, kind, id);
        row[at("ID_ACCESS_LEVELS")] = random.pick(levels);
        row[at("ID_KOSTENSTELLE")] = pickId(random, costCentres, 20);
        row[at("ID_PERSONAL")] = pickId(random, persons, 20);
        setValue(row, random, kind, options);
        if (hasEngine(kind.group))
            setEngine(row, random, kind, id);
        else
            setStructure(row, random, kind);
        row.insert();
    }
}

} // namespace tamarok::database
