#include <string>
#include <string_view>

#include "fetch_rows.h"
#include "lock_refusal.h"

#include "tamarok/comm_lock.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/loc_service.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

using rights::CommandTimeoutScope;
using rights::fetchFirstColumn;
using rights::textOf;

constexpr std::int32_t exclamationIcon = 48;
constexpr std::int32_t probeSeconds = 5;

bool locksAreKept(const TmkVar& tmkVar)
{
    return tmkVar.bolLan && !tmkVar.bolOracle;
}

/// Runs what may fail as part of a probe; false tells that it failed. Only failures of the library
/// and the database are expected here.
template <class Action>
bool attempt(Action&& action)
{
    try {
        action();
        return true;
    } catch (const Error&) {
        return false;
    }
}

std::vector<Variant> rowsOrNone(const ado::ConnectionRef& connection, std::string_view statement)
{
    std::vector<Variant> rows;
    attempt([&] { rows = fetchFirstColumn(connection, statement); });
    return rows;
}

std::string deleteStatement(const Variant& id)
{
    return "DELETE FROM LOCK WHERE ID = " + textOf(id);
}

std::string userNameStatement(std::string_view id)
{
    return std::string{"SELECT NAME FROM USERS WHERE ID = "}.append(id);
}

/// The name of a user, empty where there is none.
std::string userName(const TmkVar& tmkVar, std::string_view id)
{
    ado::Recordset user;
    user.Open(userNameStatement(id), tmkVar.db_ADO);
    std::string name;
    if (!user.AtEOF()) name = textOf(user.Fields().Item("NAME").Value());
    user.Close();
    return name;
}

std::string loginStamp(ado::Recordset& rsLock, const ado::ConnectionRef& dbLock)
{
    rsLock.Open("SELECT CONVERT(varchar,GETDATE(),121)", dbLock);
    std::string stamp = textOf(rsLock.Fields().Item(0).Value());
    rsLock.Close();
    return stamp;
}

/// Deletes the user's rows of LOCK that a login finds: his session rows up to the first that is
/// alive, and all his object locks. False where a statement failed.
bool clearRowsOfUser(const TmkVar& tmkVar, const std::string& user, ado::Connection& dbLock)
{
    bool clear = true;
    const auto rows = [&](const std::string& statement) {
        std::vector<Variant> ids;
        if (!attempt([&] { ids = fetchFirstColumn(tmkVar.db_ADO, statement); })) clear = false;
        return ids;
    };
    for (const Variant& id : rows("SELECT ID FROM LOCK WHERE ID_USERS = " + user + " AND LOGIN IS NOT NULL")) {
        if (attempt([&] { dbLock.Execute(deleteStatement(id)); })) continue;
        clear = false;
        break;
    }
    for (const Variant& id : rows("SELECT ID FROM LOCK WHERE LOGIN IS NULL AND ID_USERS = " + user))
        if (!attempt([&] { dbLock.Execute(deleteStatement(id)); })) clear = false;
    return clear;
}

void showLoginRefusal(const TmkVar& tmkVar, const std::string& user)
{
    std::string name;
    attempt([&] { name = userName(tmkVar, user); });
    const auto texts = Platform::locService();
    mComm::ShowMessage(texts->GetText(4887, tmkVar) + " " + name + " " + texts->GetText(4888, tmkVar) + "\r\n" +
                           texts->GetText(4889, tmkVar),
                       exclamationIcon);
}

/// Whether another user's session is alive. Rows of dead sessions are deleted, and with a session
/// row all that its user left behind.
bool holderIsAlive(const TmkVar& tmkVar, const std::string& holder)
{
    ado::Connection& connection = *tmkVar.db_ADO;
    for (const Variant& session :
         rowsOrNone(tmkVar.db_ADO, "SELECT ID FROM LOCK WHERE ID_USERS = " + holder + " AND LOGIN IS NOT NULL")) {
        if (!attempt([&] { connection.Execute(deleteStatement(session)); })) return true;
        for (const Variant& row : rowsOrNone(tmkVar.db_ADO, "SELECT ID FROM LOCK WHERE ID_USERS = " + holder))
            attempt([&] { connection.Execute(deleteStatement(row)); });
    }
    return false;
}

/// The first holder in `holders` whose session is alive, after the caller's own row has been taken
/// back; nothing where none is. Failures of single statements are part of the probing.
struct Conflict {
    bool found = false;
    std::string holderName;
};

Conflict probe(const TmkVar& tmkVar, const std::vector<Variant>& holders, const std::string& ownRows)
{
    for (const Variant& holderId : holders) {
        if (holderId.isNull()) continue;
        const std::string holder = textOf(holderId);
        if (!holderIsAlive(tmkVar, holder)) continue;
        Conflict conflict{true, {}};
        for (const Variant& row : rowsOrNone(tmkVar.db_ADO, ownRows))
            attempt([&] { tmkVar.db_ADO->Execute(deleteStatement(row)); });
        attempt([&] { conflict.holderName = userName(tmkVar, holder); });
        return conflict;
    }
    return {};
}

/// The key of an invoice in LOCK.RECHNUNG, quotes included: two characters of type, then the name.
std::string invoiceKey(std::string_view name, std::string_view type)
{
    std::string key{"'"};
    key.append(text::left(std::string{type} + "  ", 2)).append(name).append("'");
    return key;
}

