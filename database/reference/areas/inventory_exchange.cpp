#include <algorithm>
#include <array>
#include <cmath>

#include "areas/inventory.h"
#include "timber_profile.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t importStream = 6'000'000'000'005;

constexpr std::array importColumns{
    textColumn("NUMMER"),           wholeColumn("ID_ACCESS_LEVELS"),
    wholeColumn("ID_FHP_KA"),       wholeColumn("ID_FHP_KFR"),
    wholeColumn("ID_FHP_KKU"),      wholeColumn("ID_FHP_KLI"),
    dayColumn("IMPORTDATUM"),       dayColumn("UHRZEIT"),
    textColumn("DATEINAME"),        textColumn("[VERSION]"),
    textColumn("PROTOKOLL_NR"),     dayColumn("MESSDATUM"),
    textColumn("LIEFERSCHEIN_NR"),  dayColumn("LIEFERDATUM"),
    wholeColumn("FUHREN_NR"),       textColumn("KENNZEICHEN"),
    numberColumn("GEWICHT_BRUTTO"), numberColumn("GEWICHT_TARA"),
    wholeColumn("ANZAHL_SATZE"),    wholeColumn("STUCK"),
    numberColumn("MENGE"),          numberColumn("BETRAG"),
    flagColumn("UBERNOMMEN"),       dayColumn("UBERNAHMEDATUM"),
    textColumn("FEHLERTEXT"),       textColumn("BEMERKUNG"),
};
constexpr std::array lineColumns{
    wholeColumn("ID_FHP_IMPORT"),
    wholeColumn("LAUFNUMMER"),
    textColumn("HA"),
    textColumn("HS"),
    textColumn("GKL"),
    textColumn("STKL"),
    wholeColumn("STUCK"),
    numberColumn("MENGE_BRUTTO"),
    numberColumn("RINDENABZUG"),
    numberColumn("MENGE"),
    numberColumn("PREIS"),
    numberColumn("BETRAG"),
};
constexpr std::array stemColumns{
    wholeColumn("ID_FHP_SUPRO"), wholeColumn("STAMMNUMMER"), numberColumn("LANGE"), wholeColumn("DURCHMESSER"),
    wholeColumn("ZOPF"),         wholeColumn("RINDE"),       numberColumn("MENGE"), textColumn("FEHLER"),
};

consteval std::size_t import(std::string_view name)
{
    return placeOf(importColumns, name);
}
consteval std::size_t line(std::string_view name)
{
    return placeOf(lineColumns, name);
}
consteval std::size_t stem(std::string_view name)
{
    return placeOf(stemColumns, name);
}

struct Quality {
    std::string_view code;
    double factor; ///< of the price of quality B
    std::uint32_t weight;
};
constexpr std::array<Quality, 4> qualities{{{"A", 1.25, 10}, {"B", 1.0, 60}, {"C", 0.82, 22}, {"CX", 0.62, 8}}};

constexpr std::array<std::string_view, 2> assortments{"BL", "LA"};
constexpr std::array<std::string_view, 3> versions{"1.0", "1.1", "2.0"};
constexpr std::array<std::string_view, 5> districtMarks{"BM", "GM", "ZT", "AM", "KU"};
constexpr std::array<std::string_view, 5> defects{"Rotfäule", "Krümmung", "Bläue", "Metall", "Splitter"};
constexpr std::array<std::string_view, 3> failures{"Lieferschein unbekannt", "Vertrag abgelaufen",
                                                   "Menge weicht vom Waldmaß ab"};
constexpr std::array<std::string_view, 3> remarks{"Nachmessung verlangt", "Teillieferung", "Fuhre geteilt"};

/// A contract with the years in which it is valid.
struct Contract {
    std::int32_t id, firstYear, lastYear;
};

