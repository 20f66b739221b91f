#pragma once

#include <string_view>

#include "tamarok/ado.h"

namespace tamarok::com {

/// Makes the library's connection over a client's one, which is reached by name: an ADODB.Connection, a
/// Tamarok.Connection or any object with the members Execute and CommandTimeout, and BeginTrans, CommitTrans,
/// RollbackTrans where they are needed. A recordset comes from the connection itself, so that it is always of its kind.
/// The client's connection is never opened or closed.
ado::ConnectionRef connectToClient(const ObjectRef& object);

/// Opens a further connection of the kind of a client's one. It ends with its last reference.
ado::ConnectionRef openLike(const ObjectRef& object, std::string_view connectionText);

/// Lends a closed recordset of the client to a connection that `connectToClient` has made: the next statement whose
/// rows are locked opens it, so that it is the client who holds the lock. Nothing happens for any other connection.
void lendRecordset(const ado::Connection& connection, const ObjectRef& recordset);

} // namespace tamarok::com
