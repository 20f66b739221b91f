#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "tamarok/date_order.h"
#include "tamarok/regional.h"

namespace tamarok {

/// What the text of a known date shows of the regional short dates.
struct RegionalOrder {
    std::optional<DateOrder> order; ///< empty if the year stands in the middle
    bool spelledMonth = false;      ///< the text has no "4": months are names
};

/// Formats day number 40271, 3 April 2010, as regional short date and finds the positions of its day, month and
/// year. This can differ from the order of the pattern's letters. Required by the contract.
RegionalOrder regionalOrder(const Regional& regional);

/// Returns the number of an English month abbreviation in any case, blanks around it allowed; 0 for any other
/// text.
std::int16_t monthNumber(std::string_view name);

} // namespace tamarok
