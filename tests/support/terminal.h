#pragma once

#include <string>
#include <vector>

namespace tamarok::test {

/// What a program wrote to its terminal.
struct Screen {
    int status = -1;      ///< exit status, -1 where a signal ended it
    std::string text;     ///< control characters included
    long peakMemory = -1; ///< KiB
};

/// Runs a program with standard error on a terminal of its own and standard output into `outputFile`.
/// @param columns  width of the terminal in characters
Screen runOnTerminal(const std::string& program, const std::vector<std::string>& arguments,
                     const std::string& outputFile, unsigned short columns = 80);

} // namespace tamarok::test
