#pragma once

#include <compare>
#include <cstdint>

namespace tamarok {

/// A point in time as the component interface carries it: days since 30 December 1899, the
/// fraction being the time of day. Negative values keep the time of day in the absolute value of
/// the fraction (-1.25 is 29 December 1899, 06:00), as the platform has it.
struct Date {
    double days = 0.0;

    friend constexpr bool operator==(const Date&, const Date&) = default;
    friend constexpr auto operator<=>(const Date&, const Date&) = default;
};

/// The parts of a Date. Times are cut to whole milliseconds (rounded to the nearest).
struct CivilTime {
    std::int32_t year = 1899; ///< 100 to 9999
    std::int32_t month = 12;  ///< 1 to 12
    std::int32_t day = 30;    ///< 1 to 31
    std::int32_t hour = 0;    ///< 0 to 23
    std::int32_t minute = 0;  ///< 0 to 59
    std::int32_t second = 0;  ///< 0 to 59
    std::int32_t millisecond = 0;

    friend constexpr bool operator==(const CivilTime&, const CivilTime&) = default;
};

/// First and last day that a Date can hold: 1 January 100 and 31 December 9999.
inline constexpr double firstDateDays = -657434.0;
inline constexpr double lastDateDays = 2958466.0; ///< exclusive

/// True if `date` lies between 1 January 100 and 31 December 9999.
constexpr bool isInRange(Date date) noexcept
{
    return date.days > firstDateDays - 1.0 && date.days < lastDateDays;
}

/// Splits a Date into its parts. Throws Error 6 (overflow) outside the range of dates.
CivilTime toCivil(Date date);

/// Joins parts into a Date. Throws Error 5 where the parts name no day or time of day.
Date fromCivil(const CivilTime& parts);

/// The same for a day without time. @param year 100 to 9999, @param month 1 to 12, @param day 1 to 31.
Date makeDate(std::int32_t year, std::int32_t month, std::int32_t day);

/// The day of `date` with the time of day dropped.
Date dayOf(Date date) noexcept;

/// 1 for Sunday to 7 for Saturday.
std::int32_t weekdayOf(Date date);

/// Number of days of a month, leap years included. @param month 1 to 12
std::int32_t daysInMonth(std::int32_t year, std::int32_t month) noexcept;

} // namespace tamarok
