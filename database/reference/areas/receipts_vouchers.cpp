#include <algorithm>
#include <array>
#include <span>
#include <string>

#include "areas/receipts_writers.h"
#include "record_insert.h"
#include "record_names.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

using convert::roundHalfEven;

struct Voucher {
    std::string number, subject, remark, cancelReason;
    Date date, received, posted, due, paid, cancelled;
    std::int32_t level = 0, storeLevel = 0, payingLevel = 0, year = 0, month = 0;
    std::optional<double> net, tax, gross, discount;
    bool isPosted = false;
    std::int32_t contractor = 0, supplier = 0, owner = 0, account = 0, budget = 0, type = 0, invoice = 0;
};

constexpr std::array voucherFields{
    RecordField<Voucher>{"BELEGNUMMER", &Voucher::number},
    RecordField<Voucher>{"ID_ACCESS_LEVELS", &Voucher::level},
    RecordField<Voucher>{"BELEGDATUM", &Voucher::date},
    RecordField<Voucher>{"EINGANGSDATUM", &Voucher::received},
    RecordField<Voucher>{"BUCHUNGSDATUM", &Voucher::posted},
    RecordField<Voucher>{"FALLIGKEITSDATUM", &Voucher::due},
    RecordField<Voucher>{"ZAHLDATUM", &Voucher::paid},
    RecordField<Voucher>{"STORNODATUM", &Voucher::cancelled},
    RecordField<Voucher>{"STORNOGRUND", &Voucher::cancelReason},
    RecordField<Voucher>{"JAHR", &Voucher::year},
    RecordField<Voucher>{"MONAT", &Voucher::month},
    RecordField<Voucher>{"BETREFF", &Voucher::subject},
    RecordField<Voucher>{"BEMERKUNG", &Voucher::remark},
    RecordField<Voucher>{"NETTO", &Voucher::net},
    RecordField<Voucher>{"MWST", &Voucher::tax},
    RecordField<Voucher>{"BRUTTO", &Voucher::gross},
    RecordField<Voucher>{"SKONTO", &Voucher::discount},
    RecordField<Voucher>{"GEBUCHT", &Voucher::isPosted},
    RecordField<Voucher>{"ID_PERSONAL", &Voucher::contractor},
    RecordField<Voucher>{"ID_LIEFERANT", &Voucher::supplier},
    RecordField<Voucher>{"ID_WALDBESITZER", &Voucher::owner},
    RecordField<Voucher>{"ID_BUCHNR", &Voucher::account},
    RecordField<Voucher>{"ID_BB_HAUSHALT", &Voucher::budget},
    RecordField<Voucher>{"ID_BB_T_RECHNUNGSTYP_BELEG", &Voucher::type},
    RecordField<Voucher>{"ID_BB_RECHNUNGSNUMMER_BELEG", &Voucher::invoice},
    RecordField<Voucher>{"ID_ACCESS_LEVELS_LAGER", &Voucher::storeLevel},
    RecordField<Voucher>{"ID_ACCESS_LEVELS_BW", &Voucher::payingLevel},
};

struct SupplierInvoice {
    std::string number;
    Date date;
    std::optional<double> amount;
};

constexpr std::array supplierInvoiceFields{
    RecordField<SupplierInvoice>{"RECHNUNGSNUMMER", &SupplierInvoice::number},
    RecordField<SupplierInvoice>{"RECHNUNGSDATUM", &SupplierInvoice::date},
    RecordField<SupplierInvoice>{"BETRAG", &SupplierInvoice::amount},
};

struct Position {
    std::int32_t voucher = 0, number = 0;
    Date from, until;
    std::string text;
    std::optional<double> quantity, hours, price, cost, revenue, taxRate, tax, gross;
    bool isStockPosting = false;
    std::int32_t costCentre = 0, order = 0, project = 0, costType = 0, revenueType = 0, article = 0, service = 0;
    std::int32_t method = 0, product = 0, object = 0, place = 0, subAccount = 0, mark = 0, unit = 0, measure = 0;
    std::int32_t assortment = 0, species = 0, use = 0, taxMark = 0, taxKey = 0;
};

