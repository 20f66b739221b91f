#pragma once

#include <string_view>
#include <vector>

#include "tamarok/ado.h"

namespace tamarok::database {

/// The rows of one table within a file that holds several.
struct TablePart {
    std::string_view table;
    std::string_view text; ///< head line and rows, as TsvTable reads them
};

/// The tables of a file: each begins with a line of "# " and the table's name, and ends before the next
/// such line; empty lines between them do not count. Error 5, with the file's name, for text before the
/// first one. Views point into the text.
std::vector<TablePart> tableParts(std::string_view file, std::string_view text);

/// Inserts the small key lists of the base selections and the rows that they add to other master data.
/// Errors of the database and of the files, with the table's name.
void loadSelectionKeys(ado::Connection& connection);

} // namespace tamarok::database
