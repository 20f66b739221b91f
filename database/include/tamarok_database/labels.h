#pragma once

#include <cstdint>

namespace tamarok {

/// Text numbers of the column labels of the log list in table STRINGS: this number plus the column id.
inline constexpr std::int32_t firstColumnLabel = 20000;

} // namespace tamarok
