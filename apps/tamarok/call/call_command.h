#pragma once

#include <optional>
#include <string>

#include "print/output.h"

namespace tamarok::cli {

struct CallOptions {
    std::optional<std::string> database; ///< file of the embedded database
    std::optional<std::string> odbc;     ///< ODBC connection text; not together with `database`
    std::string locale;                  ///< empty: the machine's
};

/// Answers requests from standard input until it ends. Returns the exit status: 1 where the input could
/// not be read or ended inside an open transaction, else 0.
int runCall(const CallOptions& options, Output& output);

} // namespace tamarok::cli
