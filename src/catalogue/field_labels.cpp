#include <cstdint>
#include <optional>
#include <string>

#include "word_list.h"

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// The labels of the fields of master-data tables, by the bare name of the field.

namespace tamarok {
namespace {

/// Fields that share a label: a number of table STRINGS.
struct FieldGroup {
    const char* names; ///< in upper case, separated by blanks
    std::int16_t label;
};

constexpr FieldGroup groups[]{
    // Keys and names.
    {"RINDENKENNZ MEFVERF", 1127},
    {"GKL STKL NA KA HS KKLASSE BZT_SHORT SHORT", 1176},
    {"GKL_LANG HA_LANG NA_LANG KA_LANG RINDENKZ_LANG HS_LANG RECHNUNGSART BUCHUNGSTEXT BZT_LANG LONG", 1177},
    {"SHOW_ORDER ORDERBY", 1328},
    {"NA_GROUP GRUPPE GRUPPE_ID", 3045},
    {"NUMMER NR NUMBER", 5243},
    {"KURZNAME KURZBEZEICHNUNG KURZ KURZTEXT", 5244},
    {"LANGNAME LANGBEZEICHNUNG LANG LANGTEXT BEZEICHNUNG", 5245},
    {"NAME", 6300},
    {"TEXT", 6301},
    {"LDNR LFDNR", 6302},
    {"DISABLE INAKTIV", 6303},
    {"BEMERKUNG ANMERKUNG", 2508},
    {"CODE KZ KENNZEICHEN", 6304},
    // Timber.
    {"HA", 6002},
    {"LNH", 6305},
    {"ZUORD_MSZ", 6306},
    {"RINDE RINDE_WERT RINDEPROZENT", 6011},
    {"LAENGE", 6007},
    {"DURCH MITTENDURCHMESSER", 6008},
    {"STK STUECK", 6009},
    {"KUBATUR VOLUMEN", 6010},
    {"LISTENART", 6001},
    {"WALDORT WO_LANG", 4074},
    {"WO1", 6310},
    {"WO2", 6311},
    {"WO3", 6312},
    {"WO4", 6313},
    {"WO5", 6314},
    {"WO6", 6315},
    {"FLAECHE HEKTAR", 6316},
    // Units and conversion factors.
    {"EINHEIT WARENEINHEIT", 6014},
    {"RM_UFA", 6320},
    {"ATO_UFA", 6321},
    {"LUT_UFA", 6322},
    {"STK100_UFA", 6323},
    {"RM", 6324},
    {"GEWICHT_ATRO", 6325},
    {"GEWICHT_LUTRO", 6326},
    {"DURCH_VON STKL_VON VON", 6327},
    {"DURCH_BIS STKL_BIS BIS", 6328},
    // Settlements and flags.
    {"ABR1", 126},
    {"ABR2", 127},
    {"ABR3", 128},
    {"ABR4", 129},
    {"ABR5", 130},
    {"ABR6", 131},
    {"ABR7", 132},
    {"ABR8", 133},
    {"CHK1", 4745},
    {"CHK2", 4746},
    {"CHK3", 4747},
    {"CHK4", 4748},
    {"CHK5", 4749},
    {"CHK6", 4750},
    {"CHK7", 4751},
    {"CHK8", 4752},
    {"CHK9", 4753},
    {"CHK10", 4754},
    // Money and accounts.
    {"MWST STEUERSATZ PROZENT", 1755},
    {"PREIS EINHPREIS", 6330},
    {"BETRAG", 138},
    {"NETTO NETTOBETRAG", 4803},
    {"BRUTTO BRUTTOBETRAG", 4995},
    {"RABATT", 6331},
    {"WAHRUNG", 6332},
    {"KONTO KONTONR", 1757},
    {"GEGENKONTO", 4756},
    {"KOSTENSTELLE", 2520},
    {"KOSTENART", 6333},
    {"LEISTUNGSART", 6334},
    {"PRODUKT", 6335},
    {"OBJEKT", 6336},
    {"VERFAHREN", 6337},
    {"PROJEKT", 6352},
    {"KAPITEL", 6338},
    {"TITEL", 6339},
    {"ZAHLART ZAHLUNGSART", 1751},
    // Partners.
    {"KUNDE", 4831},
    {"LIEFERANT", 4830},
    {"VORNAME", 6340},
    {"STRASSE", 6341},
    {"PLZ", 6342},
    {"ORT", 6343},
    {"NATION LAND", 6344},
    {"TELEFON", 6345},
    {"EMAIL", 6346},
    // Dates.
    {"DATUM", 6347},
    {"DATUM_VON GULTIG_VON", 6348},
    {"DATUM_BIS GULTIG_BIS", 6349},
    {"JAHR", 6350},
    {"MONAT", 6351},
};

/// Names that end in the digit of a group, and whose label is that of the group with the digit.
constexpr std::string_view groupedNames[]{"GKL_GRUPPE", "HAGR", "HSGR"};
constexpr std::int16_t groupLabel = 3045;

/// Free fields, numbered from the seventh character on.
struct FreeFields {
    std::string_view beginning;
    std::int16_t firstLabel; ///< less 1
};
constexpr FreeFields freeFields[]{{"TFIELD", 4300}, {"NFIELD", 4350}};

/// Error 6 for a number beyond 16 bits.
std::string labelText(double number, const TmkVar& session)
{
    return Platform::locService()->GetText(convert::toInteger(Variant{number}), session);
}

/// The number that a text begins with, 0 if it begins with none.
double leadingNumber(std::string_view text)
{
    double number = 0;
    for (const char character : text) {
        if (character < '0' || character > '9') break;
        number = number * 10 + (character - '0');
    }
    return number;
}

/// The digit from 1 to 5 of a grouped name, or nothing.
std::optional<char> groupDigit(std::string_view name)
{
    for (const std::string_view beginning : groupedNames) {
        if (name.size() != beginning.size() + 1 || !name.starts_with(beginning)) continue;
        if (name.back() >= '1' && name.back() <= '5') return name.back();
    }
    return std::nullopt;
}

} // namespace

std::string Comm_Get::GetColName(std::string_view strField, const TmkVar& tmkVar) const
{
    const std::string name = text::toUpper(strField);
    for (const FieldGroup& group : groups) {
        if (catalogue::isWordOf(group.names, name)) return labelText(group.label, tmkVar);
    }
    if (const auto digit = groupDigit(name)) return labelText(groupLabel, tmkVar) + " " + *digit;
    for (const FreeFields& fields : freeFields) {
        if (!name.starts_with(fields.beginning)) continue;
        return labelText(fields.firstLabel + leadingNumber(std::string_view{name}.substr(fields.beginning.size())),
                         tmkVar);
    }
    return {};
}

} // namespace tamarok
