#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// BERM: provision of timber, one row per lot made ready for collection. The logs of the lot (BEREITSTELLUNG_LOGS)
// multiply its rows; the tables behind them add one row for each log at most. NLT, PTR and PTRKOPF are the transport
// order at the portal, the log on a journey and the journey.
constexpr ListDescription description{
    .key = "BERM",
    .base = "BEREITSTELLUNG_KOPF",
    .label = 28500,
    .columns =
        {
            {1, 28501, text, "BEREITSTELLUNG_KOPF.BEREITSTELLUNGSNAME"},
            {2, 28502, date, "CONVERT(date,BEREITSTELLUNG_KOPF.ERSTELLUNGSDATUM)"},
            {3, 28503, date, "BEREITSTELLUNG_KOPF.FREIGABEDATUM"},
            {4, 28504, date, "BEREITSTELLUNG_KOPF.ABFUHR_BIS"},
            {5, 28505, text, "BEREITSTELLUNG_KOPF.LAGERORT"},
            {6, 28506, text, "BEREITSTELLUNG_KOPF.BEMERKUNG"},
            {7, 28507, text, "(CASE WHEN BEREITSTELLUNG_KOPF.ABGESCHLOSSEN = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {12, 28508, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {13, 28509, text, "ACCESS_LEVELS.NAME"},
            {14, 28510, text, "ACCESS_LEVELS.NAME_LANG"},
            {16, 28511, text, "ACCESS_LEVELS0.NAME_LANG"},
            {17, 28512, text, "ACCESS_LEVELS1.NAME_LANG"},
            {18, 28513, text, "ACCESS_LEVELS2.NAME_LANG"},
            {22, 28514, text, "PERSONAL0.KURZBEZEICHNUNG"},
            {23, 28515, text, "PERSONAL0.NAME"},
            {24, 28516, text, "PERSONAL0.NUMMER"},
            {25, 28517, text, "PERSONAL0.ORT"},
            {30, 28518, text, "PERSONAL_LIEFERADRESSE.KURZBEZEICHNUNG"},
            {31, 28519, text, "PERSONAL_LIEFERADRESSE.NAME"},
            {32, 28520, text, "PERSONAL_LIEFERADRESSE.STRASSE"},
            {33, 28521, text, "PERSONAL_LIEFERADRESSE.PLZ"},
            {34, 28522, text, "PERSONAL_LIEFERADRESSE.ORT"},
            {40, 28523, whole, "BEREITSTELLUNG_LOGS.ID_LOGS"},
            {41, 28524, whole, "(CASE WHEN BEREITSTELLUNG_LOGS.ID_LOGS IS NULL THEN 0 ELSE 1 END)", sum},
            {45, 28525, text, "LOGS.LISTE"},
            {46, 28526, date, "LOGS.LISTDATUM"},
            {47, 28527, whole, "LOGS.BLNR"},
            {48, 28528, text, "LOGS.LOS"},
            {49, 28529, text, "LOGS.HA"},
            {50, 28530, text, "LOGS.HS"},
            {51, 28531, text, "LOGS.GKL"},
            {52, 28532, text, "LOGS.STKL"},
            {53, 28533, oneDecimal, "LOGS.LAENGE"},
            {54, 28534, whole, "LOGS.DURCH"},
            {55, 28535, whole, "LOGS.STK", sum},
            {56, 28536, threeDecimals, "LOGS.KUBATUR", sum},
            {57, 28537, whole, "LOGS.POLTNR"},
            {58, 28538, threeDecimals, "ROUND(LOGS.MENGE,3)", sum},
            {60, 28539, text, "LISTENART.TEXT"},
            {62, 28540, text, "WARENEINHEIT_ERFASSUNG.EINHEIT"},
            {63, 28541, text, "WARENEINHEIT_ERFASSUNG.EINHEIT_LANG"},
            {66, 28542, fourDigits, "LISTENKOPF.FWJ"},
            {67, 28543, text, "(CASE WHEN LISTENKOPF.GESPERRT = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {70, 28544, text, "LOGS_RECH.R_NAME"},
            {71, 28545, twoDecimals, "ROUND(LOGS_RECH.R_PREIS,2)"},
            {72, 28546, threeDecimals, "ROUND(LOGS_RECH.R_MENGE,3)", sum},
            {73, 28547, text, "LOGS_RECH.R_VERTRAG"},
            {76, 28548, text, "WARENEINHEIT.EINHEIT"},
            {80, 28549, text, "PERSONAL1.KURZBEZEICHNUNG"},
            {81, 28550, text, "PERSONAL1.NAME"},
            {82, 28551, text, "PERSONAL1.ORT"},
            {90, 28552, text, "NLT.AUFTRAGSNUMMER"},
            {91, 28553, text, "NLT.STATUS"},
            {92, 28554, date, "NLT.UEBERGABEDATUM"},
            {93, 28555, date, "NLT.RUECKMELDUNG"},
            {96, 28556, text, "PTR.POLTER"},
            {97, 28557, text, "PTR.LIEFERSCHEIN_NR"},
            {98, 28558, threeDecimals, "PTR.MENGE", sum},
            {102, 28559, text, "PTRKOPF.NUMMER"},
            {103, 28560, date, "PTRKOPF.DATUM"},
            {104, 28561, text, "PTRKOPF.KENNZEICHEN"},
        },
    .joins =
        {
            {"12-14", "", " LEFT JOIN ACCESS_LEVELS ON ACCESS_LEVELS.ID = BEREITSTELLUNG_KOPF.ID_ACCESS_LEVELS"},
            {"16", "12", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS0 ON ACCESS_LEVELS0.ACCESS_LEVELS = ACCESS_LEVELS.ACCESS_LEVELS AND SUBSTRING(ACCESS_LEVELS.ACCESS_LEVELS,LEN(ACCESS_LEVELS.ACCESS_LEVELS)-1,2) <> '00'"},
            {"17", "12", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS1 ON ACCESS_LEVELS1.ACCESS_LEVELS = LEFT(ACCESS_LEVELS.ACCESS_LEVELS,LEN(ACCESS_LEVELS.ACCESS_LEVELS)-2)+'00' AND SUBSTRING(ACCESS_LEVELS.ACCESS_LEVELS,LEN(ACCESS_LEVELS.ACCESS_LEVELS)-3,2) <> '00'"},
            {"18", "12", " LEFT JOIN ACCESS_LEVELS ACCESS_LEVELS2 ON ACCESS_LEVELS2.ACCESS_LEVELS = LEFT(ACCESS_LEVELS.ACCESS_LEVELS,LEN(ACCESS_LEVELS.ACCESS_LEVELS)-4)+'0000' AND SUBSTRING(ACCESS_LEVELS.ACCESS_LEVELS,LEN(ACCESS_LEVELS.ACCESS_LEVELS)-5,2) <> '00'"},
            {"22-25", "", " LEFT JOIN PERSONAL PERSONAL0 ON PERSONAL0.ID_PERSONAL = BEREITSTELLUNG_KOPF.ID_PERSONAL"},
            {"30-34", "", " LEFT JOIN PERSONAL PERSONAL_LIEFERADRESSE ON PERSONAL_LIEFERADRESSE.ID_PERSONAL = BEREITSTELLUNG_KOPF.ID_PERSONAL_LIEFERADRESSE"},
            {"40-41", "", " LEFT JOIN BEREITSTELLUNG_LOGS ON BEREITSTELLUNG_LOGS.ID_BEREITSTELLUNG_KOPF = BEREITSTELLUNG_KOPF.ID"},
            {"45-58", "40", " LEFT JOIN LOGS ON LOGS.ID_LOG = BEREITSTELLUNG_LOGS.ID_LOGS"},
            {"60", "45", " LEFT JOIN LISTENART ON LISTENART.LISTENART = LOGS.LISTENART"},
            {"62-63", "45", " LEFT JOIN WARENEINHEIT WARENEINHEIT_ERFASSUNG ON WARENEINHEIT_ERFASSUNG.EINHEIT_ID = LOGS.ID_MASSEINHEIT"},
            {"66-67", "45", " LEFT JOIN LISTENKOPF ON LISTENKOPF.LISTE = LOGS.LISTE"},
            {"70-73", "45", " LEFT JOIN LOGS_RECH ON LOGS_RECH.ID_LOG = LOGS.ID_LOG"},
            {"76", "70", " LEFT JOIN WARENEINHEIT ON WARENEINHEIT.EINHEIT_ID = LOGS_RECH.R_ID_WARENEINHEIT"},
            {"80-82", "70", " LEFT JOIN PERSONAL PERSONAL1 ON PERSONAL1.ID_PERSONAL = LOGS_RECH.R_KUNDE"},
            {"90-93", "", " LEFT JOIN NETLOGISTIK_TRANSPORT NLT ON NLT.ID_BEREITSTELLUNG_KOPF = BEREITSTELLUNG_KOPF.ID"},
            {"96-98", "40", " LEFT JOIN POLTER_TRANSPORT PTR ON PTR.ID_LOGS = BEREITSTELLUNG_LOGS.ID_LOGS"},
            {"102-104", "96", " LEFT JOIN POLTER_TRANSPORT_KOPF PTRKOPF ON PTRKOPF.ID = PTR.ID_POLTER_TRANSPORT_KOPF"},
        },
    .choices =
        {
            {"BERM", "1-7, 16-18, 12-14, 22-25, 30-34, 40, 41, 45-56, 58, 62, 63, 57, 60, 66, 67, 70-73, 76, 80-82"},
            {"BERM", "90-93, 96-98, 102-104", "", "NETLOGISTIK_TRANSPORT"},
        },
};

} // namespace

constinit const ListType berm = defineType<description>();

} // namespace tamarok::catalogue::types
