#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Kind;

// VERTRAG: contracts of supply and purchase. The terms agreed with an association of forest owners, WVO_VERTRAG, exist
// for at most one row per contract; their columns are offered to the edition of such associations alone.
constexpr ListDescription description{
    .key = "VERTRAG",
    .base = "VERTRAEGE",
    .label = 31500,
    .valueFilter = ValueFilter::none,
    .columns =
        {
            {1, 31501, date, "VERTRAEGE.INVDATE"},
            {2, 31502, text, "VERTRAEGE.VERTRAG_NAME"},
            {3, 31503, text, "PERSONAL.KURZBEZEICHNUNG"},
            {4, 31504, text, "(CASE VERTRAEGE.ABGESCHLOSSEN WHEN 1 THEN 'Ja' ELSE 'Nein' END)"},
            {5, 31505, text, "CAST(VERTRAEGE.ZUSATZTEXT_2 AS NVARCHAR(40))"},
            {6, 31506, text, "USERS.NAME"},
            {7, 31507, text, "VERTRAEGE.KOPF10"},
            {8, 31508, date, "VERTRAEGE.LIEFERVON"},
            {9, 31509, date, "VERTRAEGE.LIEFERBIS"},
            {10, 6296, text, "WVO_VERTRAG.ORIGINAL"},
            {11, 31510, text, "(CASE WHEN WVO_VERTRAG.ANGEMELDETEMENGE = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {12, 31511, date, "WVO_VERTRAG.ANGEMELDETE"},
            {13, 31512, date, "WVO_VERTRAG.MENGENMELDUNG"},
            {14, 31513, weekday, "WVO_VERTRAG.BEREITSELLUNGS"},
        },
    .joins =
        {
            {"3", "", " LEFT JOIN PERSONAL ON PERSONAL.ID_PERSONAL = VERTRAEGE.ID_PERSONAL"},
            {"6", "", " LEFT JOIN USERS ON USERS.ID = VERTRAEGE.ID_USER"},
            {"10-14", "", " LEFT JOIN WVO_VERTRAG ON WVO_VERTRAG.ID_VERTRAG = VERTRAEGE.ID_VERTRAG"},
        },
    .choices =
        {
            {"1VVM 2VABR1 2VABR2 2VABR3 2VABR4 2VABR5 2VABR6 2VABR7 2VABR8", "2, 1, 3, 8, 9, 4, 6, 7, 5"},
            {"1VVM 2VABR1 2VABR2 2VABR3 2VABR4 2VABR5 2VABR6 2VABR7 2VABR8", "10-14", "WVO"},
        },
};

} // namespace

constinit const ListType vertrag = defineType<description>();

} // namespace tamarok::catalogue::types
