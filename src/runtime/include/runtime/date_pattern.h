#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tamarok/date.h"
#include "tamarok/date_order.h"
#include "tamarok/regional.h"

/// What the printing and the reading of dates share.
namespace tamarok {

/// Order of the parts in a short date pattern: Dmy, Mdy, Ymd or Ydm.
DateOrder dateOrder(std::string_view shortDate) noexcept;

/// The first literal text between the parts of a short date pattern ("." of "dd.MM.yyyy").
std::string_view dateSeparator(std::string_view shortDate) noexcept;
/// The same of a time pattern (":" of "H:mm").
std::string_view timeSeparator(std::string_view time) noexcept;

/// The parts of a date rounded to whole seconds, as every text form shows them.
CivilTime toCivilSeconds(Date date);

/// A date by a regional pattern, where M is the month and m the minute, H counts to 24 and h to 12.
std::string formatRegional(Date date, std::string_view pattern, const Regional& regional);

} // namespace tamarok
