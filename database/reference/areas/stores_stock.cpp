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

/// Where the articles of a group (WARENGRUPPE.NUMMER) are stored, and the number of the cost type that bears them.
struct Storage {
    std::string_view group, place, costType;
};
constexpr std::array<Storage, 4> storages{{
    {"100", "Forstgarten, Kühlraum", "5100"},
    {"200", "Bauhof, Freilager", "5200"},
    {"920", "Tanklager", "5300"},
    {"930", "Bauhof, Freilager", "5200"},
}};
constexpr std::string_view otherCostType = "5300";
constexpr std::array<std::string_view, 3> shelves{"Bauhof, Regal A", "Bauhof, Regal B", "Gerätehalle"};
constexpr std::array<std::string_view, 3> remarks{"Sammelbestellung", "Eilbedarf", "Gebinde beschädigt"};

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
        for (const auto& row : rowsOf(connection, "SELECT NUMBER, ID FROM KOSTENART WHERE TABLE_NAME = 'FORST' "
                                                  "ORDER BY ID"))
            costTypes.emplace(convert::toText(row[0]), convert::toLong(row[1]));
        for (const auto& row : rowsOf(connection, "SELECT TOP 4 ID, ID_ACCESS_LEVELS FROM KOSTENSTELLE "
                                                  "WHERE ID_ACCESS_LEVELS IS NOT NULL ORDER BY ID"))
            stores.push_back({convert::toLong(row[0]), convert::toLong(row[1])});
    }

    std::vector<std::int32_t> lines, suppliers, recipients;
    std::map<std::string, std::int32_t> costTypes; ///< KOSTENART.ID by number
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

/// Each store keeps a few articles, so that their movements follow each other, and shares half of them with another.
const Article& drawArticle(Random& random, const Keys& keys, const Store& store)
{
    constexpr std::uint32_t articlesOfStore = 8;
    const auto first = static_cast<std::size_t>(store.costCentre) * articlesOfStore / 2;
    return keys.articles[(first + random.below(articlesOfStore)) % keys.articles.size()];
}

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

void setStorage(BulkInsert& row, Random& random, const Keys& keys, const Article& article)
{
    const auto* const storage = std::ranges::find(storages, std::string_view{article.group}, &Storage::group);
    const bool isFound = storage != storages.end();
    const auto costType = keys.costTypes.find(std::string{isFound ? storage->costType : otherCostType});
    row[at("LAGERORT")] = isFound ? storage->place : random.pick(shelves);
    if (costType != keys.costTypes.end()) row[at("ID_KOSTENART")] = costType->second;
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
    if (random.chance(100)) row[at("BEMERKUNG")] = random.pick(remarks);
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
        const Store& store = random.pick(keys.stores);
        const Article& article = drawArticle(random, keys, store);
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
        setStorage(row, random, keys, article);
        row[at("BUCHUNGSDATUM")] = day;
        row[at("ERSTELLUNGSDATUM")] = laterDay(day, random.between(0, 2), options);
        row.insert();
    }
}

} // namespace tamarok::database
