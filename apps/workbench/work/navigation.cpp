#include "work/navigation.h"

#include <array>
#include <string>

#include "tamarok/comm_lock.h"
#include "tamarok/convert.h"

namespace tamarok::workbench {

namespace {

constexpr ListNode timber[]{
    {"LOG", "STAMMEINGABE_BB"}, {"BBHAB", "STAMMEINGABE_BB"}, {"BERM", "STAMMEINGABE_BB"}, {"STEH", ""},
    {"TRANSPORT", ""},          {"FHPEXP", "1IMP_BB"},
};
constexpr ListNode sales[]{
    {"RJ", "RECHNUNG_BB1"},      {"ARTIKEL", "TMK1315"},  {"BBFAK", "FAKTURA_BB1"},
    {"VERTRAG", "BB_T_VERTRAG"}, {"MVLOSE", "MEISTVERK"}, {"WAREN", "1VN"},
};
constexpr ListNode planning[]{
    {"BBPLAN", "PLAN_BEARBEITUNG_BB"},
    {"BBMAP", "MONATSARBEITSPLAN_BB"},
    {"BBZV", "ZIELVEREINBARUNG_BB"},
    {"AKAT", "BB_T_AUFTRAGS_PLANUNG"},
    {"PLAN", "PLAN_BEARBEITUNG_BB"},
    {"BBF", ""},
    {"BBF_PLANN", ""},
};
constexpr ListNode people[]{
    {"PERSONAL", "2PALL"}, {"SAPAGRUPPE", ""},         {"BBLTN", "LEISTUNGS_BB1"},   {"BBFS", "VERLOHN"},
    {"BBWAL", "WAL_BB"},   {"MSCH", "BB_MASCH_FAHRT"}, {"BBFAHR", "BB_MASCH_FAHRT"},
};
constexpr ListNode hunting[]{
    {"BBJAGD", "JAGD_PLAN"}, {"BBJB", "BB_JAGDBEZIRKE"}, {"BBSTRK", "JAGD_STRECKE"},
    {"BBWILD", "JAGD_WILD"}, {"BBHUNDE", "JAGD_HUNDE"},
};
constexpr ListNode accounting[]{
    {"BBKLR", "BELEG_BB1"}, {"BBTALK", "BBKLRIZ"}, {"BBUN", "KLR_UBERNAHME"}, {"BBVS", "VERTSCH_BB"}, {"KIZ", "1KZ111"},
    {"BBFB", ""},           {"BBLAG", ""},
};
constexpr ListNode installation[]{
    {"USERS", "1ACL"},
    {"ACL", "1ACL"},
    {"BBOBJ", "BB_T_OBJEKTE"},
};

constexpr std::array groups{
    ListGroup{"Holz", "Timber", "Bois", timber},
    ListGroup{"Verkauf", "Sales", "Ventes", sales},
    ListGroup{"Planung", "Planning", "Planification", planning},
    ListGroup{"Menschen und Maschinen", "People and machines", "Personnes et machines", people},
    ListGroup{"Jagd", "Hunting", "Chasse", hunting},
    ListGroup{"Rechnungswesen", "Accounting", "Comptabilité", accounting},
    ListGroup{"Einrichtung", "Installation", "Installation", installation},
};

} // namespace

std::span<const ListGroup> listGroups()
{
    return groups;
}

std::vector<ListRight> rightsOf(const ListGroup& group, const TmkVar& session)
{
    const Comm_Lock rights;
    std::vector<std::string> hidden;
    std::vector<ListRight> all;
    for (const ListNode& list : group.lists) {
        if (list.node.empty()) {
            all.emplace_back();
            continue;
        }
        const bool visible = rights.NodeVisibleCheck(session, hidden, list.node) == Variant{true};
        all.push_back({visible, visible && rights.NodeWrite(session, list.node)});
    }
    return all;
}

} // namespace tamarok::workbench
