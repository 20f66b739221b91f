#include <array>

#include "areas/hunting.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t gameStream = 5'000'000'000'003;

constexpr std::array columns{
    textColumn("WILDMARKENNUMMER"),
    dayColumn("DATUM"),
    textColumn("UHRZEIT"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_ACCESS_LEVELS_ERSTELLER"),
    wholeColumn("ID_ACCESS_LEVELS_REV"),
    wholeColumn("ID_BB_JAGDBEZIRKE"),
    wholeColumn("ID_PERSONAL_ERLEGER"),
    wholeColumn("ID_PERSONAL1"),
    wholeColumn("ID_PERSONAL2"),
    wholeColumn("ID_WALDORT"),
    wholeColumn("ID_BB_T_WILDART"),
    wholeColumn("ID_BB_T_GESCHLECHT"),
    wholeColumn("ID_BB_T_ALTERSKLASSE"),
    wholeColumn("ID_BB_T_TODESURSACHE"),
    wholeColumn("ID_BB_T_JAGDART"),
    wholeColumn("ID_BB_FAKTURA_KOPF"),
    wholeColumn("ID_BB_FAKTURA_KOPF_GEBUHR"),
    wholeColumn("ID_WARENKATALOG"),
    wholeColumn("STUCK"),
    numberColumn("GEWICHT"),
    numberColumn("PREIS"),
    numberColumn("NETTOBETRAG"),
    numberColumn("MWST"),
    numberColumn("MWST_BETRAG"),
    numberColumn("BRUTTOBETRAG"),
    numberColumn("ABSCHUSSGEBUHR"),
    wholeColumn("ALTER_JAHRE"),
    textColumn("TROPHAE"),
    wholeColumn("ENDENZAHL"),
    numberColumn("TROPHAENGEWICHT"),
    wholeColumn("SCHUSSZAHL"),
    flagColumn("NACHSUCHE"),
    textColumn("FLEISCHBESCHAU"),
    textColumn("TRICHINENPROBE"),
    textColumn("WILDKAMMER"),
    textColumn("BEMERKUNG"),
    dayColumn("ERSTELLUNGSDATUM"),
    dayColumn("STORNODATUM"),
};

consteval std::size_t at(std::string_view name)
{
    return placeOf(columns, name);
}

/// A species of hoofed game (BB_T_WILDART) with its article (WARENKATALOG).
struct Species {
    std::int32_t id;
    std::int32_t article;
    double lightest, heaviest; ///< dressed weight of a grown animal in kg
    double price;              ///< per kg
    std::string_view trophy;
    std::int32_t mostPoints;
    double heaviestTrophy; ///< in kg
    std::uint32_t weight;
};
constexpr std::array species{
    Species{1, 9001, 55.0, 130.0, 5.2, "Geweih", 16, 6.5, 3},
    Species{2, 9002, 11.0, 19.0, 6.4, "Gehörn", 6, 0.5, 8},
    Species{3, 9003, 15.0, 32.0, 5.8, "Krucken", 2, 0.4, 2},
    Species{4, 9004, 25.0, 95.0, 3.9, "Keilerwaffen", 4, 0.3, 4},
    Species{8, 9005, 30.0, 70.0, 4.8, "Schaufeln", 20, 3.5, 1},
    Species{9, 9006, 20.0, 38.0, 4.1, "Schnecken", 2, 2.0, 1},
};

/// Age classes (BB_T_ALTERSKLASSE): ages in years and the share of the grown weight.
struct AgeClass {
    std::int32_t id;
    std::int32_t youngest, oldest;
    double share;
    std::uint32_t weight;
};
constexpr std::array ages{AgeClass{1, 0, 0, 0.45, 5}, AgeClass{2, 1, 1, 0.7, 4}, AgeClass{3, 3, 6, 0.95, 4},
                          AgeClass{4, 7, 12, 1.0, 2}};
constexpr std::int32_t piglets = 5;
constexpr std::int32_t wildBoar = 4;

/// Causes of death (BB_T_TODESURSACHE). Game that was not brought down has no hunter and is not sold.
struct Cause {
    std::int32_t id;
    std::uint32_t weight;
};
constexpr std::array causes{Cause{1, 88}, Cause{2, 8}, Cause{3, 2}, Cause{4, 2}};
constexpr std::int32_t broughtDown = 1;

constexpr std::array<std::int32_t, 4> kindsOfHunting{1, 2, 3, 4};
constexpr std::int32_t trackingOfWounded = 5;
constexpr double taxRate = 10.0;

constexpr std::array<std::string_view, 4> chambers{"Wildkammer Hochstein", "Wildkammer Moosbach", "Wildkammer Birkfeld",
                                                   "Wildkammer Kaltental"};
constexpr std::array<std::string_view, 4> remarks{"Starkes Stück, gute Kondition", "Alte Schussverletzung am Lauf",
                                                  "Trophäe zur Bewertung angemeldet", "Wildbret für den Eigenbedarf"};

/// Weight, age and, for males that are grown, the trophy.
struct Animal {
    const Species* species;
    const AgeClass* age;
    std::int32_t sex;
    double weight;
    bool hasTrophy() const { return sex == 1 && age->youngest > 0; }
};

Animal drawAnimal(Random& random)
{
    const Species& kind = random.pickWeighted(species);
    const AgeClass& age = random.pickWeighted(ages);
    return {&kind, &age, random.between(1, 2), tenth(random.between(kind.lightest, kind.heaviest) * age.share)};
}

void setAnimal(BulkInsert& row, Random& random, const Animal& animal)
{
    const bool isPiglet = animal.species->id == wildBoar && animal.age->oldest == 0;
    row[at("ID_BB_T_WILDART")] = animal.species->id;
    row[at("ID_BB_T_GESCHLECHT")] = animal.sex;
    row[at("ID_BB_T_ALTERSKLASSE")] = isPiglet ? piglets : animal.age->id;
    row[at("STUCK")] = 1;
    row[at("GEWICHT")] = animal.weight;
    row[at("ALTER_JAHRE")] = random.between(animal.age->youngest, animal.age->oldest);
    if (!animal.hasTrophy()) return;
    row[at("TROPHAE")] = animal.species->trophy;
    row[at("ENDENZAHL")] = 2 * random.between(1, animal.species->mostPoints / 2);
    row[at("TROPHAENGEWICHT")] = cents(animal.species->heaviestTrophy * random.between(0.3, 1.0));
}

/// Game is hunted at dawn and at dusk.
std::string drawTime(Random& random)
{
    const std::int32_t hour = random.chance(400) ? random.between(5, 8) : random.between(17, 21);
    return paddedNumber(hour, 2) + ":" + paddedNumber(random.between(0, 59), 2);
}

void setHunt(BulkInsert& row, Random& random, const HuntingKeys& keys)
{
    const bool wasTracked = random.chance(70);
    row[at("ID_PERSONAL_ERLEGER")] = pickId(random, keys.hunters);
    row[at("ID_PERSONAL2")] = pickId(random, keys.hunters, 500);
    row[at("ID_BB_T_JAGDART")] = wasTracked ? trackingOfWounded : random.pick(kindsOfHunting);
    row[at("SCHUSSZAHL")] = wasTracked ? random.between(2, 3) : random.between(1, 2);
    row[at("NACHSUCHE")] = wasTracked;
}

/// The venison's net amount is weight times price; the fee for the trophy is billed on its own.
void setSale(BulkInsert& row, Random& random, const Animal& animal, const HuntingKeys& keys, std::int32_t bills)
{
    const double price = cents(animal.species->price * random.between(0.9, 1.1));
    const double net = cents(animal.weight * price);
    const double tax = cents(net * taxRate / 100.0);
    row[at("ID_PERSONAL1")] = pickId(random, keys.buyers);
    row[at("ID_WARENKATALOG")] = animal.species->article;
    row[at("PREIS")] = price;
    row[at("NETTOBETRAG")] = net;
    row[at("MWST")] = taxRate;
    row[at("MWST_BETRAG")] = tax;
    row[at("BRUTTOBETRAG")] = cents(net + tax);
    row[at("ID_BB_FAKTURA_KOPF")] = random.between(1, bills);
    if (!animal.hasTrophy() || !random.chance(600)) return;
    row[at("ABSCHUSSGEBUHR")] = 10.0 * random.between(8, 320);
    row[at("ID_BB_FAKTURA_KOPF_GEBUHR")] = random.between(1, bills);
}

void setInspection(BulkInsert& row, Random& random, const Animal& animal)
{
    row[at("FLEISCHBESCHAU")] = random.chance(950) ? "genusstauglich" : "bedingt tauglich";
    if (animal.species->id == wildBoar) row[at("TRICHINENPROBE")] = random.chance(995) ? "negativ" : "positiv";
    row[at("WILDKAMMER")] = random.pick(chambers);
}

void setPlaceAndDay(BulkInsert& row, Random& random, const HuntingKeys& keys, const ReferenceOptions& options,
                    std::int32_t number)
{
    const HuntingDistrict& district = random.pick(keys.districts);
    const Date day = drawDay(random, options);
    row[at("WILDMARKENNUMMER")] = "W" + shortYear(day) + "-" + paddedNumber(number, 6);
    row[at("DATUM")] = day;
    row[at("UHRZEIT")] = drawTime(random);
    row[at("ID_ACCESS_LEVELS")] = district.level;
    row[at("ID_ACCESS_LEVELS_REV")] = district.level;
    row[at("ID_ACCESS_LEVELS_ERSTELLER")] = district.office;
    row[at("ID_BB_JAGDBEZIRKE")] = district.id;
    row[at("ID_WALDORT")] = keys.pickPlace(random, district.level);
    row[at("ERSTELLUNGSDATUM")] = laterDay(day, random.between(0, 3), options);
    row[at("STORNODATUM")] = drawCancelDay(random, day, options);
}

} // namespace

void writeGame(ado::Connection& connection, const ReferenceOptions& options, const HuntingKeys& keys)
{
    Random random{options.seed, gameStream};
    BulkInsert row{connection, "BB_WILDURSPRUNGS", columns};
    for (std::int32_t number = 1; number <= options.records; ++number) {
        const Animal animal = drawAnimal(random);
        const std::int32_t cause = random.pickWeighted(causes).id;
        row.clear();
        setPlaceAndDay(row, random, keys, options, number);
        setAnimal(row, random, animal);
        row[at("ID_BB_T_TODESURSACHE")] = cause;
        if (cause == broughtDown) {
            setHunt(row, random, keys);
            setSale(row, random, animal, keys, options.records);
            setInspection(row, random, animal);
        }
        if (random.chance(100)) row[at("BEMERKUNG")] = random.pick(remarks);
        row.insert();
    }
}

} // namespace tamarok::database
