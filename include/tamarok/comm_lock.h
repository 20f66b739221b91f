#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"
#include "tamarok/variant.h"

namespace tamarok {

struct TmkVar;

/// Sessions and record locks of several workstations on one database, the access-level filters of
/// lists, and the rights of navigation.
///
/// Locks are rows of table LOCK. A live session is told from a dead one by its session row, on which
/// it holds a row lock of the database for as long as it runs. Locks work in multi-user operation
/// (`bolLan`) on SQL Server text only; otherwise a lock is granted at once and nothing is sent.
class Comm_Lock {
public:
    /// Marks the user's session as live. Stale session rows of the user are removed first; all the
    /// user's object locks go in any case.
    /// @param rsLock  recordset that holds the session row until LogOut; the caller keeps it
    /// @param dbLock  open connection used for nothing but the session row; the caller keeps it
    /// @return false, after a message, where another session of the same user is alive
    /// Errors: provider failures before the probing begins. `dbLock`'s CommandTimeout comes back on
    /// every path.
    bool LogIn(ado::Recordset& rsLock, const TmkVar& tmkVar, const ado::ConnectionRef& dbLock) const;

    /// Deletes the session row and closes `rsLock`; failures are ignored.
    /// @param Lan_User_Version  text read as a Boolean; false does nothing. Error 13 if it is none
    /// @return always false
    bool LogOut(ado::Recordset& rsLock, std::string_view Lan_User_Version) const;

    /// Asks for the lock of one object.
    /// @param column  kind of object, a column of table LOCK
    /// @param ID      the object's key as it goes into SQL: numbers bare, text in single quotes
    /// @return true where the caller now holds it (also where he held it before); false, after a
    ///         message that names the holder, where a live session has it. A probe of a session row
    ///         takes up to 5 seconds; locks of dead sessions are removed.
    /// Errors: provider failures; the look-up of the refusal text fails the call after the lock has
    /// been taken back. The connection's CommandTimeout comes back on every path.
    bool LockOn(std::string_view column, std::string_view ID, const TmkVar& tmkVar) const;

    /// Releases every object lock of the user; `column` and `ID` are accepted and not used.
    /// @return always false
    bool LockOff(std::string_view column, std::string_view ID, const TmkVar& tmkVar) const;

    /// Locks an invoice and all timber lists that it was made from.
    /// @param ver_type  "R" or "A1" to "A8"
    /// @return false where one of them is refused; none of the user's locks stays then
    bool LockRechnung(std::string_view RName, std::string_view ver_type, const TmkVar& tmkVar) const;

    /// Releases the invoice and its lists.
    void UnLockRechnung(std::string_view RName, std::string_view ver_type, const TmkVar& tmkVar) const;

    /// Adds to `strWhere` what the user's level and, for HEADERRECH, RECHNUNGSJOURNAL and
    /// LISTENKOPF, his working period allow of a table.
    /// @param table             table key, compared exactly
    /// @param ID_Access_Levels  level of interest, as a rule the user's own; 0 for none
    /// @return the text that `strWhere` holds afterwards
    /// Errors: 6 for an id above 32767 where the level's code is read, 3021 where it is missing,
    /// provider failures.
    std::string Access_Levels(std::string_view table, std::string& strWhere, const TmkVar& tmkVar,
                              std::int32_t ID_Access_Levels) const;

    /// Tells the database, through procedure tmk_NodeVisible, that the user's navigation shows a node.
    /// An unknown key shows "CHYBA"; without a user nothing happens.
    void NodeVisible(const TmkVar& tmkVar, std::string_view Key) const;

    /// Whether the user sees a node.
    /// @param arr  the caller's cache of hidden right keys; empty, it is filled by the first call
    /// @return a Boolean, or Empty after "CHYBA" for an unknown key
    Variant NodeVisibleCheck(const TmkVar& tmkVar, std::vector<std::string>& arr, std::string_view Key) const;

    /// Whether the user may write in what a node opens.
    bool NodeWrite(const TmkVar& tmkVar, std::string_view Key) const;

    /// The right key of a tree key, "" for an unknown one.
    std::string konvUSERS_TREEVIEW_KEY(std::string_view Key) const;

    /// A numbered property of the user, or (but for B054 and B055) of one whose deputy he is.
    /// Without a user the properties up to 20 hold. @param column "B001" and so on
    /// Error 13 for a column without a number, without a user.
    bool Users_Property(const TmkVar& tmkVar, std::string_view column) const;
};

} // namespace tamarok
