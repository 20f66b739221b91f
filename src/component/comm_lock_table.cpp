#include "binder.h"
#include "class_tables.h"

#include "tamarok/comm_lock.h"

namespace tamarok::component {

namespace {

using C = Comm_Lock;

// clang-format off
constexpr std::array operations{
    operation<&C::LockOn>(1, "LockOn", "column, ID, &TmkVar", "Asks for the lock of one object."),
    operation<&C::LockOff>(2, "LockOff", "column, ID, &TmkVar", "Releases every object lock of the user."),
    operation<&C::LogIn>(3, "LogIn", "&rsLock, &TmkVar, &dbLock", "Marks the user's session as live."),
    operation<&C::LogOut>(4, "LogOut", "rsLock, Lan_User_Version", "Deletes the session row."),
    operation<&C::LockRechnung>(5, "LockRechnung", "RName, ver_type, &TmkVar", "Locks an invoice and its timber lists."),
    operation<&C::UnLockRechnung>(6, "UnLockRechnung", "RName, ver_type, &TmkVar", "Releases an invoice and its timber lists."),
    operation<&C::Access_Levels>(7, "Access_Levels", "table, &strWhere, &TmkVar, ID_Access_Levels", "WHERE text narrowed to what the user may see."),
    operation<&C::NodeVisible>(8, "NodeVisible", "&TmkVar, Key", "Tells the database that the navigation shows a node."),
    operation<&C::NodeVisibleCheck>(9, "NodeVisibleCheck", "&TmkVar, &arr, Key", "Whether the user sees a node."),
    operation<&C::NodeWrite>(10, "NodeWrite", "&TmkVar, Key", "Whether the user may write in what a node opens."),
    operation<&C::konvUSERS_TREEVIEW_KEY>(11, "konvUSERS_TREEVIEW_KEY", "Key", "Right key of a tree key."),
    operation<&C::Users_Property>(12, "Users_Property", "&TmkVar, column", "Whether the user has a numbered property."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo commLock{"Comm_Lock", "Sessions, record locks and rights of navigation.", operations,
                                   makeClass<C>};

} // namespace tamarok::component
