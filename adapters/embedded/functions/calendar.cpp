#include "functions/calendar.h"

#include <array>
#include <chrono>
#include <cmath>
#include <ctime>

#include "tamarok/date.h"
#include "tamarok/platform.h"

namespace tamarok::embedded::functions {

namespace {

constexpr std::int64_t epochDays = -25567;                 ///< 1900-01-01 counted from 1970-01-01
constexpr double platformDaysOfEpoch = 2.0;                ///< 1900-01-01 counted from 1899-12-30
constexpr char storageShape[] = "0000-00-00 00:00:00.000"; ///< '0' stands for a digit

std::int32_t readDigits(std::string_view text, std::size_t from, std::size_t count) noexcept
{
    std::int32_t number = 0;
    for (std::size_t index = from; index < from + count; ++index)
        number = number * 10 + (text[index] - '0');
    return number;
}

void writeDigits(char* target, std::int32_t number, std::size_t count) noexcept
{
    for (std::size_t index = count; index-- > 0; number /= 10)
        target[index] = static_cast<char>('0' + number % 10);
}

} // namespace

std::int32_t daysOfMonth(std::int32_t year, std::int32_t month) noexcept
{
    constexpr std::array<std::int32_t, 12> lengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month == 2 && std::chrono::year{year}.is_leap()) return 29;
    return lengths[static_cast<std::size_t>(month - 1)];
}

std::int64_t dayNumber(std::int32_t year, std::int32_t month, std::int32_t dayOfMonth) noexcept
{
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                           std::chrono::day{static_cast<unsigned>(dayOfMonth)}};
    return std::chrono::sys_days{date}.time_since_epoch().count() - epochDays;
}

bool isValid(const Civil& parts) noexcept
{
    return parts.year >= 1 && parts.year <= 9999 && parts.month >= 1 && parts.month <= 12 && parts.day >= 1 &&
           parts.day <= daysOfMonth(parts.year, parts.month) && parts.hour >= 0 && parts.hour <= 23 &&
           parts.minute >= 0 && parts.minute <= 59 && parts.second >= 0 && parts.second <= 59 &&
           parts.millisecond >= 0 && parts.millisecond <= 999;
}

Instant fromParts(const Civil& parts) noexcept
{
    return dayNumber(parts.year, parts.month, parts.day) * day + parts.hour * hour + parts.minute * minute +
           parts.second * second + parts.millisecond;
}

Civil toParts(Instant instant) noexcept
{
    const std::int64_t number = dayOf(instant);
    const std::chrono::year_month_day date{
        std::chrono::sys_days{std::chrono::days{static_cast<std::chrono::days::rep>(number + epochDays)}}};
    const auto time = static_cast<std::int32_t>(instant - number * day);
    Civil parts;
    parts.year = static_cast<int>(date.year());
    parts.month = static_cast<std::int32_t>(static_cast<unsigned>(date.month()));
    parts.day = static_cast<std::int32_t>(static_cast<unsigned>(date.day()));
    parts.hour = time / static_cast<std::int32_t>(hour);
    parts.minute = time / static_cast<std::int32_t>(minute) % 60;
    parts.second = time / static_cast<std::int32_t>(second) % 60;
    parts.millisecond = time % 1000;
    return parts;
}

std::optional<Instant> readStorage(std::string_view text) noexcept
{
    if (text.size() != storageLength) return std::nullopt;
    for (std::size_t index = 0; index < storageLength; ++index) {
        const bool digit = text[index] >= '0' && text[index] <= '9';
        if (storageShape[index] == '0' ? !digit : text[index] != storageShape[index]) return std::nullopt;
    }
    const Civil parts{readDigits(text, 0, 4),  readDigits(text, 5, 2),  readDigits(text, 8, 2), readDigits(text, 11, 2),
                      readDigits(text, 14, 2), readDigits(text, 17, 2), readDigits(text, 20, 3)};
    if (!isValid(parts)) return std::nullopt;
    return fromParts(parts);
}

std::string_view writeStorage(Instant instant, std::span<char, storageLength> buffer) noexcept
{
    const Civil parts = toParts(instant);
    for (std::size_t index = 0; index < storageLength; ++index)
        buffer[index] = storageShape[index];
    writeDigits(buffer.data(), parts.year, 4);
    writeDigits(buffer.data() + 5, parts.month, 2);
    writeDigits(buffer.data() + 8, parts.day, 2);
    writeDigits(buffer.data() + 11, parts.hour, 2);
    writeDigits(buffer.data() + 14, parts.minute, 2);
    writeDigits(buffer.data() + 17, parts.second, 2);
    writeDigits(buffer.data() + 20, parts.millisecond, 3);
    return {buffer.data(), storageLength};
}

Instant roundToDateTime(Instant instant) noexcept
{
    const std::int64_t time = timeOfDay(instant);
    const std::int64_t ticks = (time * 3 + 5) / 10; // 300 ticks a second, halves up
    return instant - time + (ticks * 10 + 1) / 3;
}

Instant roundToMinute(Instant instant) noexcept
{
    const std::int64_t rest = timeOfDay(instant) % minute;
    return rest >= 29'999 ? instant - rest + minute : instant - rest;
}

std::optional<Instant> addMonths(Instant instant, std::int64_t months) noexcept
{
    constexpr std::int64_t allMonths = 12 * 9999;
    if (months > allMonths || months < -allMonths) return std::nullopt;
    Civil parts = toParts(instant);
    const std::int64_t target = (parts.year - 1) * std::int64_t{12} + parts.month - 1 + months;
    if (target < 0 || target >= allMonths) return std::nullopt;
    parts.year = static_cast<std::int32_t>(target / 12) + 1;
    parts.month = static_cast<std::int32_t>(target % 12) + 1;
    const std::int32_t last = daysOfMonth(parts.year, parts.month);
    if (parts.day > last) parts.day = last;
    return fromParts(parts);
}

Instant now()
{
    const double days = Platform::current().clock->now().days - platformDaysOfEpoch;
    return roundToDateTime(static_cast<Instant>(std::llround(days * static_cast<double>(day))));
}

Instant nowUtc()
{
    const Instant local = now();
    const Civil parts = toParts(local);
    std::tm zoned{};
    zoned.tm_year = parts.year - 1900;
    zoned.tm_mon = parts.month - 1;
    zoned.tm_mday = parts.day;
    zoned.tm_hour = parts.hour;
    zoned.tm_min = parts.minute;
    zoned.tm_sec = parts.second;
    zoned.tm_isdst = -1;
    const std::int64_t unixSeconds = std::mktime(&zoned);
    return (unixSeconds - epochDays * (day / second)) * second + parts.millisecond;
}

} // namespace tamarok::embedded::functions