/// The keys to which records refer.
struct Keys {
    explicit Keys(ado::Connection& connection) :
        carriers{idsOf(connection, "SELECT ID FROM FHP_KFR ORDER BY ID")},
        customers{idsOf(connection, "SELECT ID FROM FHP_KKU ORDER BY ID")}, suppliers{idsOf(
                                                                                connection,
                                                                                "SELECT ID FROM FHP_KLI ORDER BY ID")},
        districts{idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE FUNKTIONSBEREICH = 'Revier' ORDER BY ID")}
    {
        for (const auto& row :
             rowsOf(connection, "SELECT ID, YEAR(DATUM_VON) AS VON, YEAR(DATUM_BIS) AS BIS FROM FHP_KA ORDER BY ID"))
            contracts.push_back({convert::toLong(row.at(0)), convert::toLong(row.at(1)), convert::toLong(row.at(2))});
    }

    /// The contracts of a year; all of them where the data has none for it.
    std::vector<std::int32_t> contractsOf(std::int32_t year) const
    {
        std::vector<std::int32_t> valid;
        std::vector<std::int32_t> all;
        for (const Contract& one : contracts) {
            all.push_back(one.id);
            if (one.firstYear <= year && year <= one.lastYear) valid.push_back(one.id);
        }
        return valid.empty() ? all : valid;
    }

    std::vector<Contract> contracts;
    std::vector<std::int32_t> carriers, customers, suppliers, districts;
};

struct Stem {
    double length;
    std::int32_t diameter, top, bark; ///< in cm, the diameter over bark
    double gross, net;                ///< cubic metres with and without bark
};

/// A summary line: stems of one species, assortment, quality and strength class.
struct Line {
    const profile::Species* species;
    std::string_view assortment, quality, strength;
    std::vector<Stem> stems;
    double gross = 0.0;
    double net = 0.0;
    double price = 0.0;
    double amount = 0.0;
};

/// Stems whose diameters lie in the strength class of the first one.
std::vector<Stem> drawStems(Random& random, const profile::Species& species)
{
    constexpr std::int32_t fewestStems = 3;
    constexpr std::int32_t mostStems = 6;
    constexpr double thinnest = 18.0;
    constexpr double thickest = 70.0;
    const double drawn = std::clamp(species.diameter + species.spread * random.normal(), thinnest, thickest);
    const auto first = static_cast<std::int32_t>(std::lround(drawn));
    const auto bark = static_cast<std::int32_t>(std::lround(species.barkBase + species.barkSlope * drawn));
    std::vector<Stem> stems;
    for (std::int32_t count = random.between(fewestStems, mostStems); count > 0; --count) {
        const std::int32_t other = first + random.between(-3, 3);
        const bool alike = strengthClassOf(other - bark) == strengthClassOf(first - bark);
        const std::int32_t diameter = alike ? other : first;
        const double length = random.tenths(40, 80);
        stems.push_back({length, diameter, diameter - bark - random.between(1, 4), bark, logVolume(diameter, length),
                         logVolume(diameter - bark, length)});
    }
    return stems;
}

/// The volume of the line is the sum of the rounded volumes of its stems.
Line drawLine(Random& random)
{
    Line one{};
    one.species = &random.pickWeighted(profile::species);
    one.assortment = random.pick(assortments);
    const Quality& quality = random.pickWeighted(qualities);
    one.quality = quality.code;
    one.stems = drawStems(random, *one.species);
    one.strength = strengthClassOf(one.stems.front().diameter - one.stems.front().bark);
    for (const Stem& part : one.stems) {
        one.gross += part.gross;
        one.net += part.net;
    }
    one.gross = thousandth(one.gross);
    one.net = thousandth(one.net);
    one.price = cents(one.species->price * quality.factor + random.between(-3.0, 3.0));
    one.amount = cents(one.net * one.price);
    return one;
}

/// A record is measured after the delivery, and imported and taken over after that.
void setDelivery(BulkInsert& row, Random& random, const ReferenceOptions& options, const Keys& keys, std::int32_t id)
{
    const Date day = drawDay(random, options);
    const Date imported = laterDay(day, random.between(0, 3), options);
    const CivilTime civil = toCivil(day);
    row[import("NUMMER")] = documentNumber("IM", imported, id);
    row[import("ID_ACCESS_LEVELS")] = pickId(random, keys.districts);
    row[import("ID_FHP_KA")] = pickId(random, keys.contractsOf(civil.year), 30);
    row[import("ID_FHP_KFR")] = pickId(random, keys.carriers, 30);
    row[import("ID_FHP_KKU")] = pickId(random, keys.customers);
    row[import("ID_FHP_KLI")] = pickId(random, keys.suppliers);
    row[import("IMPORTDATUM")] = imported;
    row[import("UHRZEIT")] = drawTime(random, 6, 20);
    row[import("DATEINAME")] = "messprotokoll_" + shortYear(day) + paddedNumber(civil.month, 2) +
                               paddedNumber(civil.day, 2) + "_" + paddedNumber(id, 5) + ".xml";
    row[import("[VERSION]")] = random.pick(versions);
    row[import("PROTOKOLL_NR")] = documentNumber("MP", day, id);
    row[import("MESSDATUM")] = day;
    row[import("LIEFERSCHEIN_NR")] = documentNumber("LS", day, id);
    row[import("LIEFERDATUM")] = Date{day.days - random.between(0, 2)};
    row[import("FUHREN_NR")] = random.between(1, 40);
    row[import("KENNZEICHEN")] =
        std::string{random.pick(districtMarks)} + "-" + std::to_string(random.between(10, 999)) +
        static_cast<char>('A' + random.between(0, 25)) + static_cast<char>('A' + random.between(0, 25));
    const bool taken = random.chance(850);
    row[import("UBERNOMMEN")] = taken;
    if (taken) row[import("UBERNAHMEDATUM")] = laterDay(imported, random.between(0, 10), options);
    if (!taken && random.chance(500)) row[import("FEHLERTEXT")] = random.pick(failures);
    if (random.chance(120)) row[import("BEMERKUNG")] = random.pick(remarks);
}

/// The load weighs what fresh timber weighs.
void setSums(BulkInsert& row, Random& random, const std::vector<Line>& lines)
{
    std::size_t pieces = 0;
    double gross = 0.0;
    double net = 0.0;
    double amount = 0.0;
    for (const Line& one : lines) {
        pieces += one.stems.size();
        gross += one.gross;
        net += one.net;
        amount += one.amount;
    }
    const double tare = random.tenths(170, 205);
    row[import("GEWICHT_TARA")] = tare;
    row[import("GEWICHT_BRUTTO")] = cents(tare + gross * random.between(0.78, 0.95));
    row[import("ANZAHL_SATZE")] = static_cast<std::int32_t>(lines.size());
    row[import("STUCK")] = static_cast<std::int32_t>(pieces);
    row[import("MENGE")] = thousandth(net);
    row[import("BETRAG")] = cents(amount);
}

void insertLine(BulkInsert& row, std::int32_t record, std::int32_t number, const Line& one)
{
    row[line("ID_FHP_IMPORT")] = record;
    row[line("LAUFNUMMER")] = number;
    row[line("HA")] = one.species->code;
    row[line("HS")] = one.assortment;
    row[line("GKL")] = one.quality;
    row[line("STKL")] = one.strength;
    row[line("STUCK")] = static_cast<std::int32_t>(one.stems.size());
    row[line("MENGE_BRUTTO")] = one.gross;
    row[line("RINDENABZUG")] = thousandth(one.gross - one.net);
    row[line("MENGE")] = one.net;
    row[line("PREIS")] = one.price;
    row[line("BETRAG")] = one.amount;
    row.insert();
}

void insertStems(BulkInsert& row, Random& random, std::int32_t lineId, const Line& one)
{
    row[stem("ID_FHP_SUPRO")] = lineId;
    for (std::size_t i = 0; i < one.stems.size(); ++i) {
        const Stem& part = one.stems[i];
        row[stem("STAMMNUMMER")] = static_cast<std::int32_t>(i + 1);
        row[stem("LANGE")] = part.length;
        row[stem("DURCHMESSER")] = part.diameter;
        row[stem("ZOPF")] = part.top;
        row[stem("RINDE")] = part.bark;
        row[stem("MENGE")] = part.net;
        row[stem("FEHLER")] =
            one.quality == "CX" || random.chance(40) ? Variant{random.pick(defects)} : Variant{Null{}};
        row.insert();
    }
}

} // namespace

void writeTimberExchange(ado::Connection& connection, const ReferenceOptions& options)
{
    constexpr std::int32_t fewestLines = 2;
    constexpr std::int32_t mostLines = 5;
    const Keys keys{connection};
    Random random{options.seed, importStream};
    BulkInsert record{connection, "FHP_IMPORT", importColumns};
    BulkInsert summary{connection, "FHP_SUPRO", lineColumns};
    BulkInsert stems{connection, "FHP_ESTPRO", stemColumns};
    std::int32_t lineId = 0;
    for (std::int32_t id = 1; id <= options.records; ++id) {
        std::vector<Line> lines;
        for (std::int32_t count = random.between(fewestLines, mostLines); count > 0; --count)
            lines.push_back(drawLine(random));
        record.clear();
        setDelivery(record, random, options, keys, id);
        setSums(record, random, lines);
        record.insert();
        for (std::size_t i = 0; i < lines.size(); ++i) {
            insertLine(summary, id, static_cast<std::int32_t>(i + 1), lines[i]);
            insertStems(stems, random, ++lineId, lines[i]);
        }
    }
}

} // namespace tamarok::database
