#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBSTRK: small-game bags, one row for each species of a hunt. OBF is the forest office in charge, ERLEGER the
// hunter, PERSONAL2 the leader of the hunt.
constexpr ListDescription description{
    .key = "BBSTRK",
    .base = "BB_STRECKE_NIEDER",
    .label = 26750,
    .columns =
        {
            {1, 26751, text, "BB_STRECKE_NIEDER.NUMMER"},
            {2, 26752, date, "BB_STRECKE_NIEDER.DATUM"},
            {3, 26753, text, "BB_STRECKE_NIEDER.JAGDJAHR"},
            {4, 26754, whole, "BB_STRECKE_NIEDER.STUCK", sum},
            {5, 26755, text, "(CASE WHEN BB_STRECKE_NIEDER.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {6, 26756, oneDecimal, "BB_STRECKE_NIEDER.GEWICHT", sum},
            {7, 26757, text, "BB_JAGDBEZIRKE.NUMMER"},
            {8, 26758, text, "BB_JAGDBEZIRKE.NAME"},
            {9, 26759, text, "BB_JAGDBEZIRKE.BEZEICHNUNG"},
            {20, 26760, whole, "BB_STRECKE_NIEDER.MANNLICH", sum},
            {21, 26761, whole, "BB_STRECKE_NIEDER.WEIBLICH", sum},
            {22, 26762, whole, "BB_STRECKE_NIEDER.SCHUTZEN", sum},
            {23, 26763, whole, "BB_STRECKE_NIEDER.TREIBER", sum},
            {24, 26764, whole, "BB_STRECKE_NIEDER.HUNDE", sum},
            {25, 26765, text, "BB_STRECKE_NIEDER.VERWERTUNG"},
            {26, 26766, amount, "BB_STRECKE_NIEDER.PREIS"},
            {27, 26767, amount, "BB_STRECKE_NIEDER.ERLOS", sum},
            {28, 26768, text, "(CASE WHEN BB_STRECKE_NIEDER.UNTERSUCHT = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {29, 26769, text, "BB_STRECKE_NIEDER.BEMERKUNG"},
            {30, 26770, date, "BB_STRECKE_NIEDER.ERSTELLUNGSDATUM"},
            {31, 26771, date, "BB_STRECKE_NIEDER.STORNODATUM"},
            {32, 26772, fourDigits, "YEAR(BB_STRECKE_NIEDER.DATUM)"},
            {33, 26773, twoDigits, "MONTH(BB_STRECKE_NIEDER.DATUM)"},
            {40, 26774, text, "OBF.NAME"},
            {41, 26775, text, "OBF.NAME_LANG"},
            {50, 26776, text, "ACCESS_LEVELS0.NAME"},
            {51, 26777, text, "ACCESS_LEVELS0.NAME_LANG"},
            {55, 26778, text, "ACCESS_LEVELS1.NAME"},
            {56, 26779, text, "ACCESS_LEVELS1.NAME_LANG"},
            {60, 26780, text, "ACCESS_LEVELS2.NAME"},
            {61, 26781, text, "ACCESS_LEVELS2.NAME_LANG"},
            {65, 26782, text, "ACCESS_LEVELS_ERSTELLER.NAME"},
            {66, 26783, text, "ACCESS_LEVELS_ERSTELLER.NAME_LANG"},
            {70, 26784, text, "ERLEGER.KURZBEZEICHNUNG"},
            {71, 26785, text, "ERLEGER.NUMMER"},
            {72, 26786, text, "ERLEGER.NAME"},
            {73, 26787, text, "ERLEGER.VORNAME"},
            {80, 26788, text, "BB_T_WILDART.NUMMER"},
            {81, 26789, text, "BB_T_WILDART.SHORT"},
            {82, 26790, text, "BB_T_WILDART.LONG"},
            {83, 26791, text, "(CASE WHEN BB_T_WILDART.WILDBRETVERKAUF = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {90, 26792, text, "BB_T_JAGDART.NUMMER"},
            {91, 26793, text, "BB_T_JAGDART.SHORT"},
            {92, 26794, text, "BB_T_JAGDART.LONG"},
            {95, 26795, text, "BB_T_LANDKREIS.NUMMER"},
            {96, 26796, text, "BB_T_LANDKREIS.SHORT"},
            {97, 26797, text, "BB_T_LANDKREIS.LONG"},
            {100, 26798, text, "WALDORT.WO1"},
            {101, 26799, text, "WALDORT.WO2"},
            {102, 26800, text, "WALDORT.WO3"},
            {103, 26801, text, "WALDORT.WO4"},
            {104, 26802, text, "WALDORT.WO5"},
            {105, 26803, text, "WALDORT.WO6"},
            {106, 26804, text, "WALDORT.LANGNAME"},
            {110, 26805, text, "BB_T_TODESURSACHE.NUMMER"},
            {111, 26806, text, "BB_T_TODESURSACHE.SHORT"},
            {112, 26807, text, "BB_T_TODESURSACHE.LONG"},
            {120, 26808, text, "PERSONAL2.KURZBEZEICHNUNG"},
            {121, 26809, text, "PERSONAL2.NUMMER"},
            {122, 26810, text, "PERSONAL2.NAME"},
            {123, 26811, text, "PERSONAL2.VORNAME"},
            {130, 26812, text, "BB_T_JAGERSTATUS.NUMMER"},
            {131, 26813, text, "BB_T_JAGERSTATUS.SHORT"},
            {132, 26814, text, "BB_T_JAGERSTATUS.LONG"},
        },
    .joins =
        {
            {"7-9", "", " LEFT JOIN BB_JAGDBEZIRKE ON BB_JAGDBEZIRKE.ID = BB_STRECKE_NIEDER.ID_BB_JAGDBEZIRKE"},
            {"40, 41", "", " LEFT JOIN ACCESS_LEVELS OBF ON OBF.ID = BB_STRECKE_NIEDER.ID_ACCESS_LEVELS_OBF"},
            {"50, 51", "", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS0 ON ACCESS_LEVELS0.ID = BB_STRECKE_NIEDER.ID_ACCESS_LEVELS"},
            {"55, 56", "50", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS1 ON ACCESS_LEVELS1.ACCESS_LEVELS = LEFT(ACCESS_LEVELS0.ACCESS_LEVELS,LEN(ACCESS_LEVELS0.ACCESS_LEVELS)-2){+}'00'"},
            {"60, 61", "50", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS2 ON ACCESS_LEVELS2.ACCESS_LEVELS = LEFT(ACCESS_LEVELS0.ACCESS_LEVELS,LEN(ACCESS_LEVELS0.ACCESS_LEVELS)-4){+}'0000'"},
            {"65, 66", "", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS_ERSTELLER ON ACCESS_LEVELS_ERSTELLER.ID = BB_STRECKE_NIEDER.ID_ACCESS_LEVELS_ERSTELLER"},
            {"70-73", "", " LEFT JOIN PERSONAL ERLEGER ON ERLEGER.ID_PERSONAL = BB_STRECKE_NIEDER.ID_PERSONAL_ERLEGER"},
            {"80-83", "", " LEFT JOIN BB_T_WILDART ON BB_T_WILDART.ID = BB_STRECKE_NIEDER.ID_BB_T_WILDART"},
            {"90-92", "", " LEFT JOIN BB_T_JAGDART ON BB_T_JAGDART.ID = BB_STRECKE_NIEDER.ID_BB_T_JAGDART"},
            {"95-97", "", " LEFT JOIN BB_T_LANDKREIS ON BB_T_LANDKREIS.ID = BB_STRECKE_NIEDER.ID_BB_T_LANDKREIS"},
            {"100-106", "", " LEFT JOIN WALDORT ON WALDORT.ID_WALDORT = BB_STRECKE_NIEDER.ID_WALDORT"},
            {"110-112", "", " LEFT JOIN BB_T_TODESURSACHE ON BB_T_TODESURSACHE.ID = BB_STRECKE_NIEDER.ID_BB_T_TODESURSACHE"},
            {"120-123", "", " LEFT JOIN PERSONAL PERSONAL2 ON PERSONAL2.ID_PERSONAL = BB_STRECKE_NIEDER.ID_PERSONAL2"},
            {"130-132", "", " LEFT JOIN BB_T_JAGERSTATUS ON BB_T_JAGERSTATUS.ID = BB_STRECKE_NIEDER.ID_BB_T_JAGERSTATUS"},
        },
    .choices =
        {
            {"BBSTRK", "3, 1, 2, 5, 7, 8, 82, 92, 112, 4, 20, 21, 6, 22-24, 25, 27, 70, 120, 97, 106, 132, 28, 29"},
            {"BBSTRK", "50, 55, 60, 40, 65", "BB"},
            {"BBSTRK", "40, 60", "SACHSEN"},
            {"BBSTRK", "26, 32, 33", "MA49"},
        },
};

} // namespace

constinit const ListType bbstrk = defineType<description>();

} // namespace tamarok::catalogue::types
