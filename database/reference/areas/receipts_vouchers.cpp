#include <algorithm>
#include <array>
#include <string>

#include "areas/receipts_voucher_records.h"
#include "areas/receipts_voucher_works.h"
#include "areas/receipts_writers.h"
#include "record_insert.h"
#include "record_names.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

using convert::roundHalfEven;

constexpr std::array<std::string_view, 4> cancelReasons{"doppelt erfasst", "Preis falsch", "Menge falsch",
                                                        "falsche Kostenstelle"};
constexpr std::array<std::string_view, 4> remarks{"Abnahme durch den Revierleiter erfolgt", "Aufmaßliste liegt bei",
                                                  "Restarbeiten im Frühjahr", "Stunden laut Regiezettel"};

/// Writes the vouchers one after the other.
class VoucherWriter {
public:
    VoucherWriter(ado::Connection& connection, const ReceiptKeys& keys, const ReferenceOptions& options) :
        keys_{keys}, options_{options}, random_{options.seed, receiptStreams}, vouchers_{connection, "BB_BELEGE_KOPF",
                                                                                         voucherFields},
        invoices_{connection, "BB_RECHNUNGSNUMMER_BELEG", supplierInvoiceFields}, positions_{connection, "BB_BELEGE",
                                                                                             voucherPositionFields},
        natureRecords_{connection, "BB_NATURALVOLLZUG", voucherNatureFields}, reports_{connection}
    {}

    void write(std::int32_t index);

private:
    Voucher drawHead(std::int32_t index, const VoucherSubject& subject);
    void drawDates(Voucher& voucher);
    void drawPartners(Voucher& voucher, const VoucherSubject& subject);
    bool isFromSupplier() const { return type_ == "ER" || type_ == "GS"; }
    void writeInvoice(Voucher& voucher);
    VoucherPosition drawPosition(const VoucherWork& work, const Voucher& voucher, const ForestPlace& place);
    void setKeys(VoucherPosition& position, const VoucherWork& work);
    void setAmounts(VoucherPosition& position, const VoucherWork& work);
    void writeNature(const VoucherWork& work, const VoucherPosition& position, const ForestPlace& place);
    VoucherNature drawNature(const VoucherWork& work, const VoucherPosition& position, double share);

    const ReceiptKeys& keys_;
    const ReferenceOptions& options_;
    Random random_;
    RecordInsert<Voucher> vouchers_;
    RecordInsert<SupplierInvoice> invoices_;
    RecordInsert<VoucherPosition> positions_;
    RecordInsert<VoucherNature> natureRecords_;
    InventoryReports reports_;
    std::int32_t invoiceCount_ = 0;
    std::int32_t positionCount_ = 0;
    std::string_view type_; ///< BB_T_RECHNUNGSTYP_BELEG.SHORT of the current voucher
};

/// 8 % of the vouchers with costs are internal services without tax, 4 % a supplier's credit notes.
std::string_view drawType(const VoucherSubject& subject, Random& random)
{
    const std::uint32_t drawn = random.below(100);
    if (subject.supplierGroup.empty()) return "EB";
    if (drawn < 8) return "IL";
    return drawn < 12 ? "GS" : "ER";
}

/// Draws the head and its positions, whose sums are the amounts of the head, then inserts invoice, head, positions
/// and the nature records of the positions.
void VoucherWriter::write(std::int32_t index)
{
    const VoucherSubject& subject = random_.pickWeighted(voucherSubjects);
    type_ = drawType(subject, random_);
    Voucher voucher = drawHead(index, subject);
    std::array<VoucherPosition, 6> positions;
    std::array<const VoucherWork*, 6> works{};
    std::array<const ForestPlace*, 6> places{};
    const auto count = static_cast<std::size_t>(random_.between(1, 6));
    double net = 0.0;
    double tax = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        works[i] = &random_.pick(subject.works);
        places[i] = &keys_.placeOfLevel(voucher.level, random_);
        positions[i] = drawPosition(*works[i], voucher, *places[i]);
        positions[i].voucher = index + 1;
        positions[i].number = static_cast<std::int32_t>(i) + 1;
        net += positions[i].cost.value_or(0.0) - positions[i].revenue.value_or(0.0);
        tax += positions[i].cost ? *positions[i].tax : -*positions[i].tax;
    }
    voucher.net = roundHalfEven(net, 2);
    voucher.tax = roundHalfEven(tax, 2);
    voucher.gross = roundHalfEven(net + tax, 2);
    if (isFromSupplier()) writeInvoice(voucher);
    vouchers_.insert(voucher);
    for (std::size_t i = 0; i < count; ++i) {
        positions_.insert(positions[i]);
        ++positionCount_; // the database numbers the rows of an empty table from 1
        if (!works[i]->measure.empty() && type_ != "GS" && random_.chance(850))
            writeNature(*works[i], positions[i], *places[i]);
    }
}

