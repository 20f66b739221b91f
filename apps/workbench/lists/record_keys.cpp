#include "lists/record_keys.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "tamarok/error.h"

namespace tamarok::workbench {

namespace {

constexpr RecordKey keys[]{
    {"ACL", "ACCESS_LEVELS.ID", ""},
    {"AKAT", "BB_T_AUFTRAGS_PLANUNG.ID", "BB_T_AUFTRAGS_PLANUNG"},
    {"ARTIKEL", "NN_POSITIONEN.NN_ID", ""},
    {"BBF", "ARBEITSAUFTRAG_KOPF.ID", "ARBEITSAUFTRAG_KOPF"},
    {"BBFAHR", "BB_FAHRTENBUCH_KOPF.ID", "BB_FAHRTENBUCH_KOPF"},
    {"BBFAK", "BB_FAKTURA_KOPF.ID", "BB_FAKTURA_KOPF"},
    {"BBFB", "SCH_BELEGE_KOPF.ID", "SCH_BELEGE_KOPF"},
    {"BBFS", "LOHNERFASSUNG_KOPF.ID", "LOHNERFASSUNG_KOPF"},
    {"BBF_PLANN", "ARBEITSAUFTRAG_KOPF_PLANN.ID", "ARBEITSAUFTRAG_KOPF_PLANN"},
    {"BBHAB", "BB_HAB_KOPF.ID", "BB_HAB_KOPF"},
    {"BBHUNDE", "BB_JAGDHUNDE.ID", "BB_JAGDHUNDE"},
    {"BBJAGD", "BB_ABSCHUSSPLAN_KOPF.ID", "BB_ABSCHUSSPLAN_KOPF"},
    {"BBJB", "BB_JAGDBEZIRKE.ID", "BB_JAGDBEZIRKE"},
    {"BBKLR", "BB_BELEGE_KOPF.ID", "BB_BELEGE_KOPF"},
    {"BBLAG", "BB_BELEGE_LAGER.ID", "BB_BELEGE_LAGER"},
    {"BBLTN", "BB_LEISTUNGS_KOPF.ID", "BB_LEISTUNGS_KOPF"},
    {"BBMAP", "BB_MAP_KOPF.ID", "BB_MAP_KOPF"},
    {"BBOBJ", "BB_T_OBJEKTE.ID", "BB_T_OBJEKTE"},
    {"BBPLAN", "BB_PLAN_KOPF.ID", "BB_PLAN_KOPF"},
    {"BBSTRK", "BB_STRECKE_NIEDER.ID", "BB_STRECKE_NIEDER"},
    {"BBTALK", "BB_TAKL01_KLR.ID", "BB_TAKL01_KLR"},
    {"BBUN", "BB_TAKL01_KLR.ID", "BB_TAKL01_KLR"},
    {"BBVS", "BB_VERTEILSCHLUSSEL_KOPF.ID", "BB_VERTEILSCHLUSSEL_KOPF"},
    {"BBWAL", "BB_WALDARBEITERLOHN_KOPF.ID", "BB_WALDARBEITERLOHN_KOPF"},
    {"BBWILD", "BB_WILDURSPRUNGS.ID", "BB_WILDURSPRUNGS"},
    {"BBZV", "BB_AUFTRAG_KOPF.ID", "BB_AUFTRAG_KOPF"},
    {"BERM", "BEREITSTELLUNG_KOPF.ID", "BEREITSTELLUNG_KOPF"},
    {"FHPEXP", "FHP_IMPORT.ID", "FHP_IMPORT"},
    {"KIZ", "KLR.ID", "KLR"},
    {"LOG", "LOGS.ID_LOG", "LISTENKOPF"},
    {"MSCH", "SCH_MASCHINENBUCH.ID", "SCH_MASCHINENBUCH"},
    {"MVLOSE", "BB_MV_VERKAUFSZIEL.ID", "BB_MV_VERKAUFSZIEL"},
    {"PERSONAL", "PERSONAL.ID_PERSONAL", "PERSONAL"},
    {"PLAN", "PLAN_KOPF.ID", "PLAN_KOPF"},
    {"RJ", "HEADERRECH.R_NAME", "HEADERRECH", true},
    {"SAPAGRUPPE", "PA_GRUPPE.ID", ""},
    {"STEH", "STEH_AUFNAHMEPROTOKOLL_KOPF.ID", "STEH_AUFNAHMEPROTOKOLL_KOPF"},
    {"TRANSPORT", "TRANSPORTLOGISTIK_KOPF.ID", "TRANSPORTLOGISTIK_KOPF"},
    {"USERS", "USERS.ID", "USERS"},
    {"VERTRAG", "VERTRAEGE.ID_VERTRAG", "VERTRAEGE"},
    {"WAREN", "WARENKATALOG.ART_ID", "WARENKATALOG"},
};
static_assert(std::ranges::is_sorted(keys, {}, &RecordKey::type));

} // namespace

const RecordKey& recordKeyOf(std::string_view type)
{
    const auto* const found = std::ranges::lower_bound(keys, type, {}, &RecordKey::type);
    if (found == std::end(keys) || found->type != type)
        throw Error{errors::invalidArgument, "There is no list type " + std::string{type} + ".", "Workbench"};
    return *found;
}

} // namespace tamarok::workbench
