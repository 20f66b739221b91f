#pragma once

#include <cstdint>
#include <string>

#include "functions/calendar.h"

namespace tamarok::embedded::functions {

/// A date as text by a style of CONVERT (0 to 14, 20 to 25, 100 to 114, 120, 121, 126, 127); error 281 for any other.
std::string dateText(Instant instant, std::int64_t style);

} // namespace tamarok::embedded::functions
