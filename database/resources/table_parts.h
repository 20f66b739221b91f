#pragma once

#include <string_view>
#include <vector>

namespace tamarok::database {

/// The rows of one table within a file that holds several tables.
struct TablePart {
    std::string_view table; ///< name of the table
    std::string_view text;  ///< head line and rows, as TsvTable reads them
};

/// Splits a file into its tables. A table begins with a line of "# " and its name and ends before the
/// next such line; empty lines between tables are dropped.
/// @param file  file name for the error
/// @param text  must outlive the result, whose views point into it
/// Error 5, with the file's name, if the text does not begin with such a line.
std::vector<TablePart> tableParts(std::string_view file, std::string_view text);

} // namespace tamarok::database
