#include "runtime/date_pattern.h"

#include "tamarok/convert.h"

// Dates as regional text, and what regional patterns tell of order and separators.

namespace tamarok {

namespace {

/// Returns the text between the first two runs of `letters`.
std::string_view separatorOf(std::string_view pattern, std::string_view letters) noexcept
{
    const std::size_t firstPart = pattern.find_first_of(letters);
    if (firstPart == std::string_view::npos) return {};
    const std::size_t begin = pattern.find_first_not_of(letters, firstPart);
    if (begin == std::string_view::npos) return {};
    const std::size_t end = pattern.find_first_of(letters, begin);
    return end == std::string_view::npos ? std::string_view{} : pattern.substr(begin, end - begin);
}

} // namespace

DateOrder dateOrder(std::string_view shortDate) noexcept
{
    const std::size_t day = shortDate.find_first_of("dD");
    const std::size_t month = shortDate.find_first_of("mM");
    const std::size_t year = shortDate.find_first_of("yY");
    if (year < day && year < month) return month < day ? DateOrder::Ymd : DateOrder::Ydm;
    return month < day ? DateOrder::Mdy : DateOrder::Dmy;
}

std::string_view dateSeparator(std::string_view shortDate) noexcept
{
    return separatorOf(shortDate, "dDmMyY");
}

std::string_view timeSeparator(std::string_view time) noexcept
{
    return separatorOf(time, "hHmMsS");
}

CivilTime toCivilSeconds(Date date)
{
    constexpr double secondsPerDay = 86'400.0;
    CivilTime parts = toCivil(date);
    if (parts.millisecond >= 500) {
        // One second later. Before day 0 the time of day is the absolute value of the fraction.
        parts.millisecond = 0;
        const Date cut = fromCivil(parts);
        const Date later{cut.days + (cut.days < 0.0 ? -1.0 : 1.0) / secondsPerDay};
        const bool endOfDay = parts.hour == 23 && parts.minute == 59 && parts.second == 59;
        if (!endOfDay) return toCivil(later);
        const double nextDay = dayOf(cut).days + 1.0;
        // The last second of the year 9999 is not rounded up.
        if (nextDay < lastDateDays) return toCivil({nextDay});
    }
    parts.millisecond = 0;
    return parts;
}

namespace convert {

std::string toText(Date date, const Regional& regional)
{
    const CivilTime parts = toCivilSeconds(date);
    const bool midnight = parts.hour == 0 && parts.minute == 0 && parts.second == 0;
    // Day 0 stands for a time without a date.
    const bool dayZero = parts.year == 1899 && parts.month == 12 && parts.day == 30;
    std::string text;
    if (!dayZero) text = formatRegional(date, regional.shortDate, regional);
    if (dayZero || !midnight) {
        if (!text.empty()) text += ' ';
        text += formatRegional(date, regional.time, regional);
    }
    return text;
}

} // namespace convert

} // namespace tamarok
