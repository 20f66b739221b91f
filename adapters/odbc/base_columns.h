#pragma once

#include <string_view>
#include <vector>

#include "catalogue.h"

#include "tamarok/ado_backend.h"

namespace tamarok::odbc {

/// Fills in the base table and the base column of each column of a statement's first result, where the driver does not
/// tell them: by the server's describe procedure, else by resolving the statement's text against the catalogue. What
/// neither knows stays empty: an expression, and every column of a text that the front end does not read.
void nameBaseColumns(Catalogue& catalogue, std::string_view statement, std::vector<ado::ColumnInfo>& columns);

/// Whether each row of a statement's first result shows one row of each of its tables, ungrouped and not brought
/// together with equal ones: a row may then be added to a table whose columns it shows. False for a text that the front
/// end does not read.
bool showsSingleRows(std::string_view statement);

} // namespace tamarok::odbc
