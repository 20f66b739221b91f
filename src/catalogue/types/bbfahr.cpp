#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBFAHR: log books of vehicles and machines, one row for each object and month. The entries (BB_FAHRTENBUCH) bring
// a row each; without their columns a log book is one row.
constexpr ListDescription description{
    .key = "BBFAHR",
    .base = "BB_FAHRTENBUCH_KOPF",
    .label = 23250,
    .columns =
        {
            {1, 23251, text, "BB_FAHRTENBUCH_KOPF.NUMMER"},
            {2, 23252, fourDigits, "BB_FAHRTENBUCH_KOPF.JAHR"},
            {3, 23253, twoDigits, "BB_FAHRTENBUCH_KOPF.MONAT"},
            {4, 23254, date, "BB_FAHRTENBUCH_KOPF.DATUM_VON"},
            {5, 23255, date, "BB_FAHRTENBUCH_KOPF.DATUM_BIS"},
            {6, 23256, text, "BB_FAHRTENBUCH_KOPF.HALTER"},
            {7, 23257, whole, "BB_FAHRTENBUCH_KOPF.KM_BEGINN"},
            {8, 23258, whole, "BB_FAHRTENBUCH_KOPF.KM_ENDE"},
            {9, 23259, whole, "BB_FAHRTENBUCH_KOPF.KM_GESAMT", sum},
            {10, 23260, whole, "BB_FAHRTENBUCH_KOPF.KM_PRIVAT", sum},
            {11, 23261, oneDecimal, "BB_FAHRTENBUCH_KOPF.BETRIEBSSTUNDEN", sum},
            {12, 23262, oneDecimal, "BB_FAHRTENBUCH_KOPF.KRAFTSTOFF", sum},
            {13, 23263, amount, "BB_FAHRTENBUCH_KOPF.KRAFTSTOFFKOSTEN", sum},
            {14, 23264, amount, "BB_FAHRTENBUCH_KOPF.REPARATURKOSTEN", sum},
            {15, 23265, amount, "BB_FAHRTENBUCH_KOPF.SONSTIGE_KOSTEN", sum},
            {16, 23266, amount, "BB_FAHRTENBUCH_KOPF.GESAMTKOSTEN", sum},
            {17, 23267, text, "(CASE WHEN BB_FAHRTENBUCH_KOPF.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {18, 23268, text, "BB_T_OBJEKTGRUPPE.NUMMER"},
            {19, 23269, text, "BB_T_OBJEKTE.NUMMER"},
            {30, 23270, text, "BB_T_OBJEKTGRUPPE.SHORT"},
            {31, 23271, text, "BB_T_OBJEKTGRUPPE.LONG"},
            {40, 23272, text, "BB_T_OBJEKTE.SHORT"},
            {41, 23273, text, "BB_T_OBJEKTE.LONG"},
            {42, 23274, text, "BB_T_OBJEKTE.BEZEICHNUNG"},
            {43, 23275, text, "BB_T_OBJEKTE.KENNZEICHEN"},
            {44, 23276, text, "BB_T_OBJEKTE.HERSTELLER"},
            {45, 23277, text, "BB_T_OBJEKTE.TYP"},
            {46, 23278, amount, "BB_T_OBJEKTE.KM_SATZ"},
            {47, 23279, amount, "BB_T_OBJEKTE.STUNDENSATZ"},
            {60, 23280, text, "(CASE WHEN BB_FAHRTENBUCH_KOPF.ABGESCHLOSSEN = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {61, 23281, date, "BB_FAHRTENBUCH_KOPF.ABSCHLUSSDATUM"},
            {62, 23282, twoDecimals, "(CASE WHEN BB_FAHRTENBUCH_KOPF.KM_GESAMT > 0 THEN ROUND(BB_FAHRTENBUCH_KOPF.KRAFTSTOFF*100/BB_FAHRTENBUCH_KOPF.KM_GESAMT,2) ELSE NULL END)"},
            {63, 23283, twoDecimals, "(CASE WHEN BB_FAHRTENBUCH_KOPF.KM_GESAMT > 0 THEN ROUND(BB_FAHRTENBUCH_KOPF.GESAMTKOSTEN/BB_FAHRTENBUCH_KOPF.KM_GESAMT,2) ELSE NULL END)"},
            {64, 23284, text, "BB_FAHRTENBUCH_KOPF.BEMERKUNG"},
            {65, 23285, date, "BB_FAHRTENBUCH_KOPF.ERSTELLUNGSDATUM"},
            {66, 23286, date, "BB_FAHRTENBUCH_KOPF.STORNODATUM"},
            {80, 23287, whole, "BB_FAHRTENBUCH.ZEILE"},
            {81, 23288, date, "BB_FAHRTENBUCH.DATUM"},
            {82, 23289, text, "BB_FAHRTENBUCH.FAHRER"},
            {83, 23290, text, "BB_FAHRTENBUCH.FAHRTZWECK"},
            {84, 23291, text, "BB_FAHRTENBUCH.STARTORT"},
            {85, 23292, text, "BB_FAHRTENBUCH.ZIELORT"},
            {86, 23293, whole, "BB_FAHRTENBUCH.KM_VON"},
            {87, 23294, whole, "BB_FAHRTENBUCH.KM_BIS"},
            {88, 23295, whole, "BB_FAHRTENBUCH.KM", sum},
            {89, 23296, text, "(CASE WHEN BB_FAHRTENBUCH.PRIVAT = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {90, 23297, oneDecimal, "BB_FAHRTENBUCH.BETRIEBSSTUNDEN", sum},
            {91, 23298, oneDecimal, "BB_FAHRTENBUCH.KRAFTSTOFF", sum},
            {92, 23299, amount, "BB_FAHRTENBUCH.KRAFTSTOFFKOSTEN", sum},
            {93, 23300, text, "BB_FAHRTENBUCH.BEMERKUNG"},
            {100, 23301, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {101, 23302, text, "ACCESS_LEVELS.NAME"},
            {102, 23303, text, "ACCESS_LEVELS.NAME_LANG"},
            {103, 23304, text, "ACCESS_LEVELS.FUNKTIONSBEREICH"},
        },
    .joins =
        {
            {"19, 40-47", "", " LEFT JOIN BB_T_OBJEKTE ON BB_T_OBJEKTE.ID = BB_FAHRTENBUCH_KOPF.ID_BB_T_OBJEKTE"},
            {"18, 30, 31", "19", " LEFT JOIN BB_T_OBJEKTGRUPPE ON BB_T_OBJEKTGRUPPE.ID = BB_T_OBJEKTE.ID_BB_T_OBJEKTGRUPPE"},
            {"80-93", "", " LEFT JOIN BB_FAHRTENBUCH ON BB_FAHRTENBUCH.ID_BB_FAHRTENBUCH_KOPF = BB_FAHRTENBUCH_KOPF.ID"},
            {"100-103", "", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = BB_FAHRTENBUCH_KOPF.ID_ACCESS_LEVELS"},
        },
    .choices =
        {
            {"BBFAHR", "2, 3, 1, 4, 5, 18, 31, 19, 41, 43, 6, 17, 7-16, 62, 63, 81-85, 88, 91, 92, 64"},
            {"BBFAHR", "101, 60, 61", "BB"},
            {"BBFAHR", "101, 42", "SACHSEN"},
            {"BBFAHR", "46, 47, 10", "MA49"},
        },
};

} // namespace

constinit const ListType bbfahr = defineType<description>();

} // namespace tamarok::catalogue::types
