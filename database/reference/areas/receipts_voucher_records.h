#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "record_insert.h"

#include "tamarok/date.h"

// The rows of vouchers with the columns in which their members stand. A member that names another table is its ID.
namespace tamarok::database {

/// A voucher of cost accounting: a row of BB_BELEGE_KOPF.
struct Voucher {
    std::string number, subject, remark, cancelReason;
    Date date, received, posted, due, paid, cancelled;
    std::int32_t level = 0, storeLevel = 0, payingLevel = 0, year = 0, month = 0;
    std::optional<double> net, tax, gross, discount;
    bool isPosted = false;
    std::int32_t contractor = 0, supplier = 0, owner = 0, account = 0, budget = 0, type = 0, invoice = 0;
};

inline constexpr std::array voucherFields{
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

/// The invoice that a voucher books: a row of BB_RECHNUNGSNUMMER_BELEG.
struct SupplierInvoice {
    std::string number;
    Date date;
    std::optional<double> amount;
};

inline constexpr std::array supplierInvoiceFields{
    RecordField<SupplierInvoice>{"RECHNUNGSNUMMER", &SupplierInvoice::number},
    RecordField<SupplierInvoice>{"RECHNUNGSDATUM", &SupplierInvoice::date},
    RecordField<SupplierInvoice>{"BETRAG", &SupplierInvoice::amount},
};

/// A row of BB_BELEGE: either cost or revenue is set.
struct VoucherPosition {
    std::int32_t voucher = 0, number = 0;
    Date from, until;
    std::string text;
    std::optional<double> quantity, hours, price, cost, revenue, taxRate, tax, gross;
    bool isStockPosting = false;
    std::int32_t costCentre = 0, order = 0, project = 0, costType = 0, revenueType = 0, article = 0, service = 0;
    std::int32_t method = 0, product = 0, object = 0, place = 0, subAccount = 0, mark = 0, unit = 0, measure = 0;
    std::int32_t assortment = 0, species = 0, use = 0, taxMark = 0, taxKey = 0;
};

inline constexpr std::array voucherPositionFields{
    RecordField<VoucherPosition>{"ID_BB_BELEGE_KOPF", &VoucherPosition::voucher},
    RecordField<VoucherPosition>{"POSITIONSNUMMER", &VoucherPosition::number},
    RecordField<VoucherPosition>{"LEISTUNG_VON", &VoucherPosition::from},
    RecordField<VoucherPosition>{"LEISTUNG_BIS", &VoucherPosition::until},
    RecordField<VoucherPosition>{"BUCHUNGSTEXT", &VoucherPosition::text},
    RecordField<VoucherPosition>{"MENGE", &VoucherPosition::quantity},
    RecordField<VoucherPosition>{"STUNDEN", &VoucherPosition::hours},
    RecordField<VoucherPosition>{"EINZELPREIS", &VoucherPosition::price},
    RecordField<VoucherPosition>{"KOSTEN", &VoucherPosition::cost},
    RecordField<VoucherPosition>{"ERLOSE", &VoucherPosition::revenue},
    RecordField<VoucherPosition>{"MWST_SATZ", &VoucherPosition::taxRate},
    RecordField<VoucherPosition>{"MWST", &VoucherPosition::tax},
    RecordField<VoucherPosition>{"BRUTTO", &VoucherPosition::gross},
    RecordField<VoucherPosition>{"LAGERBUCHUNG", &VoucherPosition::isStockPosting},
    RecordField<VoucherPosition>{"ID_KOSTENSTELLE", &VoucherPosition::costCentre},
    RecordField<VoucherPosition>{"ID_BB_AUFTRAG_KOPF", &VoucherPosition::order},
    RecordField<VoucherPosition>{"ID_BB_T_PROJEKT_PLANUNG", &VoucherPosition::project},
    RecordField<VoucherPosition>{"ID_KOSTENART", &VoucherPosition::costType},
    RecordField<VoucherPosition>{"ID_ERLOSART", &VoucherPosition::revenueType},
    RecordField<VoucherPosition>{"ID_WARENKATALOG", &VoucherPosition::article},
    RecordField<VoucherPosition>{"ID_LEISTUNGSART", &VoucherPosition::service},
    RecordField<VoucherPosition>{"ID_BB_T_LEI_ARBEITSVERFAHEREN", &VoucherPosition::method},
    RecordField<VoucherPosition>{"ID_PRODUKT", &VoucherPosition::product},
    RecordField<VoucherPosition>{"ID_BB_T_OBJEKTE", &VoucherPosition::object},
    RecordField<VoucherPosition>{"ID_WALDORT", &VoucherPosition::place},
    RecordField<VoucherPosition>{"ID_BB_T_UNTERKONTO", &VoucherPosition::subAccount},
    RecordField<VoucherPosition>{"ID_BB_T_KZ_LEISTUNG", &VoucherPosition::mark},
    RecordField<VoucherPosition>{"ID_WARENEINHEIT", &VoucherPosition::unit},
    RecordField<VoucherPosition>{"ID_BB_T_VOLLZUGSMASSNAHME", &VoucherPosition::measure},
    RecordField<VoucherPosition>{"ID_HOLZSORTE", &VoucherPosition::assortment},
    RecordField<VoucherPosition>{"ID_HOLZART", &VoucherPosition::species},
    RecordField<VoucherPosition>{"ID_BB_T_ABGABEART_VERWENDUNG", &VoucherPosition::use},
    RecordField<VoucherPosition>{"ID_BB_T_KZ_MEHRWERTSTEUER", &VoucherPosition::taxMark},
    RecordField<VoucherPosition>{"ID_BB_T_MEHRWERTSTEUER", &VoucherPosition::taxKey},
};

/// What a position did in the forest: a row of BB_NATURALVOLLZUG.
struct VoucherNature {
    std::int32_t position = 0;
    Date date;
    std::optional<double> quantity, area, rowSpacing, plantSpacing;
    std::int32_t pieces = 0, plantAge = 0;
    std::string remark;
    std::int32_t place = 0, measure = 0, species = 0, unit = 0, stand = 0, standMixture = 0, plantingMixture = 0;
    std::int32_t management = 0, site = 0, seedOrigin = 0, seedQuality = 0;
};

inline constexpr std::array voucherNatureFields{
    RecordField<VoucherNature>{"ID_BB_BELEGE", &VoucherNature::position},
    RecordField<VoucherNature>{"DATUM", &VoucherNature::date},
    RecordField<VoucherNature>{"MENGE", &VoucherNature::quantity},
    RecordField<VoucherNature>{"FLACHE", &VoucherNature::area},
    RecordField<VoucherNature>{"STUCK", &VoucherNature::pieces},
    RecordField<VoucherNature>{"ALTER_PFLANZEN", &VoucherNature::plantAge},
    RecordField<VoucherNature>{"PFLANZABSTAND_REIHE", &VoucherNature::rowSpacing},
    RecordField<VoucherNature>{"PFLANZABSTAND", &VoucherNature::plantSpacing},
    RecordField<VoucherNature>{"BEMERKUNG", &VoucherNature::remark},
    RecordField<VoucherNature>{"ID_WALDORT", &VoucherNature::place},
    RecordField<VoucherNature>{"ID_BB_T_VOLLZUGSMASSNAHME", &VoucherNature::measure},
    RecordField<VoucherNature>{"ID_HOLZART", &VoucherNature::species},
    RecordField<VoucherNature>{"ID_WARENEINHEIT", &VoucherNature::unit},
    RecordField<VoucherNature>{"ID_BB_T_BESTANDESART", &VoucherNature::stand},
    RecordField<VoucherNature>{"ID_BB_T_MISCHUNGSFORM1", &VoucherNature::standMixture},
    RecordField<VoucherNature>{"ID_BB_T_MISCHUNGSFORM2", &VoucherNature::plantingMixture},
    RecordField<VoucherNature>{"ID_BB_T_BETRIEBSART", &VoucherNature::management},
    RecordField<VoucherNature>{"ID_BB_T_STANDORT", &VoucherNature::site},
    RecordField<VoucherNature>{"ID_BB_T_SAATGUTHERKUNFT", &VoucherNature::seedOrigin},
    RecordField<VoucherNature>{"ID_BB_T_SAATGUTQUALITAT", &VoucherNature::seedQuality},
};

} // namespace tamarok::database
