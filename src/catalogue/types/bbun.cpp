#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBUN: taking over of cost accounting records. A row is a transfer of BB_TAKL01_KLR, or one of its operating records as
// soon as a column of a record is shown: BB_TAKL02_KLR_BETRIEB brings several rows for a transfer, in each of which the
// transfer's counts and amounts repeat. A record has at most one error. Ids are stored in lists and models: a number that
// is free is never used again for another column.
constexpr ListDescription description{
    .key = "BBUN",
    .base = "BB_TAKL01_KLR",
    .label = 27250,
    .columns =
        {
            {1, 27251, text, "BB_TAKL01_KLR.NUMMER"},
            {2, 27252, text, "BB_TAKL01_KLR.BEZEICHNUNG"},
            {3, 27253, date, "BB_TAKL01_KLR.UBERNAHMEDATUM"},
            {4, 27254, timeWithSeconds, "BB_TAKL01_KLR.UHRZEIT"},
            {5, 27255, fourDigits, "BB_TAKL01_KLR.JAHR"},
            {6, 27256, twoDigits, "BB_TAKL01_KLR.MONAT"},
            {7, 27257, text, "BB_TAKL01_KLR.QUELLE"},
            {8, 27258, text, "BB_TAKL01_KLR.DATEINAME"},
            {9, 27259, text, "(CASE WHEN BB_TAKL01_KLR.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {10, 27260, date, "BB_TAKL01_KLR.STORNODATUM"},
            {11, 27261, text, "(CASE WHEN BB_TAKL01_KLR.ABGESCHLOSSEN = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {12, 27262, date, "BB_TAKL01_KLR.FREIGABEDATUM"},
            {13, 27263, whole, "BB_TAKL01_KLR.ANZAHL_SATZE", sum},
            {14, 27264, whole, "BB_TAKL01_KLR.ANZAHL_FEHLER", sum},
            {15, 27265, amount, "BB_TAKL01_KLR.KOSTEN", sum},
            {16, 27266, amount, "BB_TAKL01_KLR.ERLOSE", sum},
            {17, 27267, text, "BB_TAKL01_KLR.BEMERKUNG"},
            // Operating records.
            {40, 27268, whole, "BB_TAKL02_KLR_BETRIEB.SATZNUMMER"},
            {41, 27269, text, "BB_TAKL02_KLR_BETRIEB.BELEGNUMMER"},
            {42, 27270, date, "BB_TAKL02_KLR_BETRIEB.BELEGDATUM"},
            {43, 27271, text, "BB_TAKL02_KLR_BETRIEB.BUCHUNGSTEXT"},
            {44, 27272, twoDecimals, "BB_TAKL02_KLR_BETRIEB.STUNDEN", sum},
            {45, 27273, threeDecimals, "BB_TAKL02_KLR_BETRIEB.MENGE", sum},
            {46, 27274, twoDecimals, "BB_TAKL02_KLR_BETRIEB.PREIS"},
            {47, 27275, amount, "BB_TAKL02_KLR_BETRIEB.KOSTEN", sum},
            {48, 27276, amount, "BB_TAKL02_KLR_BETRIEB.ERLOSE", sum},
            {49, 27277, amount, "ROUND(ISNULL(BB_TAKL02_KLR_BETRIEB.ERLOSE,0)-ISNULL(BB_TAKL02_KLR_BETRIEB.KOSTEN,0),2)", sum},
            // The error of a record.
            {60, 27278, whole, "BB_TAKL22_KLR_FEHLER.FEHLERNUMMER"},
            {61, 27279, text, "BB_TAKL22_KLR_FEHLER.FEHLERTEXT"},
            {62, 27280, text, "BB_TAKL22_KLR_FEHLER.FELDNAME"},
            {63, 27281, text, "BB_TAKL22_KLR_FEHLER.FELDWERT"},
            {64, 27282, text, "(CASE WHEN BB_TAKL22_KLR_FEHLER.ERLEDIGT = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {65, 27283, date, "BB_TAKL22_KLR_FEHLER.ERLEDIGT_DATUM"},
        },
    .joins =
        {
            {"40-49", "", " LEFT JOIN BB_TAKL02_KLR_BETRIEB ON BB_TAKL02_KLR_BETRIEB.ID_BB_TAKL01_KLR = BB_TAKL01_KLR.ID"},
            {"60-65", "40", " LEFT JOIN BB_TAKL22_KLR_FEHLER ON BB_TAKL22_KLR_FEHLER.ID_BB_TAKL02_KLR_BETRIEB = BB_TAKL02_KLR_BETRIEB.ID"},
        },
    .choices =
        {
            {"KLR_UBERNAHME", "1-17, 40-49, 60-65"},
        },
};

} // namespace

constinit const ListType bbun = defineType<description>();

} // namespace tamarok::catalogue::types
