#include "areas/receipts_sales.h"

#include <algorithm>
#include <array>

#include "areas/areas.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

using convert::roundHalfEven;

constexpr std::array saleFields{
    RecordField<TimberSale>{"ID_BB_HAB", &TimberSale::line},
    RecordField<TimberSale>{"ID_BB_FAKTURA_KOPF", &TimberSale::document},
    RecordField<TimberSale>{"ANGEBOT", &TimberSale::isOffer},
    RecordField<TimberSale>{"DATUM", &TimberSale::date},
    RecordField<TimberSale>{"GULTIG_BIS", &TimberSale::validUntil},
    RecordField<TimberSale>{"MENGE", &TimberSale::quantity},
    RecordField<TimberSale>{"PREIS", &TimberSale::price},
    RecordField<TimberSale>{"ZARP1", &TimberSale::surcharge1},
    RecordField<TimberSale>{"ZARP2", &TimberSale::surcharge2},
    RecordField<TimberSale>{"ZARP3", &TimberSale::surcharge3},
    RecordField<TimberSale>{"NETTO", &TimberSale::net},
    RecordField<TimberSale>{"MWST_SATZ", &TimberSale::taxRate},
    RecordField<TimberSale>{"MWST", &TimberSale::tax},
    RecordField<TimberSale>{"BRUTTO", &TimberSale::gross},
    RecordField<TimberSale>{"ZAHLUNGSZIEL", &TimberSale::daysToPay},
    RecordField<TimberSale>{"SKONTO", &TimberSale::discount},
    RecordField<TimberSale>{"ID_KUNDE", &TimberSale::customer},
    RecordField<TimberSale>{"ID_LIEFERANT", &TimberSale::supplier},
    RecordField<TimberSale>{"ID_BB_T_VERTRAG", &TimberSale::contract},
    RecordField<TimberSale>{"ID_BB_T_ZAHLART", &TimberSale::payment},
    RecordField<TimberSale>{"ID_BB_T_ABGABEART_VERWENDUNG", &TimberSale::use},
    RecordField<TimberSale>{"ID_BB_T_VERKAUFSVERFAHREN", &TimberSale::procedure},
    RecordField<TimberSale>{"ID_BB_T_VERKAUFSART", &TimberSale::kind},
    RecordField<TimberSale>{"ID_BB_T_ERFULLUNGSORT", &TimberSale::place},
    RecordField<TimberSale>{"ID_BB_T_PREIS_RINDE", &TimberSale::bark},
    RecordField<TimberSale>{"ID_BB_T_PREIS_RUCKEN", &TimberSale::extraction},
    RecordField<TimberSale>{"ID_BB_T_PREIS_GRUPPE", &TimberSale::priceGroup},
    RecordField<TimberSale>{"ID_BB_T_MEHRWERTSTEUER", &TimberSale::taxKey},
    RecordField<TimberSale>{"ID_BB_HAUSHALT", &TimberSale::budget},
    RecordField<TimberSale>{"ID_ZARP1", &TimberSale::surchargeKey1},
    RecordField<TimberSale>{"ID_ZARP2", &TimberSale::surchargeKey2},
    RecordField<TimberSale>{"ID_ZARP3", &TimberSale::surchargeKey3},
};

/// Sales procedure with the kind of sale and the place of fulfilment that go with it.
struct Procedure {
    std::string_view procedure, kind, place;
    std::uint32_t weight;
};

constexpr std::array procedures{
    Procedure{"FH", "WS", "WS", 45}, Procedure{"FH", "WK", "WK", 15}, Procedure{"ME", "MG", "LP", 18},
    Procedure{"VE", "MG", "LP", 4},  Procedure{"VV", "WS", "WS", 12}, Procedure{"FH", "SW", "WS", 6},
};

/// A surcharge, or with negative amounts a deduction, in tenths of a per cent of the price.
struct SurchargeRange {
    std::string_view code;
    std::int32_t low, high;
};

