#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// SAPAGRUPPE: a row is a group of partners of one forest owner, with the members, quantity and turnover of a year.
// PERSONAL is the owner. No join multiplies rows.
constexpr ListDescription description{
    .key = "SAPAGRUPPE",
    .base = "PA_GRUPPE",
    .label = 30500,
    .columns =
        {
            {1, 30501, text, "PA_GRUPPE.PA_NUMMER"},
            {2, 30502, text, "PA_GRUPPE.BEZEICHNUNG"},
            {3, 30503, text, "PA_GRUPPE.LANGBEZEICHNUNG"},
            {4, 30504, date, "PA_GRUPPE.ANLAGEDATUM"},
            {5, 30505, date, "PA_GRUPPE.GUELTIG_VON"},
            {6, 30506, date, "PA_GRUPPE.GUELTIG_BIS"},
            {7, 30507, twoDecimals, "PA_GRUPPE.RABATT"},
            {8, 30508, whole, "PA_GRUPPE.MITGLIEDER", sum},
            {9, 30509, threeDecimals, "PA_GRUPPE.JAHRESMENGE", sum},
            {10, 30510, amount, "PA_GRUPPE.JAHRESUMSATZ", sum},
            {11, 30511, text, "PA_GRUPPE.BEMERKUNG"},
            {12, 30512, text, "(CASE WHEN PA_GRUPPE.DISABLE = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {13, 30513, amount, "(CASE WHEN ISNULL(PA_GRUPPE.MITGLIEDER,0)<>0 THEN ROUND(PA_GRUPPE.JAHRESUMSATZ/PA_GRUPPE.MITGLIEDER,2) ELSE 0 END)", max},
            {20, 30514, text, "PRODUKT.NUMBER"},
            {21, 30515, text, "PRODUKT.NAME"},
            {30, 30516, text, "PERSONAL.NUMMER"},
            {31, 30517, text, "PERSONAL.KURZBEZEICHNUNG"},
            {32, 30518, text, "PERSONAL.NAME"},
            {33, 30519, text, "PERSONAL.VORNAME"},
            {34, 30520, text, "PERSONAL.STRASSE"},
            {35, 30521, text, "PERSONAL.PLZ"},
            {36, 30522, text, "PERSONAL.ORT"},
            {37, 30523, text, "PERSONAL.TELEFON"},
            {38, 30524, text, "PERSONAL.MOBIL"},
        },
    .joins =
        {
            {"20-21", "", " LEFT JOIN PRODUKT ON PRODUKT.ID = PA_GRUPPE.ID_PRODUKT"},
            {"30-38", "", " LEFT JOIN PERSONAL ON PERSONAL.ID_PERSONAL = PA_GRUPPE.ID_PERSONAL"},
        },
    .choices =
        {
            {"SAPAGRUPPE", "1-3, 20-21, 30-33, 4-13"},
            {"SAPAGRUPPE", "34-38", "WVO"},
        },
};

} // namespace

constinit const ListType sapagruppe = defineType<description>();

} // namespace tamarok::catalogue::types
