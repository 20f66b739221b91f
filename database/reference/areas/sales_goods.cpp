#include <array>
#include <span>

#include "areas/sales_parts.h"

#include "tamarok/convert.h"

namespace tamarok::database::sales {
namespace {

constexpr std::uint64_t goodsStream = 1'000'000'000'020;
constexpr std::uint64_t stockStream = 1'000'000'000'021;

/// WARENKATALOG.
constexpr std::array goodsColumns{wholeColumn("ART_ID"),
                                  wholeColumn("NUMMER"),
                                  textColumn("BEZEICH1"),
                                  textColumn("BEZEICH2"),
                                  wholeColumn("GRUPPE_ID"),
                                  flagColumn("FAKTURA"),
                                  wholeColumn("MATERIALART"),
                                  wholeColumn("ID_FORMULA"),
                                  numberColumn("EINHPREIS"),
                                  flagColumn("DISABLE"),
                                  textColumn("LAGERORT"),
                                  numberColumn("MINDESTBESTAND"),
                                  dayColumn("GUELTIG_AB"),
                                  textColumn("BEMERKUNG"),
                                  wholeColumn("ID_ACCESS_LEVELS"),
                                  wholeColumn("ID_PERSONAL"),
                                  wholeColumn("ID_WARENEINHEIT"),
                                  wholeColumn("ID_LEISTUNGSART"),
                                  wholeColumn("ID_KOSTENART"),
                                  wholeColumn("ID_PRODUKT"),
                                  wholeColumn("ID_WALDORT"),
                                  wholeColumn("ID_BB_T_BESTEUERUNGSART"),
                                  wholeColumn("ID_BB_T_MEHRWERTSTEUER1"),
                                  wholeColumn("ID_BB_T_MEHRWERTSTEUER2"),
                                  wholeColumn("ID_BB_T_MEHRWERTSTEUER_HERLEITUNG")};

/// LAGER_ARTIKEL_MENGE.
constexpr std::array stockColumns{wholeColumn("ID_WARENKATALOG"), numberColumn("MENGE"), numberColumn("RESERVIERT"),
                                  dayColumn("LETZTER_ZUGANG"), dayColumn("LETZTER_ABGANG")};

// Names and sizes of the families below.
constexpr std::array<std::string_view, 13> plants{"Fichte",       "Weißtanne",   "Lärche",       "Kiefer", "Douglasie",
                                                  "Rotbuche",     "Stieleiche",  "Traubeneiche", "Linde",  "Bergahorn",
                                                  "Vogelkirsche", "Schwarzerle", "Hainbuche"};
constexpr std::array<std::string_view, 6> plantSizes{"1+1, 15-30 cm",       "2+1, 30-50 cm",
                                                     "2+2, 50-80 cm",       "Container, 15-25 cm",
                                                     "Container, 30-50 cm", "Heister, 120-150 cm"};
constexpr std::array<std::string_view, 6> fences{"Zaunpfosten Lärche", "Zaunpfosten Robinie", "Zaunpfosten Eiche",
                                                 "Hordengatter",       "Wildschutzzaun",      "Weidetor"};
constexpr std::array<std::string_view, 5> fenceSizes{"1,80 m", "2,00 m", "2,20 m", "2,50 m", "3,00 m"};
constexpr std::array<std::string_view, 7> firewood{"Brennholz Buche",   "Brennholz Eiche",  "Brennholz Esche",
                                                   "Brennholz Birke",   "Brennholz Fichte", "Brennholz Kiefer",
                                                   "Brennholz gemischt"};
constexpr std::array<std::string_view, 5> firewoodSizes{"25 cm ofenfertig", "33 cm ofenfertig", "50 cm gespalten",
                                                        "1 m gespalten", "lang, gerückt"};
constexpr std::array<std::string_view, 5> game{"Rehwild", "Rotwild", "Gamswild", "Schwarzwild", "Feldhase"};
constexpr std::array<std::string_view, 5> gameCuts{"Rücken", "Keule", "Schulter", "Ragout, 1 kg", "Wurst, 1 kg"};
constexpr std::array<std::string_view, 4> trees{"Nordmanntanne", "Christbaum Fichte", "Blaufichte", "Edeltanne"};
constexpr std::array<std::string_view, 6> treeSizes{"bis 1,25 m",      "1,25 bis 1,75 m", "1,75 bis 2,25 m",
                                                    "2,25 bis 3,00 m", "über 3,00 m",     "Schmuckreisig, Bund"};
constexpr std::array<std::string_view, 6> services{"Pflanzung",     "Jungwuchspflege", "Läuterung",
                                                   "Zaunkontrolle", "Forstaufsicht",   "Bestandesinventur"};
constexpr std::array<std::string_view, 3> serviceSizes{"einfaches Gelände", "mittleres Gelände", "Steilgelände"};
constexpr std::array<std::string_view, 6> supplies{"Sägekette",  "Kettenöl biologisch", "Markierfarbe",
                                                   "Wuchshülle", "Verbissschutzmittel", "Nummernplättchen"};
constexpr std::array<std::string_view, 3> supplySizes{"klein", "mittel", "groß"};

/// A family of articles: the combinations of names and sizes, with the keys that they share.
struct Family {
    std::int32_t group;                       ///< WARENGRUPPE.GRUPPE_ID
    std::int32_t unit;                        ///< WARENEINHEIT.EINHEIT_ID
    std::span<const std::string_view> names;  ///< BEZEICH1
    std::span<const std::string_view> sizes;  ///< BEZEICH2
    double price, pricePerSize;               ///< euro; each further size costs more
    std::int32_t material;                    ///< MATERIALART: 1 material of the stock
    std::int32_t service, cost, product, tax; ///< LEISTUNGSART, KOSTENART, PRODUKT, BB_T_MEHRWERTSTEUER
    std::string_view place;                   ///< LAGERORT, empty for none
};
constexpr std::array<Family, 7> families{
    {{1, 3, plants, plantSizes, 0.6, 0.25, 1, 3, 4, 2, 2, "Pflanzgarten Grünau"},
     {2, 3, fences, fenceSizes, 6.4, 2.1, 1, 3, 5, 2, 1, "Lager Lindwald"},
     {3, 2, firewood, firewoodSizes, 68.0, 9.0, 0, 2, 1, 1, 2, "Holzhof Tannried"},
     {5, 3, game, gameCuts, 18.0, 12.5, 0, 4, 2, 5, 3, "Wildkammer Moosbach"},
     {6, 3, trees, treeSizes, 14.0, 8.5, 0, 3, 1, 1, 2, "Holzhof Tannried"},
     {7, 21, services, serviceSizes, 380.0, 145.0, 0, 3, 3, 3, 1, ""},
     {8, 3, supplies, supplySizes, 12.9, 9.6, 1, 2, 3, 6, 1, "Magazin Hochstein"}}};

constexpr std::array<std::string_view, 3> remarks{"auf Bestellung", "nur solange der Vorrat reicht",
                                                  "Abholung im Revier"};

/// Inserts an article. @param index  from 0: families take turns, and each counts through its names and sizes
void insertArticle(BulkInsert& goods, Random& random, const Keys& keys, std::int32_t id, std::size_t index,
                   const ReferenceOptions& options)
{
    const Family& family = families.at(index % families.size());
    const std::size_t place = index / families.size();
    const std::size_t size = place / family.names.size() % family.sizes.size();
    const std::size_t lot = place / (family.names.size() * family.sizes.size());
    std::string description{family.sizes[size]};
    if (lot > 0) description += ", Partie " + std::to_string(lot + 1);
    const double price = (family.price + family.pricePerSize * static_cast<double>(size)) * random.between(0.9, 1.15);
    insertRow(goods, {id,
                      family.group * 10000 + static_cast<std::int32_t>(place) + 1,
                      family.names[place % family.names.size()],
                      description,
                      family.group,
                      random.chance(950),
                      family.material,
                      family.group == 3 ? Variant{4} : Variant{Null{}},
                      quarters(price),
                      random.chance(30),
                      family.place.empty() ? Variant{Null{}} : Variant{family.place},
                      family.material == 1 ? Variant{static_cast<double>(random.between(1, 40) * 5)} : Variant{Null{}},
                      drawDay(random, options),
                      orNull(random, 700, random.pick(remarks)),
                      pickId(random, keys.districts, 100),
                      pickId(random, keys.contractors, 50),
                      family.unit,
                      family.service,
                      family.cost,
                      family.product,
                      pickId(random, keys.locations, 300),
                      random.between(1, 3),
                      family.tax,
                      orNull(random, 50, 1),
                      random.between(1, 3)});
}

/// At most half of a stock is reserved.
void writeStock(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random{options.seed, stockStream};
    BulkInsert stock{connection, "LAGER_ARTIKEL_MENGE", stockColumns};
    const Ids articles = idsOf(connection, "SELECT TOP " + std::to_string(options.records) +
                                               " ART_ID FROM WARENKATALOG ORDER BY ART_ID");
    for (const std::int32_t article : articles) {
        const double quantity = random.tenths(50, 6000);
        const Date received = drawDay(random, options);
        insertRow(stock, {article, quantity, tenth(quantity * random.unit() * 0.5), received,
                          orNull(random, 100, laterDay(received, random.between(1, 90), options))});
    }
}

} // namespace

void writeGoods(ado::Connection& connection, const ReferenceOptions& options, const Keys& keys)
{
    Random random{options.seed, goodsStream};
    const std::int32_t existing = idsOf(connection, "SELECT COUNT(*) FROM WARENKATALOG").at(0);
    std::int32_t lastId = idsOf(connection, "SELECT ISNULL(MAX(ART_ID),0) FROM WARENKATALOG").at(0);
    BulkInsert goods{connection, "WARENKATALOG", goodsColumns};
    std::size_t index = 0;
    for (std::int32_t row = existing; row < options.records; ++row)
        insertArticle(goods, random, keys, ++lastId, index++, options);
    writeStock(connection, options);
}

std::vector<Article> readArticles(ado::Connection& connection)
{
    std::vector<Article> articles;
    constexpr std::string_view query =

        "SELECT WARENKATALOG.ART_ID, WARENKATALOG.NUMMER, WARENKATALOG.BEZEICH1, WARENKATALOG.BEZEICH2, "
        "WARENKATALOG.EINHPREIS, WARENGRUPPE.GRUPPE_ID, WARENGRUPPE.EINHEIT_ID, WARENGRUPPE.MWST "
        "FROM WARENKATALOG INNER JOIN WARENGRUPPE ON WARENGRUPPE.GRUPPE_ID = WARENKATALOG.GRUPPE_ID "
        "WHERE WARENKATALOG.FAKTURA = 1 AND ISNULL(WARENKATALOG.DISABLE,0) = 0 AND WARENKATALOG.EINHPREIS IS NOT NULL "
        "AND WARENGRUPPE.EINHEIT_ID IS NOT NULL AND WARENGRUPPE.MWST IS NOT NULL "
        "ORDER BY WARENKATALOG.ART_ID";
    for (const std::vector<Variant>& row : rowsOf(connection, query))
        articles.push_back({convert::toLong(row.at(0)), convert::toText(row.at(1)),
                            convert::toText(row.at(2)) + ", " + convert::toText(row.at(3)),
                            convert::toDouble(row.at(4)), convert::toLong(row.at(5)), convert::toLong(row.at(6)),
                            convert::toDouble(row.at(7))});
    return articles;
}

double drawQuantity(Random& random, const Article& article)
{
    constexpr std::int32_t plantsGroup = 1;
    constexpr std::int32_t firewoodGroup = 3;
    constexpr std::int32_t gameGroup = 5;
    constexpr std::int32_t servicesGroup = 7;
    if (article.group == plantsGroup) return static_cast<double>(random.between(1, 40) * 50);
    if (article.group == firewoodGroup) return static_cast<double>(random.between(2, 40)) / 2.0;
    if (article.group == gameGroup) return static_cast<double>(random.between(1, 12));
    if (article.group == servicesGroup) return static_cast<double>(random.between(1, 24)) / 2.0;
    return static_cast<double>(random.between(1, 60));
}

} // namespace tamarok::database::sales
