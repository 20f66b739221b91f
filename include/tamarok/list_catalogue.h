#pragma once

#include <string_view>
#include <vector>

/// Queries about the list types as a whole. The columns and clauses of one type are operations of Comm_CSel.
namespace tamarok::catalogue {

/// Returns the keys of all list types, such as "LOG", in the order of the table of list types.
std::vector<std::string_view> listTypeKeys();

} // namespace tamarok::catalogue
