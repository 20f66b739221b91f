#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
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

/// Returns the first column of a query within a probe; nothing if the query fails.
std::optional<std::vector<Variant>> attemptColumn(const ado::ConnectionRef& connection, std::string_view statement)
{
    std::optional<std::vector<Variant>> rows;
    attempt([&] { rows = readFirstColumn(connection, statement); });
    return rows;
}

std::string deleteStatement(const Variant& id)
{
    return "DELETE FROM LOCK WHERE ID = " + fieldText(id);
}

/// Deletes a row within a probe. Returns false if that failed.
bool attemptDelete(ado::Connection& connection, const Variant& id)
{
    return attempt([&] { connection.Execute(deleteStatement(id)); });
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
        if (!attemptDelete(dbLock, id)) allDeleted = false;
    return allDeleted;
}

/// Writes the session row and places the recordset on it, which locks it. Returns false if either failed; a row
/// without its lock then stays, and counts as one of a dead session.
bool holdSessionRow(ado::Recordset& rsLock, const std::string& user, const std::string& stamp, ado::Connection& dbLock)
{
    return attempt([&] {
        dbLock.Execute("SET NOCOUNT ON\r\nINSERT INTO LOCK (ID_USERS,LOGIN) VALUES (" + user + ",'" + stamp + "')");
        rsLock.MoveFirst();
    });
}

/// Shows why a login is refused. What cannot be read, the name or a text, stays empty: the login is refused all
/// the same.
void showLoginRefusal(const TmkVar& tmkVar, const std::string& user)
{
    std::string name;
    attempt([&] { name = rights::userName(tmkVar.db_ADO, user); });
    const auto texts = Platform::locService();
    std::string message;
    const auto append = [&](std::int16_t number) { attempt([&] { message += texts->GetText(number, tmkVar); }); };
    append(4887);
    message.append(" ").append(name).append(" ");
    append(4888);
    message += "\r\n";
    append(4889);
    mComm::ShowMessage(message, exclamationIcon);
}

/// What the test of a holder has found.
enum class Finding {
    NoSession,   ///< he has no session row, or his sessions were dead and all his rows have gone
    LiveSession, ///< he has a live session, or it cannot be known
    Interrupted  ///< his session was dead, but one of his rows cannot be deleted: he may have logged in again
};

/// Returns the ids of all rows of a user in ascending order; nothing if they cannot be read.
std::optional<std::vector<Variant>> rowsInOrder(const TmkVar& tmkVar, const std::string& user)
{
    auto rows = attemptColumn(tmkVar.db_ADO, "SELECT ID FROM LOCK WHERE ID_USERS = " + user);
    if (rows && !attempt([&] { std::ranges::sort(*rows, {}, convert::toLongLong); })) rows.reset();
    return rows;
}

/// Deletes the rows that a dead session has left, up to the first DELETE that fails. A user who has logged in again
/// has a session row with a lower id than his new object locks, and its row lock ends the deletion before them.
Finding wipe(const TmkVar& tmkVar, const std::string& user)
{
    const auto rows = rowsInOrder(tmkVar, user);
    if (!rows) return Finding::LiveSession;
    const auto isDeleted = [&](const Variant& row) { return attemptDelete(*tmkVar.db_ADO, row); };
    return std::ranges::all_of(*rows, isDeleted) ? Finding::NoSession : Finding::Interrupted;
}

