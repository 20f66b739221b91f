#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tamarok_tsql/types.h"

#include "tamarok/date.h"

/// Dates and times as the server's types hold them, and the text "YYYY-MM-DD HH:MM:SS.mmm" that stands for them in
/// the file. The calendar itself is the core's (tamarok/date.h).
namespace tamarok::tsql {

/// Milliseconds since 1 January 1900, 00:00, the server's day 0.
using Instant = std::int64_t;

inline constexpr Instant oneSecond = 1000;
inline constexpr Instant oneMinute = 60 * oneSecond;
inline constexpr Instant oneHour = 60 * oneMinute;
inline constexpr Instant oneDay = 24 * oneHour;

/// The server's day 0 as the core's day number, which counts from 30 December 1899.
inline constexpr std::int32_t serverDayZero = 2;

/// The parts of the server's day 0, at midnight.
inline constexpr CivilTime serverEpoch{.year = 1900, .month = 1, .day = 1};

/// First and last instant of each type.
inline constexpr Instant firstDate = -693595 * oneDay;                   ///< 0001-01-01
inline constexpr Instant lastDate = 2958464 * oneDay - 1;                ///< 9999-12-31, end of the day
inline constexpr Instant firstDateTime = -53690 * oneDay;                ///< 1753-01-01
inline constexpr Instant firstSmallDateTime = 0;                         ///< 1900-01-01
inline constexpr Instant lastSmallDateTime = 65536 * oneDay - oneMinute; ///< 2079-06-06 23:59

/// Days since 1 January 1900, rounded down.
constexpr std::int64_t dayOf(Instant instant) noexcept
{
    return instant >= 0 ? instant / oneDay : -((-instant + oneDay - 1) / oneDay);
}

/// Milliseconds since midnight.
constexpr std::int64_t timeOf(Instant instant) noexcept
{
    return instant - dayOf(instant) * oneDay;
}

/// Days from 1 January 1900 to a day, which must exist.
std::int64_t serverDay(std::int32_t year, std::int32_t month, std::int32_t day) noexcept;

/// 1 for Sunday to 7 for Saturday. @param serverDay days since 1 January 1900
std::int32_t weekdayOfServerDay(std::int64_t serverDay) noexcept;

/// True for a day of the years 1 to 9999 with a time of day.
bool isValid(const CivilTime& parts) noexcept;

/// Joins and splits an instant. The parts must be valid.
Instant fromParts(const CivilTime& parts) noexcept;
CivilTime toParts(Instant instant) noexcept;

/// Rounds to the type's precision: datetime to 1/300 s (.000, .003, .007), smalldatetime to the minute, up from
/// 29.999 seconds on; a date loses its time, a time its date. Returns nothing outside the type's range.
std::optional<Instant> roundToType(Instant instant, TypeKind type) noexcept;

/// Rounds to the 1/300 s of a datetime without a check of its range.
Instant roundToDateTime(Instant instant) noexcept;

// --- the stored text ---------------------------------------------------------------------------

/// Number of characters of the stored text.
inline constexpr std::size_t storedLength = 23;

/// Reads the stored text. Returns nothing for a text of any other form and for a day that does not exist.
std::optional<Instant> readStored(std::string_view text) noexcept;

/// Writes the stored text into `buffer` and returns it. The year must lie between 0 and 9999.
std::string_view writeStored(const CivilTime& parts, std::span<char, storedLength> buffer) noexcept;
/// The same for an instant, which must lie between firstDate and lastDate.
std::string_view writeStored(Instant instant, std::span<char, storedLength> buffer) noexcept;
std::string storedText(Instant instant);

} // namespace tamarok::tsql
