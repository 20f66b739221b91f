#include "database/settlement_generator.h"

#include <algorithm>
#include <array>

#include "database/line_measurement.h"

namespace tamarok::database {
namespace {

using profile::Kind;
using profile::Measure;

constexpr double daysToInvoice = 40.0;
constexpr double daysOfQuarter = 91.3;
constexpr std::int32_t cubicMetre = 1; // WARENEINHEIT.EINHEIT_ID

struct ArticleKind {
    std::string_view number, text;
    double price;
    bool game; ///< sold with a mark of origin
};
constexpr std::array<ArticleKind, 5> articleKinds{{
    {"A-100", "Christbaum", 14.0, false},
    {"A-200", "Reisig", 6.5, false},
    {"A-300", "Rehwild in der Decke", 4.2, true},
    {"A-310", "Rotwild in der Decke", 3.6, true},
    {"A-400", "Lagerplatzmiete", 45.0, false},
}};

std::string documentName(std::size_t version, Date date, std::int64_t number)
{
    std::string digits = std::to_string(number);
    if (digits.size() < 6) digits.insert(0, 6 - digits.size(), '0');
    return std::string{profile::versions[version]} + "-" + std::to_string(toCivil(date).year).substr(2) + "-" + digits;
}

double qualityFactor(std::string_view code)
{
    for (const profile::Quality& quality : profile::qualities)
        if (quality.code == code) return quality.factor;
    return 1.0;
}

/// Euro a cubic metre of the line at the price level 1.
double timberPrice(const Kind& kind, const LogLine& line)
{
    const profile::Species& species = *line.species;
    switch (kind.measure) {
    case Measure::Stacked:
    case Measure::Weight: return species.softwood ? 36.0 : 47.0;
    case Measure::Firewood: return species.softwood ? 44.0 : 62.0;
    case Measure::Chips: return 29.0;
    case Measure::Poles: return 64.0;
    case Measure::Logs:
    case Measure::Mill:
    case Measure::Lots:
    case Measure::Tariff: break;
    }
    const auto& byStrength = species.softwood ? profile::softwoodByStrength : profile::hardwoodByStrength;
    const double assortment = line.assortment == "FU" ? 2.1 : line.assortment == "LA" ? 0.97 : 1.0;
    return species.price * qualityFactor(line.quality) * byStrength[line.strength.value_or(0)] * assortment;
}

double quarterLevel(Date date, Date base)
{
    const auto age = static_cast<std::size_t>((base.days - date.days) / daysOfQuarter);
    const std::size_t last = profile::priceByQuarter.size() - 1;
    return profile::priceByQuarter[last - std::min(age, last)];
}

Article drawArticle(Random& random)
{
    const ArticleKind& kind = random.pick(articleKinds);
    Article article;
    article.number = kind.number;
    article.text = kind.text;
    article.quantity = rounded(random.between(1.0, 40.0), 1);
    article.price = kind.price;
    article.discount = random.chance(300) ? 5.0 : 0.0;
    article.tax = kind.game ? 10.0 : 20.0;
    if (kind.game) article.origin = "W" + std::to_string(random.between(10000, 99999));
    return article;
}

} // namespace

void SettlementGenerator::settle(Delivery& delivery, Random& random) const
{
    const Date delivered = delivery.lists.back().date;
    const bool invoiced = options_.baseDate.days - delivered.days >= daysToInvoice && !random.chance(30);
    const bool euro = !random.chance(40);
    const double jitter = random.between(0.95, 1.05);
    if (!invoiced) return;

    delivery.documents.push_back(invoice(delivery, random));
    for (std::size_t version = 1; version < versionCount; ++version)
        if (random.chance(profile::services[version - 1].perMille))
            delivery.documents.push_back(settlement(delivery, version, random));
    for (Document& document : delivery.documents) {
        document.euro = euro;
        const auto& service = profile::services[document.version == 0 ? 0 : document.version - 1];
        price(delivery, document,
              document.version == 0 ? jitter * quarterLevel(delivered, options_.baseDate)
                                    : random.between(service.low, service.high));
    }
    delivery.surcharges = random.chance(100);
    delivery.lorry = random.chance(300);
    delivery.railway = delivery.lorry && random.chance(150);
    if (random.chance(50))
        for (std::int32_t i = random.between(1, 3); i > 0; --i)
            delivery.articles.push_back(drawArticle(random));
}

Document SettlementGenerator::invoice(const Delivery& delivery, Random& random) const
{
    Document document;
    const Kind& kind = *delivery.kind;
    document.name = documentName(0, delivery.lists.back().date, delivery.number);
    document.partner = random.pick(keys_.partners(kind.customers));
    if (kind.customers != "Brennholz" && random.chance(250)) {
        const MasterKeys::Contract& contract = random.pick(keys_.contracts(0));
        document.contract = contract.name;
        document.partner = contract.partner;
    }
    document.unit = kind.unit;
    if (kind.dsart == 1 || kind.dsart == 5) document.guideFigure = static_cast<double>(random.between(82, 118));
    document.bookingNumber = kind.bookingNumber;
    document.chapter = kind.bookingNumber == 1 ? 1 : 2;
    document.title = kind.bookingNumber == 1 ? 1 : 3;
    date(document, delivery.lists.back().date, random);
    return document;
}

Document SettlementGenerator::settlement(const Delivery& delivery, std::size_t version, Random& random) const
{
    const profile::Service& service = profile::services[version - 1];
    Document document;
    document.version = version;
    document.name = documentName(version, delivery.lists.back().date, delivery.number);
    document.partner = version == 5 ? delivery.lists.front().owner : random.pick(keys_.partners(service.partners));
    if (version == 1 && random.chance(500)) {
        const MasterKeys::Contract& contract = random.pick(keys_.contracts(1));
        document.contract = contract.name;
        document.partner = contract.partner;
    }
    document.unit = cubicMetre;
    document.bookingNumber = service.bookingNumber;
    document.chapter = service.chapter;
    document.title = service.title;
    date(document, delivery.lists.back().date, random);
    return document;
}

void SettlementGenerator::date(Document& document, Date delivered, Random& random) const
{
    document.date = Date{delivered.days + random.between(7, 28)};
    const Date paid{document.date.days + random.between(8, 50)};
    if (paid <= options_.baseDate) document.paid = paid;
    document.closed = options_.baseDate.days - document.date.days > 365.0;
}

void SettlementGenerator::price(Delivery& delivery, const Document& document, double level) const
{
    const Kind& kind = *delivery.kind;
    const double currency = document.euro ? 1.0 : profile::nationalPerEuro;
    const bool share = document.version == 5; // the owner gets a share of the timber price
    for (TimberList& list : delivery.lists) {
        for (LogLine& line : list.lines) {
            double perCubicMetre = level * (document.version == 0 || share ? timberPrice(kind, line) : 1.0);
            double amount = line.volume;
            if (document.version == 0) {
                amount = line.quantityChanged ? rounded(line.quantity * 0.97, 2) : line.quantity;
                if (line.quantity != 0.0) perCubicMetre *= line.volume / line.quantity;
            }
            line.price[document.version] = rounded(perCubicMetre * currency, 2);
            line.amount[document.version] = amount;
        }
    }
}

} // namespace tamarok::database
