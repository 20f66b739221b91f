#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "tamarok/date_order.h"
#include "tamarok/regional.h"

namespace tamarok {

/// The order of day, month and year in the machine's short dates, found by printing a known date
/// (day number 40271, 3 April 2010) and seeing where its digits land.
struct RegionalOrder {
    std::optional<DateOrder> order; ///< nothing where the year stands in the middle
    bool spelledMonth = false;      ///< the sample shows no "4", so months are names
};

RegionalOrder regionalOrder(const Regional& regional);

/// The number of an English month abbreviation ("apr", blanks around allowed), 0 for any other text.
std::int16_t monthNumber(std::string_view name);

/// 0 to 50 are 2000 to 2050, 51 to 99 are 1951 to 1999, anything else stands as it is.
std::int16_t fullYear(std::int16_t year) noexcept;

} // namespace tamarok
