#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#pragma GCC visibility push(default)

namespace tamarok::database {

/// Progress of `createReferenceDatabase` and of moves.
struct Progress {
    std::string_view phase; ///< such as "Tables" or "Timber lists"
    std::int64_t done = 0;  ///< 0 to `total`
    std::int64_t total = 0; ///< logs, areas or rows; 1 for a phase whose work is not counted
};

/// Called at the start and end of each phase and in between at most ten times a second. An exception that
/// it throws ends the work and leaves the database unchanged.
using ProgressListener = std::function<void(const Progress&)>;

} // namespace tamarok::database

#pragma GCC visibility pop
