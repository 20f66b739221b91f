#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Kind;

// VERTRAG: contracts.
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
            {10, 31510, text, "WVO_VERTRAG.ORIGINAL"},
            {11, 31511, text, "(CASE WHEN WVO_VERTRAG.ANGEMELDETEMENGE = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {12, 31512, date, "WVO_VERTRAG.ANGEMELDETE"},
            {13, 31513, date, "WVO_VERTRAG.MENGENMELDUNG"},
            {14, 31514, weekday, "WVO_VERTRAG.BEREITSELLUNGS"},
        },
};

} // namespace

constinit const ListType vertrag = defineType<description>();

} // namespace tamarok::catalogue::types
