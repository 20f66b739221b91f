#pragma once

#include "tamarok_embedded/procedures.h"

namespace tamarok::embedded {

/// tmk_NodeVisible @strKey: records in USERS_TREEVIEW_SEEN that the navigation has shown the node with
/// this right key to the database login (SUSER_SNAME), with the present time; one row a login and key.
/// An empty key or Null is an error (native 50000) and nothing is written.
Procedure nodeVisible();

} // namespace tamarok::embedded
