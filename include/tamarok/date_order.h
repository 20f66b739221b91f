#pragma once

#include <cstdint>

#pragma GCC visibility push(default)

namespace tamarok {

/// Order of day, month and year in a date of three numbers, named as SET DATEFORMAT of the database names them.
/// Regional date patterns have one of the first four.
enum class DateOrder : std::uint8_t { Mdy, Dmy, Ymd, Ydm, Myd, Dym };

} // namespace tamarok

#pragma GCC visibility pop