constexpr std::array positionFields{
    RecordField<Position>{"ID_BB_BELEGE_KOPF", &Position::voucher},
    RecordField<Position>{"POSITIONSNUMMER", &Position::number},
    RecordField<Position>{"LEISTUNG_VON", &Position::from},
    RecordField<Position>{"LEISTUNG_BIS", &Position::until},
    RecordField<Position>{"BUCHUNGSTEXT", &Position::text},
    RecordField<Position>{"MENGE", &Position::quantity},
    RecordField<Position>{"STUNDEN", &Position::hours},
    RecordField<Position>{"EINZELPREIS", &Position::price},
    RecordField<Position>{"KOSTEN", &Position::cost},
    RecordField<Position>{"ERLOSE", &Position::revenue},
    RecordField<Position>{"MWST_SATZ", &Position::taxRate},
    RecordField<Position>{"MWST", &Position::tax},
    RecordField<Position>{"BRUTTO", &Position::gross},
    RecordField<Position>{"LAGERBUCHUNG", &Position::isStockPosting},
    RecordField<Position>{"ID_KOSTENSTELLE", &Position::costCentre},
    RecordField<Position>{"ID_BB_AUFTRAG_KOPF", &Position::order},
    RecordField<Position>{"ID_BB_T_PROJEKT_PLANUNG", &Position::project},
    RecordField<Position>{"ID_KOSTENART", &Position::costType},
    RecordField<Position>{"ID_ERLOSART", &Position::revenueType},
    RecordField<Position>{"ID_WARENKATALOG", &Position::article},
    RecordField<Position>{"ID_LEISTUNGSART", &Position::service},
    RecordField<Position>{"ID_BB_T_LEI_ARBEITSVERFAHEREN", &Position::method},
    RecordField<Position>{"ID_PRODUKT", &Position::product},
    RecordField<Position>{"ID_BB_T_OBJEKTE", &Position::object},
    RecordField<Position>{"ID_WALDORT", &Position::place},
    RecordField<Position>{"ID_BB_T_UNTERKONTO", &Position::subAccount},
    RecordField<Position>{"ID_BB_T_KZ_LEISTUNG", &Position::mark},
    RecordField<Position>{"ID_WARENEINHEIT", &Position::unit},
    RecordField<Position>{"ID_BB_T_VOLLZUGSMASSNAHME", &Position::measure},
    RecordField<Position>{"ID_HOLZSORTE", &Position::assortment},
    RecordField<Position>{"ID_HOLZART", &Position::species},
    RecordField<Position>{"ID_BB_T_ABGABEART_VERWENDUNG", &Position::use},
    RecordField<Position>{"ID_BB_T_KZ_MEHRWERTSTEUER", &Position::taxMark},
    RecordField<Position>{"ID_BB_T_MEHRWERTSTEUER", &Position::taxKey},
};

struct NatureRecord {
    std::int32_t position = 0;
    Date date;
    std::optional<double> quantity, area, rowSpacing, plantSpacing;
    std::int32_t pieces = 0, plantAge = 0;
    std::string remark;
    std::int32_t place = 0, measure = 0, species = 0, unit = 0, stand = 0, standMixture = 0, plantingMixture = 0;
    std::int32_t management = 0, site = 0, seedOrigin = 0, seedQuality = 0;
};

constexpr std::array natureFields{
    RecordField<NatureRecord>{"ID_BB_BELEGE", &NatureRecord::position},
    RecordField<NatureRecord>{"DATUM", &NatureRecord::date},
    RecordField<NatureRecord>{"MENGE", &NatureRecord::quantity},
    RecordField<NatureRecord>{"FLACHE", &NatureRecord::area},
    RecordField<NatureRecord>{"STUCK", &NatureRecord::pieces},
    RecordField<NatureRecord>{"ALTER_PFLANZEN", &NatureRecord::plantAge},
    RecordField<NatureRecord>{"PFLANZABSTAND_REIHE", &NatureRecord::rowSpacing},
    RecordField<NatureRecord>{"PFLANZABSTAND", &NatureRecord::plantSpacing},
    RecordField<NatureRecord>{"BEMERKUNG", &NatureRecord::remark},
    RecordField<NatureRecord>{"ID_WALDORT", &NatureRecord::place},
    RecordField<NatureRecord>{"ID_BB_T_VOLLZUGSMASSNAHME", &NatureRecord::measure},
    RecordField<NatureRecord>{"ID_HOLZART", &NatureRecord::species},
    RecordField<NatureRecord>{"ID_WARENEINHEIT", &NatureRecord::unit},
    RecordField<NatureRecord>{"ID_BB_T_BESTANDESART", &NatureRecord::stand},
    RecordField<NatureRecord>{"ID_BB_T_MISCHUNGSFORM1", &NatureRecord::standMixture},
    RecordField<NatureRecord>{"ID_BB_T_MISCHUNGSFORM2", &NatureRecord::plantingMixture},
    RecordField<NatureRecord>{"ID_BB_T_BETRIEBSART", &NatureRecord::management},
    RecordField<NatureRecord>{"ID_BB_T_STANDORT", &NatureRecord::site},
    RecordField<NatureRecord>{"ID_BB_T_SAATGUTHERKUNFT", &NatureRecord::seedOrigin},
    RecordField<NatureRecord>{"ID_BB_T_SAATGUTQUALITAT", &NatureRecord::seedQuality},
};

