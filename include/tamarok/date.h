#pragma once

#include <compare>
#include <cstdint>

#pragma GCC visibility push(default)

namespace tamarok {

/// A point in time as the component interface carries it: days since 30 December 1899 and the time of day as
/// the fraction. A negative value has the time of day in the absolute value of its fraction: -1.25 is
/// 29 December 1899, 06:00.
struct Date {
    double days = 0.0;

    friend constexpr bool operator==(const Date&, const Date&) = default;
    // clang-tidy 14 takes the 0 of rewritten comparisons for a null pointer.
    friend constexpr auto operator<=>(const Date&, const Date&) = default; // NOLINT(modernize-use-nullptr)
};

/// A day of the Gregorian calendar and a time of day, rounded to the nearest millisecond.
struct CivilTime {
    std::int32_t year = 1899;     ///< 100 to 9999 as parts of a Date
    std::int32_t month = 12;      ///< 1 to 12
    std::int32_t day = 30;        ///< 1 to 31
    std::int32_t hour = 0;        ///< 0 to 23
    std::int32_t minute = 0;      ///< 0 to 59
    std::int32_t second = 0;      ///< 0 to 59
    std::int32_t millisecond = 0; ///< 0 to 999

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

/// Joins parts into a Date. Throws Error 5 (invalid argument) if there is no such day or time of day.
Date fromCivil(const CivilTime& parts);

/// Midnight of a day. Throws Error 5 (invalid argument) if there is no such day.
/// @param year 100 to 9999  @param month 1 to 12  @param day 1 to 31
Date makeDate(std::int32_t year, std::int32_t month, std::int32_t day);

/// The day of `date` without its time of day.
Date dayOf(Date date) noexcept;

/// 1 for Sunday to 7 for Saturday. Throws Error 6 (overflow) outside the range of dates.
std::int32_t weekdayOf(Date date);

// --- the calendar ------------------------------------------------------------------------------
// The Gregorian calendar, continued before its introduction, for the years 0 to 9999. A Date begins with the
// year 100 only; the database has the years 1 to 99, and a year of two digits may stand for itself. None of
// these functions throws.

inline constexpr std::int32_t millisecondsPerDay = 86'400'000;

/// Number of days of a month, leap years included. @param month 1 to 12
std::int32_t daysInMonth(std::int32_t year, std::int32_t month) noexcept;

/// True if the calendar has that day.
bool isDay(std::int32_t year, std::int32_t month, std::int32_t day) noexcept;

/// True if hour, minute, second and millisecond of `parts` are a time of day.
bool isTimeOfDay(const CivilTime& parts) noexcept;

/// Days from 30 December 1899 to a day, negative before. The day must exist.
std::int32_t dayNumber(std::int32_t year, std::int32_t month, std::int32_t day) noexcept;

/// Midnight of the day with that number, the inverse of dayNumber.
CivilTime civilOfDay(std::int32_t dayNumber) noexcept;

/// 1 for Sunday to 7 for Saturday.
std::int32_t weekdayOfDay(std::int32_t dayNumber) noexcept;

/// Milliseconds since midnight, 0 to millisecondsPerDay - 1.
std::int32_t timeOfDay(const CivilTime& parts) noexcept;

/// Sets hour, minute, second and millisecond. @param milliseconds since midnight
void setTimeOfDay(CivilTime& parts, std::int32_t milliseconds) noexcept;

/// The Date of a day number and the milliseconds since midnight.
Date joinDate(std::int32_t dayNumber, std::int32_t milliseconds) noexcept;

} // namespace tamarok

#pragma GCC visibility pop
