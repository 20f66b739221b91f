#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

/// Dates and times of the embedded database: milliseconds since 1 January 1900, and the text
/// "YYYY-MM-DD HH:MM:SS.mmm" that lies in the file.
namespace tamarok::embedded::functions {

/// Milliseconds since 1900-01-01 00:00.
using Instant = std::int64_t;

inline constexpr Instant second = 1000;
inline constexpr Instant minute = 60 * second;
inline constexpr Instant hour = 60 * minute;
inline constexpr Instant day = 24 * hour;

inline constexpr std::size_t storageLength = 23;

struct Civil {
    std::int32_t year = 1900; ///< 1 to 9999
    std::int32_t month = 1;   ///< 1 to 12
    std::int32_t day = 1;     ///< 1 to 31
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;
    std::int32_t millisecond = 0;
};

/// Days of a month, leap years included.
std::int32_t daysOfMonth(std::int32_t year, std::int32_t month) noexcept;
/// Day number of a date: 0 is 1 January 1900.
std::int64_t dayNumber(std::int32_t year, std::int32_t month, std::int32_t dayOfMonth) noexcept;
bool isValid(const Civil& parts) noexcept;
Instant fromParts(const Civil& parts) noexcept;
Civil toParts(Instant instant) noexcept;

/// Whole days since 1900-01-01, rounded down.
constexpr std::int64_t dayOf(Instant instant) noexcept
{
    return instant >= 0 ? instant / day : -((-instant + day - 1) / day);
}
/// Milliseconds since midnight.
constexpr std::int64_t timeOfDay(Instant instant) noexcept
{
    return instant - dayOf(instant) * day;
}
/// 1 for Sunday to 7 for Saturday; 1 January 1900 was a Monday.
constexpr std::int32_t weekday(std::int64_t dayNumber) noexcept
{
    return static_cast<std::int32_t>(((dayNumber + 1) % 7 + 7) % 7) + 1;
}

/// Limits of the server's types, each the last instant that fits.
inline constexpr Instant firstDate = -693595 * day;                ///< 0001-01-01
inline constexpr Instant lastDate = 2958464 * day - 1;             ///< 9999-12-31
inline constexpr Instant firstDateTime = -53690 * day;             ///< 1753-01-01
inline constexpr Instant firstSmallDateTime = 0;                   ///< 1900-01-01
inline constexpr Instant lastSmallDateTime = 65536 * day - minute; ///< 2079-06-06 23:59

/// Reads the storage form; nothing for any other text.
std::optional<Instant> readStorage(std::string_view text) noexcept;
/// Writes the storage form. The instant lies between firstDate and lastDate.
std::string_view writeStorage(Instant instant, std::span<char, storageLength> buffer) noexcept;

/// Rounded to the 1/300 s of datetime (.000, .003, .007).
Instant roundToDateTime(Instant instant) noexcept;
/// Rounded to the minute of smalldatetime: up from 29.999 seconds on.
Instant roundToMinute(Instant instant) noexcept;

/// `months` later, on the last day of the month where the day does not exist there. Nothing outside
/// the years 1 to 9999.
std::optional<Instant> addMonths(Instant instant, std::int64_t months) noexcept;

/// The local time, by the thread's clock, as a datetime has it.
Instant now();
/// The same as world time.
Instant nowUtc();

} // namespace tamarok::embedded::functions
