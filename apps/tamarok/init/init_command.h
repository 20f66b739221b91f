#pragma once

#include <cstdint>
#include <string>

#include "print/output.h"

namespace tamarok::cli {

struct InitOptions {
    std::string file;
    std::int64_t logs = 10'000;
    std::int32_t records = 200; ///< heads of each kind of business record
    std::uint64_t seed = 1;
    bool force = false; ///< replace an existing file
};

/// Makes a reference database and prints its size and the rate. Errors: 58 where the file exists and
/// `force` is not set, and those of embedded::NewDatabase. Returns the exit status.
int runInit(const InitOptions& options, Output& output);

} // namespace tamarok::cli
