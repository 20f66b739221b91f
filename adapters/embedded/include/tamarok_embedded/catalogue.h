#pragma once

#include <vector>

#include "tamarok_tsql/schema.h"

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

namespace tamarok::embedded {

/// The tables and views of an embedded database with the declared types of their columns, in the order of the names;
/// without the temporary ones. Errors: 5 where the connection is not of this kind, 3709 closed, failures of the
/// database.
std::vector<tsql::Table> tables(ado::Connection& connection);

} // namespace tamarok::embedded

#pragma GCC visibility pop
