#pragma once

#include <string>
#include <vector>

#include "connections.h"
#include "print/list_printer.h"
#include "print/output.h"

namespace tamarok::cli {

struct SelectOptions {
    DatabaseChoice database;
    std::string locale; ///< the machine's where empty
    std::string key;    ///< all keys are listed where empty
    std::vector<std::string> fields;
    bool oracle = false;
    bool run = false;
    ListFormat format = ListFormat::Table;
};

/// Prints the statement of a base selection, or its rows. Errors: 5 for an unknown key, 9 where the
/// selection wants more fields, those of the database. Returns the exit status.
int runSelect(const SelectOptions& options, Output& output);

} // namespace tamarok::cli
