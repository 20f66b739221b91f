#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBJB: hunting districts, one row for each district and hunting year. Level 0 is the district's own unit, level 1
// its forest office, level 2 its forest authority.
constexpr ListDescription description{
    .key = "BBJB",
    .base = "BB_JAGDBEZIRKE",
    .label = 25000,
    .columns =
        {
            {1, 25001, text, "BB_JAGDBEZIRKE.NUMMER"},
            {2, 25002, text, "BB_JAGDBEZIRKE.NAME"},
            {3, 25003, text, "BB_JAGDBEZIRKE.BEZEICHNUNG"},
            {4, 25004, twoDecimals, "BB_JAGDBEZIRKE.GESAMTFLACHE", sum},
            {5, 25005, twoDecimals, "BB_JAGDBEZIRKE.WALDFLACHE", sum},
            {6, 25006, twoDecimals, "BB_JAGDBEZIRKE.FELDFLACHE", sum},
            {7, 25007, twoDecimals, "BB_JAGDBEZIRKE.WASSERFLACHE", sum},
            {8, 25008, twoDecimals, "BB_JAGDBEZIRKE.BEFRIEDETE_FLACHE", sum},
            {9, 25009, oneDecimal, "(CASE WHEN BB_JAGDBEZIRKE.GESAMTFLACHE > 0 THEN ROUND(BB_JAGDBEZIRKE.WALDFLACHE*100/BB_JAGDBEZIRKE.GESAMTFLACHE,1) ELSE NULL END)"},
            {10, 25010, date, "BB_JAGDBEZIRKE.PACHTBEGINN"},
            {11, 25011, date, "BB_JAGDBEZIRKE.PACHTENDE"},
            {12, 25012, amount, "BB_JAGDBEZIRKE.PACHTPREIS"},
            {13, 25013, text, "BB_JAGDBEZIRKE.JAGDJAHR"},
            {14, 25014, amount, "BB_JAGDBEZIRKE.PACHTSUMME", sum},
            {15, 25015, amount, "BB_JAGDBEZIRKE.WILDSCHADENPAUSCHALE", sum},
            {16, 25016, whole, "BB_JAGDBEZIRKE.PACHTER", sum},
            {17, 25017, whole, "BB_JAGDBEZIRKE.BEGEHUNGSSCHEINE", sum},
            {18, 25018, whole, "BB_JAGDBEZIRKE.HOCHSITZE", sum},
            {19, 25019, whole, "BB_JAGDBEZIRKE.KIRRUNGEN", sum},
            {20, 25020, twoDecimals, "BB_JAGDBEZIRKE.WILDACKER", sum},
            {21, 25021, whole, "BB_JAGDBEZIRKE.ZAUNLANGE", sum},
            {22, 25022, text, "BB_JAGDBEZIRKE.BEMERKUNG"},
            {23, 25023, text, "(CASE WHEN BB_JAGDBEZIRKE.DISABLE = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {24, 25024, text, "(CASE WHEN BB_JAGDBEZIRKE.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {25, 25025, date, "BB_JAGDBEZIRKE.STORNODATUM"},
            {26, 25026, date, "BB_JAGDBEZIRKE.ERSTELLUNGSDATUM"},
            {40, 25027, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {41, 25028, text, "ACCESS_LEVELS.NAME"},
            {42, 25029, text, "ACCESS_LEVELS.NAME_LANG"},
            {43, 25030, text, "ACCESS_LEVELS.FUNKTIONSBEREICH"},
            {50, 25031, text, "ACCESS_LEVELS0.NAME"},
            {51, 25032, text, "ACCESS_LEVELS0.NAME_LANG"},
            {55, 25033, text, "ACCESS_LEVELS1.NAME"},
            {56, 25034, text, "ACCESS_LEVELS1.NAME_LANG"},
            {60, 25035, text, "ACCESS_LEVELS2.NAME"},
            {61, 25036, text, "ACCESS_LEVELS2.NAME_LANG"},
            {70, 25037, text, "JBH.KURZBEZEICHNUNG"},
            {71, 25038, text, "JBH.NUMMER"},
            {72, 25039, text, "JBH.NAME"},
            {73, 25040, text, "JBH.VORNAME"},
            {74, 25041, text, "JBH.STRASSE"},
            {75, 25042, text, "JBH.PLZ"},
            {76, 25043, text, "JBH.ORT"},
            {77, 25044, text, "JBH.TELEFON"},
            {85, 25045, text, "BB_T_JAGDBEZIRKSART.NUMMER"},
            {86, 25046, text, "BB_T_JAGDBEZIRKSART.SHORT"},
            {87, 25047, text, "BB_T_JAGDBEZIRKSART.LONG"},
        },
    .joins =
        {
            {"40-43", "", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = BB_JAGDBEZIRKE.ID_ACCESS_LEVELS"},
            {"50, 51", "40", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS0 ON ACCESS_LEVELS0.ACCESS_LEVELS = ACCESS_LEVELS.ACCESS_LEVELS"},
            {"55, 56", "50", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS1 ON ACCESS_LEVELS1.ACCESS_LEVELS = LEFT(ACCESS_LEVELS0.ACCESS_LEVELS,LEN(ACCESS_LEVELS0.ACCESS_LEVELS)-2){+}'00'"},
            {"60, 61", "50", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS2 ON ACCESS_LEVELS2.ACCESS_LEVELS = LEFT(ACCESS_LEVELS0.ACCESS_LEVELS,LEN(ACCESS_LEVELS0.ACCESS_LEVELS)-4){+}'0000'"},
            {"70-77", "", " LEFT JOIN PERSONAL JBH ON JBH.ID_PERSONAL = BB_JAGDBEZIRKE.ID_PERSONAL"},
            {"85-87", "", " LEFT JOIN BB_T_JAGDBEZIRKSART ON BB_T_JAGDBEZIRKSART.ID = BB_JAGDBEZIRKE.ID_BB_T_JAGDBEZIRKSART"},
        },
    .choices =
        {
            {"BB_JAGDBEZIRKE", "13, 1-3, 87, 24, 23, 70, 4-8, 10-12, 14, 16-19, 22"},
            {"BB_JAGDBEZIRKE", "41, 50, 55, 60", "BB"},
            {"BB_JAGDBEZIRKE", "41, 60", "SACHSEN"},
            {"BB_JAGDBEZIRKE", "15, 20, 21", "MA49"},
        },
};

} // namespace

constinit const ListType bbjb = defineType<description>();

} // namespace tamarok::catalogue::types
