#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BBTALK: cost accounting records with their keys. A row is a transfer of BB_TAKL01_KLR, or one of its operating records
// as soon as a column of a record or of its keys is shown: BB_TAKL02_KLR_BETRIEB brings several rows for a transfer, in
// each of which the transfer's counts and amounts repeat. ERSTELLER is the level of the unit that sent the records, and
// ERSTELLER0 to ERSTELLER2 are its district, inspectorate and forest office. ERLOSART is the row of KOSTENART for a
// revenue. Ids are stored in lists and models: a number that is free is never used again for another column.
constexpr ListDescription description{
    .key = "BBTALK",
    .base = "BB_TAKL01_KLR",
    .label = 27000,
    .columns =
        {
            {1, 27001, text, "BB_TAKL01_KLR.NUMMER"},
            {2, 27002, text, "BB_TAKL01_KLR.BEZEICHNUNG"},
            {3, 27003, date, "BB_TAKL01_KLR.UBERNAHMEDATUM"},
            {4, 27004, timeWithSeconds, "BB_TAKL01_KLR.UHRZEIT"},
            {5, 27005, fourDigits, "BB_TAKL01_KLR.JAHR"},
            {6, 27006, twoDigits, "BB_TAKL01_KLR.MONAT"},
            {7, 27007, text, "BB_TAKL01_KLR.QUELLE"},
            {8, 27008, text, "BB_TAKL01_KLR.DATEINAME"},
            {9, 27009, text, "(CASE WHEN BB_TAKL01_KLR.STORNODATUM IS NULL THEN ' ' ELSE 'S' END)"},
            {10, 27010, date, "BB_TAKL01_KLR.STORNODATUM"},
            {11, 27011, text, "(CASE WHEN BB_TAKL01_KLR.ABGESCHLOSSEN = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {12, 27012, date, "BB_TAKL01_KLR.FREIGABEDATUM"},
            {13, 27013, whole, "BB_TAKL01_KLR.ANZAHL_SATZE", sum},
            {14, 27014, whole, "BB_TAKL01_KLR.ANZAHL_FEHLER", sum},
            {15, 27015, amount, "BB_TAKL01_KLR.KOSTEN", sum},
            {16, 27016, amount, "BB_TAKL01_KLR.ERLOSE", sum},
            {17, 27017, text, "BB_TAKL01_KLR.BEMERKUNG"},
            // Receiving level, sending level and its hierarchy.
            {25, 27018, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {26, 27019, text, "ACCESS_LEVELS.NAME"},
            {27, 27020, text, "ACCESS_LEVELS.NAME_LANG"},
            {30, 27021, text, "ERSTELLER.ACCESS_LEVELS"},
            {31, 27022, text, "ERSTELLER.NAME"},
            {32, 27023, text, "ERSTELLER.NAME_LANG"},
            {33, 27024, text, "ERSTELLER0.NAME"},
            {34, 27025, text, "ERSTELLER0.NAME_LANG"},
            {35, 27026, text, "ERSTELLER1.NAME"},
            {36, 27027, text, "ERSTELLER1.NAME_LANG"},
            {37, 27028, text, "ERSTELLER2.NAME"},
            {38, 27029, text, "ERSTELLER2.NAME_LANG"},
            // Operating records.
            {40, 27030, whole, "BB_TAKL02_KLR_BETRIEB.SATZNUMMER"},
            {41, 27031, text, "BB_TAKL02_KLR_BETRIEB.BELEGNUMMER"},
            {42, 27032, date, "BB_TAKL02_KLR_BETRIEB.BELEGDATUM"},
            {43, 27033, text, "BB_TAKL02_KLR_BETRIEB.BUCHUNGSTEXT"},
            {44, 27034, twoDecimals, "BB_TAKL02_KLR_BETRIEB.STUNDEN", sum},
            {45, 27035, threeDecimals, "BB_TAKL02_KLR_BETRIEB.MENGE", sum},
            {46, 27036, twoDecimals, "BB_TAKL02_KLR_BETRIEB.PREIS"},
            {47, 27037, amount, "BB_TAKL02_KLR_BETRIEB.KOSTEN", sum},
            {48, 27038, amount, "BB_TAKL02_KLR_BETRIEB.ERLOSE", sum},
            {49, 27039, amount, "ROUND(ISNULL(BB_TAKL02_KLR_BETRIEB.ERLOSE,0)-ISNULL(BB_TAKL02_KLR_BETRIEB.KOSTEN,0),2)", sum},
            // Keys of a record: where.
            {60, 27040, text, "KOSTENSTELLE.NUMBER"},
            {61, 27041, text, "KOSTENSTELLE.NAME"},
            {65, 27042, text, "WALDORT.LANGNAME"},
            {66, 27043, text, "WALDORT.WO1"},
            {67, 27044, text, "WALDORT.WO2"},
            {68, 27045, text, "WALDORT.WO3"},
            {69, 27046, text, "WALDORT.WO4"},
            {70, 27047, text, "WALDORT.WO5"},
            {71, 27048, text, "WALDORT.WO6"},
            {72, 27049, twoDecimals, "WALDORT.FLAECHE"},
            {75, 27050, text, "WALDBESITZER.NUMMER"},
            {76, 27051, text, "WALDBESITZER.KURZBEZEICHNUNG"},
            {77, 27052, text, "WALDBESITZER.NAME"},
            {78, 27053, text, "WALDBESITZER.ORT"},
            {80, 27054, text, "BB_T_EIGENTUMSART.NUMMER"},
            {81, 27055, text, "BB_T_EIGENTUMSART.SHORT"},
            {82, 27056, text, "BB_T_EIGENTUMSART.LONG"},
            // Keys of a record: order, project, object.
            {85, 27057, text, "BB_AUFTRAG_KOPF.AUFTRAG_NUMMER"},
            {86, 27058, text, "BB_AUFTRAG_KOPF.BEZEICHNUNG"},
            {87, 27059, date, "BB_AUFTRAG_KOPF.DATUM"},
            {90, 27060, text, "BB_T_PROJEKT_PLANUNG.NUMMER"},
            {91, 27061, text, "BB_T_PROJEKT_PLANUNG.SHORT"},
            {92, 27062, text, "BB_T_PROJEKT_PLANUNG.LONG"},
            {95, 27063, text, "BB_T_OBJEKTE.NUMMER"},
            {96, 27064, text, "BB_T_OBJEKTE.SHORT"},
            {97, 27065, text, "BB_T_OBJEKTE.LONG"},
            // Keys of a record: what was done.
            {100, 27066, text, "LEISTUNGSART.NUMBER"},
            {101, 27067, text, "LEISTUNGSART.NAME"},
            {105, 27068, text, "BB_T_LEI_ARBEITSVERFAHEREN.NUMMER"},
            {106, 27069, text, "BB_T_LEI_ARBEITSVERFAHEREN.SHORT"},
            {107, 27070, text, "BB_T_LEI_ARBEITSVERFAHEREN.LONG"},
            {110, 27071, text, "PRODUKT.NUMBER"},
            {111, 27072, text, "PRODUKT.NAME"},
            {115, 27073, text, "BB_T_KZ_LEISTUNG.NUMMER"},
            {116, 27074, text, "BB_T_KZ_LEISTUNG.SHORT"},
            {117, 27075, text, "BB_T_KZ_LEISTUNG.LONG"},
            {120, 27076, text, "BB_T_VOLLZUGSMASSNAHME.NUMMER"},
            {121, 27077, text, "BB_T_VOLLZUGSMASSNAHME.SHORT"},
            {122, 27078, text, "BB_T_VOLLZUGSMASSNAHME.LONG"},
            // Keys of a record: timber and goods.
            {125, 27079, text, "HOLZART.HA"},
            {126, 27080, text, "HOLZART.HA_LANG"},
            {127, 27081, text, "HOLZART.LNH"},
            {130, 27082, text, "HOLZSORTE.HS"},
            {131, 27083, text, "HOLZSORTE.HS_LANG"},
            {135, 27084, whole, "WARENKATALOG.NUMMER"},
            {136, 27085, text, "WARENKATALOG.BEZEICH1"},
            {137, 27086, text, "WARENKATALOG.BEZEICH2"},
            {140, 27087, text, "WARENGRUPPE.NUMMER"},
            {141, 27088, text, "WARENGRUPPE.GRUPPE"},
            {145, 27089, text, "WARENEINHEIT.EINHEIT"},
            {146, 27090, text, "WARENEINHEIT.EINHEIT_LANG"},
            // Keys of a record: accounts.
            {150, 27091, text, "KOSTENART.NUMBER"},
            {151, 27092, text, "KOSTENART.SHORT"},
            {152, 27093, text, "KOSTENART.NAME"},
            {155, 27094, text, "ERLOSART.NUMBER"},
            {156, 27095, text, "ERLOSART.SHORT"},
            {157, 27096, text, "ERLOSART.NAME"},
            {160, 27097, text, "BB_T_UNTERKONTO.NUMMER"},
            {161, 27098, text, "BB_T_UNTERKONTO.SHORT"},
            {162, 27099, text, "BB_T_UNTERKONTO.LONG"},
        },
    .joins =
        {
            {"25-27", "", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = BB_TAKL01_KLR.ID_ACCESS_LEVELS"},
            {"30-32", "", " LEFT JOIN ACCESS_LEVELS ERSTELLER ON ERSTELLER.ID = BB_TAKL01_KLR.ID_ACCESS_LEVELS_ERSTELLER"},
            {"33-34", "30", " LEFT JOIN ACCESS_LEVELS ERSTELLER0 ON ERSTELLER0.ACCESS_LEVELS = ERSTELLER.ACCESS_LEVELS"},
            {"35-36", "30", " LEFT JOIN ACCESS_LEVELS ERSTELLER1 ON ERSTELLER1.ACCESS_LEVELS = LEFT(ERSTELLER.ACCESS_LEVELS,LEN(ERSTELLER.ACCESS_LEVELS)-2){CONCAT}'00'"},
            {"37-38", "30", " LEFT JOIN ACCESS_LEVELS ERSTELLER2 ON ERSTELLER2.ACCESS_LEVELS = LEFT(ERSTELLER.ACCESS_LEVELS,LEN(ERSTELLER.ACCESS_LEVELS)-4){CONCAT}'0000'"},
            {"40-49", "", " LEFT JOIN BB_TAKL02_KLR_BETRIEB ON BB_TAKL02_KLR_BETRIEB.ID_BB_TAKL01_KLR = BB_TAKL01_KLR.ID"},
            {"60-61", "40", " LEFT JOIN KOSTENSTELLE ON KOSTENSTELLE.ID = BB_TAKL02_KLR_BETRIEB.ID_KOSTENSTELLE"},
            {"65-72", "40", " LEFT JOIN WALDORT ON WALDORT.ID_WALDORT = BB_TAKL02_KLR_BETRIEB.ID_WALDORT"},
            {"75-78", "40", " LEFT JOIN PERSONAL WALDBESITZER ON WALDBESITZER.ID_PERSONAL = BB_TAKL02_KLR_BETRIEB.ID_PERSONAL_WALDBESITZER"},
            {"80-82", "75", " LEFT JOIN BB_T_EIGENTUMSART ON BB_T_EIGENTUMSART.ID = WALDBESITZER.ID_BB_T_EIGENTUMSART"},
            {"85-87", "40", " LEFT JOIN BB_AUFTRAG_KOPF ON BB_AUFTRAG_KOPF.ID = BB_TAKL02_KLR_BETRIEB.ID_BB_AUFTRAG_KOPF"},
            {"90-92", "40", " LEFT JOIN BB_T_PROJEKT_PLANUNG ON BB_T_PROJEKT_PLANUNG.ID = BB_TAKL02_KLR_BETRIEB.ID_BB_T_PROJEKT_PLANUNG"},
            {"95-97", "40", " LEFT JOIN BB_T_OBJEKTE ON BB_T_OBJEKTE.ID = BB_TAKL02_KLR_BETRIEB.ID_BB_T_OBJEKTE"},
            {"100-101", "40", " LEFT JOIN LEISTUNGSART ON LEISTUNGSART.ID = BB_TAKL02_KLR_BETRIEB.ID_LEISTUNGSART"},
            {"105-107", "40", " LEFT JOIN BB_T_LEI_ARBEITSVERFAHEREN ON BB_T_LEI_ARBEITSVERFAHEREN.ID = BB_TAKL02_KLR_BETRIEB.ID_BB_T_LEI_ARBEITSVERFAHEREN"},
            {"110-111", "40", " LEFT JOIN PRODUKT ON PRODUKT.ID = BB_TAKL02_KLR_BETRIEB.ID_PRODUKT"},
            {"115-117", "40", " LEFT JOIN BB_T_KZ_LEISTUNG ON BB_T_KZ_LEISTUNG.ID = BB_TAKL02_KLR_BETRIEB.ID_BB_T_KZ_LEISTUNG"},
            {"120-122", "40", " LEFT JOIN BB_T_VOLLZUGSMASSNAHME ON BB_T_VOLLZUGSMASSNAHME.ID = BB_TAKL02_KLR_BETRIEB.ID_BB_T_VOLLZUGSMASSNAHME"},
            {"125-127", "40", " LEFT JOIN HOLZART ON HOLZART.ID = BB_TAKL02_KLR_BETRIEB.ID_HOLZART"},
            {"130-131", "40", " LEFT JOIN HOLZSORTE ON HOLZSORTE.ID = BB_TAKL02_KLR_BETRIEB.ID_HOLZSORTE"},
            {"135-137", "40", " LEFT JOIN WARENKATALOG ON WARENKATALOG.ART_ID = BB_TAKL02_KLR_BETRIEB.ID_WARENKATALOG"},
            {"140-141", "135", " LEFT JOIN WARENGRUPPE ON WARENGRUPPE.GRUPPE_ID = WARENKATALOG.GRUPPE_ID"},
            {"145-146", "40", " LEFT JOIN WARENEINHEIT ON WARENEINHEIT.EINHEIT_ID = BB_TAKL02_KLR_BETRIEB.ID_WARENEINHEIT"},
            {"150-152", "40", " LEFT JOIN KOSTENART ON KOSTENART.ID = BB_TAKL02_KLR_BETRIEB.ID_KOSTENART"},
            {"155-157", "40", " LEFT JOIN KOSTENART ERLOSART ON ERLOSART.ID = BB_TAKL02_KLR_BETRIEB.ID_ERLOSART"},
            {"160-162", "40", " LEFT JOIN BB_T_UNTERKONTO ON BB_T_UNTERKONTO.ID = BB_TAKL02_KLR_BETRIEB.ID_BB_T_UNTERKONTO"},
        },
    .choices =
        {
            {"BBTALK", "1-17, 25-27, 30-38, 40-49, 60-61, 65-72, 75-78, 80-82, 85-87, 90-92, 95-97, 100-101, 105-107, 110-111, 115-117, 120-122, 125-127, 130-131, 135-137, 140-141, 145-146, 150-152, 155-157, 160-162"},
        },
};

} // namespace

constinit const ListType bbtalk = defineType<description>();

} // namespace tamarok::catalogue::types
