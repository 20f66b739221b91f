#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "print/output.h"

namespace tamarok::cli {

struct InitOptions {
    std::string file;                ///< empty with `odbc`
    std::optional<std::string> odbc; ///< connection text of a server with an empty database
    std::int64_t logs = 10'000;
    std::int32_t records = 200; ///< heads of each kind of business record
    std::uint64_t seed = 1;
    bool empty = false; ///< texts and master data alone
    bool force = false; ///< replace an existing file
};

/// Makes a reference database, in a file or on a server, and prints its size and the rate. Errors: 58 where the file
/// exists and `force` is not set, those of embedded::NewDatabase and of database::loadReferenceDatabase. Throws
/// UsageError where neither a file nor a server is named. Returns the exit status.
int runInit(const InitOptions& options, Output& output);

} // namespace tamarok::cli