/// What a position is about. Codes are those of the key tables; an empty one refers to no row.
struct Work {
    std::string_view text;
    std::string_view costType, revenueType; ///< KOSTENART.NUMBER; one of them is empty
    std::string_view service, method, product, object, article, unit;
    std::int32_t decimals;            ///< of the quantity
    double low, high;                 ///< quantity
    std::int32_t priceLow, priceHigh; ///< cents per unit
    double hoursPerUnit;              ///< 0 for goods
    double unitsPerHectare;           ///< of the nature record
    std::string_view mark, measure, assortment, species, use, subAccount, taxMark, taxKey;
    double taxRate; ///< percent
};

// clang-format off
constexpr std::array harvestWorks{
    Work{"Holzernte mit Vollernter", "5000", "", "1110", "HV", "101", "", "", "fm", 2, 40, 320, 1900, 2700, 0.08, 55, "HE", "DF", "BL", "FI", "", "HO", "L20", "N20", 20},
    Work{"Holzernte motormanuell", "5000", "", "1120", "MS", "101", "", "", "fm", 2, 15, 160, 2600, 3600, 0.55, 90, "HE", "EN", "BL", "BU", "", "HO", "L20", "N20", 20},
    Work{"Seilbringung", "5000", "", "1120", "SK", "101", "", "", "fm", 2, 30, 220, 2800, 4200, 0.25, 120, "RU", "EN", "LA", "FI", "", "HO", "L20", "N20", 20},
    Work{"Vorliefern mit Pferd", "5000", "", "1120", "PF", "101", "", "", "fm", 2, 5, 45, 1800, 2600, 0.4, 40, "RU", "DF", "AB", "KI", "", "HO", "L20", "N20", 20},
};
constexpr std::array cultureWorks{
    Work{"Forstpflanzen Fichte", "5100", "", "1210", "HA", "102", "", "1001", "Stk", 0, 400, 6000, 80, 95, 0, 2500, "KU", "AF", "", "FI", "", "SO", "V13", "P13", 13},
    Work{"Forstpflanzen Buche", "5100", "", "1210", "HA", "102", "", "1002", "Stk", 0, 400, 5000, 90, 110, 0, 4000, "KU", "AF", "", "BU", "", "SO", "V13", "P13", 13},
    Work{"Pflanzarbeiten", "5000", "", "1210", "HA", "102", "", "", "Std", 1, 8, 120, 2600, 3600, 1, 45, "KU", "AF", "", "LA", "", "SO", "L20", "N20", 20},
    Work{"Zaunpfosten für Wildschutzzaun", "5200", "", "1210", "HA", "102", "", "2001", "Stk", 0, 40, 400, 620, 680, 0, 130, "KU", "WS", "", "", "", "SO", "L20", "N20", 20},
    Work{"Läuterung und Jungwuchspflege", "5000", "", "1210", "HA", "102", "", "", "ha", 2, 0.4, 4.5, 48000, 82000, 18, 1, "KU", "LP", "", "FI", "", "SO", "L20", "N20", 20},
};
constexpr std::array protectionWorks{
    Work{"Bekämpfung des Borkenkäfers", "5000", "", "1310", "MS", "103", "", "", "Std", 1, 6, 80, 2800, 3900, 1, 14, "HE", "KA", "BL", "FI", "", "SO", "L20", "N20", 20},
    Work{"Aufarbeitung von Käferholz", "5000", "", "1310", "HV", "103", "", "", "fm", 2, 20, 260, 2200, 3100, 0.1, 70, "HE", "KA", "IF", "FI", "", "HO", "L20", "N20", 20},
};
constexpr std::array roadWorks{
    Work{"Instandhaltung der Forststraße Grünau", "5000", "", "", "", "106", "1001", "", "Std", 1, 4, 60, 6500, 9500, 1, 0, "WB", "", "", "", "", "SO", "L20", "N20", 20},
    Work{"Räumung des Rückewegs Lindwald", "5000", "", "", "", "106", "1002", "", "Std", 1, 2, 24, 6000, 8800, 1, 0, "WB", "", "", "", "", "SO", "L20", "N20", 20},
    Work{"Dachreparatur Forsthaus Moosbach", "5000", "", "", "HA", "104", "2001", "", "Std", 1, 6, 40, 5200, 7400, 1, 0, "WB", "", "", "", "", "GR", "L20", "N20", 20},
};
constexpr std::array firewoodWorks{
    Work{"Brennholz hart ab Waldstraße", "", "4000", "", "", "101", "", "3001", "rm", 2, 3, 28, 8800, 9600, 0, 0, "", "", "BR", "BU", "BH", "HO", "V13", "P13", 13},
    Work{"Brennholz weich ab Waldstraße", "", "4000", "", "", "101", "", "3002", "rm", 2, 3, 24, 6400, 7000, 0, 0, "", "", "BR", "FI", "BH", "HO", "V13", "P13", 13},
};
constexpr std::array huntingWorks{
    Work{"Jagdpachtzins", "", "4100", "", "", "105", "", "", "ha", 2, 120, 420, 750, 1450, 0, 0, "", "", "", "", "", "JA", "V20", "N20", 20},
    Work{"Abschussgebühr", "", "4100", "", "", "105", "", "", "Stk", 0, 1, 4, 12000, 65000, 0, 0, "", "", "", "", "", "JA", "V20", "N20", 20},
};
// clang-format on

