#include <algorithm>
#include <array>
#include <cmath>

#include "areas/inventory.h"
#include "timber_profile.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t surveyStream = 6'000'000'000'001;

constexpr std::array headColumns{
    textColumn("NUMMER"),
    wholeColumn("ID_ACCESS_LEVELS"),
    textColumn("BEZEICHNUNG"),
    dayColumn("AUFNAHMEDATUM"),
    dayColumn("ERFASSUNGSDATUM"),
    wholeColumn("FWJ"),
    textColumn("AUFNEHMER"),
    textColumn("WALDORT"),
    numberColumn("FLACHE"),
    wholeColumn("SEEHOHE"),
    wholeColumn("HANGNEIGUNG"),
    wholeColumn("RUCKEDISTANZ"),
    wholeColumn("BESTANDESALTER"),
    numberColumn("BONITAT"),
    numberColumn("BESTOCKUNGSGRAD"),
    numberColumn("KOORDINATE_X"),
    numberColumn("KOORDINATE_Y"),
    wholeColumn("ID_T_STEH_WUCHSREGION"),
    wholeColumn("RELTABLE1"),
    wholeColumn("RELTABLE2"),
    wholeColumn("RELTABLE3"),
    wholeColumn("RELTABLE4"),
    wholeColumn("RELTABLE5"),
    wholeColumn("RELTABLE6"),
    wholeColumn("RELTABLE7"),
    wholeColumn("RELTABLE8"),
    wholeColumn("RELTABLE9"),
    wholeColumn("RELTABLE10"),
    wholeColumn("RELTABLE11"),
    wholeColumn("RELTABLE12"),
    wholeColumn("RELTABLE13"),
    wholeColumn("RELTABLE14"),
    wholeColumn("RELTABLE15"),
    wholeColumn("RELTABLE16"),
    wholeColumn("ID_NUTZUNGSART"),
    wholeColumn("ID_KALAMITAET"),
    wholeColumn("ID_PERSONAL"),
    wholeColumn("ID_USERS"),
    wholeColumn("ID_PRODUKT"),
    wholeColumn("ID_OBJEKT"),
    wholeColumn("ID_BB_T_PROJEKT_PLANUNG"),
    wholeColumn("ID_BB_T_AUFTRAGS_PLANUNG"),
    wholeColumn("ID_VERFAHREN"),
    wholeColumn("STAMMZAHL"),
    numberColumn("VOLUMEN"),
    numberColumn("ERNTEVOLUMEN"),
    numberColumn("ERLOS"),
    numberColumn("KOSTEN"),
    numberColumn("DECKUNGSBEITRAG"),
    flagColumn("ABGESCHLOSSEN"),
    dayColumn("ABSCHLUSSDATUM"),
    textColumn("BEMERKUNG"),
};
constexpr std::array lineColumns{
    wholeColumn("ID_STEH_AUFNAHMEPROTOKOLL_KOPF"),
    wholeColumn("LAUFNUMMER"),
    wholeColumn("ID_HOLZART"),
    wholeColumn("ID_T_STEH_BHD_STUFEN"),
    wholeColumn("STAMMZAHL"),
    numberColumn("HOHE"),
    numberColumn("FORMZAHL"),
    numberColumn("KREISFLACHE"),
    numberColumn("VOLUMEN"),
    numberColumn("ERNTEVERLUST"),
    numberColumn("ERNTEVOLUMEN"),
    numberColumn("PREIS"),
    numberColumn("ERLOS"),
    numberColumn("KOSTENSATZ"),
    numberColumn("KOSTEN"),
    numberColumn("DECKUNGSBEITRAG"),
    textColumn("BEMERKUNG"),
};
constexpr std::size_t freeLists = 16;

consteval std::size_t head(std::string_view name)
{
    return placeOf(headColumns, name);
}
consteval std::size_t line(std::string_view name)
{
    return placeOf(lineColumns, name);
}

constexpr std::array<std::string_view, 5> purposes{"Vorkalkulation", "Verkauf am Stock", "Auszeige Durchforstung",
                                                   "Auszeige Endnutzung", "Bestandesbewertung"};
constexpr std::array<std::string_view, 6> surveyors{"Franz Steiner", "Anna Gruber", "Josef Bauer",
                                                    "Eva Wagner",    "Karl Moser",  "Forsttechnisches Büro Auwald"};
