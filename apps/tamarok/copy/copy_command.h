#pragma once

#include <string>

#include "print/list_printer.h"
#include "print/output.h"

namespace tamarok::cli {

struct CopyOptions {
    std::string file;      ///< of the embedded database
    std::string odbc;      ///< connection text of the server
    bool fromOdbc = false; ///< from the server to a new file, instead of from the file to the server
    ListFormat format = ListFormat::Table;
};

/// Moves a database between a file and a server and prints the rows of each table with their sums on both sides.
/// Errors: 58 where the file to make exists, those of database::moveDatabase. Returns the exit status.
int runCopy(const CopyOptions& options, Output& output);

} // namespace tamarok::cli
