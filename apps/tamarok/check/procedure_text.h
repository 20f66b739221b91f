#pragma once

#include <string_view>

namespace tamarok::cli::check {

/// Whether two texts make the same procedure: without regard to comments, white space, the case of words, brackets
/// around names, semicolons, and what stands before the procedure's name (CREATE, ALTER, CREATE OR ALTER, a schema).
/// The two binary collations that a server may have compare as one.
bool sameProcedure(std::string_view name, std::string_view one, std::string_view other);

} // namespace tamarok::cli::check
