#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBOBJ: objects of cost accounting, such as roads, buildings, vehicles and machines. PERSONAL is the person in
// charge. The group is joined besides the contract's aliases, since the list's row tag reads it.
constexpr ListDescription description{
    .key = "BBOBJ",
    .base = "BB_T_OBJEKTE",
    .label = 26250,
    .columns =
        {
            {1, 26251, text, "BB_T_OBJEKTE.NUMMER"},
            {2, 26252, text, "BB_T_OBJEKTE.SHORT"},
            {3, 26253, text, "BB_T_OBJEKTE.LONG"},
            {4, 26254, text, "BB_T_OBJEKTE.BEZEICHNUNG"},
            {5, 26255, text, "BB_T_OBJEKTE.KENNZEICHEN"},
            {6, 26256, text, "BB_T_OBJEKTE.HERSTELLER"},
            {7, 26257, text, "BB_T_OBJEKTE.TYP"},
            {8, 26258, text, "BB_T_OBJEKTE.SERIENNUMMER"},
            {9, 26259, fourDigits, "BB_T_OBJEKTE.BAUJAHR"},
            {10, 26260, text, "(CASE WHEN BB_T_OBJEKTE.STANDART = 1 THEN 'Standart' ELSE Null END)"},
            {11, 26261, whole, "BB_T_OBJEKTE.LDNR"},
            {12, 26262, text, "(CASE WHEN BB_T_OBJEKTE.DISABLE = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {13, 26263, text, "BB_T_OBJEKTGRUPPE.NUMMER"},
            {14, 26264, text, "BB_T_OBJEKTGRUPPE.SHORT"},
            {15, 26265, text, "BB_T_OBJEKTGRUPPE.LONG"},
            {20, 26266, date, "BB_T_OBJEKTE.ANSCHAFFUNGSDATUM"},
            {21, 26267, amount, "BB_T_OBJEKTE.ANSCHAFFUNGSWERT", sum},
            {22, 26268, whole, "BB_T_OBJEKTE.NUTZUNGSDAUER"},
            {23, 26269, amount, "BB_T_OBJEKTE.ABSCHREIBUNG", sum},
            {24, 26270, amount, "BB_T_OBJEKTE.RESTWERT", sum},
            {25, 26271, whole, "BB_T_OBJEKTE.LEISTUNG_KW"},
            {26, 26272, text, "BB_T_OBJEKTE.KRAFTSTOFF"},
            {27, 26273, whole, "BB_T_OBJEKTE.TANKINHALT"},
            {28, 26274, whole, "BB_T_OBJEKTE.KM_STAND", max},
            {29, 26275, oneDecimal, "BB_T_OBJEKTE.BETRIEBSSTUNDEN", max},
            {30, 26276, amount, "BB_T_OBJEKTE.STUNDENSATZ"},
            {31, 26277, amount, "BB_T_OBJEKTE.KM_SATZ"},
            {32, 26278, oneDecimal, "BB_T_OBJEKTE.LANGE", sum},
            {33, 26279, oneDecimal, "BB_T_OBJEKTE.FLACHE", sum},
            {34, 26280, text, "BB_T_OBJEKTE.VERSICHERUNG"},
            {35, 26281, date, "BB_T_OBJEKTE.PRUFUNG_BIS"},
            {36, 26282, date, "BB_T_OBJEKTE.ABGANGSDATUM"},
            {37, 26283, text, "BB_T_OBJEKTE.BEMERKUNG"},
            {50, 26284, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {51, 26285, text, "ACCESS_LEVELS.NAME"},
            {52, 26286, text, "ACCESS_LEVELS.NAME_LANG"},
            {53, 26287, text, "ACCESS_LEVELS.FUNKTIONSBEREICH"},
            {60, 26288, text, "ACL_0.NAME"},
            {61, 26289, text, "ACL_0.NAME_LANG"},
            {65, 26290, text, "ACL_1.NAME"},
            {66, 26291, text, "ACL_1.NAME_LANG"},
            {70, 26292, text, "ACL_2.NAME"},
            {71, 26293, text, "ACL_2.NAME_LANG"},
            {80, 26294, text, "KOSTENSTELLE.NUMBER"},
            {81, 26295, text, "KOSTENSTELLE.NAME"},
            {90, 26296, text, "PERSONAL.KURZBEZEICHNUNG"},
            {91, 26297, text, "PERSONAL.NUMMER"},
            {92, 26298, text, "PERSONAL.NAME"},
            {93, 26299, text, "PERSONAL.VORNAME"},
            {100, 26300, text, "BB_T_EINSATZART.NUMMER"},
            {101, 26301, text, "BB_T_EINSATZART.SHORT"},
            {102, 26302, text, "BB_T_EINSATZART.LONG"},
        },
    .joins =
        {
            {"13-15", "", " LEFT JOIN BB_T_OBJEKTGRUPPE ON BB_T_OBJEKTGRUPPE.ID = BB_T_OBJEKTE.ID_BB_T_OBJEKTGRUPPE"},
            {"50-53", "", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = BB_T_OBJEKTE.ID_ACCESS_LEVELS"},
            {"60, 61", "50", " LEFT JOIN ACCESS_LEVELS ACL_0 ON ACL_0.ACCESS_LEVELS = ACCESS_LEVELS.ACCESS_LEVELS"},
            {"65, 66", "60", " LEFT JOIN ACCESS_LEVELS ACL_1 ON ACL_1.ACCESS_LEVELS = LEFT(ACL_0.ACCESS_LEVELS,LEN(ACL_0.ACCESS_LEVELS)-2){+}'00'"},
            {"70, 71", "60", " LEFT JOIN ACCESS_LEVELS ACL_2 ON ACL_2.ACCESS_LEVELS = LEFT(ACL_0.ACCESS_LEVELS,LEN(ACL_0.ACCESS_LEVELS)-4){+}'0000'"},
            {"80, 81", "", " LEFT JOIN KOSTENSTELLE ON KOSTENSTELLE.ID = BB_T_OBJEKTE.ID_KOSTENSTELLE"},
            {"90-93", "", " LEFT JOIN PERSONAL ON PERSONAL.ID_PERSONAL = BB_T_OBJEKTE.ID_PERSONAL"},
            {"100-102", "", " LEFT JOIN BB_T_EINSATZART ON BB_T_EINSATZART.ID = BB_T_OBJEKTE.ID_BB_T_EINSATZART"},
        },
    .choices =
        {
            {"BBOBJ", "13, 15, 1-5, 10, 12, 6-9, 102, 80, 81, 90, 20-36, 37"},
            {"BBOBJ", "51, 60, 65, 70", "BB"},
            {"BBOBJ", "51, 70", "SACHSEN"},
            {"BBOBJ", "11, 14", "MA49"},
        },
};

} // namespace

constinit const ListType bbobj = defineType<description>();

} // namespace tamarok::catalogue::types
