#pragma once

#include <string>

#include "connections.h"
#include "print/output.h"

namespace tamarok::cli {

struct ColumnsOptions {
    DatabaseChoice database;
    std::string type;
    std::string version = "R"; ///< settlement, R or A1 to A8
    std::string language = "GERMAN";
};

/// Prints id, label, format, measure and SQL expression of each column of a list type, divided by tabs. Returns the
/// exit status. Throws UnknownColumn for an unknown list type.
int runColumns(const ColumnsOptions& options, Output& output);

struct TypesOptions {
    DatabaseChoice database;
    std::string language = "GERMAN";
};

/// Prints key, label, main table and number of columns of each list type, divided by tabs. Returns the exit status.
int runTypes(const TypesOptions& options, Output& output);

} // namespace tamarok::cli
