#include "tamarok/date.h"

#include <chrono>
#include <cmath>
#include <string>

#include "tamarok/error.h"

namespace tamarok {

namespace {

constexpr std::int64_t millisecondsPerDay = 86'400'000;
constexpr std::chrono::sys_days dayZero{std::chrono::year{1899} / 12 / 30};

static_assert(std::chrono::sys_days{std::chrono::year{100} / 1 / 1} - dayZero ==
              std::chrono::days{static_cast<int>(firstDateDays)});
static_assert(std::chrono::sys_days{std::chrono::year{10000} / 1 / 1} - dayZero ==
              std::chrono::days{static_cast<int>(lastDateDays)});

struct DayAndTime {
    std::int32_t day = 0;          ///< days since 30 December 1899
    std::int64_t milliseconds = 0; ///< since midnight
};

DayAndTime split(Date date)
{
    if (!isInRange(date)) throw Error{errors::overflow, "Overflow: a date lies outside the years 100 to 9999."};
    const double whole = std::trunc(date.days);
    const double fraction = std::abs(date.days - whole);
    DayAndTime result{static_cast<std::int32_t>(whole), 0};
    if (fraction == 0.0) return result;
    result.milliseconds = std::llround(fraction * static_cast<double>(millisecondsPerDay));
    if (result.milliseconds == millisecondsPerDay) {
        const bool lastDay = whole == lastDateDays - 1.0;
        result.milliseconds = lastDay ? millisecondsPerDay - 1 : 0;
        result.day += lastDay ? 0 : 1;
    }
    return result;
}

bool isTimeOfDay(const CivilTime& parts) noexcept
{
    return parts.hour >= 0 && parts.hour < 24 && parts.minute >= 0 && parts.minute < 60 && parts.second >= 0 &&
           parts.second < 60 && parts.millisecond >= 0 && parts.millisecond < 1000;
}

} // namespace

CivilTime toCivil(Date date)
{
    const DayAndTime parts = split(date);
    const std::chrono::year_month_day day{dayZero + std::chrono::days{parts.day}};
    const auto milliseconds = static_cast<std::int32_t>(parts.milliseconds);
    return {.year = static_cast<std::int32_t>(static_cast<int>(day.year())),
            .month = static_cast<std::int32_t>(static_cast<unsigned>(day.month())),
            .day = static_cast<std::int32_t>(static_cast<unsigned>(day.day())),
            .hour = milliseconds / 3'600'000,
            .minute = milliseconds / 60'000 % 60,
            .second = milliseconds / 1000 % 60,
            .millisecond = milliseconds % 1000};
}

Date fromCivil(const CivilTime& parts)
{
    if (!isTimeOfDay(parts)) throw Error{errors::invalidArgument, "Invalid argument: the parts name no time of day."};
    const double day = makeDate(parts.year, parts.month, parts.day).days;
    const std::int32_t milliseconds = ((parts.hour * 60 + parts.minute) * 60 + parts.second) * 1000 + parts.millisecond;
    const double fraction = static_cast<double>(milliseconds) / static_cast<double>(millisecondsPerDay);
    return {day < 0.0 ? day - fraction : day + fraction};
}

Date makeDate(std::int32_t year, std::int32_t month, std::int32_t day)
{
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > daysInMonth(year, month))
        throw Error{errors::invalidArgument, "Invalid argument: there is no day " + std::to_string(day) + " of month " +
                                                 std::to_string(month) + " of the year " + std::to_string(year) + "."};
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                           std::chrono::day{static_cast<unsigned>(day)}};
    return {static_cast<double>((std::chrono::sys_days{date} - dayZero).count())};
}

Date dayOf(Date date) noexcept
{
    return {std::trunc(date.days) + 0.0};
}

std::int32_t weekdayOf(Date date)
{
    const std::chrono::weekday weekday{dayZero + std::chrono::days{split(date).day}};
    return static_cast<std::int32_t>(weekday.c_encoding()) + 1;
}

std::int32_t daysInMonth(std::int32_t year, std::int32_t month) noexcept
{
    if (month == 2) return std::chrono::year{year}.is_leap() ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

} // namespace tamarok
