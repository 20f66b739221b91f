#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBHUNDE: hunting dogs, one row for each dog. HUNDEFUHRER is its handler, whose status as a hunter the dog's
// record keeps; REV is the forest district in which the dog works.
constexpr ListDescription description{
    .key = "BBHUNDE",
    .base = "BB_JAGDHUNDE",
    .label = 24500,
    .columns =
        {
            {1, 24501, text, "BB_JAGDHUNDE.NUMMER"},
            {2, 24502, text, "BB_JAGDHUNDE.GEBURTSNAME"},
            {3, 24503, text, "BB_JAGDHUNDE.RUFNAME"},
            {4, 24504, text, "BB_JAGDHUNDE.GESCHLECHT"},
            {5, 24505, text, "BB_JAGDHUNDE.FARBE"},
            {6, 24506, date, "BB_JAGDHUNDE.WURFDATUM"},
            {7, 24507, text, "BB_JAGDHUNDE.ZUCHTBUCHNUMMER"},
            {8, 24508, text, "BB_JAGDHUNDE.CHIPNUMMER"},
            {9, 24509, text, "BB_JAGDHUNDE.STEUERMARKE"},
            {10, 24510, whole, "BB_JAGDHUNDE.SCHULTERHOHE", max},
            {11, 24511, oneDecimal, "BB_JAGDHUNDE.GEWICHT", max},
            {12, 24512, text, "BB_JAGDHUNDE.PRUFUNG"},
            {13, 24513, date, "BB_JAGDHUNDE.PRUFUNG_DATUM"},
            {14, 24514, whole, "BB_JAGDHUNDE.PRUFUNG_PUNKTE", max},
            {15, 24515, text, "(CASE WHEN BB_JAGDHUNDE.ANERKANNT = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {16, 24516, date, "BB_JAGDHUNDE.ANERKANNT_AB"},
            {17, 24517, date, "BB_JAGDHUNDE.ANERKANNT_BIS"},
            {18, 24518, date, "BB_JAGDHUNDE.IMPFUNG_BIS"},
            {19, 24519, date, "BB_JAGDHUNDE.VERSICHERUNG_BIS"},
            {20, 24520, whole, "BB_JAGDHUNDE.NACHSUCHEN", sum},
            {21, 24521, whole, "BB_JAGDHUNDE.NACHSUCHEN_ERFOLG", sum},
            {22, 24522, oneDecimal, "(CASE WHEN BB_JAGDHUNDE.NACHSUCHEN > 0 THEN ROUND(BB_JAGDHUNDE.NACHSUCHEN_ERFOLG*100.0/BB_JAGDHUNDE.NACHSUCHEN,1) ELSE NULL END)"},
            {23, 24523, whole, "BB_JAGDHUNDE.EINSATZTAGE", sum},
            {24, 24524, amount, "BB_JAGDHUNDE.ENTSCHADIGUNG", sum},
            {25, 24525, date, "BB_JAGDHUNDE.ABGANGSDATUM"},
            {26, 24526, text, "BB_JAGDHUNDE.ABGANGSGRUND"},
            {27, 24527, text, "BB_JAGDHUNDE.BEMERKUNG"},
            {28, 24528, text, "(CASE WHEN BB_JAGDHUNDE.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {29, 24529, date, "BB_JAGDHUNDE.STORNODATUM"},
            {30, 24530, date, "BB_JAGDHUNDE.ERSTELLUNGSDATUM"},
            {40, 24531, text, "ACCESS_LEVELS0.NAME"},
            {41, 24532, text, "ACCESS_LEVELS0.NAME_LANG"},
            {45, 24533, text, "ACCESS_LEVELS1.NAME"},
            {46, 24534, text, "ACCESS_LEVELS1.NAME_LANG"},
            {50, 24535, text, "ACCESS_LEVELS2.NAME"},
            {51, 24536, text, "ACCESS_LEVELS2.NAME_LANG"},
            {55, 24537, text, "ACCESS_LEVELS_ERSTELLER.NAME"},
            {56, 24538, text, "ACCESS_LEVELS_ERSTELLER.NAME_LANG"},
            {60, 24539, text, "REV.NAME"},
            {61, 24540, text, "REV.NAME_LANG"},
            {70, 24541, text, "BB_JAGDBEZIRKE.NUMMER"},
            {71, 24542, text, "BB_JAGDBEZIRKE.NAME"},
            {72, 24543, text, "BB_JAGDBEZIRKE.BEZEICHNUNG"},
            {80, 24544, text, "HUNDEFUHRER.KURZBEZEICHNUNG"},
            {81, 24545, text, "HUNDEFUHRER.NUMMER"},
            {82, 24546, text, "HUNDEFUHRER.NAME"},
            {83, 24547, text, "HUNDEFUHRER.VORNAME"},
            {84, 24548, text, "HUNDEFUHRER.ORT"},
            {85, 24549, text, "HUNDEFUHRER.TELEFON"},
            {90, 24550, text, "BB_T_HUNDERASSE.NUMMER"},
            {91, 24551, text, "BB_T_HUNDERASSE.SHORT"},
            {92, 24552, text, "BB_T_HUNDERASSE.LONG"},
            {95, 24553, text, "BB_T_JAGERSTATUS.NUMMER"},
            {96, 24554, text, "BB_T_JAGERSTATUS.SHORT"},
            {97, 24555, text, "BB_T_JAGERSTATUS.LONG"},
        },
    .joins =
        {
            {"40, 41", "", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS0 ON ACCESS_LEVELS0.ID = BB_JAGDHUNDE.ID_ACCESS_LEVELS"},
            {"45, 46", "40", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS1 ON ACCESS_LEVELS1.ACCESS_LEVELS = LEFT(ACCESS_LEVELS0.ACCESS_LEVELS,LEN(ACCESS_LEVELS0.ACCESS_LEVELS)-2){+}'00'"},
            {"50, 51", "40", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS2 ON ACCESS_LEVELS2.ACCESS_LEVELS = LEFT(ACCESS_LEVELS0.ACCESS_LEVELS,LEN(ACCESS_LEVELS0.ACCESS_LEVELS)-4){+}'0000'"},
            {"55, 56", "", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS_ERSTELLER ON ACCESS_LEVELS_ERSTELLER.ID = BB_JAGDHUNDE.ID_ACCESS_LEVELS_ERSTELLER"},
            {"60, 61", "", " LEFT JOIN ACCESS_LEVELS REV ON REV.ID = BB_JAGDHUNDE.ID_ACCESS_LEVELS_REV"},
            {"70-72", "", " LEFT JOIN BB_JAGDBEZIRKE ON BB_JAGDBEZIRKE.ID = BB_JAGDHUNDE.ID_BB_JAGDBEZIRKE"},
            {"80-85", "", " LEFT JOIN PERSONAL HUNDEFUHRER ON HUNDEFUHRER.ID_PERSONAL = BB_JAGDHUNDE.ID_PERSONAL_HUNDEFUHRER"},
            {"90-92", "", " LEFT JOIN BB_T_HUNDERASSE ON BB_T_HUNDERASSE.ID = BB_JAGDHUNDE.ID_BB_T_HUNDERASSE"},
            {"95-97", "", " LEFT JOIN BB_T_JAGERSTATUS ON BB_T_JAGERSTATUS.ID = BB_JAGDHUNDE.ID_BB_T_JAGERSTATUS"},
        },
    .choices =
        {
            {"BBHUNDE", "1-3, 28, 92, 4-6, 7, 8, 80, 84, 85, 97, 70, 71, 12-17, 18, 19, 20, 21, 23, 24-26, 27"},
            {"BBHUNDE", "40, 45, 50, 55, 60", "BB"},
            {"BBHUNDE", "45, 50, 9", "SACHSEN"},
            {"BBHUNDE", "10, 11", "MA49"},
        },
};

} // namespace

constinit const ListType bbhunde = defineType<description>();

} // namespace tamarok::catalogue::types
