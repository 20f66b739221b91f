#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// MSCH: a row is a machine log: a machine with its purchase, its hours and its running costs. USERS is the person in
// charge, BBF_GRUPPE the group of machines. No join multiplies rows.
constexpr ListDescription description{
    .key = "MSCH",
    .base = "SCH_MASCHINENBUCH",
    .label = 29250,
    .columns =
        {
            {1, 29251, text, "SCH_MASCHINENBUCH.NUMMER"},
            {2, 29252, text, "SCH_MASCHINENBUCH.BEZEICHNUNG"},
            {3, 29253, text, "SCH_MASCHINENBUCH.HERSTELLER"},
            {4, 29254, text, "SCH_MASCHINENBUCH.TYP"},
            {5, 29255, text, "SCH_MASCHINENBUCH.KENNZEICHEN"},
            {6, 29256, text, "SCH_MASCHINENBUCH.FAHRGESTELLNUMMER"},
            {7, 29257, fourDigits, "SCH_MASCHINENBUCH.BAUJAHR"},
            {8, 29258, whole, "SCH_MASCHINENBUCH.LEISTUNG_KW"},
            {9, 29259, threeDecimals, "SCH_MASCHINENBUCH.GEWICHT"},
            {10, 29260, date, "SCH_MASCHINENBUCH.ANSCHAFFUNGSDATUM"},
            {11, 29261, amount, "SCH_MASCHINENBUCH.ANSCHAFFUNGSWERT", sum},
            {12, 29262, whole, "SCH_MASCHINENBUCH.NUTZUNGSDAUER"},
            {13, 29263, amount, "SCH_MASCHINENBUCH.ABSCHREIBUNG", sum},
            {14, 29264, amount, "SCH_MASCHINENBUCH.RESTWERT", sum},
            {15, 29265, twoDecimals, "SCH_MASCHINENBUCH.SATZ"},
            {16, 29266, oneDecimal, "SCH_MASCHINENBUCH.BETRIEBSSTUNDEN", sum},
            {17, 29267, oneDecimal, "SCH_MASCHINENBUCH.TREIBSTOFF", sum},
            {18, 29268, amount, "SCH_MASCHINENBUCH.TREIBSTOFFKOSTEN", sum},
            {19, 29269, amount, "SCH_MASCHINENBUCH.REPARATURKOSTEN", sum},
            {20, 29270, amount, "ROUND(ISNULL(SCH_MASCHINENBUCH.TREIBSTOFFKOSTEN,0)+ISNULL(SCH_MASCHINENBUCH.REPARATURKOSTEN,0),2)", sum},
            {21, 29271, date, "SCH_MASCHINENBUCH.PRUEFDATUM"},
            {22, 29272, date, "SCH_MASCHINENBUCH.AUSSCHEIDUNGSDATUM"},
            {23, 29273, text, "(CASE WHEN SCH_MASCHINENBUCH.DISABLE = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {24, 29274, twoDecimals, "(CASE WHEN ISNULL(SCH_MASCHINENBUCH.BETRIEBSSTUNDEN,0)<>0 THEN ROUND({ROW 20}/SCH_MASCHINENBUCH.BETRIEBSSTUNDEN,2) ELSE 0 END)", max},
            {40, 29275, text, "USERS.NAME"},
            {41, 29276, text, "USERS.LONGNAME"},
            {50, 29277, text, "BBF_GRUPPE.NUMBER"},
            {51, 29278, text, "BBF_GRUPPE.NAME"},
        },
    .joins =
        {
            {"40-41", "", " LEFT JOIN USERS ON USERS.ID = SCH_MASCHINENBUCH.ID_USERS"},
            {"50-51", "", " LEFT JOIN BBF_GRUPPE ON BBF_GRUPPE.ID = SCH_MASCHINENBUCH.ID_BBF_GRUPPE"},
        },
    .choices =
        {
            {"MBUCH_SCH", "1-2, 50-51, 3-24, 40-41"},
        },
};

} // namespace

constinit const ListType msch = defineType<description>();

} // namespace tamarok::catalogue::types
