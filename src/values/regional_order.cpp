#include "regional_order.h"

#include <array>
#include <string>

#include "tamarok/date.h"
#include "tamarok/english_dates.h"
#include "tamarok/format.h"
#include "tamarok/text.h"

// The order of regional dates by the text of a known date.

namespace tamarok {
namespace {

constexpr Date probeDate{40271.0}; // 3 April 2010: each part has a digit that the other parts lack

/// An order and the positions of its parts, which must increase.
struct OrderRule {
    DateOrder order;
    std::size_t first;
    std::size_t second;
    std::size_t third;
};

} // namespace

RegionalOrder regionalOrder(const Regional& regional)
{
    const std::string sample = format::date(probeDate, regional.shortDate, regional);
    RegionalOrder result;
    // Positions count from 1; 0 means not found.
    const std::size_t day = text::find(sample, "3");
    std::size_t month = text::find(sample, "4");
    if (month == 0) {
        result.spelledMonth = true;
        month = text::find(sample, "Apr");
    }
    std::size_t year = text::find(sample, "2");
    if (year == 0) year = text::find(sample, "1"); // a two-digit year, 10

    const std::array rules = {
        OrderRule{DateOrder::Dmy, day, month, year},
        OrderRule{DateOrder::Mdy, month, day, year},
        OrderRule{DateOrder::Ymd, year, month, day},
        OrderRule{DateOrder::Ydm, year, day, month},
    };
    // No rule fits a short date with the year in the middle.
    for (const OrderRule& rule : rules) {
        if (rule.first < rule.second && rule.second < rule.third) {
            result.order = rule.order;
            break;
        }
    }
    return result;
}

std::int16_t monthNumber(std::string_view name)
{
    const std::string_view word = text::trim(name);
    const bool isShort = text::length(word) == english::shortNameLength;
    return static_cast<std::int16_t>(isShort ? english::monthOf(word) : 0);
}

} // namespace tamarok
