#pragma once

#include <string_view>
#include <vector>

#include "tamarok/ado.h"

namespace tamarok::database {

/// The batches of a script, which lines with the single word GO part, without the empty ones.
/// Views point into `script`.
std::vector<std::string_view> batches(std::string_view script);

/// Creates all tables and indexes. Errors: provider failures, with the script's name.
void createSchema(ado::Connection& connection);

} // namespace tamarok::database