Voucher VoucherWriter::drawHead(std::int32_t index, const VoucherSubject& subject)
{
    Voucher voucher;
    voucher.date = dateOfHead(index, options_.records, options_.baseDate, random_);
    voucher.number = recordName("B", voucher.date, index + 1);
    voucher.level = keys_.place(random_).level;
    voucher.storeLevel = keys_.levelAbove(voucher.level, 1);
    voucher.payingLevel = keys_.levelAbove(voucher.level, 2);
    voucher.subject = subject.text;
    if (random_.chance(300)) voucher.remark = random_.pick(remarks);
    if (random_.chance(500)) voucher.discount = random_.between(2, 3);
    voucher.account = keys_.id("BUCHNR", subject.account);
    voucher.budget = keys_.id("BB_HAUSHALT", subject.budget);
    voucher.type = keys_.id("BB_T_RECHNUNGSTYP_BELEG", type_);
    drawDates(voucher);
    drawPartners(voucher, subject);
    return voucher;
}

/// A date behind the last day of the data has not come yet: the voucher is not posted or not paid. A cancelled voucher
/// is neither.
void VoucherWriter::drawDates(Voucher& voucher)
{
    const Date last = options_.baseDate;
    voucher.received = laterDay(voucher.date, random_.between(1, 4), last);
    const std::int32_t daysToPay = random_.chance(600) ? 30 : 14;
    voucher.due = Date{voucher.date.days + daysToPay};
    const std::int32_t daysToPosting = random_.between(5, 12);
    const std::int32_t daysToPayment = daysToPay + random_.between(-2, 14);
    const std::int32_t daysToCancelling = random_.between(5, 40);
    if (random_.chance(30)) voucher.cancelled = laterDay(voucher.date, daysToCancelling, last);
    if (voucher.cancelled != Date{}) {
        voucher.cancelReason = random_.pick(cancelReasons);
    } else {
        voucher.posted = laterDay(voucher.date, daysToPosting, last);
        voucher.paid = laterDay(voucher.date, daysToPayment, last);
    }
    voucher.isPosted = voucher.posted != Date{};
    const CivilTime period = toCivil(voucher.isPosted ? voucher.posted : voucher.date);
    voucher.year = period.year;
    voucher.month = period.month;
}

/// The contractor sends the invoice for his work; material comes from another supplier.
void VoucherWriter::drawPartners(Voucher& voucher, const VoucherSubject& subject)
{
    voucher.owner = keys_.owner(voucher.level, random_);
    voucher.contractor = keys_.contractor(random_);
    if (isFromSupplier())
        voucher.supplier =
            subject.supplierGroup == "Unternehmer" ? voucher.contractor : keys_.partner(subject.supplierGroup, random_);
}

void VoucherWriter::writeInvoice(Voucher& voucher)
{
    const Date date{voucher.date.days - random_.between(1, 8)};
    const std::int32_t number = random_.between(100, 9999);
    invoices_.insert({std::to_string(number) + "/" + std::to_string(toCivil(date).year), date, voucher.gross});
    voucher.invoice = ++invoiceCount_;
}

VoucherPosition VoucherWriter::drawPosition(const VoucherWork& work, const Voucher& voucher, const ForestPlace& place)
{
    VoucherPosition position;
    position.until = Date{voucher.date.days - random_.between(0, 12)};
    position.from = Date{position.until.days - random_.between(0, 20)};
    position.text = work.text;
    setKeys(position, work);
    setAmounts(position, work);
    position.isStockPosting = position.cost && !work.article.empty();
    position.costCentre = keys_.costCentre(voucher.level, random_);
    position.project = keys_.pick("BB_T_PROJEKT_PLANUNG", random_);
    const std::int32_t order = random_.between(1, options_.records);
    if (random_.chance(950)) position.order = order;
    if (work.object.empty()) { // an object such as a road is a place of its own
        position.place = place.id;
        position.text += ", " + place.name;
    }
    return position;
}

