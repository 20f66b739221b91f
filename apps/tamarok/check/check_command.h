#pragma once

#include <string>

#include "connections.h"
#include "print/list_printer.h"
#include "print/output.h"
#include "session.h"

namespace tamarok::cli {

struct CheckOptions {
    DatabaseChoice database;
    std::string dateFormat = commandDateFormat; ///< that of the application's sessions
    ListFormat format = ListFormat::Table;
};

/// Compares an installation with the reference schema, tries one statement of each kind, and prints what is right and
/// what is not, each fault with its remedy. Nothing is changed. Errors: those of the opening.
/// @return 0 where all is right, 1 otherwise
int runCheck(const CheckOptions& options, Output& output);

} // namespace tamarok::cli
