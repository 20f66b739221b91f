#pragma once

#include <memory>

#include "tamarok/ado.h"
#include "tamarok/ado_backend.h"

namespace tamarok::com {

/// Whether a client's recordset is open.
bool isOpenRecordset(const Object& recordset);

/// Makes the library's recordset over a client's open one. It stands on the client's row and moves it along.
std::shared_ptr<ado::Recordset> wrapRecordset(const ObjectRef& recordset);

/// Makes the cursor over a client's open recordset, from its current row on.
/// @param closes  whether the end of the cursor closes the recordset
std::unique_ptr<ado::Cursor> makeClientCursor(ObjectRef recordset, bool updatable, bool closes);

} // namespace tamarok::com