/// What a voucher is about.
struct WorkGroup {
    std::string_view subject;
    std::span<const Work> works;
    std::string_view supplierGroup; ///< PERSONAL.GRUPPE of who sends the invoice; empty where the enterprise receives
    std::string_view account, budget;
    std::uint32_t weight;
};

constexpr std::array workGroups{
    WorkGroup{"Holzernte", harvestWorks, "Unternehmer", "5720", "1001/521", 36},
    WorkGroup{"Walderneuerung", cultureWorks, "Handel", "5790", "1001/521", 27},
    WorkGroup{"Forstschutz", protectionWorks, "Unternehmer", "5720", "1001/521", 12},
    WorkGroup{"Wegebau und Gebäude", roadWorks, "Unternehmer", "5790", "1001/521", 10},
    WorkGroup{"Brennholzverkauf", firewoodWorks, "", "4030", "1001/111", 9},
    WorkGroup{"Jagderlöse", huntingWorks, "", "", "1001/111", 6},
};

constexpr std::array<std::string_view, 4> cancelReasons{"doppelt erfasst", "Preis falsch", "Menge falsch",
                                                        "falsche Kostenstelle"};
constexpr std::array<std::string_view, 4> remarks{"Abnahme durch den Revierleiter erfolgt", "Aufmaßliste liegt bei",
                                                  "Restarbeiten im Frühjahr", "Stunden laut Regiezettel"};

/// Writes the vouchers one after the other.
class VoucherWriter {
public:
    VoucherWriter(ado::Connection& connection, const ReceiptKeys& keys, const ReferenceOptions& options) :
        keys_{keys}, options_{options}, vouchers_{connection, "BB_BELEGE_KOPF", voucherFields},
        invoices_{connection, "BB_RECHNUNGSNUMMER_BELEG", supplierInvoiceFields}, positions_{connection, "BB_BELEGE",
                                                                                             positionFields},
        natureRecords_{connection, "BB_NATURALVOLLZUG", natureFields}, reports_{connection}, random_{options.seed,
                                                                                                     receiptStreams}
    {}

    void write(std::int32_t index);

private:
    Voucher drawHead(std::int32_t index, const WorkGroup& group);
    void drawDates(Voucher& voucher);
    void drawPartners(Voucher& voucher, const WorkGroup& group, std::string_view type);
    void writeInvoice(Voucher& voucher);
    Position drawPosition(const Work& work, const Voucher& voucher, const ForestPlace& place);
    void setKeys(Position& position, const Work& work);
    void setAmounts(Position& position, const Work& work);
    void writeNature(const Work& work, const Position& position, const ForestPlace& place);
    NatureRecord drawNature(const Work& work, const Position& position, double share);

