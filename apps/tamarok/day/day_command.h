#pragma once

#include <string>

#include "connections.h"
#include "print/output.h"

namespace tamarok::cli {

struct DayOptions {
    DatabaseChoice database;
    std::string locale = "de-AT";
};

/// Runs the steps of the working day and prints what each does. The database is left as it was.
/// Returns the exit status.
int runDay(const DayOptions& options, Output& output);

} // namespace tamarok::cli
