#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBZV: orders of the BB edition, one row per order. The single measures of the order (BB_AUFTRAG) multiply its rows,
// and their lines in monthly work plans (BB_MAP) once more; measures of the order have the aggregate max for that.
// AL0 is the level of the order, ACCESS_LEVELS the forest range above it.
constexpr ListDescription description{
    .key = "BBZV",
    .base = "BB_AUFTRAG_KOPF",
    .label = 28250,
    .columns =
        {
            {1, 28251, text, "BB_AUFTRAG_KOPF.AUFTRAG_NUMMER"},
            {2, 28252, text, "BB_AUFTRAG_KOPF.BEZEICHNUNG"},
            {3, 28253, date, "BB_AUFTRAG_KOPF.DATUM"},
            {4, 28254, fourDigits, "BB_AUFTRAG_KOPF.JAHR"},
            {5, 28255, date, "BB_AUFTRAG_KOPF.BEGINN"},
            {6, 28256, date, "BB_AUFTRAG_KOPF.ENDE"},
            {7, 28257, text, "(CASE WHEN BB_AUFTRAG_KOPF.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {8, 28258, text, "AL0.NAME"},
            {9, 28259, text, "AL0.NAME_LANG"},
            {10, 28260, text, "AL0.ACCESS_LEVELS"},
            {12, 28261, text, "ACCESS_LEVELS.NAME"},
            {13, 28262, text, "ACCESS_LEVELS.NAME_LANG"},
            {20, 28263, date, "BB_AUFTRAG_KOPF.FREIGABEDATUM"},
            {21, 28264, date, "BB_AUFTRAG_KOPF.STORNODATUM"},
            {22, 28265, text, "BB_AUFTRAG_KOPF.BEMERKUNG"},
            {23, 28266, twoDecimals, "BB_AUFTRAG_KOPF.SUMME_STUNDEN", max},
            {24, 28267, amount, "BB_AUFTRAG_KOPF.SUMME_KOSTEN", max},
            {30, 28268, text, "BB_T_AUFTRAGSSTATUS.NUMMER"},
            {31, 28269, text, "BB_T_AUFTRAGSSTATUS.SHORT"},
            {32, 28270, text, "BB_T_AUFTRAGSSTATUS.LONG"},
            {40, 28271, whole, "BB_AUFTRAG.EINZELMASSNAHME_NR"},
            {41, 28272, text, "BB_AUFTRAG.BEZEICHNUNG"},
            {42, 28273, date, "BB_AUFTRAG.BEGINN"},
            {43, 28274, date, "BB_AUFTRAG.ENDE"},
            {44, 28275, twoDecimals, "BB_AUFTRAG.MENGE", max},
            {45, 28276, twoDecimals, "BB_AUFTRAG.FLACHE", max},
            {46, 28277, twoDecimals, "BB_AUFTRAG.STUNDEN_PLAN", max},
            {47, 28278, amount, "BB_AUFTRAG.STUNDENSATZ"},
            {48, 28279, amount, "BB_AUFTRAG.KOSTEN_PLAN", max},
            {49, 28280, text, "(CASE WHEN BB_AUFTRAG.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {55, 28281, text, "BB_T_KZ_LEISTUNG.NUMMER"},
            {56, 28282, text, "BB_T_KZ_LEISTUNG.LONG"},
            {60, 28283, whole, "BB_NATURALVOLLZUG_DSW.ID"},
            {61, 28284, twoDecimals, "ROUND(BB_NATURALVOLLZUG_DSW.MENGE,2)", max},
            {65, 28285, text, "BB_PLAN_KOPF.PLAN_NUMMER"},
            {66, 28286, text, "BB_PLAN_KOPF.BEZEICHNUNG"},
            {67, 28287, date, "BB_PLAN_KOPF.DATUM"},
            {75, 28288, whole, "BB_MAP.ZEILE_NR"},
            {76, 28289, date, "BB_MAP.BEGINN"},
            {77, 28290, date, "BB_MAP.ENDE"},
            {78, 28291, twoDecimals, "BB_MAP.STUNDEN_PLAN", sum},
            {85, 28292, text, "BB_MAP_KOPF.MAP_NUMMER"},
            {86, 28293, date, "BB_MAP_KOPF.DATUM"},
            {87, 28294, twoDigits, "BB_MAP_KOPF.MONAT"},
            {95, 28295, twoDecimals, "SUMSTUNDEN_PLAN.STUNDEN", max},
            {98, 28296, twoDecimals, "SUMSTUNDEN.STUNDEN", max},
            {99, 28297, amount, "SUMSTUNDEN.BETRAG", max},
            {100, 28298, twoDecimals, "ROUND({ISNULL}(SUMSTUNDEN_PLAN.STUNDEN,0)-{ISNULL}(SUMSTUNDEN.STUNDEN,0),2)", max},
            {104, 28299, twoDecimals, "SUMSTUNDEN_ZEILE.STUNDEN", max},
        },
    .joins =
        {
            {"8-10", "", " LEFT JOIN ACCESS_LEVELS AL0 ON AL0.ID = BB_AUFTRAG_KOPF.ID_ACCESS_LEVELS"},
            {"12-13", "8", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ACCESS_LEVELS = LEFT(AL0.ACCESS_LEVELS,LEN(AL0.ACCESS_LEVELS)-2)+'00'"},
            {"30-32", "", " LEFT JOIN BB_T_AUFTRAGSSTATUS ON BB_T_AUFTRAGSSTATUS.ID = BB_AUFTRAG_KOPF.ID_BB_T_AUFTRAGSSTATUS"},
            {"40-49", "", " LEFT JOIN BB_AUFTRAG ON BB_AUFTRAG.ID_BB_AUFTRAG_KOPF = BB_AUFTRAG_KOPF.ID"},
            {"55-56", "40", " LEFT JOIN BB_T_KZ_LEISTUNG ON BB_T_KZ_LEISTUNG.ID = BB_AUFTRAG.ID_BB_T_KZ_LEISTUNG"},
            {"60-61", "40", " LEFT JOIN BB_NATURALVOLLZUG_DSW ON BB_NATURALVOLLZUG_DSW.ID = BB_AUFTRAG.ID_BB_NATURALVOLLZUG_DSW"},
            {"65-67", "", " LEFT JOIN BB_PLAN_KOPF ON BB_PLAN_KOPF.ID = BB_AUFTRAG_KOPF.ID_BB_PLAN_KOPF"},
            {"75-78", "40", " LEFT JOIN BB_MAP ON BB_MAP.ID_BB_AUFTRAG = BB_AUFTRAG.ID"},
            {"85-87", "75", " LEFT JOIN BB_MAP_KOPF ON BB_MAP_KOPF.ID = BB_MAP.ID_BB_MAP_KOPF"},
            {"95", "", " LEFT JOIN (SELECT BB_AUFTRAG.ID_BB_AUFTRAG_KOPF, ROUND(SUM(BB_MAP.STUNDEN_PLAN),2) AS STUNDEN FROM BB_MAP INNER JOIN BB_AUFTRAG ON BB_AUFTRAG.ID = BB_MAP.ID_BB_AUFTRAG GROUP BY BB_AUFTRAG.ID_BB_AUFTRAG_KOPF) SUMSTUNDEN_PLAN ON SUMSTUNDEN_PLAN.ID_BB_AUFTRAG_KOPF = BB_AUFTRAG_KOPF.ID"},
            {"98-100", "95", " LEFT JOIN (SELECT BB_AUFTRAG.ID_BB_AUFTRAG_KOPF, ROUND(SUM(BB_AUFTRAG_ABRECHNUNG.STUNDEN),2) AS STUNDEN, ROUND(SUM(BB_AUFTRAG_ABRECHNUNG.BETRAG),2) AS BETRAG FROM BB_AUFTRAG_ABRECHNUNG INNER JOIN BB_AUFTRAG ON BB_AUFTRAG.ID = BB_AUFTRAG_ABRECHNUNG.ID_BB_AUFTRAG GROUP BY BB_AUFTRAG.ID_BB_AUFTRAG_KOPF) SUMSTUNDEN ON SUMSTUNDEN.ID_BB_AUFTRAG_KOPF = BB_AUFTRAG_KOPF.ID"},
            {"104", "40", " LEFT JOIN (SELECT BB_AUFTRAG_ABRECHNUNG.ID_BB_AUFTRAG, ROUND(SUM(BB_AUFTRAG_ABRECHNUNG.STUNDEN),2) AS STUNDEN FROM BB_AUFTRAG_ABRECHNUNG GROUP BY BB_AUFTRAG_ABRECHNUNG.ID_BB_AUFTRAG) SUMSTUNDEN_ZEILE ON SUMSTUNDEN_ZEILE.ID_BB_AUFTRAG = BB_AUFTRAG.ID"},
        },
    .choices =
        {
            {"BBZV", "1-6, 8-10, 12, 13, 30-32, 65, 66, 20, 7, 21, 22, 40-49, 55, 56, 60, 61, 23, 24, 95, 98-100, 104"},
            {"BBZV", "75-78, 85-87", "BB"},
            {"BBZV_HIZ", "1-3, 8, 9, 13, 32, 40, 41, 44-46, 56, 60, 61, 95, 98, 100, 104"},
        },
};

} // namespace

constinit const ListType bbzv = defineType<description>();

} // namespace tamarok::catalogue::types