    const ReceiptKeys& keys_;
    const ReferenceOptions& options_;
    RecordInsert<Voucher> vouchers_;
    RecordInsert<SupplierInvoice> invoices_;
    RecordInsert<Position> positions_;
    RecordInsert<NatureRecord> natureRecords_;
    InventoryReports reports_;
    Random random_;
    std::int32_t invoiceCount_ = 0;
    std::int32_t positionCount_ = 0;
    std::string_view type_; ///< BB_T_RECHNUNGSTYP_BELEG.SHORT of the current voucher
};

/// 8 % of the vouchers with costs are internal services without tax, 4 % a supplier's credit notes.
std::string_view drawType(const WorkGroup& group, Random& random)
{
    const std::uint32_t drawn = random.below(100);
    if (group.supplierGroup.empty()) return "EB";
    if (drawn < 8) return "IL";
    return drawn < 12 ? "GS" : "ER";
}

void VoucherWriter::write(std::int32_t index)
{
    const WorkGroup& group = random_.pickWeighted(workGroups);
    type_ = drawType(group, random_);
    Voucher voucher = drawHead(index, group);
    std::array<Position, 6> positions;
    std::array<const Work*, 6> works{};
    std::array<const ForestPlace*, 6> places{};
    const auto count = static_cast<std::size_t>(random_.between(1, 6));
    double net = 0.0;
    double tax = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        works[i] = &random_.pick(group.works);
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
    if (type_ == "ER" || type_ == "GS") writeInvoice(voucher);
    vouchers_.insert(voucher);
    for (std::size_t i = 0; i < count; ++i) {
        positions_.insert(positions[i]);
        ++positionCount_; // the database numbers the rows of an empty table from 1
        if (!works[i]->measure.empty() && type_ != "GS" && random_.chance(850))
            writeNature(*works[i], positions[i], *places[i]);
    }
}

Voucher VoucherWriter::drawHead(std::int32_t index, const WorkGroup& group)
{
    Voucher voucher;
    voucher.date = dateOfHead(index, options_.records, options_.baseDate, random_);
    voucher.number = recordName("B", voucher.date, index + 1);
    voucher.level = keys_.place(random_).level;
    voucher.storeLevel = keys_.levelAbove(voucher.level, 1);
    voucher.payingLevel = keys_.levelAbove(voucher.level, 2);
    voucher.subject = group.subject;
    if (random_.chance(300)) voucher.remark = random_.pick(remarks);
    if (random_.chance(500)) voucher.discount = random_.between(2, 3);
    voucher.account = keys_.id("BUCHNR", group.account);
    voucher.budget = keys_.id("BB_HAUSHALT", group.budget);
    voucher.type = keys_.id("BB_T_RECHNUNGSTYP_BELEG", type_);
    drawDates(voucher);
    drawPartners(voucher, group, type_);
    return voucher;
}

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

void VoucherWriter::drawPartners(Voucher& voucher, const WorkGroup& group, std::string_view type)
{
    voucher.owner = keys_.owner(voucher.level, random_);
    voucher.contractor = keys_.contractor(random_);
    if (type == "ER" || type == "GS")
        voucher.supplier =
            group.supplierGroup == "Unternehmer" ? voucher.contractor : keys_.partner(group.supplierGroup, random_);
}

void VoucherWriter::writeInvoice(Voucher& voucher)
{
    const Date date{voucher.date.days - random_.between(1, 8)};
    const std::int32_t number = random_.between(100, 9999);
    invoices_.insert({std::to_string(number) + "/" + std::to_string(toCivil(date).year), date, voucher.gross});
    voucher.invoice = ++invoiceCount_;
}

Position VoucherWriter::drawPosition(const Work& work, const Voucher& voucher, const ForestPlace& place)
{
    Position position;
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

void VoucherWriter::setKeys(Position& position, const Work& work)
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
void VoucherWriter::setAmounts(Position& position, const Work& work)
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
void VoucherWriter::writeNature(const Work& work, const Position& position, const ForestPlace& place)
{
    const double first = random_.chance(200) ? random_.between(30, 70) / 100.0 : 1.0;
    InventoryReport report;
    report.position = positionCount_;
    double area = 0.0;
    double quantity = 0.0;
    for (const double share : {first, 1.0 - first}) {
        if (share <= 0.0) continue;
        const NatureRecord record = drawNature(work, position, share);
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

NatureRecord VoucherWriter::drawNature(const Work& work, const Position& position, double share)
{
    NatureRecord record;
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
