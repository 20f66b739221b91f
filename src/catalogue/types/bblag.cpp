#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBLAG: movements of the stock, one row each, with the voucher and the voucher line that booked it. E is the
// supplier or recipient. A is the article's stock over all units, B that of the movement's own unit; both stand in
// each row of the article, so that grouped lists show the greatest value and no sum.
constexpr ListDescription description{
    .key = "BBLAG",
    .base = "BB_BELEGE_LAGER",
    .label = 25500,
    .columns =
        {
            {1, 25501, text, "BB_BELEGE_LAGER.BUCHUNGSART"},
            {2, 25502, date, "BB_BELEGE_LAGER.BUCHUNGSDATUM"},
            {3, 25503, twoDecimals, "BB_BELEGE_LAGER.MENGE", sum},
            {4, 25504, twoDecimals, "BB_BELEGE_LAGER.ZUGANG", sum},
            {5, 25505, twoDecimals, "BB_BELEGE_LAGER.ABGANG", sum},
            {6, 25506, amount, "BB_BELEGE_LAGER.PREIS"},
            {7, 25507, amount, "BB_BELEGE_LAGER.WERT", sum},
            {8, 25508, text, "BB_BELEGE_LAGER.LAGERORT"},
            {9, 25509, text, "BB_BELEGE_LAGER.CHARGE"},
            {10, 25510, text, "BB_BELEGE_LAGER.LIEFERSCHEIN"},
            {11, 25511, text, "(CASE WHEN BB_BELEGE_LAGER.INVENTUR = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {12, 25512, text, "BB_BELEGE_LAGER.BEMERKUNG"},
            {13, 25513, date, "BB_BELEGE_LAGER.ERSTELLUNGSDATUM"},
            {14, 25514, fourDigits, "YEAR(BB_BELEGE_LAGER.BUCHUNGSDATUM)"},
            {15, 25515, twoDigits, "MONTH(BB_BELEGE_LAGER.BUCHUNGSDATUM)"},
            {30, 25516, text, "BB_BELEGE_KOPF.BELEGNUMMER"},
            {31, 25517, date, "BB_BELEGE_KOPF.BELEGDATUM"},
            {32, 25518, text, "(CASE WHEN BB_BELEGE_KOPF.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {33, 25519, date, "BB_BELEGE_KOPF.STORNODATUM"},
            {40, 25520, whole, "BB_BELEGE.ID"},
            {50, 25521, text, "E.KURZBEZEICHNUNG"},
            {51, 25522, text, "E.NUMMER"},
            {52, 25523, text, "E.ORT"},
            {60, 25524, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {61, 25525, text, "ACCESS_LEVELS.NAME"},
            {62, 25526, text, "ACCESS_LEVELS.NAME_LANG"},
            {63, 25527, text, "ACCESS_LEVELS.FUNKTIONSBEREICH"},
            {70, 25528, whole, "WARENKATALOG.NUMMER"},
            {71, 25529, text, "WARENKATALOG.BEZEICH1"},
            {72, 25530, text, "WARENKATALOG.BEZEICH2"},
            {73, 25531, amount, "WARENKATALOG.EINHPREIS"},
            {80, 25532, text, "KOSTENSTELLE.NUMBER"},
            {81, 25533, text, "KOSTENSTELLE.NAME"},
            {85, 25534, twoDecimals, "A.BESTAND", max},
            {86, 25535, amount, "A.WERT", max},
            {87, 25536, date, "A.LETZTE_BUCHUNG"},
            {90, 25537, twoDecimals, "B.BESTAND", max},
            {91, 25538, amount, "B.WERT", max},
            {95, 25539, text, "WARENEINHEIT.EINHEIT"},
            {96, 25540, text, "WARENEINHEIT.EINHEIT_LANG"},
            {100, 25541, text, "KOSTENART.NUMBER"},
            {101, 25542, text, "KOSTENART.SHORT"},
            {102, 25543, text, "KOSTENART.NAME"},
        },
    .joins =
        {
            {"40", "", " LEFT JOIN BB_BELEGE ON BB_BELEGE.ID = BB_BELEGE_LAGER.ID_BB_BELEGE"},
            {"30-33", "40", " LEFT JOIN BB_BELEGE_KOPF ON BB_BELEGE_KOPF.ID = BB_BELEGE.ID_BB_BELEGE_KOPF"},
            {"50-52", "", " LEFT JOIN PERSONAL E ON E.ID_PERSONAL = BB_BELEGE_LAGER.ID_PERSONAL"},
            {"60-63", "", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = BB_BELEGE_LAGER.ID_ACCESS_LEVELS"},
            {"70-73", "", " LEFT JOIN WARENKATALOG ON WARENKATALOG.ART_ID = BB_BELEGE_LAGER.ID_WARENKATALOG"},
            {"80, 81", "", " LEFT JOIN KOSTENSTELLE ON KOSTENSTELLE.ID = BB_BELEGE_LAGER.ID_KOSTENSTELLE"},
            {"85-87", "", " LEFT JOIN (SELECT ID_WARENKATALOG, ROUND(SUM(MENGE),2) AS BESTAND, ROUND(SUM(WERT),2) AS WERT, MAX(BUCHUNGSDATUM) AS LETZTE_BUCHUNG FROM BB_BELEGE_LAGER GROUP BY ID_WARENKATALOG) A ON A.ID_WARENKATALOG = BB_BELEGE_LAGER.ID_WARENKATALOG"},
            {"90, 91", "", " LEFT JOIN (SELECT ID_WARENKATALOG, ID_ACCESS_LEVELS, ROUND(SUM(MENGE),2) AS BESTAND, ROUND(SUM(WERT),2) AS WERT FROM BB_BELEGE_LAGER GROUP BY ID_WARENKATALOG, ID_ACCESS_LEVELS) B ON B.ID_WARENKATALOG = BB_BELEGE_LAGER.ID_WARENKATALOG AND B.ID_ACCESS_LEVELS = BB_BELEGE_LAGER.ID_ACCESS_LEVELS"},
            {"95, 96", "", " LEFT JOIN WARENEINHEIT ON WARENEINHEIT.EINHEIT_ID = BB_BELEGE_LAGER.ID_WARENEINHEIT"},
            {"100-102", "", " LEFT JOIN KOSTENART ON KOSTENART.ID = BB_BELEGE_LAGER.ID_KOSTENART"},
        },
    .choices =
        {
            {"LAGER_BB", "30, 31, 32, 2, 1, 70, 71, 3, 95, 4-7, 8-12, 50, 80, 81, 100, 102, 85, 86"},
            {"LAGER_BB", "61, 90, 91", "BB"},
            {"LAGER_BB", "61", "SACHSEN"},
            {"LAGER_BB", "14, 15, 73", "MA49"},
        },
};

} // namespace

constinit const ListType bblag = defineType<description>();

} // namespace tamarok::catalogue::types
