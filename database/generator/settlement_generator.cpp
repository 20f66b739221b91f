// The order of the random draws fixes the generated data: a seed must give the same rows in every version.
#include "settlement_generator.h"

#include <algorithm>
#include <array>

#include "record_names.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

using convert::roundHalfEven;
using profile::Kind;
using profile::Measure;

constexpr double daysToInvoice = 40.0;
constexpr double daysOfQuarter = 91.3;
constexpr double daysToClosing = 365.0;
constexpr std::int32_t cubicMetre = 1; // WARENEINHEIT.EINHEIT_ID

enum class ArticleGroup : std::uint8_t {
    Goods,
    Game ///< has a mark of origin and the reduced tax
};

struct ArticleKind {
    std::string_view number, text;
    double price; ///< euro per piece
    ArticleGroup group;
};
constexpr std::array<ArticleKind, 5> articleKinds{{
    {"A-100", "Christbaum", 14.0, ArticleGroup::Goods},
    {"A-200", "Reisig", 6.5, ArticleGroup::Goods},
    {"A-300", "Rehwild in der Decke", 4.2, ArticleGroup::Game},
    {"A-310", "Rotwild in der Decke", 3.6, ArticleGroup::Game},
    {"A-400", "Lagerplatzmiete", 45.0, ArticleGroup::Goods},
}};

double qualityFactor(std::string_view code)
{
    for (const profile::Quality& quality : profile::qualities)
        if (quality.code == code) return quality.factor;
    return 1.0;
}

double assortmentFactor(std::string_view assortment)
{
    if (assortment == "FU") return 2.1;
    return assortment == "LA" ? 0.97 : 1.0;
}

/// Euro per cubic metre of the line at the price level 1.
double timberPrice(const Kind& kind, const LogLine& line)
{
    const profile::Species& species = *line.species;
    switch (kind.measure) {
    case Measure::Stacked:
    case Measure::Weight: return species.isSoftwood() ? 36.0 : 47.0;
    case Measure::Firewood: return species.isSoftwood() ? 44.0 : 62.0;
    case Measure::Chips: return 29.0;
    case Measure::Poles: return 64.0;
    case Measure::Logs:
    case Measure::Mill:
    case Measure::Lots:
    case Measure::Tariff: break;
    }
    const auto& byStrength = species.isSoftwood() ? profile::softwoodByStrength : profile::hardwoodByStrength;
    return species.price * qualityFactor(line.quality) * byStrength[line.strength.value_or(0)] *
           assortmentFactor(line.assortment);
}

/// Price level of the quarter in which `date` lies, counted back from `base`; the oldest quarter for older dates.
double quarterLevel(Date date, Date base)
{
    const auto age = static_cast<std::size_t>((base.days - date.days) / daysOfQuarter);
    const std::size_t last = profile::priceByQuarter.size() - 1;
    return profile::priceByQuarter[last - std::min(age, last)];
}

Article drawArticle(Random& random)
{
    const ArticleKind& kind = random.pick(articleKinds);
    const bool isGame = kind.group == ArticleGroup::Game;
    Article article;
    article.number = kind.number;
    article.text = kind.text;
    article.quantity = roundHalfEven(random.between(1.0, 40.0), 1);
    article.price = kind.price;
    article.discount = random.chance(300) ? 5.0 : 0.0;
    article.tax = isGame ? 10.0 : 20.0;
    if (isGame) article.origin = "W" + std::to_string(random.between(10000, 99999));
    return article;
}

/// Sets the invoice's price and quantity of a line. The price is per unit of the quantity; a changed quantity
/// is 3 % below the measured one.
void priceInvoiceLine(const Kind& kind, double level, double currency, LogLine& line)
{
    double price = level * timberPrice(kind, line);
    if (line.quantity != 0.0) price *= line.volume / line.quantity;
    line.price[profile::invoiceVersion] = roundHalfEven(price * currency, 2);
    line.settledQuantity[profile::invoiceVersion] =
        line.isQuantityChanged ? roundHalfEven(line.quantity * 0.97, 2) : line.quantity;
}

/// Sets a settlement's price and quantity of a line, per cubic metre. The owner gets a share of the timber price.
void priceSettlementLine(const Kind& kind, std::size_t version, double level, double currency, LogLine& line)
{
    const double price = level * (version == profile::ownerVersion ? timberPrice(kind, line) : 1.0);
    line.price[version] = roundHalfEven(price * currency, 2);
    line.settledQuantity[version] = line.volume;
}

