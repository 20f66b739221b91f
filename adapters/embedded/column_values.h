#pragma once

#include <sqlite3.h>
#include <string>

#include "column_types.h"

#include "tamarok/variant.h"

/// Reads the columns of a statement's current row.
namespace tamarok::embedded {

/// The value of a column. Error 0x80004005 for a stored text that is no date, 6 for a whole number beyond the
/// column's type.
Variant readValue(sqlite3_stmt* statement, int column, Reading reading);

/// The text of a column, empty for Null.
std::string columnText(sqlite3_stmt* statement, int column);

} // namespace tamarok::embedded
