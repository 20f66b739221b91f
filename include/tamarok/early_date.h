#pragma once

#include <cmath>
#include <cstdint>

#include "tamarok/date.h"

#pragma GCC visibility push(default)

/// Days of the years 0 to 99, which lie before the range of dates. A form or a script may hold such a day because
/// it took a year of two digits for the whole year.
namespace tamarok {

/// 1 January of the year 0.
inline constexpr double firstEarlyDays = -693959.0;

/// True if a date lies in the years 0 to 99.
inline bool isEarly(Date date) noexcept
{
    const double day = dayOf(date).days;
    return day < firstDateDays && day >= firstEarlyDays;
}

/// toCivil for the years 0 to 99 too.
inline CivilTime toCivilOrEarly(Date date)
{
    if (!isEarly(date)) return toCivil(date);
    const double fraction = std::abs(date.days - dayOf(date).days);
    const auto milliseconds = static_cast<std::int32_t>(std::llround(fraction * millisecondsPerDay));
    const std::int32_t daysCarried = milliseconds / millisecondsPerDay; // 1 if the time rounds up to midnight
    CivilTime civil = civilOfDay(static_cast<std::int32_t>(dayOf(date).days) + daysCarried);
    setTimeOfDay(civil, milliseconds % millisecondsPerDay);
    return civil;
}

/// fromCivil for the years 0 to 99 too.
inline Date fromCivilOrEarly(const CivilTime& civil)
{
    constexpr std::int32_t firstYearOfDates = 100;
    const bool isEarlyDay = civil.year < firstYearOfDates && isDay(civil.year, civil.month, civil.day);
    if (!isEarlyDay || !isTimeOfDay(civil)) return fromCivil(civil);
    return joinDate(dayNumber(civil.year, civil.month, civil.day), timeOfDay(civil));
}

} // namespace tamarok

#pragma GCC visibility pop
