#include "procedures/node_visible.h"

#include <array>
#include <string>

#include "failures.h"

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::embedded {

namespace {

/// Updates the time of the node's row, or inserts the row if the login has none for it yet.
void recordNode(ProcedureScope& scope, std::span<const Variant> arguments)
{
    const Variant& given = arguments[0];
    const std::string key = given.isNull() || given.isEmpty() ? std::string{} : convert::toText(given);
    if (text::trim(key).empty()) {
        throw failure(native::userDefined, "tmk_NodeVisible: the key is empty.");
    }
    const std::array sent{Variant{key}};
    const std::int64_t found =
        scope.execute("UPDATE USERS_TREEVIEW_SEEN SET SEEN=GETDATE() WHERE LOGIN=SUSER_SNAME() AND TREEVIEW=?", sent);
    if (found == 0) {
        scope.execute("INSERT INTO USERS_TREEVIEW_SEEN(LOGIN,TREEVIEW,SEEN) VALUES(SUSER_SNAME(),?,GETDATE())", sent);
    }
}

} // namespace

Procedure nodeVisible()
{
    return {"tmk_NodeVisible", {{"strKey"}}, &recordNode};
}

} // namespace tamarok::embedded
