#pragma once

#include <string>
#include <vector>

namespace tamarok::test {

/// What a run with standard error on a terminal shows there.
struct Screen {
    int status = -1;      ///< exit status, -1 where a signal ended it
    std::string text;     ///< with the control characters
    long peakMemory = -1; ///< KiB
};

/// Runs the program with standard error on a terminal of its own and standard output into `outputFile`.
Screen runOnTerminal(const std::vector<std::string>& arguments, const std::string& outputFile);

} // namespace tamarok::test
