#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "list_type.h"

#include "tamarok/tmkvar.h"

namespace tamarok::catalogue {

/// Adds the joins that a column needs to a FROM body, those of its prerequisites first, and opens an empty body with
/// the base of the type. What Comm_CSel::GetFrom does, without a copy of the body.
/// @param type  nullptr for an unknown list type, which adds nothing
/// Shows "Error In GetFrom" if the body begins with FROM, and continues.
void growFromBody(std::string& body, const ListType* type, std::int16_t id, std::string_view version,
                  const TmkVar& session);

} // namespace tamarok::catalogue
