#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "areas/stores.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

constexpr std::uint64_t stockStream = 5'000'000'000'103;

constexpr std::array columns{
    wholeColumn("ID_ACCESS_LEVELS"), wholeColumn("ID_BB_BELEGE"),
    wholeColumn("ID_WARENKATALOG"),  wholeColumn("ID_WARENEINHEIT"),
    wholeColumn("ID_KOSTENSTELLE"),  wholeColumn("ID_KOSTENART"),
    wholeColumn("ID_PERSONAL"),      textColumn("BUCHUNGSART"),
    dayColumn("BUCHUNGSDATUM"),      numberColumn("MENGE"),
    numberColumn("ZUGANG"),          numberColumn("ABGANG"),
    numberColumn("PREIS"),           numberColumn("WERT"),
    textColumn("LAGERORT"),          textColumn("CHARGE"),
    textColumn("LIEFERSCHEIN"),      flagColumn("INVENTUR"),
    textColumn("BEMERKUNG"),         dayColumn("ERSTELLUNGSDATUM"),
};

consteval std::size_t at(std::string_view name)
{
    return placeOf(columns, name);
}

/// Where the articles of a group (WARENGRUPPE.NUMMER) are stored.
struct Storage {
    std::string_view group, place;
};
constexpr std::array<Storage, 4> storages{{
    {"100", "Forstgarten, Kühlraum"},
    {"200", "Bauhof, Freilager"},
    {"920", "Tanklager"},
    {"930", "Bauhof, Freilager"},
}};
constexpr std::array<std::string_view, 3> shelves{"Bauhof, Regal A", "Bauhof, Regal B", "Gerätehalle"};

/// An article of the stock (WARENKATALOG).
struct Article {
    std::int32_t id;
    double price;
    Variant unit; ///< WARENEINHEIT.EINHEIT_ID
    std::string group;
};

/// A cost centre with the unit whose stock it keeps.
struct Store {
    std::int32_t costCentre, level;
};

