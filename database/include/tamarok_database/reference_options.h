#pragma once

#include <cstdint>

#include "tamarok/date.h"

#pragma GCC visibility push(default)

namespace tamarok::database {

/// Size and contents of a reference database.
struct ReferenceOptions {
    std::int64_t logs = 1000;   ///< number of measured lines, 0 to 100,000,000
    std::uint64_t seed = 1;     ///< the same seed gives the same rows on every machine
    std::int32_t records = 200; ///< heads of each kind of business record, such as orders and plans; 0 to 100,000
    Date baseDate{45657.0};     ///< last day of the data (31 December 2024); the first day is three years earlier
};

} // namespace tamarok::database

#pragma GCC visibility pop
