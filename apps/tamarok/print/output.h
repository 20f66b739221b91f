#pragma once

#include <string_view>

namespace tamarok::cli {

/// Raised when the reader of standard output has closed it. Not an error: the program ends without message.
struct PipeClosed {};

/// Standard output that reports every failure: PipeClosed where the reader has closed it, Error 57
/// otherwise (a full disk, a closed file).
class Output {
public:
    void write(std::string_view text);
    void flush();
};

/// Makes writing to a closed pipe, and beyond the limit of a file's size, a failed write instead of a signal that ends
/// the program.
void ignoreWriteSignals();

} // namespace tamarok::cli
