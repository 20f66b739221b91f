#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tamarok {

struct TmkVar;

namespace rights {

/// What the rows of a table are filtered by.
struct LevelFilter {
    std::string_view table; ///< key of the table, compared exactly
    const TmkVar& session;
    std::int32_t level; ///< id of the access level of interest, 0 for none
};

/// Returns the condition on a table's rows by the access level, without outer brackets. The first rule
/// of a decision table that fits the table, the customer and the dialect gives it.
/// Errors: 6 for a level above 32767 and 3021 for a missing level where the level's code is read,
/// failures of the database.
std::string levelCondition(const LevelFilter& filter);

} // namespace rights
} // namespace tamarok
