#pragma once

#include <cstdint>

#pragma GCC visibility push(default)

namespace tamarok {

/// Text numbers of the column labels of the log list in table STRINGS: this number plus the column id.
inline constexpr std::int32_t firstColumnLabel = 20000;

} // namespace tamarok

#pragma GCC visibility pop
