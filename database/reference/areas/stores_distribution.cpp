#include <array>
#include <vector>

#include "areas/stores.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t distributionStream = 5'000'000'000'102;

constexpr std::array headColumns{
    wholeColumn("ID_ACCESS_LEVELS"), textColumn("NUMMER"),
    textColumn("BEZEICHNUNG"),       wholeColumn("JAHR"),
    wholeColumn("ID_KOSTENSTELLE"),  textColumn("VERTEILBASIS"),
    dayColumn("GULTIG_VON"),         dayColumn("GULTIG_BIS"),
    numberColumn("VERTEILBETRAG"),   numberColumn("SUMME_BASIS"),
    numberColumn("SUMME_ANTEIL"),    numberColumn("UMGELEGT"),
    flagColumn("ABGESCHLOSSEN"),     dayColumn("ABSCHLUSSDATUM"),
    textColumn("ERSTELLER"),         textColumn("BEMERKUNG"),
    dayColumn("ERSTELLUNGSDATUM"),   dayColumn("STORNODATUM"),
};
constexpr std::array lineColumns{
    wholeColumn("ID_BB_VERTEILSCHLUSSEL_KOPF"),
    wholeColumn("ZEILE"),
    textColumn("KOSTENSTELLE"),
    textColumn("KOSTENSTELLE_LANG"),
    textColumn("PRODUKT"),
    textColumn("PRODUKT_LANG"),
    numberColumn("BASISWERT"),
    numberColumn("ANTEIL"),
    numberColumn("BETRAG"),
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

/// What shares are measured by, with the usual range of one share's value.
struct Basis {
    std::string_view name;
    std::string_view purpose;
    double lowest, highest;
};
constexpr std::array<Basis, 5> bases{{
    {"Waldfläche in Hektar", "Umlage Verwaltung nach Fläche", 40.0, 900.0},
    {"Arbeitsstunden", "Umlage Sozialkosten nach Stunden", 80.0, 2400.0},
    {"Einschlag in Festmeter", "Umlage Wegeerhaltung nach Einschlag", 150.0, 4200.0},
    {"Maschinenstunden", "Umlage Maschinenhof nach Stunden", 20.0, 900.0},
    {"Gefahrene Kilometer", "Umlage Fuhrpark nach Kilometern", 300.0, 18000.0},
}};

constexpr std::array<std::string_view, 4> remarks{"Werte aus dem Vorjahr übernommen", "Mit der Zentrale abgestimmt",
                                                  "Korrektur nach Prüfung", "Vorläufig, Jahresabschluss offen"};

/// A cost centre or a product by number and name.
struct Named {
    std::int32_t id;
    std::string number, name;
    Variant level;
};

std::vector<Named> namedRows(ado::Connection& connection, std::string_view query)
{
    std::vector<Named> all;
    for (const auto& row : rowsOf(connection, query))
        all.push_back({convert::toLong(row[0]), convert::toText(row[1]), convert::toText(row[2]), row[3]});
    return all;
}

struct Keys {
    explicit Keys(ado::Connection& connection) :
        costCentres{namedRows(connection, "SELECT ID, NUMBER, NAME, ID_ACCESS_LEVELS FROM KOSTENSTELLE "
                                          "WHERE TABLE_NAME = 'FORST' ORDER BY ID")},
        products{namedRows(connection, "SELECT ID, NUMBER, NAME, NULL AS LEVEL_ID FROM PRODUKT "
                                       "WHERE TABLE_NAME = 'FORST' ORDER BY ID")}
    {
        for (const auto& row : rowsOf(connection, "SELECT NAME FROM USERS ORDER BY ID"))
            users.push_back(convert::toText(row[0]));
    }

    std::vector<Named> costCentres, products;
    std::vector<std::string> users;
};

struct Share {
    double value, percent, amount;
};

/// The last share takes what rounding has left, so that shares make 100 percent and amounts the whole.
std::vector<Share> drawShares(Random& random, const Basis& basis, double amount)
{
    constexpr std::int32_t mostShares = 6;
    constexpr double whole = 100.0;
    std::vector<Share> shares(static_cast<std::size_t>(random.between(1, mostShares)));
    double total = 0.0;
    for (Share& share : shares) {
        share.value = cents(random.between(basis.lowest, basis.highest));
        total += share.value;
    }
    double percentLeft = whole;
    double amountLeft = amount;
    for (Share& share : shares) {
        const bool isLast = &share == &shares.back();
        share.percent = isLast ? cents(percentLeft) : cents(share.value * whole / total);
        share.amount = isLast ? cents(amountLeft) : cents(amount * share.percent / whole);
        percentLeft -= share.percent;
        amountLeft -= share.amount;
    }
    return shares;
}

void setHead(BulkInsert& row, Random& random, const Basis& basis, const Keys& keys, const ReferenceOptions& options)
{
    constexpr double daysOfYear = 365.25;
    const Date inYear{dayOf(options.baseDate).days - random.between(0, 2) * daysOfYear};
    const std::int32_t year = toCivil(inYear).year;
    const Named& source = random.pick(keys.costCentres);
    const Date first = makeDate(year, 1, 1);
    const Date last = makeDate(year, 12, 31);
    const Date created{first.days + random.between(10, 200)};
    row[head("ID_ACCESS_LEVELS")] = source.level;
    row[head("BEZEICHNUNG")] = std::string{basis.purpose} + " " + std::to_string(year);
    row[head("JAHR")] = year;
    row[head("ID_KOSTENSTELLE")] = source.id;
    row[head("VERTEILBASIS")] = basis.name;
    row[head("GULTIG_VON")] = first;
    row[head("GULTIG_BIS")] = last;
    row[head("ABGESCHLOSSEN")] = last < options.baseDate;
    if (last < options.baseDate) row[head("ABSCHLUSSDATUM")] = laterDay(last, random.between(5, 60), options);
    row[head("ERSTELLER")] = random.pick(keys.users);
    if (random.chance(200)) row[head("BEMERKUNG")] = random.pick(remarks);
    row[head("ERSTELLUNGSDATUM")] = created;
    row[head("STORNODATUM")] = drawCancelDay(random, created, options);
}

void setSums(BulkInsert& row, const std::vector<Share>& shares, double amount)
{
    Share sum{};
    for (const Share& share : shares) {
        sum.value += share.value;
        sum.percent += share.percent;
        sum.amount += share.amount;
    }
    row[head("VERTEILBETRAG")] = amount;
    row[head("SUMME_BASIS")] = cents(sum.value);
    row[head("SUMME_ANTEIL")] = cents(sum.percent);
    row[head("UMGELEGT")] = cents(sum.amount);
}

void setLine(BulkInsert& row, Random& random, const Share& share, const Named& receiver, const Keys& keys)
{
    const Named& product = random.pick(keys.products);
    row[line("KOSTENSTELLE")] = receiver.number;
    row[line("KOSTENSTELLE_LANG")] = receiver.name;
    row[line("PRODUKT")] = product.number;
    row[line("PRODUKT_LANG")] = product.name;
    row[line("BASISWERT")] = share.value;
    row[line("ANTEIL")] = share.percent;
    row[line("BETRAG")] = share.amount;
    row[line("BEMERKUNG")] = random.chance(80) ? Variant{"Schätzwert"} : Variant{Null{}};
}

} // namespace

void writeDistributionKeys(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random{options.seed, distributionStream};
    const Keys keys{connection};
    BulkInsert key{connection, "BB_VERTEILSCHLUSSEL_KOPF", headColumns};
    BulkInsert position{connection, "BB_VERTEILSCHLUSSEL", lineColumns};
    for (std::int32_t id = 1; id <= options.records; ++id) {
        const Basis& basis = random.pick(bases);
        const double amount = cents(random.between(800.0, 65000.0));
        const std::vector<Share> shares = drawShares(random, basis, amount);
        key.clear();
        key[head("NUMMER")] = "VS-" + paddedNumber(id, 5);
        setHead(key, random, basis, keys, options);
        setSums(key, shares, amount);
        key.insert();
        for (std::size_t i = 0; i < shares.size(); ++i) {
            position[line("ID_BB_VERTEILSCHLUSSEL_KOPF")] = id;
            position[line("ZEILE")] = static_cast<std::int32_t>(i + 1);
            setLine(position, random, shares[i], keys.costCentres[i % keys.costCentres.size()], keys);
            position.insert();
        }
    }
}

} // namespace tamarok::database
