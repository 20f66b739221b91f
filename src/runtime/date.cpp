#include "tamarok/date.h"

#include <chrono>
#include <cmath>
#include <string>

#include "tamarok/error.h"

namespace tamarok {

namespace {

// Day numbers count from 30 December 1899, the origin of the platform's type Date.
constexpr std::chrono::sys_days dayZero{std::chrono::year{1899} / 12 / 30};

static_assert(std::chrono::sys_days{std::chrono::year{100} / 1 / 1} - dayZero ==
              std::chrono::days{static_cast<int>(firstDateDays)});
static_assert(std::chrono::sys_days{std::chrono::year{10000} / 1 / 1} - dayZero ==
              std::chrono::days{static_cast<int>(lastDateDays)});

struct DayAndTime {
    std::int32_t day = 0;          ///< days since 30 December 1899
    std::int32_t milliseconds = 0; ///< since midnight
};

/// Rounds the time of day to milliseconds. A time that rounds up to midnight belongs to the next day, except on
/// the last day of all.
DayAndTime split(Date date)
{
    if (!isInRange(date)) throw Error{errors::overflow, "Overflow: a date lies outside the years 100 to 9999."};
    const double whole = std::trunc(date.days);
    // The fraction is the time of day also before day 0: -1.25 is 29 December 1899, 6:00.
    const double fraction = std::abs(date.days - whole);
    DayAndTime result{static_cast<std::int32_t>(whole), 0};
    if (fraction == 0.0) return result;
    result.milliseconds = static_cast<std::int32_t>(std::llround(fraction * millisecondsPerDay));
    if (result.milliseconds == millisecondsPerDay) {
        const bool lastDay = whole == lastDateDays - 1.0;
        result.milliseconds = lastDay ? millisecondsPerDay - 1 : 0;
        result.day += lastDay ? 0 : 1;
    }
    return result;
}

} // namespace

CivilTime toCivil(Date date)
{
    const DayAndTime parts = split(date);
    CivilTime civil = civilOfDay(parts.day);
    setTimeOfDay(civil, parts.milliseconds);
    return civil;
}

Date fromCivil(const CivilTime& parts)
{
    if (!isTimeOfDay(parts)) throw Error{errors::invalidArgument, "Invalid argument: the parts name no time of day."};
    // Error 5 for parts that name no day, too.
    const Date day = makeDate(parts.year, parts.month, parts.day);
    return joinDate(static_cast<std::int32_t>(day.days), timeOfDay(parts));
}

Date makeDate(std::int32_t year, std::int32_t month, std::int32_t day)
{
    constexpr std::int32_t firstYear = 100;
    if (year < firstYear || !isDay(year, month, day))
        throw Error{errors::invalidArgument, "Invalid argument: there is no day " + std::to_string(day) + " of month " +
                                                 std::to_string(month) + " of the year " + std::to_string(year) + "."};
    return {static_cast<double>(dayNumber(year, month, day))};
}

Date dayOf(Date date) noexcept
{
    // Adding 0 turns -0.0 into 0.0.
    return {std::trunc(date.days) + 0.0};
}

std::int32_t weekdayOf(Date date)
{
    return weekdayOfDay(split(date).day);
}

std::int32_t daysInMonth(std::int32_t year, std::int32_t month) noexcept
{
    const auto last = std::chrono::year{year} / static_cast<int>(month) / std::chrono::last;
    return static_cast<std::int32_t>(static_cast<unsigned>(last.day()));
}

bool isDay(std::int32_t year, std::int32_t month, std::int32_t day) noexcept
{
    // Checked before daysInMonth, which expects a month of the calendar.
    const bool possible = year >= 0 && year <= 9999 && month >= 1 && month <= 12 && day >= 1;
    return possible && day <= daysInMonth(year, month);
}

bool isTimeOfDay(const CivilTime& parts) noexcept
{
    return parts.hour >= 0 && parts.hour < 24 && parts.minute >= 0 && parts.minute < 60 && parts.second >= 0 &&
           parts.second < 60 && parts.millisecond >= 0 && parts.millisecond < 1000;
}

std::int32_t dayNumber(std::int32_t year, std::int32_t month, std::int32_t day) noexcept
{
    const auto date = std::chrono::year{year} / static_cast<int>(month) / static_cast<int>(day);
    return static_cast<std::int32_t>((std::chrono::sys_days{date} - dayZero).count());
}

CivilTime civilOfDay(std::int32_t dayNumber) noexcept
{
    const std::chrono::year_month_day date{dayZero + std::chrono::days{dayNumber}};
    CivilTime civil;
    civil.year = static_cast<int>(date.year());
    civil.month = static_cast<std::int32_t>(static_cast<unsigned>(date.month()));
    civil.day = static_cast<std::int32_t>(static_cast<unsigned>(date.day()));
    return civil;
}

std::int32_t weekdayOfDay(std::int32_t dayNumber) noexcept
{
    const std::chrono::weekday weekday{dayZero + std::chrono::days{dayNumber}};
    return static_cast<std::int32_t>(weekday.c_encoding()) + 1;
}

std::int32_t timeOfDay(const CivilTime& parts) noexcept
{
    return ((parts.hour * 60 + parts.minute) * 60 + parts.second) * 1000 + parts.millisecond;
}

void setTimeOfDay(CivilTime& parts, std::int32_t milliseconds) noexcept
{
    parts.hour = milliseconds / 3'600'000;
    parts.minute = milliseconds / 60'000 % 60;
    parts.second = milliseconds / 1000 % 60;
    parts.millisecond = milliseconds % 1000;
}

Date joinDate(std::int32_t dayNumber, std::int32_t milliseconds) noexcept
{
    // Before day 0 the time of day is subtracted, since the sign of a date belongs to its day.
    const double fraction = static_cast<double>(milliseconds) / millisecondsPerDay;
    return {dayNumber < 0 ? dayNumber - fraction : dayNumber + fraction};
}

} // namespace tamarok
