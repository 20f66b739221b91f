#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBVS: keys by which the costs of a cost centre are distributed. The shares (BB_VERTEILSCHLUSSEL) bring a row
// each; without their columns a key is one row.
constexpr ListDescription description{
    .key = "BBVS",
    .base = "BB_VERTEILSCHLUSSEL_KOPF",
    .label = 27500,
    .columns =
        {
            {1, 27501, text, "KOSTENSTELLE.NUMBER"},
            {2, 27502, text, "KOSTENSTELLE.NAME"},
            {3, 27503, text, "BB_VERTEILSCHLUSSEL_KOPF.NUMMER"},
            {4, 27504, text, "BB_VERTEILSCHLUSSEL_KOPF.BEZEICHNUNG"},
            {5, 27505, fourDigits, "BB_VERTEILSCHLUSSEL_KOPF.JAHR"},
            {6, 27506, text, "(CASE WHEN BB_VERTEILSCHLUSSEL_KOPF.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {7, 27507, text, "ACCESS_LEVELS.NAME"},
            {8, 27508, text, "ACCESS_LEVELS.NAME_LANG"},
            {9, 27509, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {10, 27510, text, "ACCESS_LEVELS.FUNKTIONSBEREICH"},
            {20, 27511, text, "BB_VERTEILSCHLUSSEL_KOPF.VERTEILBASIS"},
            {21, 27512, date, "BB_VERTEILSCHLUSSEL_KOPF.GULTIG_VON"},
            {22, 27513, date, "BB_VERTEILSCHLUSSEL_KOPF.GULTIG_BIS"},
            {23, 27514, amount, "BB_VERTEILSCHLUSSEL_KOPF.VERTEILBETRAG", sum},
            {24, 27515, amount, "BB_VERTEILSCHLUSSEL_KOPF.UMGELEGT", sum},
            {25, 27516, twoDecimals, "BB_VERTEILSCHLUSSEL_KOPF.SUMME_BASIS", sum},
            {26, 27517, twoDecimals, "BB_VERTEILSCHLUSSEL_KOPF.SUMME_ANTEIL"},
            {27, 27518, text, "(CASE WHEN BB_VERTEILSCHLUSSEL_KOPF.ABGESCHLOSSEN = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {28, 27519, date, "BB_VERTEILSCHLUSSEL_KOPF.ABSCHLUSSDATUM"},
            {29, 27520, text, "BB_VERTEILSCHLUSSEL_KOPF.ERSTELLER"},
            {30, 27521, text, "BB_VERTEILSCHLUSSEL_KOPF.BEMERKUNG"},
            {31, 27522, date, "BB_VERTEILSCHLUSSEL_KOPF.ERSTELLUNGSDATUM"},
            {32, 27523, date, "BB_VERTEILSCHLUSSEL_KOPF.STORNODATUM"},
            {40, 27524, whole, "BB_VERTEILSCHLUSSEL.ZEILE"},
            {41, 27525, text, "BB_VERTEILSCHLUSSEL.KOSTENSTELLE"},
            {42, 27526, text, "BB_VERTEILSCHLUSSEL.KOSTENSTELLE_LANG"},
            {43, 27527, text, "BB_VERTEILSCHLUSSEL.PRODUKT"},
            {44, 27528, text, "BB_VERTEILSCHLUSSEL.PRODUKT_LANG"},
            {45, 27529, twoDecimals, "BB_VERTEILSCHLUSSEL.BASISWERT", sum},
            {46, 27530, twoDecimals, "BB_VERTEILSCHLUSSEL.ANTEIL"},
            {47, 27531, amount, "BB_VERTEILSCHLUSSEL.BETRAG", sum},
            {48, 27532, text, "BB_VERTEILSCHLUSSEL.BEMERKUNG"},
        },
    .joins =
        {
            {"1, 2", "", " LEFT JOIN KOSTENSTELLE ON KOSTENSTELLE.ID = BB_VERTEILSCHLUSSEL_KOPF.ID_KOSTENSTELLE"},
            {"7-10", "", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = BB_VERTEILSCHLUSSEL_KOPF.ID_ACCESS_LEVELS"},
            {"40-48", "", " LEFT JOIN BB_VERTEILSCHLUSSEL ON BB_VERTEILSCHLUSSEL.ID_BB_VERTEILSCHLUSSEL_KOPF = BB_VERTEILSCHLUSSEL_KOPF.ID"},
        },
    .choices =
        {
            {"VERTSCH_BB", "5, 3, 4, 6, 1, 2, 20-24, 27, 28, 41-47, 29, 30"},
            {"VERTSCH_BB", "7, 8", "BB"},
            {"VERTSCH_BB", "7", "SACHSEN"},
            {"VERTSCH_BB", "25, 26", "MA49"},
        },
};

} // namespace

constinit const ListType bbvs = defineType<description>();

} // namespace tamarok::catalogue::types
