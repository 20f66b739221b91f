#pragma once

#include <string_view>

#include "tsv_table.h"

namespace tamarok::database {

/// Returns the name of the table that a file NN_TABLE.tsv of the master data fills: TABLE.
std::string_view masterTableName(std::string_view file) noexcept;

/// Returns the rows of a table of the master data. Error 53 if the master data has no such table.
TsvTable masterTable(std::string_view table);

} // namespace tamarok::database
