#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ado/first_row.h"
#include "command_timeout_scope.h"
#include "dialect/dialect.h"
#include "first_column.h"
#include "lock_refusal.h"
#include "user_name.h"

#include "tamarok/comm_lock.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/loc_service.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

// Table LOCK has two kinds of rows. A session row (LOGIN not null) stands for a logged-in user; a live
// session keeps a row lock of the database on it, so that a DELETE of the row fails after the command
// time-out, while the row of a dead session goes at once. A lock row (LOGIN null) stands for one object
// that a user has checked out. There is no time limit and no clean-up job: rows of dead sessions go when
// somebody meets them.

namespace tamarok {
namespace {

using ado::fieldText;
using rights::CommandTimeoutScope;
using rights::readFirstColumn;

constexpr std::int32_t exclamationIcon = 48;
/// Limit in seconds of the statements that find out whether a session is alive.
constexpr std::int32_t probeSeconds = 5;

bool usesLocks(const TmkVar& tmkVar)
{
    return tmkVar.bolLan && !dialect::of(tmkVar).isOracle;
}

/// Runs an action that may fail as part of a probe. Returns false if it failed. Other exceptions than
/// those of the library and the database pass.
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

/// Returns the first column of a query within a probe; empty also if the query fails.
std::vector<Variant> attemptColumn(const ado::ConnectionRef& connection, std::string_view statement)
{
    std::vector<Variant> rows;
    attempt([&] { rows = readFirstColumn(connection, statement); });
    return rows;
}

std::string deleteStatement(const Variant& id)
{
    return "DELETE FROM LOCK WHERE ID = " + fieldText(id);
}

/// Returns the database server's clock as text, read through the caller's recordset and connection.
std::string readLoginStamp(ado::Recordset& rsLock, const ado::ConnectionRef& dbLock)
{
    rsLock.Open("SELECT CONVERT(varchar,GETDATE(),121)", dbLock);
    std::string stamp = fieldText(rsLock.Fields().Item(0).Value());
    rsLock.Close();
    return stamp;
}

/// Deletes the user's session rows up to the first that is alive. Returns false if a statement failed,
/// which is the sign of a live session.
bool deleteDeadSessions(const TmkVar& tmkVar, const std::string& user, ado::Connection& dbLock)
{
    return attempt([&] {
        for (const Variant& id :
             readFirstColumn(tmkVar.db_ADO, "SELECT ID FROM LOCK WHERE ID_USERS = " + user + " AND LOGIN IS NOT NULL"))
            dbLock.Execute(deleteStatement(id));
    });
}

/// Deletes all lock rows of the user. Returns false if a statement failed; the others run all the same.
bool deleteObjectLocks(const TmkVar& tmkVar, const std::string& user, ado::Connection& dbLock)
{
    std::vector<Variant> rows;
    bool allDeleted = attempt([&] {
        rows = readFirstColumn(tmkVar.db_ADO, "SELECT ID FROM LOCK WHERE LOGIN IS NULL AND ID_USERS = " + user);
    });
    for (const Variant& id : rows)
        if (!attempt([&] { dbLock.Execute(deleteStatement(id)); })) allDeleted = false;
    return allDeleted;
}

void showLoginRefusal(const TmkVar& tmkVar, const std::string& user)
{
    std::string name;
    attempt([&] { name = rights::userName(tmkVar.db_ADO, user); });
    const auto texts = Platform::locService();
    mComm::ShowMessage(texts->GetText(4887, tmkVar) + " " + name + " " + texts->GetText(4888, tmkVar) + "\r\n" +
                           texts->GetText(4889, tmkVar),
                       exclamationIcon);
}

/// Tells whether another user has a live session. Deletes the session rows of dead sessions, and after
/// each of them all rows of that user.
bool isAlive(const TmkVar& tmkVar, const std::string& holder)
{
    ado::Connection& connection = *tmkVar.db_ADO;
    for (const Variant& session :
         attemptColumn(tmkVar.db_ADO, "SELECT ID FROM LOCK WHERE ID_USERS = " + holder + " AND LOGIN IS NOT NULL")) {
        if (!attempt([&] { connection.Execute(deleteStatement(session)); })) return true;
        for (const Variant& row : attemptColumn(tmkVar.db_ADO, "SELECT ID FROM LOCK WHERE ID_USERS = " + holder))
            attempt([&] { connection.Execute(deleteStatement(row)); });
    }
    return false;
}

/// The texts of one request for a lock.
struct LockRequest {
    LockRequest(const TmkVar& tmkVar, std::string_view column, std::string_view key) :
        user{std::to_string(tmkVar.ID_User)}, object{std::string{" AND "}.append(column).append(" = ").append(key)},
        insertion{std::string{"INSERT INTO LOCK (ID_USERS,"}
                      .append(column)
                      .append(") VALUES (")
                      .append(user)
                      .append(",")
                      .append(key)
                      .append(")")}
    {}

