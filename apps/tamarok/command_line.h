#pragma once

#include <functional>

#include "print/output.h"

namespace tamarok::cli {

/// Reads the command line and gives the command to run, with its options bound. Help and version are
/// commands too. Throws UsageError.
std::function<int(Output&)> parseCommandLine(int count, const char* const* arguments);

} // namespace tamarok::cli