constexpr std::array surchargeRanges{
    std::array{SurchargeRange{"ZT", 8, 20}, SurchargeRange{"MZ", 10, 30}},
    std::array{SurchargeRange{"EZ", 15, 40}, SurchargeRange{"LZ", 5, 25}},
    std::array{SurchargeRange{"KA", -220, -80}, SurchargeRange{"FA", -40, -15}},
};

/// Returns the ID of the first billing record from a day on that is an offer or an invoice, else of the last one of
/// that kind; 0 if there is none.
std::int32_t documentOf(bool isOffer, Date day, const ReferenceOptions& options)
{
    // The days ascend by ID: halve the range of IDs in which the first one from that day on lies.
    std::int32_t first = 1;
    for (std::int32_t end = options.records + 1; first < end;) {
        const std::int32_t middle = first + (end - first) / 2;
        if (dayOfBillingRecord(middle, options) < day)
            first = middle + 1;
        else
            end = middle;
    }
    for (std::int32_t id = first; id <= options.records; ++id)
        if (isOfferRecord(id) == isOffer) return id;
    for (std::int32_t id = options.records; id > 0; --id)
        if (isOfferRecord(id) == isOffer) return id;
    return 0;
}

std::string_view budgetOf(const TimberProduct& product)
{
    return product.bidAssortment == "IN" ? "1002/112" : "1001/111";
}

} // namespace

TimberSales::TimberSales(ado::Connection& connection, const ReceiptKeys& keys, const ReferenceOptions& options,
                         Random& random) :
    keys_{keys},
    options_{options}, random_{random}, insert_{connection, "BB_HAB_FAKTURA", saleFields}
{}

void TimberSales::begin(Date recordDate, bool isReleased, std::int32_t owner, const TimberProduct& product)
{
    drawStage(recordDate, isReleased);
    drawTerms(owner, product);
    drawSurcharges();
    pricePosition_ = random_.unit();
}

/// A stage whose date lies behind the last day of the data is not reached.
void TimberSales::drawStage(Date recordDate, bool isReleased)
{
    const std::uint32_t drawn = random_.below(100);
    const std::int32_t daysToOffer = random_.between(2, 12);
    const std::int32_t daysToSale = daysToOffer + random_.between(5, 30);
    const std::int32_t daysToPayment = daysToSale + random_.between(10, 40);
    offerDate_ = dayIfReached(recordDate, daysToOffer, options_.baseDate);
    offerValidUntil_ = Date{recordDate.days + daysToOffer + random_.between(14, 40)};
    offerDocument_ = documentOf(true, offerDate_, options_);
    saleDate_ = dayIfReached(recordDate, daysToSale, options_.baseDate);
    saleDocument_ = documentOf(false, saleDate_, options_);
    const bool isPaid = dayIfReached(recordDate, daysToPayment, options_.baseDate) != Date{};
    if (!isReleased)
        stage_ = SaleStage::entered;
    else if (drawn < 8 || offerDate_ == Date{})
        stage_ = SaleStage::released;
    else if (drawn < 20 || saleDate_ == Date{})
        stage_ = SaleStage::offered;
    else
        stage_ = drawn < 45 || !isPaid ? SaleStage::sold : SaleStage::paid;
}

void TimberSales::drawTerms(std::int32_t owner, const TimberProduct& product)
{
    const Procedure& procedure = random_.pickWeighted(procedures);
    terms_ = {};
    terms_.customer = keys_.partner(product.buyers, random_);
    terms_.supplier = owner;
    terms_.contract = keys_.pick("BB_T_VERTRAG", random_);
    terms_.payment = keys_.pick("BB_T_ZAHLART", random_);
    terms_.procedure = keys_.id("BB_T_VERKAUFSVERFAHREN", procedure.procedure);
    terms_.kind = keys_.id("BB_T_VERKAUFSART", procedure.kind);
    terms_.place = keys_.id("BB_T_ERFULLUNGSORT", procedure.place);
    terms_.bark = keys_.id("BB_T_PREIS_RINDE", product.isLog() ? "OR" : "MR");
    terms_.extraction = keys_.id("BB_T_PREIS_RUCKEN", procedure.kind == "SW" ? "UN" : "GE");
    const bool isFlatRate = random_.chance(600);
    terms_.taxKey = keys_.id("BB_T_MEHRWERTSTEUER", isFlatRate ? "P13" : "N20");
    terms_.taxRate = isFlatRate ? 13.0 : 20.0;
    terms_.daysToPay = 15 * random_.between(1, 4);
    const std::int32_t discount = random_.between(2, 3);
    if (random_.chance(600)) terms_.discount = discount;
}

