#pragma once

#include <cstdint>

#include "column_table.h"

/// The log list: columns, joins and the rules of aggregation.
namespace tamarok::catalogue {

inline constexpr std::int16_t lastLogId = 1041;

extern const ColumnTable logColumns;
extern const JoinTable logJoins;

/// Expressions that take the place of a summed column which must not be summed plainly.
extern const ColumnTable logWeightedColumns;

/// True for the columns that an aggregate list sums and never groups.
bool isLogMeasure(std::int16_t id) noexcept;

/// The share of the list's total volume in percent.
inline constexpr std::int16_t logVolumeShare = 203;
/// Holds MIN and MAX, and so is neither summed nor grouped.
inline constexpr std::int16_t logGameOrigin = 975;

} // namespace tamarok::catalogue
