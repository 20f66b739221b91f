#include <nlohmann/json.hpp>
#include <string>

#include "day/second_process.h"
#include "day/steps.h"
#include "day/workstation.h"

#include "tamarok/ado.h"

namespace tamarok::cli::day {

namespace {

/// The timber list that both users open; empty where the database has none.
std::string someList(const TmkVar& session)
{
    ado::Recordset lists;
    lists.Open("SELECT TOP 1 LISTE FROM LOGS WHERE LISTE IS NOT NULL ORDER BY LISTE DESC", session.db_ADO);
    return lists.AtEOF() ? std::string{} : lists.Fields().Item(0).Value().asString();
}

/// Logs in at the second workstation and opens the list there; false where that is refused.
bool openElsewhere(SecondProcess& elsewhere, const DatabaseChoice& database, const std::string& key)
{
    using nlohmann::json;
    const json session{{"$ref", "TmkVar"}};
    elsewhere.ask(json{{"session", {{"ID_User", colleague.user}, {"bolLan", true}}}}.dump());
    elsewhere.ask(json{{"new", "ADODB.Recordset"}, {"as", "rsLock"}}.dump());
    elsewhere.connect("dbLock", database);
    const auto call = [&](const char* operation, const json& arguments) {
        return elsewhere.ask(json{{"class", "Comm_Lock"}, {"op", operation}, {"args", arguments}}.dump());
    };
    return call("LogIn", json::array({json{{"$ref", "rsLock"}}, session, json{{"$ref", "dbLock"}}})) &&
           call("LockOn", json::array({"LISTE", key, session}));
}

} // namespace

/// Opens a record that another process has open: the lock is refused with the name of its user. When that
/// process has died, the lock is granted.
void showOpenRecord(const Context& context)
{
    Output& output = context.output;
    const std::string list = someList(context.session);
    if (list.empty()) {
        output.write("The database has no timber list to open.\n");
        return;
    }
    const std::string key = "'" + list + "'";
    SecondProcess elsewhere{context.database};
    if (!openElsewhere(elsewhere, context.database, key)) {
        output.write("HUBER works at another workstation of this database already.\n");
        return;
    }
    output.write("HUBER has opened list " + list + " in a second process.\n");
    Workstation station{context.session, context.database, ranger};
    if (!station.logIn()) {
        output.write(station.message() + "\n");
        return;
    }
    output.write("EDER opens the same list. The check whether HUBER's session is alive takes up to 5 seconds.\n\n");
    output.flush();
    const bool first = station.lockOn("LISTE", key);
    output.write("    " + (first ? std::string{"granted"} : station.message()) + "\n\n");
    elsewhere.crash();
    output.write("The second process has crashed. EDER opens the list again: ");
    output.write(station.lockOn("LISTE", key) ? "granted at once.\n" : station.message() + "\n");
}

} // namespace tamarok::cli::day
