#pragma once

#include <string>

#include "tamarok/ado.h"

namespace tamarok::com {

/// Makes the library's connection over a client's one, which is reached by name: an ADODB.Connection or any object with
/// its members Execute, CommandTimeout, BeginTrans, CommitTrans, RollbackTrans. A recordset is what the connection's
/// Execute gives, so that it is always of the connection's own kind. The client's connection is never opened or closed.
ado::ConnectionRef connectToClient(const ObjectRef& object);

/// Lends a closed recordset of the client to a connection that `connectToClient` has made: the next statement whose
/// rows are locked opens it, so that it is the client who holds the lock. Nothing happens for any other connection.
void lendRecordset(const ado::Connection& connection, const ObjectRef& recordset);

} // namespace tamarok::com
