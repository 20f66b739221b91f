#include "functions/calendar.h"

#include <chrono>
#include <cmath>
#include <ctime>

#include "tamarok/date.h"
#include "tamarok/platform.h"

namespace tamarok::embedded::functions {

/// Counts months from year 1. A day that the target month lacks becomes its last one.
std::optional<Instant> addMonths(Instant instant, std::int64_t months) noexcept
{
    constexpr std::int64_t allMonths = std::int64_t{12} * 9999;
    if (months > allMonths || months < -allMonths) return std::nullopt;
    CivilTime parts = toParts(instant);
    const std::int64_t target = (parts.year - 1) * std::int64_t{12} + parts.month - 1 + months;
    if (target < 0 || target >= allMonths) return std::nullopt;
    parts.year = static_cast<std::int32_t>(target / 12) + 1;
    parts.month = static_cast<std::int32_t>(target % 12) + 1;
    const std::int32_t last = daysInMonth(parts.year, parts.month);
    if (parts.day > last) parts.day = last;
    return fromParts(parts);
}

/// A week belongs to the year of its Thursday (ISO 8601).
std::int64_t isoThursday(std::int64_t serverDay) noexcept
{
    const std::int64_t daysSinceMonday = (weekdayOfServerDay(serverDay) + 5) % 7;
    return serverDay - daysSinceMonday + 3;
}

std::int64_t isoWeek(std::int64_t serverDay) noexcept
{
    const std::int64_t thursday = isoThursday(serverDay);
    const CivilTime parts = toParts(thursday * oneDay);
    return (thursday - tsql::serverDay(parts.year, 1, 1)) / 7 + 1;
}

Instant now()
{
    const double days = Platform::current().clock->now().days - tsql::serverDayZero;
    return roundToDateTime(static_cast<Instant>(std::llround(days * static_cast<double>(oneDay))));
}

Instant nowUtc()
{
    // The C library knows the offset of the machine's time zone on that day.
    const Instant local = now();
    const CivilTime parts = toParts(local);
    std::tm zoned{};
    zoned.tm_year = parts.year - 1900;
    zoned.tm_mon = parts.month - 1;
    zoned.tm_mday = parts.day;
    zoned.tm_hour = parts.hour;
    zoned.tm_min = parts.minute;
    zoned.tm_sec = parts.second;
    zoned.tm_isdst = -1; // the C library finds out whether daylight saving time holds
    const std::int64_t unixSeconds = std::mktime(&zoned);
    return serverDay(1970, 1, 1) * oneDay + unixSeconds * oneSecond + parts.millisecond;
}

} // namespace tamarok::embedded::functions