/// Most records have the first surcharge, half the second, a third the deduction.
void TimberSales::drawSurcharges()
{
    constexpr std::array<std::uint32_t, 3> perMille{850, 500, 350};
    for (std::size_t i = 0; i < surcharges_.size(); ++i) {
        const SurchargeRange& range = random_.pick(surchargeRanges[i]);
        const double share = random_.between(range.low, range.high) / 1000.0;
        surcharges_[i] = {};
        if (random_.chance(perMille[i])) surcharges_[i] = {keys_.id("BB_T_ZU_U_ABSCHLAGE_Z_ROH", range.code), share};
    }
    terms_.surchargeKey1 = surcharges_[0].key;
    terms_.surchargeKey2 = surcharges_[1].key;
    terms_.surchargeKey3 = surcharges_[2].key;
}

std::int32_t TimberSales::writeOffer(std::int32_t line, double quantity, const TimberProduct& product)
{
    if (stage_ < SaleStage::offered) return 0;
    TimberSale offer = lineTerms(line, quantity, product);
    offer.isOffer = true;
    offer.date = offerDate_;
    offer.validUntil = offerValidUntil_;
    offer.document = offerDocument_;
    const double part = random_.between(960, 1030) / 1000.0;
    return insert(offer, roundHalfEven(priceOf(product) * part, 2));
}

std::int32_t TimberSales::writeSale(std::int32_t line, double quantity, const TimberProduct& product)
{
    if (stage_ < SaleStage::sold) return 0;
    TimberSale sale = lineTerms(line, quantity, product);
    sale.date = saleDate_;
    sale.document = saleDocument_;
    return insert(sale, priceOf(product));
}

double TimberSales::priceOf(const TimberProduct& product) const
{
    const double cents = product.priceLow + pricePosition_ * (product.priceHigh - product.priceLow);
    return roundHalfEven(cents / 100.0, 2);
}

TimberSale TimberSales::lineTerms(std::int32_t line, double quantity, const TimberProduct& product) const
{
    TimberSale sale = terms_;
    sale.line = line;
    sale.quantity = quantity;
    sale.use = keys_.id("BB_T_ABGABEART_VERWENDUNG", product.use);
    sale.priceGroup = keys_.id("BB_T_PREIS_GRUPPE", product.priceGroup);
    sale.budget = keys_.id("BB_HAUSHALT", budgetOf(product));
    return sale;
}

std::int32_t TimberSales::insert(TimberSale& sale, double price)
{
    double unitPrice = price;
    const auto amountOf = [&](const Surcharge& surcharge) -> std::optional<double> {
        if (surcharge.key == 0) return std::nullopt;
        const double amount = roundHalfEven(surcharge.share * price, 2);
        unitPrice += amount;
        return amount;
    };
    sale.surcharge1 = amountOf(surcharges_[0]);
    sale.surcharge2 = amountOf(surcharges_[1]);
    sale.surcharge3 = amountOf(surcharges_[2]);
    sale.price = price;
    sale.net = roundHalfEven(*sale.quantity * roundHalfEven(unitPrice, 2), 2);
    sale.tax = roundHalfEven(*sale.net * *sale.taxRate / 100.0, 2);
    sale.gross = roundHalfEven(*sale.net + *sale.tax, 2);
    insert_.insert(sale);
    return ++count_; // the database numbers the rows of an empty table from 1
}

} // namespace tamarok::database