void VoucherWriter::setKeys(VoucherPosition& position, const VoucherWork& work)
{
    const bool isTaxFree = type_ == "IL";
    position.costType = keys_.id("KOSTENART", work.costType);
    position.revenueType = keys_.id("KOSTENART", work.revenueType);
    position.article = keys_.id("WARENKATALOG", work.article);
    position.service = keys_.id("LEISTUNGSART", work.service);
    position.method = keys_.id("BB_T_LEI_ARBEITSVERFAHEREN", work.method);
    position.product = keys_.id("PRODUKT", work.product);
    position.object = keys_.id("BB_T_OBJEKTE", work.object);
    position.subAccount = keys_.id("BB_T_UNTERKONTO", work.subAccount);
    position.mark = keys_.id("BB_T_KZ_LEISTUNG", work.mark);
    position.unit = keys_.id("WARENEINHEIT", work.unit);
    position.measure = keys_.id("BB_T_VOLLZUGSMASSNAHME", work.measure);
    position.assortment = keys_.id("HOLZSORTE", work.assortment);
    position.species = keys_.id("HOLZART", work.species);
    position.use = keys_.id("BB_T_ABGABEART_VERWENDUNG", work.use);
    position.taxMark = keys_.id("BB_T_KZ_MEHRWERTSTEUER", work.taxMark);
    position.taxKey = keys_.id("BB_T_MEHRWERTSTEUER", isTaxFree ? "F0" : work.taxKey);
    position.taxRate = isTaxFree ? 0.0 : work.taxRate;
}

/// A credit note has negative quantities and amounts.
void VoucherWriter::setAmounts(VoucherPosition& position, const VoucherWork& work)
{
    const double sign = type_ == "GS" ? -1.0 : 1.0;
    const double quantity = roundHalfEven(random_.between(work.low, work.high), work.decimals);
    const double price = random_.between(work.priceLow, work.priceHigh) / 100.0;
    const double net = roundHalfEven(sign * quantity * price, 2);
    position.quantity = sign * quantity;
    if (work.hoursPerUnit > 0.0) position.hours = roundHalfEven(sign * quantity * work.hoursPerUnit, 2);
    position.price = price;
    (position.costType != 0 ? position.cost : position.revenue) = net;
    position.tax = roundHalfEven(net * *position.taxRate / 100.0, 2);
    position.gross = roundHalfEven(net + *position.tax, 2);
}

/// Divides the work of one position among one or two nature records and reports most of them to the inventory.
void VoucherWriter::writeNature(const VoucherWork& work, const VoucherPosition& position, const ForestPlace& place)
{
    const double first = random_.chance(200) ? random_.between(30, 70) / 100.0 : 1.0;
    InventoryReport report;
    report.position = positionCount_;
    double area = 0.0;
    double quantity = 0.0;
    for (const double share : {first, 1.0 - first}) {
        if (share <= 0.0) continue;
        const VoucherNature record = drawNature(work, position, share);
        natureRecords_.insert(record);
        area += *record.area;
        quantity += *record.quantity;
    }
    report.area = roundHalfEven(area, 2);
    report.quantity = roundHalfEven(quantity, work.decimals);
    report.date = laterDay(position.until, random_.between(1, 10), options_.baseDate);
    report.transferred = laterDay(position.until, random_.between(12, 45), options_.baseDate);
    report.stand = place.stand;
    if (random_.chance(800) && report.date != Date{}) reports_.write(report);
}

VoucherNature VoucherWriter::drawNature(const VoucherWork& work, const VoucherPosition& position, double share)
{
    VoucherNature record;
    record.position = positionCount_;
    record.date = position.until;
    record.quantity = roundHalfEven(*position.quantity * share, work.decimals);
    record.area = std::max(0.05, roundHalfEven(*record.quantity / work.unitsPerHectare, 2));
    record.place = position.place;
    record.measure = position.measure;
    record.species = position.species;
    record.unit = position.unit;
    record.stand = keys_.pick("BB_T_BESTANDESART", random_);
    record.standMixture = keys_.pick("BB_T_MISCHUNGSFORM", random_);
    record.management = keys_.pick("BB_T_BETRIEBSART", random_);
    record.site = keys_.pick("BB_T_STANDORT", random_);
    if (random_.chance(250)) record.remark = random_.pick(remarks);
    if (work.measure != "AF") return record;
    record.plantingMixture = keys_.pick("BB_T_MISCHUNGSFORM", random_);
    record.seedOrigin = keys_.pick("BB_T_SAATGUTHERKUNFT", random_);
    record.seedQuality = keys_.pick("BB_T_SAATGUTQUALITAT", random_);
    record.plantAge = random_.between(2, 4);
    record.rowSpacing = 2.0;
    record.plantSpacing = random_.chance(500) ? 1.5 : 2.0;
    record.pieces = static_cast<std::int32_t>(work.unit == "Stk" ? *record.quantity : 2500.0 * *record.area);
    return record;
}

} // namespace

void writeVouchers(ado::Connection& connection, const ReceiptKeys& keys, const ReferenceOptions& options)
{
    VoucherWriter writer{connection, keys, options};
    for (std::int32_t index = 0; index < options.records; ++index)
        writer.write(index);
}

} // namespace tamarok::database
