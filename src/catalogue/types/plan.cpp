#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// PLAN: plans, one row per plan. No join multiplies rows.
constexpr ListDescription description{
    .key = "PLAN",
    .base = "PLAN_KOPF",
    .label = 30000,
    .columns =
        {
            {1, 30001, text, "PLAN_KOPF.PLANNUMMER"},
            {2, 30002, text, "PLAN_KOPF.BEZEICHNUNG"},
            {3, 30003, text, "PLAN_KOPF.BESCHREIBUNG"},
            {4, 30004, fourDigits, "PLAN_KOPF.JAHR"},
            {5, 30005, date, "PLAN_KOPF.DATUM"},
            {6, 30006, date, "PLAN_KOPF.DATUM_VON"},
            {7, 30007, date, "PLAN_KOPF.DATUM_BIS"},
            {8, 30008, twoDecimals, "PLAN_KOPF.MENGE", sum},
            {9, 30009, twoDecimals, "PLAN_KOPF.STUNDEN", sum},
            {10, 30010, amount, "PLAN_KOPF.KOSTEN", sum},
            {11, 30011, amount, "PLAN_KOPF.ERLOESE", sum},
            {12, 30012, amount, "PLAN_KOPF.DECKUNGSBEITRAG", sum},
            {13, 30013, amount, "ROUND((CASE WHEN {ISNULL}(PLAN_KOPF.MENGE,0)=0 THEN 0 ELSE PLAN_KOPF.KOSTEN/PLAN_KOPF.MENGE END),2)"},
            {14, 30014, text, "(CASE WHEN PLAN_KOPF.GENEHMIGT = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {15, 30015, text, "(CASE WHEN PLAN_KOPF.ABGESCHLOSSEN = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {25, 30016, text, "USERS.NAME"},
            {26, 30017, text, "USERS.LONGNAME"},
            {30, 30018, text, "PRODUKT.NUMBER"},
            {31, 30019, text, "PRODUKT.NAME"},
            {35, 30020, text, "OBJEKT.NUMBER"},
            {36, 30021, text, "OBJEKT.NAME"},
            {40, 30022, text, "VERFAHREN.NUMBER"},
            {41, 30023, text, "VERFAHREN.NAME"},
            {45, 30024, text, "BB_T_PROJEKT_PLANUNG.NUMMER"},
            {46, 30025, text, "BB_T_PROJEKT_PLANUNG.SHORT"},
            {47, 30026, text, "BB_T_PROJEKT_PLANUNG.LONG"},
            {50, 30027, text, "BB_T_AUFTRAGS_PLANUNG.NUMMER"},
            {51, 30028, text, "BB_T_AUFTRAGS_PLANUNG.SHORT"},
            {52, 30029, text, "BB_T_AUFTRAGS_PLANUNG.LONG"},
            {53, 30030, text, "(CASE WHEN BB_T_AUFTRAGS_PLANUNG.ABGESCHLOSSEN = 1 THEN 'Ja' ELSE 'Nein' END)"},
        },
    .joins =
        {
            {"25-26", "", " LEFT JOIN USERS ON USERS.ID = PLAN_KOPF.ID_USER"},
            {"30-31", "", " LEFT JOIN PRODUKT ON PRODUKT.ID = PLAN_KOPF.ID_PRODUKT"},
            {"35-36", "", " LEFT JOIN OBJEKT ON OBJEKT.ID = PLAN_KOPF.ID_OBJEKT"},
            {"40-41", "", " LEFT JOIN VERFAHREN ON VERFAHREN.ID = PLAN_KOPF.ID_VERFAHREN"},
            {"45-47", "", " LEFT JOIN BB_T_PROJEKT_PLANUNG ON BB_T_PROJEKT_PLANUNG.ID = PLAN_KOPF.ID_BB_T_PROJEKT_PLANUNG"},
            {"50-53", "", " LEFT JOIN BB_T_AUFTRAGS_PLANUNG ON BB_T_AUFTRAGS_PLANUNG.ID = PLAN_KOPF.ID_BB_T_AUFTRAGS_PLANUNG"},
        },
    .choices =
        {
            {"PLAN", "1-7, 25, 26, 30, 31, 35, 36, 40, 41, 45-47, 50-53, 8-12, 14, 15"},
            {"PLAN", "13", "MA49"},
        },
};

} // namespace

constinit const ListType plan = defineType<description>();

} // namespace tamarok::catalogue::types
