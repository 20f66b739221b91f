#include <algorithm>
#include <array>

#include "areas/hunting.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t planStream = 5'000'000'000'002;

constexpr std::array headColumns{
    textColumn("NUMMER"),
    textColumn("JAGDJAHR"),
    wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_BB_JAGDBEZIRKE"),
    dayColumn("DATUM"),
    dayColumn("GULTIG_VON"),
    dayColumn("GULTIG_BIS"),
    dayColumn("GENEHMIGT_AM"),
    textColumn("GENEHMIGT_VON"),
    textColumn("HEGEGEMEINSCHAFT"),
    numberColumn("FLACHE"),
    numberColumn("VERBISSPROZENT"),
    wholeColumn("SUMME_SOLL"),
    wholeColumn("SUMME_IST"),
    wholeColumn("SUMME_FALLWILD"),
    textColumn("BEMERKUNG"),
    dayColumn("ERSTELLUNGSDATUM"),
    dayColumn("STORNODATUM"),
};
constexpr std::array lineColumns{
    wholeColumn("ID_BB_ABSCHUSSPLAN_KOPF"),
    wholeColumn("ZEILE"),
    textColumn("WILDART"),
    textColumn("WILDART_LANG"),
    textColumn("GESCHLECHT"),
    textColumn("ALTERSKLASSE"),
    wholeColumn("BESTAND"),
    wholeColumn("VORJAHR"),
    wholeColumn("SOLL"),
    wholeColumn("IST"),
    wholeColumn("FALLWILD"),
    textColumn("BEMERKUNG"),
};

consteval std::size_t head(std::string_view name)
{
    return placeOf(headColumns, name);
}
consteval std::size_t line(std::string_view name)
{
    return placeOf(lineColumns, name);
}

/// What a line of a plan is about, with the words of the key tables and the usual stock in spring.
struct Class {
    std::string_view species, speciesName, sex, age;
    std::int32_t lowestStock, highestStock;
};
constexpr std::array<Class, 14> classes{{
    {"RO", "Rotwild", "männlich", "Klasse I", 2, 12},
    {"RO", "Rotwild", "männlich", "Klasse II", 4, 20},
    {"RO", "Rotwild", "weiblich", "Klasse II", 10, 60},
    {"RO", "Rotwild", "unbekannt", "Kalb, Kitz", 8, 45},
    {"RE", "Rehwild", "männlich", "Klasse I", 6, 30},
    {"RE", "Rehwild", "männlich", "einjährig", 8, 40},
    {"RE", "Rehwild", "weiblich", "Klasse II", 15, 80},
    {"RE", "Rehwild", "unbekannt", "Kalb, Kitz", 12, 70},
    {"GA", "Gamswild", "männlich", "Klasse I", 3, 15},
    {"GA", "Gamswild", "weiblich", "Klasse II", 5, 25},
    {"GA", "Gamswild", "unbekannt", "Kalb, Kitz", 4, 20},
    {"SW", "Schwarzwild", "männlich", "Klasse II", 2, 15},
    {"SW", "Schwarzwild", "weiblich", "einjährig", 4, 25},
    {"SW", "Schwarzwild", "unbekannt", "Frischling", 10, 80},
}};

constexpr std::array<std::string_view, 6> associations{"Hegegemeinschaft Hochstein", "Hegegemeinschaft Moosbach",
                                                       "Hegegemeinschaft Birkfeld",  "Hegegemeinschaft Kaltental",
                                                       "Hegegemeinschaft Auwald",    "Hegegemeinschaft Sonnleiten"};
constexpr std::array<std::string_view, 4> authorities{"Jagdbehörde Hochstein", "Jagdbehörde Lindwald",
                                                      "Bezirksjägermeister", "Forstamt als Jagdbehörde"};
constexpr std::array<std::string_view, 4> remarks{"Erhöhter Abschuss wegen Verbiss", "Nachbarreviere abgestimmt",
                                                  "Nachgenehmigung beantragt", "Schutzwaldsanierung im Gang"};

struct Line {
    const Class* about;
    std::int32_t stock, before, planned, done, found;
};