void priceLines(Delivery& delivery, const Document& document, double level)
{
    const double currency = document.isInEuro ? 1.0 : profile::nationalPerEuro;
    for (TimberList& list : delivery.lists) {
        for (LogLine& line : list.lines) {
            if (document.version == profile::invoiceVersion)
                priceInvoiceLine(*delivery.kind, level, currency, line);
            else
                priceSettlementLine(*delivery.kind, document.version, level, currency, line);
        }
    }
}

} // namespace

void SettlementGenerator::addDocuments(Delivery& delivery, Random& random) const
{
    const Date delivered = delivery.lists.back().date;
    const bool isInvoiced = options_.baseDate.days - delivered.days >= daysToInvoice && !random.chance(30);
    const bool isInEuro = !random.chance(40);
    const double jitter = random.between(0.95, 1.05);
    if (!isInvoiced) return;

    delivery.documents.push_back(drawInvoice(delivery, random));
    for (std::size_t version = 1; version < versionCount; ++version)
        if (random.chance(profile::services[version - 1].perMille))
            delivery.documents.push_back(drawSettlement(delivery, version, random));
    for (Document& document : delivery.documents) {
        document.isInEuro = isInEuro;
        if (document.version == profile::invoiceVersion) {
            priceLines(delivery, document, jitter * quarterLevel(delivered, options_.baseDate));
        } else {
            const profile::Service& service = profile::services[document.version - 1];
            priceLines(delivery, document, random.between(service.low, service.high));
        }
    }
    delivery.hasSurcharges = random.chance(100);
    delivery.goesByLorry = random.chance(300);
    delivery.goesByRail = delivery.goesByLorry && random.chance(150);
    if (random.chance(50))
        for (std::int32_t i = random.between(1, 3); i > 0; --i)
            delivery.articles.push_back(drawArticle(random));
}

Document SettlementGenerator::drawInvoice(const Delivery& delivery, Random& random) const
{
    Document document;
    const Kind& kind = *delivery.kind;
    document.name = documentName(profile::invoiceVersion, delivery.lists.back().date, delivery.number);
    document.partner = random.pick(keys_.partners(kind.customers));
    // Households buy firewood (Brennholz) without a contract.
    if (kind.customers != "Brennholz" && random.chance(250)) drawContract(document, random);
    document.unit = kind.unit;
    // Only single logs, measured in the forest (DSART 1) or at the mill (5), have a guide price.
    if (kind.dsart == 1 || kind.dsart == 5) document.guideFigure = static_cast<double>(random.between(82, 118));
    document.bookingNumber = kind.bookingNumber;
    document.chapter = kind.bookingNumber == 1 ? 1 : 2;
    document.title = kind.bookingNumber == 1 ? 1 : 3;
    drawDates(document, delivery.lists.back().date, random);
    return document;
}

Document SettlementGenerator::drawSettlement(const Delivery& delivery, std::size_t version, Random& random) const
{
    const profile::Service& service = profile::services[version - 1];
    Document document;
    document.version = version;
    document.name = documentName(version, delivery.lists.back().date, delivery.number);
    document.partner =
        version == profile::ownerVersion ? delivery.lists.front().owner : random.pick(keys_.partners(service.partners));
    if (version == profile::carrierVersion && random.chance(500)) drawContract(document, random);
    document.unit = cubicMetre;
    document.bookingNumber = service.bookingNumber;
    document.chapter = service.chapter;
    document.title = service.title;
    drawDates(document, delivery.lists.back().date, random);
    return document;
}

/// The partner of a contract is the partner of its document.
void SettlementGenerator::drawContract(Document& document, Random& random) const
{
    const auto& contracts = keys_.contracts(static_cast<std::int32_t>(document.version));
    const MasterKeys::Contract& contract = random.pick(contracts);
    document.contract = contract.name;
    document.partner = contract.partner;
}

/// A payment that would lie behind the base date is not made yet.
void SettlementGenerator::drawDates(Document& document, Date delivered, Random& random) const
{
    document.date = Date{delivered.days + random.between(7, 28)};
    const Date paid{document.date.days + random.between(8, 50)};
    if (paid <= options_.baseDate) document.paid = paid;
    document.isClosed = options_.baseDate.days - document.date.days > daysToClosing;
}

} // namespace tamarok::database
