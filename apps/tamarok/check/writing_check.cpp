#include <array>
#include <string>
#include <string_view>

#include "check/checks.h"
#include "check/remedies.h"
#include "check/rows.h"
#include "tamarok_tsql/table_definition.h"

#include "tamarok/comm_lock.h"
#include "tamarok/comm_set.h"
#include "tamarok/comm_sql.h"
#include "tamarok/transaction.h"

namespace tamarok::cli::check {

namespace {

/// No user has this id and no record this key, so that no lock of a session stands in the way.
constexpr std::int32_t nobody = -1;
constexpr const char* noRecord = "-1";

/// The tables whose copies in memory the trials of a file write to.
constexpr std::array<std::string_view, 2> writtenTables{"LOCK", "OPTIONEN"};

/// Makes a table with the columns that the file's own has.
std::string definitionOf(const TableShape& table)
{
    std::string text = "CREATE TABLE " + tsql::bracketed(table.name) + " (";
    for (const ColumnShape& column : table.columns) {
        text += (text.ends_with('(') ? "" : ", ") + tsql::bracketed(column.name) + " " + column.declared;
        if (column.exact) text += " COLLATE Latin1_General_BIN";
        text += column.identity ? " IDENTITY(1,1) NOT NULL PRIMARY KEY" : column.nullable ? "" : " NOT NULL";
    }
    return text + ")";
}

/// The session of the trials: of nobody, in multi-user operation. For a file it has empty copies of the tables.
TmkVar trialSession(const Context& context)
{
    const Installation& installation = context.installation;
    TmkVar session = installation.session;
    session.db_ADO = installation.trial;
    session.ID_User = nobody;
    session.bolLan = true;
    if (!installation.isFile()) return session;
    for (const std::string_view name : writtenTables) {
        const auto table = installation.tables.find(name);
        if (table == installation.tables.end()) continue;
        installation.trial->Execute("DROP TABLE IF EXISTS " + tsql::bracketed(name));
        installation.trial->Execute(definitionOf(table->second));
    }
    return session;
}

std::string whereTried(const Context& context)
{
    return context.installation.isFile() ? "on an empty copy of the table in memory, since the file is only read"
                                         : "in a transaction that was rolled back";
}

} // namespace

/// Reads a setting, and writes one by the procedure. A procedure of another text might commit.
void checkOptions(Context& context)
{
    const std::int16_t models = Comm_SQL{}.OPTIONEN_glbModel(context.installation.session);
    context.report.add(State::Ok, "option read", "CHANGE_MODELS is " + std::to_string(models));
    if (!context.installation.knowsOptionProcedure) {
        context.report.add(State::Skipped, "option written",
                           "the procedure tmk_OPTIONEN_INS is not known to be that of this version");
        return;
    }
    const TmkVar session = trialSession(context);
    const ado::Transaction scope{*session.db_ADO};
    const std::string property = "TAMAROK_CHECK";
    Comm_Set{}.SetOptionenNumber(session, property, std::int16_t{7});
    const bool kept =
        readText(session.db_ADO, "SELECT NUMBER_VALUE FROM OPTIONEN WHERE PROPERTY_ID = '" + property + "'") == "7";
    context.report.add(kept ? State::Ok : State::Different, "option written",
                       kept ? whereTried(context)
                            : "the option that was written has another value when it is read: run " +
                                  std::string{proceduresScript} + " again");
}

/// Takes the lock of an object and releases it, as the forms of the application do.
void checkLocks(Context& context)
{
    const TmkVar session = trialSession(context);
    const std::string rows = "SELECT COUNT(*) FROM LOCK WHERE ID_USERS = " + std::to_string(nobody);
    const ado::Transaction scope{*session.db_ADO};
    const Comm_Lock locks;
    const bool taken = locks.LockOn("BELEGE", noRecord, session) && readText(session.db_ADO, rows) == "1";
    locks.LockOff("BELEGE", noRecord, session);
    const bool released = readText(session.db_ADO, rows) == "0";
    context.report.add(taken && released ? State::Ok : State::Different, "object lock",
                       taken && released ? "taken and released " + whereTried(context)
                       : taken           ? "its row stays after the release: look for a trigger on table LOCK"
                                         : "its row is not there after the lock: look for a trigger on table LOCK");
}

/// Holds a row as a session holds its own. The back end proves with a second connection that nobody else gets it.
void checkRowLock(Context& context)
{
    if (context.installation.isFile()) {
        context.report.add(State::Skipped, "row lock",
                           "a file that is only read takes no locks; they are the operating system's");
        return;
    }
    const ado::ConnectionRef& connection = context.installation.connection();
    const std::string number = readText(connection, "SELECT MIN(ID_STRING) FROM STRINGS");
    if (number.empty()) {
        context.report.add(State::Skipped, "row lock", "STRINGS has no row to hold; load the texts first");
        return;
    }
    const std::string query = "SELECT ID_STRING, GERMAN FROM STRINGS WHERE ID_STRING = " + number;
    const ado::Transaction scope{*connection};
    ado::Recordset held;
    held.Open(query, connection, ado::CursorType::OpenDynamic, ado::LockType::Pessimistic);
    const ado::ConnectionRef reader = openToCheck(context.installation.choice);
    constexpr std::int32_t moment = 5;
    reader->CommandTimeout(moment);
    countRows(reader, query);
    held.Close();
    context.report.add(State::Ok, "row lock", "a second connection does not get the held row, and reads it");
}

} // namespace tamarok::cli::check