std::string listsOfInvoice(std::string_view name, std::string_view type)
{
    std::string statement{"SELECT DISTINCT LISTE FROM LOGS WHERE ID_LOG IN (SELECT ID_LOG FROM LOGS_RECH WHERE "};
    statement.append(type).append("_NAME = '").append(name).append("')");
    return statement;
}

/// Calls `action` with the quoted name of each timber list of an invoice.
template <class Action>
void forEachList(const TmkVar& tmkVar, std::string_view name, std::string_view type, Action&& action)
{
    ado::Recordset lists;
    lists.Open(listsOfInvoice(name, type), tmkVar.db_ADO);
    for (; !lists.AtEOF(); lists.MoveNext())
        action("'" + textOf(lists.Fields().Item(0).Value()) + "'");
    lists.Close();
}

} // namespace

bool Comm_Lock::LogIn(ado::Recordset& rsLock, const TmkVar& tmkVar, const ado::ConnectionRef& dbLock) const
{
    if (!locksAreKept(tmkVar)) return true;
    const std::string user = std::to_string(tmkVar.ID_User);
    const std::string stamp = loginStamp(rsLock, dbLock);
    const CommandTimeoutScope timeout{dbLock, probeSeconds};
    // The row does not exist yet: the recordset is opened first and finds it by MoveFirst, once it is there.
    rsLock.Open("SELECT * FROM LOCK WITH (ROWLOCK) WHERE ID IN (SELECT ID FROM LOCK WHERE ID_USERS = " + user +
                    " AND LOGIN = '" + stamp + "')",
                dbLock, ado::CursorType::OpenDynamic, ado::LockType::Pessimistic);
    if (!clearRowsOfUser(tmkVar, user, *dbLock)) {
        showLoginRefusal(tmkVar, user);
        return false;
    }
    attempt([&] {
        dbLock->Execute("SET NOCOUNT ON\r\nINSERT INTO LOCK (ID_USERS,LOGIN) VALUES (" + user + ",'" + stamp + "')");
    });
    attempt([&] { rsLock.MoveFirst(); });
    return true;
}

bool Comm_Lock::LogOut(ado::Recordset& rsLock, std::string_view Lan_User_Version) const
{
    if (convert::toBoolean(Variant{Lan_User_Version})) {
        attempt([&] { rsLock.Delete(1); });
        attempt([&] { rsLock.Close(); });
    }
    return false;
}

bool Comm_Lock::LockOn(std::string_view column, std::string_view ID, const TmkVar& tmkVar) const
{
    if (!locksAreKept(tmkVar)) return true;
    ado::Connection& connection = ado::require(tmkVar.db_ADO);
    const std::string user = std::to_string(tmkVar.ID_User);
    const std::string object = std::string{" AND "}.append(column).append(" = ").append(ID);
    const std::string ownRows = "SELECT ID FROM LOCK WHERE ID_USERS = " + user + object;

    ado::Recordset held;
    held.Open(ownRows, tmkVar.db_ADO);
    const bool isHeld = !held.AtEOF();
    held.Close();
    if (isHeld) return true;

    // The row is written before the test: of two users who ask at once, each sees the other's row.
    connection.Execute(std::string{"INSERT INTO LOCK (ID_USERS,"}
                           .append(column)
                           .append(") VALUES (")
                           .append(user)
                           .append(",")
                           .append(ID)
                           .append(")"));
    const std::vector<Variant> others = fetchFirstColumn(tmkVar.db_ADO, "SELECT ID_USERS FROM LOCK WHERE ID_USERS <> " +
                                                                            user + object + " GROUP BY ID_USERS");
    if (others.empty()) return true;

    Conflict conflict;
    {
        const CommandTimeoutScope timeout{tmkVar.db_ADO, probeSeconds};
        conflict = probe(tmkVar, others, ownRows);
    }
    if (!conflict.found) return true;
    const std::string message = rights::lockRefusal(tmkVar, column, ID, conflict.holderName);
    if (!message.empty()) mComm::ShowMessage(message, exclamationIcon);
    return false;
}

bool Comm_Lock::LockOff(std::string_view /*column*/, std::string_view /*ID*/, const TmkVar& tmkVar) const
{
    if (!locksAreKept(tmkVar)) return false;
    const std::string statement =
        "SELECT ID FROM LOCK WHERE ID_USERS = " + std::to_string(tmkVar.ID_User) + " AND LOGIN IS NULL ";
    for (const Variant& id : fetchFirstColumn(tmkVar.db_ADO, statement))
        tmkVar.db_ADO->Execute(deleteStatement(id));
    return false;
}

bool Comm_Lock::LockRechnung(std::string_view RName, std::string_view ver_type, const TmkVar& tmkVar) const
{
    if (!LockOn("RECHNUNG", invoiceKey(RName, ver_type), tmkVar)) return false;
    if (!tmkVar.bolLan) return true;
    bool granted = true;
    forEachList(tmkVar, RName, ver_type, [&](const std::string& list) {
        if (!LockOn("LISTE", list, tmkVar)) granted = false;
    });
    if (!granted)
        forEachList(tmkVar, RName, ver_type, [&](const std::string& list) { LockOff("LISTE", list, tmkVar); });
    return granted;
}

void Comm_Lock::UnLockRechnung(std::string_view RName, std::string_view ver_type, const TmkVar& tmkVar) const
{
    LockOff("RECHNUNG", invoiceKey(RName, ver_type), tmkVar);
    if (tmkVar.bolLan)
        forEachList(tmkVar, RName, ver_type, [&](const std::string& list) { LockOff("LISTE", list, tmkVar); });
}

} // namespace tamarok
