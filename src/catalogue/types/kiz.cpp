#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// KIZ: key figures of cost accounting. A row is a record of KLR, which holds numbers and names of its keys itself, so
// that the list needs no join. Its choice list shows the names of the fields instead of labels. Ids are stored in lists
// and models: a number that is free is never used again for another column.
constexpr ListDescription description{
    .key = "KIZ",
    .base = "KLR",
    .label = 29000,
    .columns =
        {
            {1, 29001, text, "KLR.QUELLE_NAME"},
            {2, 29002, text, "KLR.QUELLE_NUMMER"},
            {3, 29003, text, "KLR.BELEG_NUMMER"},
            {4, 29004, date, "KLR.BELEG_DATUM"},
            {5, 29005, date, "KLR.BUCHUNG_DATUM"},
            {6, 29006, text, "KLR.BUCHUNG_TEXT"},
            {7, 29007, fourDigits, "KLR.JAHR"},
            {8, 29008, twoDigits, "KLR.MONAT"},
            {20, 29009, text, "KLR.ACCESSLEVEL"},
            {21, 29010, text, "KLR.AFF_NAME"},
            {22, 29011, text, "KLR.OBF_NAME"},
            {23, 29012, text, "KLR.REVIER_NAME"},
            {30, 29013, text, "KLR.KOSTENSTELLE_NUMMER"},
            {31, 29014, text, "KLR.KOSTENSTELLE_NAME"},
            {32, 29015, text, "KLR.KOSTENART_NUMMER"},
            {33, 29016, text, "KLR.KOSTENART_NAME"},
            {34, 29017, text, "KLR.LEISTUNGSART_NUMMER"},
            {35, 29018, text, "KLR.LEISTUNGSART_NAME"},
            {36, 29019, text, "KLR.PRODUKT_NUMMER"},
            {37, 29020, text, "KLR.PRODUKT_NAME"},
            {38, 29021, text, "KLR.OBJEKT_NUMMER"},
            {39, 29022, text, "KLR.OBJEKT_NAME"},
            {40, 29023, text, "KLR.VERFAHREN_NUMMER"},
            {41, 29024, text, "KLR.VERFAHREN_NAME"},
            {42, 29025, text, "KLR.PROJEKT_NUMMER"},
            {43, 29026, text, "KLR.PROJEKT_NAME"},
            {50, 29027, text, "KLR.WALDORT_NAME"},
            {51, 29028, text, "KLR.HOLZART_NAME"},
            {52, 29029, text, "KLR.HOLZSORTE_NAME"},
            {53, 29030, text, "KLR.PARTNER_NAME"},
            {54, 29031, text, "KLR.EINHEIT_NAME"},
            {60, 29032, threeDecimals, "KLR.MENGE", sum},
            {61, 29033, twoDecimals, "KLR.STUNDEN", sum},
            {62, 29034, twoDecimals, "KLR.PREIS"},
            {63, 29035, amount, "KLR.KOSTEN", sum},
            {64, 29036, amount, "KLR.ERLOSE", sum},
            {65, 29037, amount, "KLR.DECKUNGSBEITRAG", sum},
        },
    .choices =
        {
            {"KIZ", "1", "", "", "QUELLE_NAME"},
            {"KIZ", "2", "", "", "QUELLE_NUMMER"},
            {"KIZ", "3", "", "", "BELEG_NUMMER"},
            {"KIZ", "4", "", "", "BELEG_DATUM"},
            {"KIZ", "5", "", "", "BUCHUNG_DATUM"},
            {"KIZ", "6", "", "", "BUCHUNG_TEXT"},
            {"KIZ", "7", "", "", "JAHR"},
            {"KIZ", "8", "", "", "MONAT"},
            {"KIZ", "20", "", "", "ACCESSLEVEL"},
            {"KIZ", "21", "", "", "AFF_NAME"},
            {"KIZ", "22", "", "", "OBF_NAME"},
            {"KIZ", "23", "", "", "REVIER_NAME"},
            {"KIZ", "30", "", "", "KOSTENSTELLE_NUMMER"},
            {"KIZ", "31", "", "", "KOSTENSTELLE_NAME"},
            {"KIZ", "32", "", "", "KOSTENART_NUMMER"},
            {"KIZ", "33", "", "", "KOSTENART_NAME"},
            {"KIZ", "34", "", "", "LEISTUNGSART_NUMMER"},
            {"KIZ", "35", "", "", "LEISTUNGSART_NAME"},
            {"KIZ", "36", "", "", "PRODUKT_NUMMER"},
            {"KIZ", "37", "", "", "PRODUKT_NAME"},
            {"KIZ", "38", "", "", "OBJEKT_NUMMER"},
            {"KIZ", "39", "", "", "OBJEKT_NAME"},
            {"KIZ", "40", "", "", "VERFAHREN_NUMMER"},
            {"KIZ", "41", "", "", "VERFAHREN_NAME"},
            {"KIZ", "42", "", "", "PROJEKT_NUMMER"},
            {"KIZ", "43", "", "", "PROJEKT_NAME"},
            {"KIZ", "50", "", "", "WALDORT_NAME"},
            {"KIZ", "51", "", "", "HOLZART_NAME"},
            {"KIZ", "52", "", "", "HOLZSORTE_NAME"},
            {"KIZ", "53", "", "", "PARTNER_NAME"},
            {"KIZ", "54", "", "", "EINHEIT_NAME"},
            {"KIZ", "60", "", "", "MENGE"},
            {"KIZ", "61", "", "", "STUNDEN"},
            {"KIZ", "62", "", "", "PREIS"},
            {"KIZ", "63", "", "", "KOSTEN"},
            {"KIZ", "64", "", "", "ERLOSE"},
            {"KIZ", "65", "", "", "DECKUNGSBEITRAG"},
        },
};

} // namespace

constinit const ListType kiz = defineType<description>();

} // namespace tamarok::catalogue::types
