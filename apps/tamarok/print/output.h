#pragma once

#include <string_view>

namespace tamarok::cli {

/// Raised when the reader of standard output has gone away. Not an error: the program ends quietly.
struct PipeClosed {};

/// Standard output with every failure told: PipeClosed where the reader has gone, Error 57 otherwise
/// (a full disk, a closed file).
class Output {
public:
    void write(std::string_view text);
    void flush();
};

/// A writer to a closed pipe gets a failed write instead of a signal.
void ignoreBrokenPipes();

} // namespace tamarok::cli