/// Tests whether another user has a live session. Deletes the session rows of dead sessions, and after each of
/// them all rows of that user. Rows that cannot be read are no sign of a dead session.
Finding testHolder(const TmkVar& tmkVar, const std::string& holder)
{
    const auto sessions =
        attemptColumn(tmkVar.db_ADO, "SELECT ID FROM LOCK WHERE ID_USERS = " + holder + " AND LOGIN IS NOT NULL");
    if (!sessions) return Finding::LiveSession;
    for (const Variant& session : *sessions) {
        if (!attemptDelete(*tmkVar.db_ADO, session)) return Finding::LiveSession;
        if (const Finding finding = wipe(tmkVar, holder); finding != Finding::NoSession) return finding;
    }
    return Finding::NoSession;
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

/// A holder who hinders the lock, by his id as text, and what his test has found.
struct Hindrance {
    std::string holder;
    Finding finding;
};

/// Returns the first holder who hinders the lock. A holder without a session row does not, and his lock row stays.
std::optional<Hindrance> findHindrance(const TmkVar& tmkVar, const std::vector<Variant>& holders)
{
    for (const Variant& id : holders) {
        if (id.isNull()) continue;
        std::string holder = fieldText(id);
        const Finding finding = testHolder(tmkVar, holder);
        if (finding != Finding::NoSession) return Hindrance{std::move(holder), finding};
    }
    return {};
}

/// Tests the holders. If one may have logged in again meanwhile, asks anew who holds the object.
/// @return the id, as text, of the holder who has the lock; nothing if there is no conflict
std::optional<std::string> findConflict(const TmkVar& tmkVar, std::vector<Variant> holders, const LockRequest& request)
{
    constexpr int repetitions = 3;
    for (int repetition = 0;; ++repetition) {
        std::optional<Hindrance> hindrance = findHindrance(tmkVar, holders);
        if (!hindrance) return {};
        if (hindrance->finding == Finding::LiveSession || repetition == repetitions)
            return std::move(hindrance->holder);
        auto askedAnew = attemptColumn(tmkVar.db_ADO, request.otherHolders());
        if (!askedAnew) return std::move(hindrance->holder);
        holders = std::move(*askedAnew);
    }
}

/// Looks for a conflict with another holder. If there is one, deletes the requester's row.
/// @return the holder's name ("" if it cannot be read), or nothing if there is no conflict
std::optional<std::string> conflictingUser(const TmkVar& tmkVar, const std::vector<Variant>& holders,
                                           const LockRequest& request)
{
    const CommandTimeoutScope timeout{tmkVar.db_ADO, probeSeconds};
    const std::optional<std::string> holder = findConflict(tmkVar, holders, request);
    if (!holder) return {};
    for (const Variant& row : attemptColumn(tmkVar.db_ADO, request.requestersRows()).value_or(std::vector<Variant>{}))
        attemptDelete(*tmkVar.db_ADO, row);
    std::string name;
    attempt([&] { name = rights::userName(tmkVar.db_ADO, *holder); });
    return name;
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
    rights::forEachFirstText(tmkVar.db_ADO, listsOfInvoice(name, type),
                             [&](const std::string& list) { action("'" + list + "'"); });
}

} // namespace

bool Comm_Lock::LogIn(ado::Recordset* rsLock, const TmkVar& tmkVar, const ado::ConnectionRef& dbLock) const
{
    if (!usesLocks(tmkVar)) return true;
    if (rsLock == nullptr) throw Error{errors::objectNotSet, "Object variable not set: rsLock", "Comm_Lock.LogIn"};
    const std::string user = std::to_string(tmkVar.ID_User);
    const std::string stamp = readLoginStamp(*rsLock, dbLock);
    const CommandTimeoutScope timeout{dbLock, probeSeconds};

    // The session row does not exist yet: the recordset is opened first, and MoveFirst finds the row later.
    rsLock->Open("SELECT * FROM LOCK WITH (ROWLOCK) WHERE ID IN (SELECT ID FROM LOCK WHERE ID_USERS = " + user +
                     " AND LOGIN = '" + stamp + "')",
                 dbLock, ado::CursorType::OpenDynamic, ado::LockType::Pessimistic);

    // Required by the contract: the object locks go even if an earlier session is alive. Do not correct.
    const bool isOnlySession = deleteDeadSessions(tmkVar, user, *dbLock);
    const bool hasNoLocks = deleteObjectLocks(tmkVar, user, *dbLock);
    // Without the lock of its row a session would count as dead, and others would be granted what it holds.
    if (isOnlySession && hasNoLocks && holdSessionRow(*rsLock, user, stamp, *dbLock)) return true;
    showLoginRefusal(tmkVar, user);
    return false;
}

bool Comm_Lock::LogOut(ado::Recordset* rsLock, std::string_view Lan_User_Version) const
{
    // Required by the contract: failures are ignored, a missing recordset among them, and the result is false on
    // every path. Do not correct.
    if (!convert::toBoolean(Variant{Lan_User_Version}) || rsLock == nullptr) return false;
    attempt([&] { rsLock->Delete(1); });
    attempt([&] { rsLock->Close(); });
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
    const std::optional<std::string> holder = conflictingUser(tmkVar, holders, request);
    if (!holder) return true;

    const std::string message = rights::lockRefusal(tmkVar, column, ID, *holder);
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
