#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "day/steps.h"
#include "day/workstation.h"
#include "print/list_printer.h"

#include "tamarok/comm_lock.h"
#include "tamarok/comm_sql.h"

namespace tamarok::cli::day {

namespace {

struct Node {
    std::string_view key;
    std::string_view opens;
};

constexpr std::array nodes{
    Node{"RECHNUNG_BB1", "Invoices of timber sales"},   Node{"HV_FREIGABE", "Release of a timber invoice"},
    Node{"TMK1225", "Reports of timber sales"},         Node{"2PVK", "Customers"},
    Node{"KW_MONATSABSCHLUSS", "Closing of the month"}, Node{"PLAN_ABSCHLUSS_BB", "Closing of a plan"},
    Node{"1ACL", "Rights of the organisation"},         Node{"TMK24", "Settings"},
};

/// Prints which of the nodes a user sees in the navigation, and in which of them the user may write.
void showNavigation(const Context& context, const TmkVar& session)
{
    const Comm_Lock rights;
    const auto table = makeListPrinter(ListFormat::Table, context.output, {"Node", "Right", "Visible", "Writable", ""});
    std::vector<std::string> hidden;
    for (const Node& node : nodes) {
        const bool visible = rights.NodeVisibleCheck(session, hidden, node.key) == Variant{true};
        const bool writable = rights.NodeWrite(session, node.key);
        table->row({Variant{node.key}, Variant{rights.konvUSERS_TREEVIEW_KEY(node.key)},
                    Variant{visible ? "yes" : "no"}, Variant{writable ? "yes" : "no"}, Variant{node.opens}});
    }
    table->finish();
}

void logInAs(const Context& context, const Account& account)
{
    Workstation station{context.session, context.database, account};
    const TmkVar& session = station.session();
    if (!station.logIn()) {
        context.output.write(station.message() + "\n");
        return;
    }
    const Comm_SQL users;
    context.output.write(users.USERS_NAME(session) + " logs in at level " + users.ACL(session) +
                         "; grants of levels: " + std::to_string(users.ONETOMANY_USERS_ACL_cnt(session)) + "\n\n");
    showNavigation(context, session);
}

} // namespace

/// Two users log in: a ranger, and the head of an office who is the deputy of two colleagues and has
/// their rights too.
void showLogIn(const Context& context)
{
    logInAs(context, ranger);
    context.output.write("\n");
    logInAs(context, officeHead);
}

} // namespace tamarok::cli::day
