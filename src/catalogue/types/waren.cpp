#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// WAREN: the catalogue of goods, one row per article. Every join finds at most one row. Id 0 is no column: a list of
// articles asks for it to open the FROM text before its first column.
constexpr ListDescription description{
    .key = "WAREN",
    .base = "WARENKATALOG",
    .label = 31750,
    .valueFilter = ValueFilter::none,
    .columns =
        {
            {1, 31751, whole, "WARENKATALOG.NUMMER"},
            {2, 31752, text, "WARENKATALOG.BEZEICH1"},
            {3, 31753, text, "WARENKATALOG.BEZEICH2"},
            {4, 31754, amount, "WARENKATALOG.EINHPREIS"},
            {5, 31755, text, "(CASE WHEN WARENKATALOG.FAKTURA = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {6, 31756, whole, "WARENKATALOG.MATERIALART"},
            {7, 31757, whole, "(CASE WHEN WARENKATALOG.DISABLE = 1 THEN 1 ELSE 0 END)"},
            {8, 31758, whole, "WARENKATALOG.GRUPPE_ID"},
            {9, 31759, whole, "WARENKATALOG.ID_FORMULA"},
            {10, 31760, text, "WARENKATALOG.LAGERORT"},
            {11, 31761, oneDecimal, "WARENKATALOG.MINDESTBESTAND", sum},
            {12, 31762, date, "WARENKATALOG.GUELTIG_AB"},
            {13, 31763, text, "WARENKATALOG.BEMERKUNG"},
            {20, 31764, text, "WARENEINHEIT.EINHEIT"},
            {21, 31765, text, "WARENEINHEIT.EINHEIT_LANG"},
            {22, 31766, whole, "WARENEINHEIT.MENGE_DECIMAL"},
            {30, 31767, text, "PERSONAL.NUMMER"},
            {31, 31768, text, "PERSONAL.KURZBEZEICHNUNG"},
            {32, 31769, text, "PERSONAL.BEZEICHNUNG"},
            {33, 31770, text, "PERSONAL.ORT"},
            {34, 31771, text, "PERSONAL.TELEFON"},
            {40, 31772, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {41, 31773, text, "ACCESS_LEVELS.NAME"},
            {42, 31774, text, "ACCESS_LEVELS.NAME_LANG"},
            {50, 31775, text, "LEISTUNGSART.NUMBER"},
            {51, 31776, text, "LEISTUNGSART.NAME"},
            {60, 31777, text, "KOSTENART.NUMBER"},
            {61, 31778, text, "KOSTENART.SHORT"},
            {62, 31779, text, "KOSTENART.NAME"},
            {70, 31780, text, "PRODUKT.NUMBER"},
            {71, 31781, text, "PRODUKT.NAME"},
            {80, 31782, text, "WALDORT.WO1"},
            {81, 31783, text, "WALDORT.LANGNAME"},
            {90, 31784, text, "BB_T_BESTEUERUNGSART.NUMMER"},
            {91, 31785, text, "BB_T_BESTEUERUNGSART.SHORT"},
            {92, 31786, text, "BB_T_BESTEUERUNGSART.LONG"},
            {100, 31787, text, "BB_T_MEHRWERTSTEUER1.NUMMER"},
            {101, 31788, text, "BB_T_MEHRWERTSTEUER1.SHORT"},
            {102, 31789, text, "BB_T_MEHRWERTSTEUER1.LONG"},
            {110, 31790, text, "BB_T_MEHRWERTSTEUER2.NUMMER"},
            {111, 31791, text, "BB_T_MEHRWERTSTEUER2.SHORT"},
            {112, 31792, text, "BB_T_MEHRWERTSTEUER2.LONG"},
            {120, 31793, text, "BB_T_MEHRWERTSTEUER_HERLEITUNG.NUMMER"},
            {121, 31794, text, "BB_T_MEHRWERTSTEUER_HERLEITUNG.SHORT"},
            {122, 31795, text, "BB_T_MEHRWERTSTEUER_HERLEITUNG.LONG"},
        },
    .joins =
        {
            {"20-22", "", " LEFT JOIN WARENEINHEIT ON WARENEINHEIT.EINHEIT_ID = WARENKATALOG.ID_WARENEINHEIT"},
            {"30-34", "", " LEFT JOIN PERSONAL ON PERSONAL.ID_PERSONAL = WARENKATALOG.ID_PERSONAL"},
            {"40-42", "", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = WARENKATALOG.ID_ACCESS_LEVELS"},
            {"50, 51", "", " LEFT JOIN LEISTUNGSART ON LEISTUNGSART.ID = WARENKATALOG.ID_LEISTUNGSART"},
            {"60-62", "", " LEFT JOIN KOSTENART ON KOSTENART.ID = WARENKATALOG.ID_KOSTENART"},
            {"70, 71", "", " LEFT JOIN PRODUKT ON PRODUKT.ID = WARENKATALOG.ID_PRODUKT"},
            {"80, 81", "", " LEFT JOIN WALDORT ON WALDORT.ID_WALDORT = WARENKATALOG.ID_WALDORT"},
            {"90-92", "", " LEFT JOIN BB_T_BESTEUERUNGSART ON BB_T_BESTEUERUNGSART.ID = WARENKATALOG.ID_BB_T_BESTEUERUNGSART"},
            {"100-102", "", " LEFT JOIN BB_T_MEHRWERTSTEUER BB_T_MEHRWERTSTEUER1 ON BB_T_MEHRWERTSTEUER1.ID = WARENKATALOG.ID_BB_T_MEHRWERTSTEUER1"},
            {"110-112", "", " LEFT JOIN BB_T_MEHRWERTSTEUER BB_T_MEHRWERTSTEUER2 ON BB_T_MEHRWERTSTEUER2.ID = WARENKATALOG.ID_BB_T_MEHRWERTSTEUER2"},
            {"120-122", "", " LEFT JOIN BB_T_MEHRWERTSTEUER_HERLEITUNG ON BB_T_MEHRWERTSTEUER_HERLEITUNG.ID = WARENKATALOG.ID_BB_T_MEHRWERTSTEUER_HERLEITUNG"},
        },
    .choices =
        {
            {"WAREN", "1-5, 20, 21, 8, 6, 10-13, 7, 30-34, 50, 51, 60, 62, 70, 71, 81"},
            {"WAREN", "40-42, 91, 92, 101, 102, 111, 112, 121, 122", "BB"},
            {"WAREN", "80", "SACHSEN"},
        },
};

} // namespace

constinit const ListType waren = defineType<description>();

} // namespace tamarok::catalogue::types
