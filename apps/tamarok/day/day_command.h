#pragma once

#include <string>

#include "print/output.h"

namespace tamarok::cli {

struct DayOptions {
    std::string database = "tamarok.db";
    std::string locale = "de-AT";
};

/// Runs the steps of the working day and prints what each does. The database is left as it was.
/// Returns the exit status.
int runDay(const DayOptions& options, Output& output);

} // namespace tamarok::cli
