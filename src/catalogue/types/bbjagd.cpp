#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBJAGD: cull plans. The positions (BB_ABSCHLUSSPLAN, spelled so by the contract) bring a row for each species,
// sex and age class; without their columns a plan is one row.
constexpr ListDescription description{
    .key = "BBJAGD",
    .base = "BB_ABSCHUSSPLAN_KOPF",
    .label = 24750,
    .columns =
        {
            {1, 24751, text, "BB_ABSCHUSSPLAN_KOPF.NUMMER"},
            {2, 24752, date, "BB_ABSCHUSSPLAN_KOPF.DATUM"},
            {3, 24753, text, "BB_ABSCHUSSPLAN_KOPF.JAGDJAHR"},
            {4, 24754, text, "BB_ABSCHUSSPLAN_KOPF.HEGEGEMEINSCHAFT"},
            {5, 24755, text, "(CASE WHEN BB_ABSCHUSSPLAN_KOPF.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {6, 24756, twoDecimals, "BB_ABSCHUSSPLAN_KOPF.FLACHE", sum},
            {7, 24757, text, "BB_JAGDBEZIRKE.NUMMER"},
            {8, 24758, text, "BB_JAGDBEZIRKE.NAME"},
            {9, 24759, text, "BB_JAGDBEZIRKE.BEZEICHNUNG"},
            {10, 24760, twoDecimals, "BB_JAGDBEZIRKE.GESAMTFLACHE", sum},
            {11, 24761, twoDecimals, "BB_JAGDBEZIRKE.WALDFLACHE", sum},
            {20, 24762, date, "BB_ABSCHUSSPLAN_KOPF.GULTIG_VON"},
            {21, 24763, date, "BB_ABSCHUSSPLAN_KOPF.GULTIG_BIS"},
            {22, 24764, date, "BB_ABSCHUSSPLAN_KOPF.GENEHMIGT_AM"},
            {23, 24765, text, "BB_ABSCHUSSPLAN_KOPF.GENEHMIGT_VON"},
            {24, 24766, oneDecimal, "BB_ABSCHUSSPLAN_KOPF.VERBISSPROZENT"},
            {25, 24767, whole, "BB_ABSCHUSSPLAN_KOPF.SUMME_SOLL", sum},
            {26, 24768, whole, "BB_ABSCHUSSPLAN_KOPF.SUMME_IST", sum},
            {27, 24769, whole, "BB_ABSCHUSSPLAN_KOPF.SUMME_FALLWILD", sum},
            {28, 24770, oneDecimal, "(CASE WHEN BB_ABSCHUSSPLAN_KOPF.SUMME_SOLL > 0 THEN ROUND((BB_ABSCHUSSPLAN_KOPF.SUMME_IST+BB_ABSCHUSSPLAN_KOPF.SUMME_FALLWILD)*100.0/BB_ABSCHUSSPLAN_KOPF.SUMME_SOLL,1) ELSE NULL END)"},
            {29, 24771, text, "BB_ABSCHUSSPLAN_KOPF.BEMERKUNG"},
            {30, 24772, date, "BB_ABSCHUSSPLAN_KOPF.ERSTELLUNGSDATUM"},
            {31, 24773, date, "BB_ABSCHUSSPLAN_KOPF.STORNODATUM"},
            {50, 24774, whole, "BB_ABSCHLUSSPLAN.ZEILE"},
            {51, 24775, text, "BB_ABSCHLUSSPLAN.WILDART"},
            {52, 24776, text, "BB_ABSCHLUSSPLAN.WILDART_LANG"},
            {53, 24777, text, "BB_ABSCHLUSSPLAN.GESCHLECHT"},
            {54, 24778, text, "BB_ABSCHLUSSPLAN.ALTERSKLASSE"},
            {55, 24779, whole, "BB_ABSCHLUSSPLAN.BESTAND", sum},
            {56, 24780, whole, "BB_ABSCHLUSSPLAN.VORJAHR", sum},
            {57, 24781, whole, "BB_ABSCHLUSSPLAN.SOLL", sum},
            {58, 24782, whole, "BB_ABSCHLUSSPLAN.IST", sum},
            {59, 24783, whole, "BB_ABSCHLUSSPLAN.FALLWILD", sum},
            {60, 24784, whole, "BB_ABSCHLUSSPLAN.SOLL-BB_ABSCHLUSSPLAN.IST-BB_ABSCHLUSSPLAN.FALLWILD", sum},
            {61, 24785, text, "BB_ABSCHLUSSPLAN.BEMERKUNG"},
            {80, 24786, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {81, 24787, text, "ACCESS_LEVELS.NAME"},
            {82, 24788, text, "ACCESS_LEVELS.NAME_LANG"},
            {83, 24789, text, "ACCESS_LEVELS.FUNKTIONSBEREICH"},
            {90, 24790, text, "ACCESS_LEVELS0.NAME"},
            {91, 24791, text, "ACCESS_LEVELS0.NAME_LANG"},
            {95, 24792, text, "ACCESS_LEVELS1.NAME"},
            {96, 24793, text, "ACCESS_LEVELS1.NAME_LANG"},
            {100, 24794, text, "ACCESS_LEVELS2.NAME"},
            {101, 24795, text, "ACCESS_LEVELS2.NAME_LANG"},
        },
    .joins =
        {
            {"7-11", "", " LEFT JOIN BB_JAGDBEZIRKE ON BB_JAGDBEZIRKE.ID = BB_ABSCHUSSPLAN_KOPF.ID_BB_JAGDBEZIRKE"},
            {"50-61", "", " LEFT JOIN BB_ABSCHLUSSPLAN ON BB_ABSCHLUSSPLAN.ID_BB_ABSCHUSSPLAN_KOPF = BB_ABSCHUSSPLAN_KOPF.ID"},
            {"80-83", "", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = BB_ABSCHUSSPLAN_KOPF.ID_ACCESS_LEVELS"},
            {"90, 91", "80", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS0 ON ACCESS_LEVELS0.ACCESS_LEVELS = ACCESS_LEVELS.ACCESS_LEVELS"},
            {"95, 96", "90", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS1 ON ACCESS_LEVELS1.ACCESS_LEVELS = LEFT(ACCESS_LEVELS0.ACCESS_LEVELS,LEN(ACCESS_LEVELS0.ACCESS_LEVELS)-2){+}'00'"},
            {"100, 101", "90", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS2 ON ACCESS_LEVELS2.ACCESS_LEVELS = LEFT(ACCESS_LEVELS0.ACCESS_LEVELS,LEN(ACCESS_LEVELS0.ACCESS_LEVELS)-4){+}'0000'"},
        },
    .choices =
        {
            {"BBJAGD", "3, 1, 2, 7, 8, 5, 4, 6, 20-28, 52-59, 60, 29"},
            {"BBJAGD", "81, 90, 95, 100", "BB"},
            {"BBJAGD", "81, 100", "SACHSEN"},
            {"BBJAGD", "10, 11", "MA49"},
        },
};

} // namespace

constinit const ListType bbjagd = defineType<description>();

} // namespace tamarok::catalogue::types
