#pragma once

#include <string>

namespace tamarok::cli {

/// Raised for a command line that cannot be carried out; exit status 2.
struct UsageError {
    std::string message;
};

} // namespace tamarok::cli
