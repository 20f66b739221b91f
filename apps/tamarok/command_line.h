#pragma once

#include <functional>

#include "print/output.h"

namespace tamarok::cli {

/// Parses the command line and returns the command to run with its options bound. Help and version are
/// commands too. Throws UsageError for a command line that does not parse.
std::function<int(Output&)> parseCommandLine(int count, const char* const* arguments);

} // namespace tamarok::cli
