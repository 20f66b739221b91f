#pragma once

#include <string>
#include <string_view>

#include "tamarok/date.h"
#include "tamarok/date_order.h"
#include "tamarok/regional.h"

/// Regional date patterns: used by formatting and by reading of dates.
namespace tamarok {

/// Returns the order of the parts in a short date pattern: Dmy, Mdy, Ymd or Ydm.
DateOrder dateOrder(std::string_view shortDate) noexcept;

/// Returns the literal text between the first two parts of a short date pattern: "." for "dd.MM.yyyy".
std::string_view dateSeparator(std::string_view shortDate) noexcept;
/// Returns the literal text between the first two parts of a time pattern: ":" for "H:mm".
std::string_view timeSeparator(std::string_view time) noexcept;

/// Returns the parts of a date rounded to whole seconds, as all texts show it. Error 6 outside the years 100
/// to 9999.
CivilTime toCivilSeconds(Date date);

/// Formats a date by a regional pattern: M is the month, m the minute, H the hour to 24, h the hour to 12.
/// Error 6 outside the years 100 to 9999.
std::string formatRegional(Date date, std::string_view pattern, const Regional& regional);

} // namespace tamarok
