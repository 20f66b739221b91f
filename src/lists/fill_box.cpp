#include "tamarok/ado.h"
#include "tamarok/comm_set.h"

namespace tamarok {

void Comm_Set::FillObject(const ado::ConnectionRef& dbAdo, Object& Obj, std::string_view strSQL) const
{
    ado::Recordset rows;
    rows.Open(strSQL, dbAdo, ado::CursorType::OpenForwardOnly, ado::LockType::ReadOnly, -1);
    const bool hasKey = rows.Fields().Count() > 1;
    for (; !rows.AtEOF(); rows.MoveNext()) {
        Variant text = rows.Fields().Item(hasKey ? 1 : 0).Value();
        Obj.call("AddItem", {&text, 1});
        if (!hasKey) continue;
        const Variant index = Obj.get("NewIndex", {});
        Obj.putIndexed("ItemData", {&index, 1}, rows.Fields().Item(0).Value());
    }
    rows.Close();
}

} // namespace tamarok