constexpr std::array<std::string_view, 5> remarks{"Steinschlaggefahr beachten", "Nur bei Frost befahrbar",
                                                  "Naturverjüngung schonen", "Käfernester im Westen",
                                                  "Grenze mit Nachbar begangen"};
constexpr std::array<std::string_view, 4> lineRemarks{"Stammschäden", "starke Äste", "Rotfäule angebohrt",
                                                      "Probestämme gefällt"};

/// A diameter step with its breast height diameter in cm.
struct Step {
    std::int32_t id, diameter;
};
/// A forest location with its level and area in hectares.
struct Place {
    std::string name;
    std::int32_t level;
    double area;
};
/// A planned order with its project.
struct Order {
    std::int32_t id, project;
};

/// The keys to which surveys refer.
struct Keys {
    explicit Keys(ado::Connection& connection);

    Codes species;
    std::vector<Step> steps;                                        ///< by rising diameter, without the open last one
    std::map<std::pair<std::int32_t, std::int32_t>, double> prices; ///< euro per cubic metre, by species and step
    std::vector<Place> places;
    std::vector<Order> orders;
    std::array<std::vector<std::int32_t>, freeLists> lists;
    std::vector<std::int32_t> regions, owners, users, products, objects, methods, fellings, calamities;
    std::int32_t calamityFelling = 0; ///< NUTZUNGSART.ID of fellings that a calamity forces
};