    std::string requestersRows() const { return "SELECT ID FROM LOCK WHERE ID_USERS = " + user + object; }
    std::string otherHolders() const
    {
        return "SELECT ID_USERS FROM LOCK WHERE ID_USERS <> " + user + object + " GROUP BY ID_USERS";
    }

    std::string user;
    std::string object; ///< condition on the kind and the key
    std::string insertion;
};

/// Looks for the first holder with a live session. A holder without a session row is no conflict, and his
/// lock row stays. On a conflict, deletes the requester's row.
/// @return the live holder's name ("" if it cannot be read), or nothing if there is no conflict
std::optional<std::string> findConflict(const TmkVar& tmkVar, const std::vector<Variant>& holders,
                                        const LockRequest& request)
{
    const CommandTimeoutScope timeout{tmkVar.db_ADO, probeSeconds};
    for (const Variant& holderId : holders) {
        if (holderId.isNull()) continue;
        const std::string holder = fieldText(holderId);
        if (!isAlive(tmkVar, holder)) continue;
        for (const Variant& row : attemptColumn(tmkVar.db_ADO, request.requestersRows()))
            attempt([&] { tmkVar.db_ADO->Execute(deleteStatement(row)); });
        std::string name;
        attempt([&] { name = rights::userName(tmkVar.db_ADO, holder); });
        return name;
    }
    return {};
}

/// Returns the key of an invoice in LOCK.RECHNUNG with its quotes: the type padded or cut to two
/// characters, then the name.
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
        action("'" + fieldText(lists.Fields().Item(0).Value()) + "'");
    lists.Close();
}

} // namespace

bool Comm_Lock::LogIn(ado::Recordset& rsLock, const TmkVar& tmkVar, const ado::ConnectionRef& dbLock) const
{
    if (!usesLocks(tmkVar)) return true;
    const std::string user = std::to_string(tmkVar.ID_User);
    const std::string stamp = readLoginStamp(rsLock, dbLock);
    const CommandTimeoutScope timeout{dbLock, probeSeconds};

    // The session row does not exist yet: the recordset is opened first, and MoveFirst finds the row later.
    rsLock.Open("SELECT * FROM LOCK WITH (ROWLOCK) WHERE ID IN (SELECT ID FROM LOCK WHERE ID_USERS = " + user +
                    " AND LOGIN = '" + stamp + "')",
                dbLock, ado::CursorType::OpenDynamic, ado::LockType::Pessimistic);

    // Required by the contract: the object locks go even if an earlier session is alive. Do not correct.
    const bool isOnlySession = deleteDeadSessions(tmkVar, user, *dbLock);
    const bool hasNoLocks = deleteObjectLocks(tmkVar, user, *dbLock);
    if (!isOnlySession || !hasNoLocks) {
        showLoginRefusal(tmkVar, user);
        return false;
    }

    // Required by the contract: the answer is true even if the row cannot be written or locked. Do not correct.
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
    // Required by the contract: the result is false on every path. Do not correct.
    return false;
}

bool Comm_Lock::LockOn(std::string_view column, std::string_view ID, const TmkVar& tmkVar) const
{
    if (!usesLocks(tmkVar)) return true;
    const LockRequest request{tmkVar, column, ID};
    if (ado::hasRow(tmkVar.db_ADO, request.requestersRows())) return true;

    // The row is written before the test: of two users who ask at the same time, each sees the other's row.
    tmkVar.db_ADO->Execute(request.insertion);
    const std::vector<Variant> holders = readFirstColumn(tmkVar.db_ADO, request.otherHolders());
    if (holders.empty()) return true;
    const std::optional<std::string> liveHolder = findConflict(tmkVar, holders, request);
    if (!liveHolder) return true;

    const std::string message = rights::lockRefusal(tmkVar, column, ID, *liveHolder);
    if (!message.empty()) mComm::ShowMessage(message, exclamationIcon);
    return false;
}

bool Comm_Lock::LockOff(std::string_view /*column*/, std::string_view /*ID*/, const TmkVar& tmkVar) const
{
    // Required by the contract: one call releases every object lock of the user, and the result is false
    // on every path. Do not correct.
    if (!usesLocks(tmkVar)) return false;
    const std::string statement =
        "SELECT ID FROM LOCK WHERE ID_USERS = " + std::to_string(tmkVar.ID_User) + " AND LOGIN IS NULL ";
    for (const Variant& id : readFirstColumn(tmkVar.db_ADO, statement))
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
    // Required by the contract: after a refusal all of the user's object locks go. Do not correct.
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
