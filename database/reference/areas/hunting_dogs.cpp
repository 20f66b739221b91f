#include <array>

#include "areas/hunting.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t dogStream = 5'000'000'000'005;

constexpr std::array columns{
    textColumn("NUMMER"),
    textColumn("GEBURTSNAME"),
    textColumn("RUFNAME"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_ACCESS_LEVELS_ERSTELLER"),
    wholeColumn("ID_ACCESS_LEVELS_REV"),
    wholeColumn("ID_BB_JAGDBEZIRKE"),
    wholeColumn("ID_PERSONAL_HUNDEFUHRER"),
    wholeColumn("ID_BB_T_HUNDERASSE"),
    wholeColumn("ID_BB_T_JAGERSTATUS"),
    textColumn("GESCHLECHT"),
    textColumn("FARBE"),
    dayColumn("WURFDATUM"),
    textColumn("ZUCHTBUCHNUMMER"),
    textColumn("CHIPNUMMER"),
    textColumn("STEUERMARKE"),
    wholeColumn("SCHULTERHOHE"),
    numberColumn("GEWICHT"),
    textColumn("PRUFUNG"),
    dayColumn("PRUFUNG_DATUM"),
    wholeColumn("PRUFUNG_PUNKTE"),
    flagColumn("ANERKANNT"),
    dayColumn("ANERKANNT_AB"),
    dayColumn("ANERKANNT_BIS"),
    dayColumn("IMPFUNG_BIS"),
    dayColumn("VERSICHERUNG_BIS"),
    wholeColumn("NACHSUCHEN"),
    wholeColumn("NACHSUCHEN_ERFOLG"),
    wholeColumn("EINSATZTAGE"),
    numberColumn("ENTSCHADIGUNG"),
    dayColumn("ABGANGSDATUM"),
    textColumn("ABGANGSGRUND"),
    textColumn("BEMERKUNG"),
    dayColumn("ERSTELLUNGSDATUM"),
    dayColumn("STORNODATUM"),
};

consteval std::size_t at(std::string_view name)
{
    return placeOf(columns, name);
}

/// A breed (BB_T_HUNDERASSE): heights in cm, weight in kg.
struct Breed {
    std::int32_t id;
    std::string_view book; ///< short name of the stud book
    std::string_view colour;
    std::int32_t lowest, highest;
    double kilograms;
};
constexpr std::array<Breed, 10> breeds{{
    {1, "BGS", "hirschrot", 44, 52, 24.0},
    {2, "HS", "hirschrot gestromt", 48, 55, 33.0},
    {3, "DBR", "rotbraun", 34, 42, 17.0},
    {4, "DK", "Braunschimmel", 58, 66, 29.0},
    {5, "DD", "Braunschimmel", 57, 68, 31.0},
    {6, "KLM", "braun-weiß", 50, 56, 19.0},
    {7, "DW", "braun", 45, 54, 21.0},
    {8, "RT", "saufarben", 22, 27, 8.5},
    {9, "DJT", "schwarz-rot", 33, 40, 9.0},
    {10, "LR", "schwarz", 54, 57, 32.0},
}};

constexpr std::array<std::string_view, 12> males{"Arko",  "Bodo", "Cäsar", "Falk", "Greif", "Hasso",
                                                 "Iltis", "Jago", "Kuno",  "Rex",  "Treff", "Waldo"};
constexpr std::array<std::string_view, 12> females{"Asta",  "Bella", "Cora", "Diana", "Elfe",  "Freya",
                                                   "Gundi", "Hexe",  "Inka", "Kira",  "Senta", "Zilla"};
constexpr std::array<std::string_view, 8> kennels{"vom Hochstein",  "von der Moosalm", "aus dem Lindwald",
                                                  "vom Birkfeld",   "von der Au",      "aus dem Kaltental",
                                                  "vom Steinbruch", "von Sonnleiten"};
constexpr std::array<std::string_view, 4> tests{"Vorprüfung", "Hauptprüfung", "Verbandsschweißprüfung",
                                                "Brauchbarkeitsprüfung"};
constexpr std::array<std::string_view, 3> reasonsOfLeaving{"verendet", "verkauft", "außer Dienst"};
constexpr std::array<std::string_view, 4> remarks{"spurlaut", "schussfest, ruhig am Anschuss",
                                                  "bestätigter Nachsuchenhund", "wasserfreudig"};
constexpr std::int32_t statesOfHunters = 4;

/// Dogs are one to nine years old; the record is made in their second year or at the begin of the data.
Date drawBirth(Random& random, const ReferenceOptions& options)
{
    return Date{dayOf(options.baseDate).days - random.between(365, 3285)};
}

void setDescription(BulkInsert& row, Random& random, std::int32_t number)
{
    const Breed& breed = random.pick(breeds);
    const bool isMale = random.chance(500);
    const std::string_view name = isMale ? random.pick(males) : random.pick(females);
    row[at("NUMMER")] = "H-" + paddedNumber(number, 5);
    row[at("GEBURTSNAME")] = std::string{name} + " " + std::string{random.pick(kennels)};
    row[at("RUFNAME")] = name;
    row[at("ID_BB_T_HUNDERASSE")] = breed.id;
    row[at("GESCHLECHT")] = isMale ? "Rüde" : "Hündin";
    row[at("FARBE")] = breed.colour;
    row[at("ZUCHTBUCHNUMMER")] = std::string{breed.book} + " " + paddedNumber(random.between(100, 99999), 5);
    row[at("CHIPNUMMER")] = "0400" + paddedNumber(random.between(0, 99999999), 8) + paddedNumber(number % 1000, 3);
    row[at("STEUERMARKE")] = std::to_string(random.between(100, 9999));
    row[at("SCHULTERHOHE")] = random.between(breed.lowest, breed.highest);
    row[at("GEWICHT")] = tenth(breed.kilograms * random.between(0.88, 1.12));
}

void setTest(BulkInsert& row, Random& random, Date birth, const ReferenceOptions& options)
{
    constexpr double year = 365.0;
    row[at("ANERKANNT")] = false;
    if (random.chance(150)) return;
    const Date day = laterDay(birth, random.between(300, 700), options);
    row[at("PRUFUNG")] = random.pick(tests);
    row[at("PRUFUNG_DATUM")] = day;
    row[at("PRUFUNG_PUNKTE")] = random.between(60, 100);
    if (random.chance(200)) return;
    row[at("ANERKANNT")] = true;
    row[at("ANERKANNT_AB")] = day;
    row[at("ANERKANNT_BIS")] = Date{day.days + random.between(3, 8) * year};
}

/// The allowance is paid for each day of work and each search.
void setWork(BulkInsert& row, Random& random)
{
    constexpr double perDay = 12.0;
    constexpr double perSearch = 25.0;
    const std::int32_t searches = random.between(0, 18);
    const std::int32_t days = searches + random.between(4, 40);
    row[at("NACHSUCHEN")] = searches;
    row[at("NACHSUCHEN_ERFOLG")] = searches * random.between(40, 95) / 100;
    row[at("EINSATZTAGE")] = days;
    row[at("ENTSCHADIGUNG")] = cents(days * perDay + searches * perSearch);
}

void setKeeping(BulkInsert& row, Random& random, const HuntingKeys& keys, const ReferenceOptions& options)
{
    const HuntingDistrict& district = random.pick(keys.districts);
    const Date created = drawDay(random, options);
    row[at("ID_ACCESS_LEVELS")] = district.level;
    row[at("ID_ACCESS_LEVELS_REV")] = district.level;
    row[at("ID_ACCESS_LEVELS_ERSTELLER")] = district.office;
    row[at("ID_BB_JAGDBEZIRKE")] = district.id;
    row[at("ID_PERSONAL_HUNDEFUHRER")] = pickId(random, keys.hunters, 20);
    row[at("ID_BB_T_JAGERSTATUS")] = random.between(1, statesOfHunters);
    row[at("IMPFUNG_BIS")] = Date{dayOf(options.baseDate).days + random.between(-60, 300)};
    row[at("VERSICHERUNG_BIS")] = Date{dayOf(options.baseDate).days + random.between(-30, 365)};
    row[at("ERSTELLUNGSDATUM")] = created;
    row[at("STORNODATUM")] = drawCancelDay(random, created, options);
    if (random.chance(250)) row[at("BEMERKUNG")] = random.pick(remarks);
    if (!random.chance(100)) return;
    row[at("ABGANGSDATUM")] = laterDay(created, random.between(30, 600), options);
    row[at("ABGANGSGRUND")] = random.pick(reasonsOfLeaving);
}

} // namespace

void writeHuntingDogs(ado::Connection& connection, const ReferenceOptions& options, const HuntingKeys& keys)
{
    Random random{options.seed, dogStream};
    BulkInsert row{connection, "BB_JAGDHUNDE", columns};
    for (std::int32_t number = 1; number <= options.records; ++number) {
        const Date birth = drawBirth(random, options);
        row.clear();
        setDescription(row, random, number);
        row[at("WURFDATUM")] = birth;
        setTest(row, random, birth, options);
        setWork(row, random);
        setKeeping(row, random, keys, options);
        row.insert();
    }
}

} // namespace tamarok::database