Keys::Keys(ado::Connection& connection) :
    species{codesOf(connection, "SELECT HA, ID FROM HOLZART")}, regions{idsOf(
                                                                    connection,
                                                                    "SELECT ID FROM T_STEH_WUCHSREGION ORDER BY ID")},
    owners{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE WALDBESITZER = 1 ORDER BY ID_PERSONAL")},
    users{idsOf(connection, "SELECT ID FROM USERS WHERE ISNULL(DISABLE,0) = 0 ORDER BY ID")},
    products{idsOf(connection, "SELECT ID FROM PRODUKT WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    objects{idsOf(connection, "SELECT ID FROM OBJEKT WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    methods{idsOf(connection, "SELECT ID FROM VERFAHREN WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
    fellings{idsOf(connection, "SELECT ID FROM NUTZUNGSART WHERE ALLOW_HOLZ = 1 AND NA <> 'ZN' ORDER BY ID")},
    calamities{idsOf(connection, "SELECT ID FROM KALAMITAET ORDER BY ID")},
    calamityFelling{idsOf(connection, "SELECT ID FROM NUTZUNGSART WHERE NA = 'ZN'").at(0)}
{
    for (const auto& row : rowsOf(connection, "SELECT ID, BHD FROM T_STEH_BHD_STUFEN WHERE BHD < 90 ORDER BY BHD"))
        steps.push_back({convert::toLong(row.at(0)), convert::toLong(row.at(1))});
    for (const auto& row : rowsOf(connection, "SELECT ID_HOLZART, ID_T_STEH_BHD_STUFEN, SUM(ANTEIL*PREIS)/100 AS PREIS "
                                              "FROM TSP_STEH_HS_VERT_GR1 GROUP BY ID_HOLZART, ID_T_STEH_BHD_STUFEN"))
        prices[{convert::toLong(row.at(0)), convert::toLong(row.at(1))}] = cents(convert::toDouble(row.at(2)));
    for (const auto& row : rowsOf(connection, "SELECT LANGNAME, ID_ACCESS_LEVELS, FLAECHE FROM WALDORT WHERE "
                                              "ID_ACCESS_LEVELS IS NOT NULL ORDER BY ID_WALDORT"))
        places.push_back({row.at(0).asString(), convert::toLong(row.at(1)), convert::toDouble(row.at(2))});
    for (const auto& row : rowsOf(connection, "SELECT ID, ISNULL(ID_BB_T_PROJEKT_PLANUNG,0) AS PROJEKT FROM "
                                              "BB_T_AUFTRAGS_PLANUNG ORDER BY ID"))
        orders.push_back({convert::toLong(row.at(0)), convert::toLong(row.at(1))});
    for (const auto& row : rowsOf(connection, "SELECT ID, RELTABLE_ID FROM T_STEH_RELTABLE ORDER BY ID"))
        lists.at(static_cast<std::size_t>(convert::toLong(row.at(1)) - 1)).push_back(convert::toLong(row.at(0)));
}

/// Trees of one species and diameter step, with what they yield.
struct Line {
    std::int32_t species, step, diameter, stems;
    double height, form, basalArea, volume, loss, harvest;
    double price, revenue, rate, costs, margin;
};

/// Trees grow in height with their diameter; the harvest costs less for stronger ones.
Line drawLine(Random& random, const Keys& keys, const profile::Species& species, const Step& step)
{
    Line one{};
    one.species = keys.species.at(std::string{species.code});
    one.step = step.id;
    one.diameter = step.diameter;
    one.stems = random.between(4, 1600 / step.diameter);
    const double tallest = species.isSoftwood() ? random.between(32.0, 40.0) : random.between(26.0, 33.0);
    one.height = tenth(1.3 + tallest * (1.0 - std::exp(-0.05 * step.diameter)));
    one.form = thousandth(random.between(0.44, 0.52));
    const double radius = step.diameter / 200.0;
    const double area = one.stems * timberPi * radius * radius;
    one.basalArea = thousandth(area);
    one.volume = thousandth(area * one.height * one.form);
    one.loss = species.isSoftwood() ? random.tenths(180, 230) : random.tenths(140, 200);
    one.harvest = thousandth(one.volume * (1.0 - one.loss / 100.0));
    one.price = keys.prices.at({one.species, one.step});
    one.revenue = cents(one.harvest * one.price);
    one.rate = cents(20.0 + 400.0 / step.diameter + random.between(0.0, 6.0));
    one.costs = cents(one.harvest * one.rate);
    one.margin = cents(one.revenue - one.costs);
    return one;
}

/// Consecutive steps of a leading species, and of a second one in the stronger half of the steps.
std::vector<Line> drawLines(Random& random, const Keys& keys)
{
    constexpr std::uint32_t mostLines = 6;
    const std::size_t count = 1 + random.below(mostLines);
    const std::size_t first = random.below(static_cast<std::uint32_t>(keys.steps.size() - count + 1));
    const profile::Species& leading = random.pickWeighted(profile::species);
    const profile::Species& second = random.pickWeighted(profile::species);
    const std::size_t ofSecond = random.chance(500) ? count / 2 : 0;
    std::vector<Line> lines;
    for (std::size_t i = 0; i < count; ++i)
        lines.push_back(drawLine(random, keys, i + ofSecond < count ? leading : second, keys.steps[first + i]));
    return lines;
}

/// The area follows from the stock, within that of the forest location.
void setStand(BulkInsert& row, Random& random, const Keys& keys, const std::vector<Line>& lines)
{
    constexpr double degreeParts = 100'000.0;
    const Place& place = random.pick(keys.places);
    row[head("ID_ACCESS_LEVELS")] = place.level;
    row[head("WALDORT")] = place.name;
    row[head("BEZEICHNUNG")] = std::string{random.pick(purposes)} + " " + place.name.substr(0, place.name.find(','));
    double stock = 0.0;
    for (const Line& one : lines)
        stock += one.volume;
    const double perHectare = random.between(60.0, 320.0);
    row[head("FLACHE")] = cents(std::clamp(stock / perHectare, 0.1, place.area));
    row[head("SEEHOHE")] = random.between(35, 160) * 10;
    row[head("HANGNEIGUNG")] = random.between(0, 16) * 5;
    row[head("RUCKEDISTANZ")] = random.between(2, 60) * 10;
    row[head("BESTANDESALTER")] = 15 + lines.front().diameter * 2 + random.between(0, 25);
    row[head("BONITAT")] = random.tenths(60, 140);
    row[head("BESTOCKUNGSGRAD")] = random.tenths(5, 11);
    row[head("KOORDINATE_X")] = random.between(1'330'000, 1'570'000) / degreeParts;
    row[head("KOORDINATE_Y")] = random.between(4'710'000, 4'860'000) / degreeParts;
    row[head("ID_T_STEH_WUCHSREGION")] = pickId(random, keys.regions, 20);
    for (std::size_t list = 0; list < freeLists; ++list)
        row[head("RELTABLE1") + list] = pickId(random, keys.lists.at(list), 60);
}

/// Only a felling that a calamity forces has a calamity; the project is that of the planned order.
void setKeys(BulkInsert& row, Random& random, const Keys& keys)
{
    const bool forced = random.chance(200);
    row[head("ID_NUTZUNGSART")] = forced ? Variant{keys.calamityFelling} : pickId(random, keys.fellings);
    if (forced) row[head("ID_KALAMITAET")] = pickId(random, keys.calamities);
    row[head("ID_PERSONAL")] = pickId(random, keys.owners, 20);
    row[head("ID_USERS")] = pickId(random, keys.users);
    row[head("ID_PRODUKT")] = pickId(random, keys.products, 30);
    row[head("ID_OBJEKT")] = pickId(random, keys.objects, 200);
    row[head("ID_VERFAHREN")] = pickId(random, keys.methods, 30);
    if (random.chance(100)) return;
    const Order& order = random.pick(keys.orders);
    row[head("ID_BB_T_AUFTRAGS_PLANUNG")] = order.id;
    if (order.project != 0) row[head("ID_BB_T_PROJEKT_PLANUNG")] = order.project;
}

void setDays(BulkInsert& row, Random& random, const ReferenceOptions& options, std::int32_t id)
{
    const Date day = drawDay(random, options);
    row[head("NUMMER")] = documentNumber("ST", day, id);
    row[head("AUFNAHMEDATUM")] = day;
    row[head("ERFASSUNGSDATUM")] = laterDay(day, random.between(0, 14), options);
    row[head("FWJ")] = toCivil(day).year;
    row[head("AUFNEHMER")] = random.pick(surveyors);
    const bool closed = random.chance(700);
    row[head("ABGESCHLOSSEN")] = closed;
    if (closed) row[head("ABSCHLUSSDATUM")] = laterDay(day, random.between(14, 60), options);
    if (random.chance(250)) row[head("BEMERKUNG")] = random.pick(remarks);
}

/// Sums of the rounded values of the rows, so that a list of both agrees.
void setSums(BulkInsert& row, const std::vector<Line>& lines)
{
    Line sum{};
    for (const Line& one : lines) {
        sum.stems += one.stems;
        sum.volume += one.volume;
        sum.harvest += one.harvest;
        sum.revenue += one.revenue;
        sum.costs += one.costs;
        sum.margin += one.margin;
    }
    row[head("STAMMZAHL")] = sum.stems;
    row[head("VOLUMEN")] = thousandth(sum.volume);
    row[head("ERNTEVOLUMEN")] = thousandth(sum.harvest);
    row[head("ERLOS")] = cents(sum.revenue);
    row[head("KOSTEN")] = cents(sum.costs);
    row[head("DECKUNGSBEITRAG")] = cents(sum.margin);
}

void insertLine(BulkInsert& row, Random& random, std::int32_t survey, std::int32_t number, const Line& one)
{
    row[line("ID_STEH_AUFNAHMEPROTOKOLL_KOPF")] = survey;
    row[line("LAUFNUMMER")] = number;
    row[line("ID_HOLZART")] = one.species;
    row[line("ID_T_STEH_BHD_STUFEN")] = one.step;
    row[line("STAMMZAHL")] = one.stems;
    row[line("HOHE")] = one.height;
    row[line("FORMZAHL")] = one.form;
    row[line("KREISFLACHE")] = one.basalArea;
    row[line("VOLUMEN")] = one.volume;
    row[line("ERNTEVERLUST")] = one.loss;
    row[line("ERNTEVOLUMEN")] = one.harvest;
    row[line("PREIS")] = one.price;
    row[line("ERLOS")] = one.revenue;
    row[line("KOSTENSATZ")] = one.rate;
    row[line("KOSTEN")] = one.costs;
    row[line("DECKUNGSBEITRAG")] = one.margin;
    row[line("BEMERKUNG")] = random.chance(60) ? Variant{random.pick(lineRemarks)} : Variant{Null{}};
    row.insert();
}

} // namespace

void writeStandingTimber(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random{options.seed, surveyStream};
    const Keys keys{connection};
    BulkInsert survey{connection, "STEH_AUFNAHMEPROTOKOLL_KOPF", headColumns};
    BulkInsert position{connection, "STEH_AUFNAHMEPROTOKOLL", lineColumns};
    for (std::int32_t id = 1; id <= options.records; ++id) {
        const std::vector<Line> lines = drawLines(random, keys);
        survey.clear();
        setStand(survey, random, keys, lines);
        setKeys(survey, random, keys);
        setDays(survey, random, options, id);
        setSums(survey, lines);
        survey.insert();
        for (std::size_t i = 0; i < lines.size(); ++i)
            insertLine(position, random, id, static_cast<std::int32_t>(i + 1), lines[i]);
    }
}

} // namespace tamarok::database
