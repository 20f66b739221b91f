#include "tamarok_tsql/date_value.h"

namespace tamarok::tsql {

namespace {

/// Reads numbers from fixed positions of a text and remembers whether each character was a digit.
class FixedDigits {
public:
    explicit constexpr FixedDigits(std::string_view text) noexcept : text_{text} {}

    constexpr std::int32_t two(std::size_t at) noexcept { return 10 * digit(at) + digit(at + 1); }
    constexpr std::int32_t three(std::size_t at) noexcept { return 100 * digit(at) + two(at + 1); }
    constexpr std::int32_t four(std::size_t at) noexcept { return 100 * two(at) + two(at + 2); }
    constexpr bool allDigits() const noexcept { return allDigits_; }

private:
    constexpr std::int32_t digit(std::size_t at) noexcept
    {
        const std::int32_t value = text_[at] - '0';
        allDigits_ &= value >= 0 && value <= 9;
        return value;
    }

    std::string_view text_;
    bool allDigits_ = true;
};

bool hasStoredSeparators(std::string_view text) noexcept
{
    return text[4] == '-' && text[7] == '-' && text[10] == ' ' && text[13] == ':' && text[16] == ':' && text[19] == '.';
}

/// Writes from the right; the caller guarantees that the number has at most `count` digits.
void writeDigits(char* target, std::int32_t number, std::size_t count) noexcept
{
    for (std::size_t index = count; index-- > 0; number /= 10)
        target[index] = static_cast<char>('0' + number % 10);
}

/// The server's smalldatetime rounds 29.998 seconds down and 29.999 up.
Instant roundToMinute(Instant instant) noexcept
{
    constexpr Instant firstThatRoundsUp = 29'999;
    const Instant rest = timeOf(instant) % oneMinute;
    return rest >= firstThatRoundsUp ? instant - rest + oneMinute : instant - rest;
}

} // namespace

std::int64_t serverDay(std::int32_t year, std::int32_t month, std::int32_t day) noexcept
{
    return dayNumber(year, month, day) - serverDayZero;
}

std::int32_t weekdayOfServerDay(std::int64_t serverDay) noexcept
{
    return weekdayOfDay(static_cast<std::int32_t>(serverDay) + serverDayZero);
}

bool isValid(const CivilTime& parts) noexcept
{
    return parts.year >= 1 && isDay(parts.year, parts.month, parts.day) && isTimeOfDay(parts);
}

Instant fromParts(const CivilTime& parts) noexcept
{
    return serverDay(parts.year, parts.month, parts.day) * oneDay + timeOfDay(parts);
}

CivilTime toParts(Instant instant) noexcept
{
    const std::int64_t day = dayOf(instant);
    CivilTime parts = civilOfDay(static_cast<std::int32_t>(day) + serverDayZero);
    setTimeOfDay(parts, static_cast<std::int32_t>(instant - day * oneDay));
    return parts;
}

/// Brings an instant to the resolution of a type: day, time of day, minute, 1/300 second or millisecond. No value
/// outside of the type's range.
std::optional<Instant> roundToType(Instant instant, TypeKind type) noexcept
{
    Instant first = firstDate;
    Instant last = lastDate;
    switch (type) {
    case TypeKind::Date: instant -= timeOf(instant); break;
    case TypeKind::Time: instant = timeOf(instant); break;
    case TypeKind::SmallDateTime:
        instant = roundToMinute(instant);
        first = firstSmallDateTime;
        last = lastSmallDateTime;
        break;
    case TypeKind::DateTime2: break;
    default:
        instant = roundToDateTime(instant);
        first = firstDateTime;
        break;
    }
    return instant >= first && instant <= last ? std::optional{instant} : std::nullopt;
}

/// The server stores a datetime in ticks of 1/300 second and shows it in milliseconds that end in 0, 3 or 7.
Instant roundToDateTime(Instant instant) noexcept
{
    const Instant time = timeOf(instant);
    const Instant ticks = (time * 3 + 5) / 10; // 300 ticks a second, halves up
    return instant - time + (ticks * 10 + 1) / 3;
}

/// Only the exact form of 23 characters is accepted. Separators are checked first, then all digits are read without
/// branches and checked at the end.
std::optional<Instant> readStored(std::string_view text) noexcept
{
    if (text.size() != storedLength || !hasStoredSeparators(text)) return std::nullopt;
    FixedDigits digits{text};
    const CivilTime parts{.year = digits.four(0),
                          .month = digits.two(5),
                          .day = digits.two(8),
                          .hour = digits.two(11),
                          .minute = digits.two(14),
                          .second = digits.two(17),
                          .millisecond = digits.three(20)};
    if (!digits.allDigits() || !isValid(parts)) return std::nullopt;
    return fromParts(parts);
}

std::string_view writeStored(const CivilTime& parts, std::span<char, storedLength> buffer) noexcept
{
    static constexpr std::string_view shape = "0000-00-00 00:00:00.000";
    static_assert(shape.size() == storedLength);
    shape.copy(buffer.data(), storedLength);
    writeDigits(&buffer[0], parts.year, 4);
    writeDigits(&buffer[5], parts.month, 2);
    writeDigits(&buffer[8], parts.day, 2);
    writeDigits(&buffer[11], parts.hour, 2);
    writeDigits(&buffer[14], parts.minute, 2);
    writeDigits(&buffer[17], parts.second, 2);
    writeDigits(&buffer[20], parts.millisecond, 3);
    return {buffer.data(), storedLength};
}

std::string_view writeStored(Instant instant, std::span<char, storedLength> buffer) noexcept
{
    return writeStored(toParts(instant), buffer);
}

std::string storedText(Instant instant)
{
    std::string text(storedLength, '\0');
    writeStored(instant, std::span<char, storedLength>{text.data(), storedLength});
    return text;
}

} // namespace tamarok::tsql
