#pragma once

#include <string>
#include <string_view>

#include "tamarok/ado.h"

namespace tamarok::rights {

/// Returns the name of a user; "" if there is no such user or the name is Null.
/// @param id  the user's id as SQL text
/// Errors: 91 no connection, failures of the database.
std::string userName(const ado::ConnectionRef& connection, std::string_view id);

} // namespace tamarok::rights