/// The keys to which movements refer.
struct Keys {
    explicit Keys(ado::Connection& connection) :
        lines{idsOf(connection, "SELECT ID FROM BB_BELEGE ORDER BY ID")},
        costTypes{idsOf(connection, "SELECT ID FROM KOSTENART WHERE LAGERBUCHUNG = 1 AND TABLE_NAME = 'FORST' "
                                    "ORDER BY ID")},
        suppliers{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE GRUPPE = 'Handel' ORDER BY ID_PERSONAL")},
        recipients{
            idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE GRUPPE = 'Unternehmer' ORDER BY ID_PERSONAL")}
    {
        for (const auto& row : rowsOf(
                 connection, "SELECT WARENKATALOG.ART_ID, WARENKATALOG.EINHPREIS, "
                             "WARENGRUPPE.EINHEIT_ID, WARENGRUPPE.NUMMER FROM WARENKATALOG INNER JOIN WARENGRUPPE ON "
                             "WARENGRUPPE.GRUPPE_ID = WARENKATALOG.GRUPPE_ID WHERE "
                             "WARENKATALOG.MATERIALART = 1 AND WARENKATALOG.EINHPREIS > 0 "
                             "ORDER BY WARENKATALOG.ART_ID"))
            articles.push_back({convert::toLong(row[0]), convert::toDouble(row[1]), row[2], convert::toText(row[3])});
        for (const auto& row : rowsOf(connection, "SELECT ID, ID_ACCESS_LEVELS FROM KOSTENSTELLE "
                                                  "WHERE ID_ACCESS_LEVELS IS NOT NULL ORDER BY ID"))
            stores.push_back({convert::toLong(row[0]), convert::toLong(row[1])});
    }

    std::vector<std::int32_t> lines, costTypes, suppliers, recipients;
    std::vector<Article> articles;
    std::vector<Store> stores;
};

/// The stock of each article and store, so that nothing is taken that is not there.
using Stock = std::map<std::pair<std::int32_t, std::int32_t>, double>;

enum class Booking : std::uint8_t { receipt, issue, stocktaking };

struct Movement {
    Booking booking;
    double quantity; ///< negative where material leaves the stock
};

/// Whole units: what a purchase of 60 to 2500 euro buys.
double drawPurchase(Random& random, double price)
{
    return std::max(1.0, std::floor(random.between(60.0, 2500.0) / price));
}

Movement drawMovement(Random& random, const Article& article, double inStock)
{
    constexpr double leastStock = 5.0;
    if (inStock < leastStock) return {Booking::receipt, drawPurchase(random, article.price)};
    if (random.chance(40)) return {Booking::stocktaking, -std::ceil(inStock * random.between(0.005, 0.02))};
    if (random.chance(350)) return {Booking::receipt, drawPurchase(random, article.price)};
    return {Booking::issue, -std::min(inStock, std::ceil(inStock * random.between(0.05, 0.6)))};
}

std::string_view drawPlace(Random& random, const Article& article)
{
    const auto* const storage = std::ranges::find(storages, std::string_view{article.group}, &Storage::group);
    return storage != storages.end() ? storage->place : random.pick(shelves);
}

void setMovement(BulkInsert& row, Random& random, const Movement& movement, const Article& article)
{
    constexpr std::array<std::string_view, 3> words{"Zugang", "Abgang", "Inventur"};
    const double price = cents(article.price * random.between(0.95, 1.08));
    const bool enters = movement.quantity > 0.0;
    row[at("ID_WARENKATALOG")] = article.id;
    row[at("ID_WARENEINHEIT")] = article.unit;
    row[at("BUCHUNGSART")] = words.at(static_cast<std::size_t>(movement.booking));
    row[at("INVENTUR")] = movement.booking == Booking::stocktaking;
    row[at("MENGE")] = movement.quantity;
    row[at("ZUGANG")] = enters ? movement.quantity : 0.0;
    row[at("ABGANG")] = enters ? 0.0 : -movement.quantity;
    row[at("PREIS")] = price;
    row[at("WERT")] = cents(movement.quantity * price);
}

void setPartner(BulkInsert& row, Random& random, Booking booking, const Keys& keys)
{
    if (booking == Booking::stocktaking) {
        row[at("BEMERKUNG")] = "Fehlmenge laut Zählung";
        return;
    }
    const bool isReceipt = booking == Booking::receipt;
    row[at("ID_PERSONAL")] = pickId(random, isReceipt ? keys.suppliers : keys.recipients, 20);
    if (!isReceipt) return;
    row[at("CHARGE")] = "C" + std::to_string(random.between(1000, 9999));
    row[at("LIEFERSCHEIN")] = "LS" + std::to_string(random.between(100000, 999999));
}

/// Movements follow each other in time, from the first to the last day of the data.
Date dayOfMovement(const ReferenceOptions& options, std::int32_t number)
{
    constexpr std::int64_t daysOfThreeYears = 1095;
    const std::int64_t daysAfter = daysOfThreeYears * number / std::max(options.records, 1);
    return Date{dayOf(options.baseDate).days - static_cast<double>(daysOfThreeYears - daysAfter)};
}

} // namespace

void writeStock(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random{options.seed, stockStream};
    const Keys keys{connection};
    Stock stock;
    BulkInsert row{connection, "BB_BELEGE_LAGER", columns};
    for (std::int32_t number = 1; number <= options.records; ++number) {
        const Article& article = random.pick(keys.articles);
        const Store& store = random.pick(keys.stores);
        double& inStock = stock[{article.id, store.costCentre}];
        const Movement movement = drawMovement(random, article, inStock);
        const Date day = dayOfMovement(options, number);
        inStock += movement.quantity;
        row.clear();
        setMovement(row, random, movement, article);
        setPartner(row, random, movement.booking, keys);
        row[at("ID_ACCESS_LEVELS")] = store.level;
        row[at("ID_KOSTENSTELLE")] = store.costCentre;
        row[at("ID_BB_BELEGE")] = pickId(random, keys.lines);
        row[at("ID_KOSTENART")] = pickId(random, keys.costTypes, 20);
        row[at("LAGERORT")] = drawPlace(random, article);
        row[at("BUCHUNGSDATUM")] = day;
        row[at("ERSTELLUNGSDATUM")] = laterDay(day, random.between(0, 2), options);
        row.insert();
    }
}

} // namespace tamarok::database
