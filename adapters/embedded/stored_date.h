#pragma once

#include <string>
#include <string_view>

#include "tamarok/date.h"

/// Dates between the component interface and the text in the file (tamarok_tsql/date_value.h).
namespace tamarok::embedded {

/// Reads the stored text of a date. Out-parameter version, as the loop over the rows has it; returns false for a
/// text of any other form and for a day that does not exist.
bool parseStoredDate(std::string_view text, Date& date) noexcept;

/// The stored text, 23 characters. Error 6 outside the range of dates.
std::string storedDate(Date date);

} // namespace tamarok::embedded
