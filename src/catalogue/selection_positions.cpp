#include <cstdint>
#include <span>
#include <string>

#include "list_types.h"
#include "word_list.h"

#include "tamarok/comm_csel.h"
#include "tamarok/text.h"

// Older selection parameters store a column by a number of their own or by the number of its label. Both are converted
// to the column's id of today.

namespace tamarok {
namespace {

/// The numbers from `first` to `last` stand for the columns from `column` on.
struct OldNumbers {
    std::int16_t first;
    std::int16_t last;
    std::int16_t column;
};

constexpr OldNumbers overviewNumbers[]{
    // 592 was the number of a column that is no more.
    {590, 591, 1},
    {593, 621, 3},
    {622, 630, 43},
    {631, 634, 33},
};

constexpr OldNumbers deductionNumbers[]{
    {19, 19, 4},
    {126, 133, 101},
    {138, 138, 5},
};

/// Parameters whose columns are those of one list type.
struct ParameterGroup {
    const char* parameters; ///< in upper case, separated by blanks
    const char* type;       ///< key of the list type, "" for the deduction list
    std::span<const OldNumbers> numbers{};
};

constexpr ParameterGroup groups[]{
    {"1LV 2EML NML VERTP VERTM 1SERV 1EXP 1VM 2ABR1 2ABR2 2ABR3 2ABR4 2ABR5 2ABR6 2ABR7 2ABR8 1VM_REVERS 4ARB WIZ "
     "2SERV "
     "2PVK 2PVALL 2PALL 2PVA1 2PVA2 2PVA3 2PVA4 2PVA5 2PVA6 2PVA7 2PVA8 2PVARB 2PLIEF 2PVS 2PVM 2PWS 2PVAP 1WL",
     "LOG"},
    {"HIZ_SELEKTION_", "LOG", overviewNumbers},
    {"1VM-A 2ABR1-A 2ABR2-A 2ABR3-A 2ABR4-A 2ABR5-A 2ABR6-A 2ABR7-A 2ABR8-A 1VM-A_REVERS", "ARTIKEL"},
    {"BBF", "BBF"},
    {"WAREN", "WAREN"},
    {"1VVM 2VABR1 2VABR2 2VABR3 2VABR4 2VABR5 2VABR6 2VABR7 2VABR8", "VERTRAG"},
    {"1RJ EXP_VER0 EXP_VER1 EXP_VER2 EXP_VER3 EXP_VER4 EXP_VER5 EXP_VER6 EXP_VER7 EXP_VER8", "RJ"},
    {"BELEG_BB", "BBKLR"},
    {"LEISTUNGS_BB", "BBLTN"},
    {"RECHNUNG_BB FAKTURA_BB ANGEBOT_BB", "BBFAK"},
    {"STAMMEINGABE_BB HIZBB_SELEKTION_", "BBHAB"},
    {"LOHNERFASS VERLOHN", "BBFS"},
    {"BELEGBUCH", "BBFB"},
    {"ABSCHLAG_SELEKTION_RECHNUNG", "", deductionNumbers},
    {"LAGER_BB", "BBLAG"},
    {"VERTSCH_BB", "BBVS"},
    {"MBUCH_SCH", "MSCH"},
    {"FI_NUTZERRECHTE", "USERS"},
    {"1ACL", "ACL"},
    {"PLAN", "PLAN"},
    {"BERM", "BERM"},
    {"SERVICE_BB PLAN_BEARBEITUNG_BB PLAN_ABSCHLUSS_BB PLAN_VORBEREITUNG_BB", "BBPLAN"},
    {"KLR_UBERNAHME", "BBUN"},
    {"4PAG", "SAPAGRUPPE"},
    {"ZIELVEREINBARUNG_BB", "BBZV"},
    {"BB_T_AUFTRAGS_PLANUNG AUFTRAGSKATALOG", "AKAT"},
    {"MONATSARBEITSPLAN_BB", "BBMAP"},
    {"JAGD_PLAN", "BBJAGD"},
    {"JAGD_WILD", "BBWILD"},
    {"JAGD_HUNDE", "BBHUNDE"},
    {"JAGD_STRECKE", "BBSTRK"},
    {"WAL_BB DTZB", "BBWAL"},
    {"BB_JAGDBEZIRKE", "BBJB"},
    {"BB_MASCH_FAHRT", "BBFAHR"},
    {"BB_T_OBJEKTE", "BBOBJ"},
    {"STEHAPR STEHEXPAPR", "STEH"},
    {"MEISTVERK", "MVLOSE"},
    {"FHPEXP", "FHPEXP"},
};

/// Parameters whose names go on behind these beginnings.
constexpr std::string_view beginnings[]{
    "HIZ_SELEKTION_",   "VERTP",      "VERTM",       "4ARB",       "BELEG_BB",
    "LEISTUNGS_BB",     "ANGEBOT_BB", "RECHNUNG_BB", "FAKTURA_BB", "STAMMEINGABE_BB",
    "HIZBB_SELEKTION_", "4PAG",
};

/// The name by which the groups know a parameter.
std::string normalised(std::string_view parameter)
{
    std::string name = text::toUpper(parameter);
    for (const std::string_view beginning : beginnings) {
        if (name.starts_with(beginning)) return std::string{beginning};
    }
    return name;
}

/// The column with that label, 0 if the type has none.
std::int16_t columnOfLabel(const catalogue::ListType& type, std::int16_t label)
{
    for (const catalogue::Column& column : type.description().columns) {
        if (column.label == label) return column.id;
    }
    return 0;
}

std::int16_t columnIn(const ParameterGroup& group, std::int16_t number)
{
    for (const OldNumbers& numbers : group.numbers) {
        if (number >= numbers.first && number <= numbers.last)
            return static_cast<std::int16_t>(numbers.column + (number - numbers.first));
    }
    const catalogue::ListType* type = catalogue::findListType(group.type);
    return type == nullptr || number <= 0 ? std::int16_t{0} : columnOfLabel(*type, number);
}

} // namespace

std::int16_t Comm_CSel::KonvSelektionID(std::string_view Parameter, std::int16_t ID) const
{
    const std::string parameter = normalised(Parameter);
    for (const ParameterGroup& group : groups) {
        if (catalogue::isWordOf(group.parameters, parameter)) return columnIn(group, ID);
    }
    return 0;
}

} // namespace tamarok