/// A tenth to two fifths of the stock is planned; most plans are nearly fulfilled, a few exceeded.
Line drawLine(Random& random, const Class& about)
{
    const std::int32_t stock = random.between(about.lowestStock, about.highestStock);
    const std::int32_t planned = std::max(1, stock * random.between(10, 40) / 100);
    const auto part = [&](std::int32_t low, std::int32_t high) { return planned * random.between(low, high) / 100; };
    const std::int32_t before = part(60, 120);
    const std::int32_t done = part(50, 105);
    return {&about, stock, before, planned, done, random.chance(300) ? random.between(1, 1 + planned / 5) : 0};
}

std::vector<Line> drawLines(Random& random)
{
    constexpr std::size_t mostLines = 6;
    const std::size_t count = 1 + random.below(mostLines);
    const std::size_t first = random.below(classes.size());
    std::vector<Line> lines;
    for (std::size_t i = 0; i < count; ++i)
        lines.push_back(drawLine(random, classes[(first + i) % classes.size()]));
    return lines;
}

void setHead(BulkInsert& row, Random& random, const HuntingDistrict& district, const ReferenceOptions& options)
{
    constexpr double daysOfYear = 365.25;
    const Date inYear{dayOf(options.baseDate).days - random.between(0, 2) * daysOfYear};
    const HuntingYear year = huntingYearOf(inYear);
    const Date day{year.first.days - random.between(20, 50)};
    row[head("JAGDJAHR")] = year.name;
    row[head("ID_ACCESS_LEVELS")] = district.level;
    row[head("ID_BB_JAGDBEZIRKE")] = district.id;
    row[head("DATUM")] = day;
    row[head("GULTIG_VON")] = year.first;
    row[head("GULTIG_BIS")] = year.last;
    if (!random.chance(80)) {
        row[head("GENEHMIGT_AM")] = Date{day.days + random.between(5, 18)};
        row[head("GENEHMIGT_VON")] = random.pick(authorities);
    }
    row[head("HEGEGEMEINSCHAFT")] = random.pick(associations);
    row[head("FLACHE")] = cents(random.between(80.0, 1200.0));
    row[head("VERBISSPROZENT")] = random.tenths(20, 650);
    if (random.chance(200)) row[head("BEMERKUNG")] = random.pick(remarks);
    row[head("ERSTELLUNGSDATUM")] = day;
    row[head("STORNODATUM")] = drawCancelDay(random, day, options);
}

void setSums(BulkInsert& row, const std::vector<Line>& lines)
{
    std::int32_t planned = 0;
    std::int32_t done = 0;
    std::int32_t found = 0;
    for (const Line& one : lines) {
        planned += one.planned;
        done += one.done;
        found += one.found;
    }
    row[head("SUMME_SOLL")] = planned;
    row[head("SUMME_IST")] = done;
    row[head("SUMME_FALLWILD")] = found;
}

void insertLine(BulkInsert& row, std::int32_t plan, std::int32_t number, const Line& one)
{
    row[line("ID_BB_ABSCHUSSPLAN_KOPF")] = plan;
    row[line("ZEILE")] = number;
    row[line("WILDART")] = one.about->species;
    row[line("WILDART_LANG")] = one.about->speciesName;
    row[line("GESCHLECHT")] = one.about->sex;
    row[line("ALTERSKLASSE")] = one.about->age;
    row[line("BESTAND")] = one.stock;
    row[line("VORJAHR")] = one.before;
    row[line("SOLL")] = one.planned;
    row[line("IST")] = one.done;
    row[line("FALLWILD")] = one.found;
    row[line("BEMERKUNG")] = one.done > one.planned ? Variant{"Soll überschritten"} : Variant{Null{}};
    row.insert();
}

} // namespace

void writeCullPlans(ado::Connection& connection, const ReferenceOptions& options, const HuntingKeys& keys)
{
    Random random{options.seed, planStream};
    BulkInsert plan{connection, "BB_ABSCHUSSPLAN_KOPF", headColumns};
    BulkInsert position{connection, "BB_ABSCHLUSSPLAN", lineColumns};
    for (std::int32_t id = 1; id <= options.records; ++id) {
        const std::vector<Line> lines = drawLines(random);
        plan.clear();
        setHead(plan, random, random.pick(keys.districts), options);
        plan[head("NUMMER")] = "AP-" + paddedNumber(id, 5);
        setSums(plan, lines);
        plan.insert();
        for (std::size_t i = 0; i < lines.size(); ++i)
            insertLine(position, id, static_cast<std::int32_t>(i + 1), lines[i]);
    }
}

} // namespace tamarok::database
