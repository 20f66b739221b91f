#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

namespace tamarok {

struct TmkVar;

/// Sessions and record locks of several workstations on one database, the access-level filters of lists, and the
/// rights of navigation.
///
/// Locks are rows of table LOCK. A live session holds a row lock of the database on its session row for as long
/// as it runs, which tells it from a dead one. Locks exist in multi-user operation (`bolLan`) on SQL Server
/// only; otherwise each lock is granted at once and nothing is sent.
/// Errors of all operations that send a statement: 91 without a connection, failures of the database.
class Comm_Lock {
public:
    /// Marks the user's session as live. Deletes his session rows of dead sessions, and in any case all his object
    /// locks.
    /// @param rsLock  recordset that holds the session row until LogOut; the caller keeps it alive. May be null where
    ///                there are no locks
    /// @param dbLock  open connection that is used for nothing but the session row; the caller keeps it alive. May be
    ///                null where there are no locks
    /// @return true if the session row is written and locked, or there are no locks; false, after a message, if
    ///         another session of the same user is alive, which takes up to 5 seconds to find out, or if the session
    ///         row cannot be written or locked
    /// Errors: 91 for a missing object; failures of the database before the first session row is tested. `dbLock`
    /// has its former CommandTimeout again on every path.
    bool LogIn(ado::Recordset* rsLock, const TmkVar& tmkVar, const ado::ConnectionRef& dbLock) const;

    /// Deletes the session row and closes `rsLock`; failures are ignored.
    /// @param rsLock            the recordset of LogIn; null does nothing
    /// @param Lan_User_Version  text read as a Boolean; false does nothing
    /// @return always false, as the contract requires
    /// Errors: 13 for a text that is no Boolean.
    bool LogOut(ado::Recordset* rsLock, std::string_view Lan_User_Version) const;

    /// Asks for the lock of one object.
    /// @param column  kind of object, a column of table LOCK
    /// @param ID      key of the object as SQL text, inserted verbatim: a number bare, a text in single quotes
    /// @return true if the user now holds the lock, or held it before; false, after a message that names the
    ///         holder, if a live session holds it, or if that cannot be found out. Testing a session takes up to 5
    ///         seconds. Rows of dead sessions are removed. If a holder logs in again during that, the holders are
    ///         read and tested anew, at most three times.
    /// Errors: the look-up of the refusal's text may fail, after the lock has been taken back. The connection has
    /// its former CommandTimeout again on every path.
    bool LockOn(std::string_view column, std::string_view ID, const TmkVar& tmkVar) const;

    /// Releases every object lock of the user. Required by the contract: `column` and `ID` are not used.
    /// @return always false, as the contract requires
    bool LockOff(std::string_view column, std::string_view ID, const TmkVar& tmkVar) const;

    /// Locks an invoice and all timber lists that it was made from.
    /// @param RName     name of the document  @param ver_type  its type, "R" or "A1" to "A8"
    /// @return false, after a message for each refusal, if one of them is refused; the user then holds no object
    ///         lock at all if the refusal concerned a list
    bool LockRechnung(std::string_view RName, std::string_view ver_type, const TmkVar& tmkVar) const;

    /// Releases an invoice and its lists, and with them every object lock of the user.
    void UnLockRechnung(std::string_view RName, std::string_view ver_type, const TmkVar& tmkVar) const;

    /// Adds to the condition `strWhere` what the user may see of a table by his access level and, for HEADERRECH,
    /// RECHNUNGSJOURNAL and LISTENKOPF, by his working period.
    /// @param table             key of the table, compared exactly
    /// @param strWhere          condition without WHERE, "" for none
    /// @param ID_Access_Levels  level of interest, as a rule the user's own; 0 for none
    /// @return the text that `strWhere` holds afterwards
    /// Errors: 6 for an id above 32767 and 3021 for a missing level, where the level's code is read.
    std::string Access_Levels(std::string_view table, std::string& strWhere, const TmkVar& tmkVar,
                              std::int32_t ID_Access_Levels) const;

    /// Tells the database, by the procedure tmk_NodeVisible, that the user's navigation shows a node. An unknown key
    /// shows the word "CHYBA"; without a user nothing happens.
    void NodeVisible(const TmkVar& tmkVar, std::string_view Key) const;

    /// Tells whether the user sees a node. A key that nothing denies is visible.
    /// @param arr  the caller's cache of hidden right keys; if it is empty, the call fills it
    /// @return a Boolean, true without a user; Empty, after the message "CHYBA", for an unknown key
    Variant NodeVisibleCheck(const TmkVar& tmkVar, std::vector<std::string>& arr, std::string_view Key) const;

    /// Tells whether the user may write in what a node opens; false for an unknown key.
    bool NodeWrite(const TmkVar& tmkVar, std::string_view Key) const;

    /// Returns the right key of a key of the navigation tree; "" for an unknown key.
    std::string konvUSERS_TREEVIEW_KEY(std::string_view Key) const;

    /// Tells whether the user has a numbered property. One of his principals suffices, but for the personal
    /// properties B054 and B055. Without a user the properties up to 20 hold.
    /// @param column  "B001" and so on, inserted verbatim
    /// Errors: 13 without a user, for a column without a number behind its first character.
    bool Users_Property(const TmkVar& tmkVar, std::string_view column) const;
};

} // namespace tamarok

#pragma GCC visibility pop
