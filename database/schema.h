#pragma once

#include <string_view>
#include <vector>

#include "tamarok/ado.h"

namespace tamarok::database {

/// The batches of a script, which lines with the single word GO part, without the empty ones.
/// Views point into `script`.
std::vector<std::string_view> batches(std::string_view script);

/// Creates all tables without their indexes. Errors: provider failures, with the script's name.
void createTables(ado::Connection& connection);

/// Creates the indexes of the tables: after the rows, since a load into tables without indexes is the
/// faster one. Errors as above; a row that is there twice in a unique index is one.
void createIndexes(ado::Connection& connection);

} // namespace tamarok::database
