#pragma once

#include <string_view>
#include <vector>

#include "tamarok/ado.h"

namespace tamarok::rights {

/// Returns the first column of all rows of a query, read at once; empty if there is no row.
/// Errors: 91 no connection, failures of the database.
std::vector<Variant> readFirstColumn(const ado::ConnectionRef& connection, std::string_view statement);

} // namespace tamarok::rights
