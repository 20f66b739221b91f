#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBFB: vouchers of the document book. The lines (SCH_BELEGE) bring a row each, and with them their object and
// their order; without these columns a voucher is one row. The amounts of columns 6 and 14 are the voucher's and
// repeat with its lines; column 15 is the line's, positive for receipts and negative for expenses, so that its sum
// is the balance of an order. PERSONAL is the customer of a receipt and the supplier of an expense.
constexpr ListDescription description{
    .key = "BBFB",
    .base = "SCH_BELEGE_KOPF",
    .label = 23750,
    .columns =
        {
            {1, 859, text, "SCH_BELEGE_KOPF.BELEGNUMMER"},
            {2, 4689, text, "SCH_BELEGE_KOPF.BELEGART"},
            {3, 1700, date, "SCH_BELEGE_KOPF.BUCHUNGSDATUM"},
            {4, 4831, text, "(CASE WHEN SCH_BELEGE_KOPF.EINNAHME = 1 THEN PERSONAL.KURZBEZEICHNUNG ELSE NULL END)"},
            {5, 4830, text, "(CASE WHEN SCH_BELEGE_KOPF.EINNAHME = 1 THEN NULL ELSE PERSONAL.KURZBEZEICHNUNG END)"},
            {6, 4995, amount, "SCH_BELEGE_KOPF.BRUTTOBETRAG", sum},
            {7, 4756, text, "SCH_BELEGE_KOPF.GEGENKONTO"},
            {8, 1757, text, "SCH_BELEGE_KOPF.KONTO"},
            {9, 4814, text, "SCH_BELEGE_KOPF.BUCHUNGSTEXT"},
            {10, 2520, text, "SCH_BELEGE_KOPF.KOSTENSTELLE"},
            {11, 1751, text, "BB_T_ZAHLART.LONG"},
            {12, 298, date, "SCH_BELEGE_KOPF.BELEGDATUM"},
            {13, 1755, oneDecimal, "SCH_BELEGE_KOPF.MWST"},
            {14, 4803, amount, "SCH_BELEGE_KOPF.NETTOBETRAG", sum},
            {15, 138, amount, "(CASE WHEN SCH_BELEGE_KOPF.EINNAHME = 1 THEN SCH_BELEGE.BETRAG ELSE 0-SCH_BELEGE.BETRAG END)", sum},
            {16, 5462, text, "USERS.NAME"},
            {17, 2508, text, "SCH_BELEGE_KOPF.BEMERKUNG"},
            {18, 23751, text, "BB_T_AUFTRAGS_PLANUNG.NUMMER"},
            {19, 23752, text, "BB_T_AUFTRAGS_PLANUNG.SHORT"},
            {20, 23753, text, "BB_T_AUFTRAGS_PLANUNG.LONG"},
            {30, 23754, text, "(CASE WHEN SCH_BELEGE_KOPF.EINNAHME = 1 THEN 'Einnahme' ELSE 'Ausgabe' END)"},
            {31, 23755, amount, "SCH_BELEGE_KOPF.MWST_BETRAG", sum},
            {32, 23756, amount, "SCH_BELEGE_KOPF.SKONTO", sum},
            {33, 23757, text, "SCH_BELEGE_KOPF.EXTERNE_NUMMER"},
            {34, 23758, date, "SCH_BELEGE_KOPF.FALLIG_AM"},
            {35, 23759, date, "SCH_BELEGE_KOPF.BEZAHLT_AM"},
            {36, 23760, date, "SCH_BELEGE_KOPF.ERSTELLUNGSDATUM"},
            {37, 23761, text, "(CASE WHEN SCH_BELEGE_KOPF.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {38, 23762, date, "SCH_BELEGE_KOPF.STORNODATUM"},
            {50, 23763, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {51, 23764, text, "ACCESS_LEVELS.NAME"},
            {52, 23765, text, "ACCESS_LEVELS.NAME_LANG"},
            {53, 23766, text, "ACCESS_LEVELS.FUNKTIONSBEREICH"},
            {60, 23767, text, "PERSONAL.KURZBEZEICHNUNG"},
            {61, 23768, text, "PERSONAL.NUMMER"},
            {62, 23769, text, "PERSONAL.NAME"},
            {63, 23770, text, "PERSONAL.ORT"},
            {70, 23771, text, "BB_T_ZAHLART.NUMMER"},
            {71, 23772, text, "BB_T_ZAHLART.SHORT"},
            {80, 23773, text, "USERS.LONGNAME"},
            {90, 23774, whole, "SCH_BELEGE.ZEILE"},
            {91, 23775, text, "SCH_BELEGE.BEZEICHNUNG"},
            {92, 23776, twoDecimals, "SCH_BELEGE.MENGE", sum},
            {93, 23777, amount, "SCH_BELEGE.EINZELPREIS"},
            {94, 23778, amount, "SCH_BELEGE.BETRAG", sum},
            {95, 23779, amount, "SCH_BELEGE.KOSTEN", sum},
            {96, 23780, amount, "SCH_BELEGE.ERLOSE", sum},
            {97, 23781, text, "(CASE WHEN SCH_BELEGE.ID_NN_POSITIONEN IS NULL THEN 'Nein' ELSE 'Ja' END)"},
            {98, 23782, text, "SCH_BELEGE.BEMERKUNG"},
            {110, 23783, text, "OBJEKT.NUMBER"},
            {111, 23784, text, "OBJEKT.NAME"},
        },
    .joins =
        {
            {"50-53", "", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = SCH_BELEGE_KOPF.ID_ACCESS_LEVELS"},
            {"4, 5, 60-63", "", " LEFT JOIN PERSONAL ON PERSONAL.ID_PERSONAL = SCH_BELEGE_KOPF.ID_PERSONAL"},
            {"11, 70, 71", "", " LEFT JOIN BB_T_ZAHLART ON BB_T_ZAHLART.ID = SCH_BELEGE_KOPF.ID_BB_T_ZAHLART"},
            {"16, 80", "", " LEFT JOIN USERS ON USERS.ID = SCH_BELEGE_KOPF.ID_USERS"},
            {"15, 90-98", "", " LEFT JOIN SCH_BELEGE ON SCH_BELEGE.ID_SCH_BELEGE_KOPF = SCH_BELEGE_KOPF.ID"},
            {"110, 111", "15", " LEFT JOIN OBJEKT ON OBJEKT.ID = SCH_BELEGE.ID_OBJEKT"},
            {"18-20", "15", " LEFT JOIN BB_T_AUFTRAGS_PLANUNG ON BB_T_AUFTRAGS_PLANUNG.ID = SCH_BELEGE.ID_AUFTRAGSNUMMER"},
        },
    .choices =
        {
            {"BELEGBUCH", "1-17"},
            {"BELEGBUCH", "18", "", "", "Auftragnummer"},
            {"BELEGBUCH", "19", "", "", "AuftragKurzname"},
            {"BELEGBUCH", "20", "", "", "AuftragLangname"},
        },
};

} // namespace

constinit const ListType bbfb = defineType<description>();

} // namespace tamarok::catalogue::types
