#include <algorithm>
#include <array>
#include <cstdint>

#include "date_words.h"
#include "runtime/date_pattern.h"

#include "tamarok/convert.h"
#include "tamarok/pivot_years.h"
#include "tamarok/text.h"

namespace tamarok::convert {

namespace {

constexpr std::string_view noBreakBlank = "\u00A0";
constexpr std::string_view narrowNoBreakBlank = "\u202F";
constexpr std::size_t maxParts = 3;
constexpr std::size_t maxNumberDigits = 4;

constexpr bool isDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

struct DatePart {
    std::int32_t value = 0;
    std::size_t digits = 0; ///< 0 for a month that was named
    /// Returns whether the part can only be a year.
    bool isYear() const noexcept { return digits > 2 || value > 31; }
};

/// The parts of a date text in the order of the text.
struct Reading {
    std::array<DatePart, maxParts> parts;
    std::size_t count = 0;
    bool monthNamed = false;
    bool weekdayNamed = false;
    bool iso = false;
    std::optional<std::int64_t> milliseconds; ///< time of day
};

/// Splits a text into date parts and a time of day. Reads one element after the other: number, time, word or
/// separator. `pending_` is a separator that must be followed by a date part.
class DateReader {
public:
    DateReader(std::string_view text, const Regional& regional) noexcept :
        rest_{text}, words_{regional}, regional_{regional}
    {}

    std::optional<Reading> read()
    {
        skipBlanks();
        // Elements check their own order. What only the end shows is checked last: an open separator, a comma without a
        // word, no part at all.
        reading_.iso = beginsIso();
        while (!rest_.empty()) {
            if (!element()) return std::nullopt;
            skipBlanks();
        }
        const bool openEnd = pending_ != '\0' && pending_ != '.';
        const bool looseComma = comma_ && !reading_.monthNamed && !reading_.weekdayNamed;
        if (openEnd || looseComma || (reading_.count == 0 && !reading_.milliseconds)) return std::nullopt;
        return reading_;
    }

private:
    /// Returns whether the text begins with four digits, hyphen, one or two digits, hyphen, one or two digits.
    /// If the regional short date is year, day, month with hyphens, a "T" must follow.
    bool beginsIso() const noexcept
    {
        std::size_t at = 0;
        for (const auto& [fewest, most] : {std::pair{4U, 4U}, std::pair{1U, 2U}, std::pair{1U, 2U}}) {
            if (at > 0 && (at >= rest_.size() || rest_[at++] != '-')) return false;
            std::size_t digits = 0;
            while (at < rest_.size() && isDigit(rest_[at]))
                ++at, ++digits;
            if (digits < fewest || digits > most) return false;
        }
        const bool regionalShape =
            dateOrder(regional_.shortDate) == DateOrder::Ydm && dateSeparator(regional_.shortDate) == "-";
        return !regionalShape || (at < rest_.size() && (rest_[at] == 'T' || rest_[at] == 't'));
    }

    bool take(std::string_view wanted) noexcept
    {
        if (!rest_.starts_with(wanted)) return false;
        rest_.remove_prefix(wanted.size());
        return true;
    }

    void skipBlanks() noexcept
    {
        while (take(" ") || take("\t") || take(noBreakBlank) || take(narrowNoBreakBlank)) {}
    }

    bool element()
    {
        const char first = rest_.front();
        if (isDigit(first)) return numberOrTime();
        if (first == '.' || first == '/' || first == '-' || first == ',') return separator(first);
        return word();
    }

    bool separator(char mark) noexcept
    {
        rest_.remove_prefix(1);
        comma_ = comma_ || mark == ',';
        // Two separators in a row, and one before the first part, are no date.
        if (!separable_ || pending_ != '\0') return false;
        pending_ = mark;
        return true;
    }

    bool addPart(DatePart part) noexcept
    {
        // A time may stand before or after the date, but not between its parts.
        const bool behindTime = reading_.milliseconds && !timeFirst_;
        if (reading_.count == maxParts || behindTime) return false;
        reading_.parts[reading_.count++] = part;
        separable_ = true;
        pending_ = '\0';
        return true;
    }

    bool numberOrTime()
    {
        // A colon or a word for the half of the day makes a number the hour of a time.
        const auto value = number(9);
        if (!value) return false;
        if (rest_.starts_with(':')) return time(value->value);
        if (const auto afternoon = halfDay()) return finishTime(value->value, 0, 0, 0, afternoon);
        return value->digits <= maxNumberDigits && addPart(*value);
    }

    std::optional<DatePart> number(std::size_t mostDigits) noexcept
    {
        DatePart part;
        for (; !rest_.empty() && isDigit(rest_.front()); rest_.remove_prefix(1)) {
            if (++part.digits > mostDigits) return std::nullopt;
            part.value = part.value * 10 + (rest_.front() - '0');
        }
        return part.digits == 0 ? std::nullopt : std::optional{part};
    }

    bool time(std::int32_t hour)
    {
        rest_.remove_prefix(1);
        const auto minute = number(2);
        if (!minute) return false;
        std::int32_t seconds = 0;
        std::int32_t milliseconds = 0;
        if (take(":")) {
            const auto second = number(2);
            if (!second) return false;
            seconds = second->value;
            if (startsFraction()) milliseconds = fraction();
        }
        return finishTime(hour, minute->value, seconds, milliseconds, halfDay());
    }

    bool startsFraction() const noexcept
    {
        return rest_.size() > 1 && (rest_[0] == '.' || rest_[0] == ',') && isDigit(rest_[1]);
    }

    /// Reads decimals of a second, truncated to milliseconds.
    std::int32_t fraction() noexcept
    {
        rest_.remove_prefix(1);
        std::int32_t result = 0;
        std::int32_t worth = 100;
        for (; !rest_.empty() && isDigit(rest_.front()); rest_.remove_prefix(1), worth /= 10)
            result += (rest_.front() - '0') * worth;
        return result;
    }

    /// Reads a word for before or after noon, if there is one. Returns true for after noon.
    std::optional<bool> halfDay()
    {
        const std::string_view before = rest_;
        skipBlanks();
        const auto afternoon = words_.halfDay(takeWord());
        if (!afternoon) rest_ = before;
        return afternoon;
    }

    bool finishTime(std::int32_t hour, std::int32_t minute, std::int32_t second, std::int32_t milliseconds,
                    std::optional<bool> afternoon) noexcept
    {
        const bool openDate = pending_ != '\0' && pending_ != '.' && pending_ != ',';
        if (reading_.milliseconds || openDate || minute > 59 || second > 59) return false;
        if (afternoon) {
            // 12 AM is midnight and 12 PM noon.
            if (hour < 1 || hour > 12) return false;
            hour = hour % 12 + (*afternoon ? 12 : 0);
        }
        if (hour > 23) return false;
        reading_.milliseconds = ((hour * 60 + minute) * 60 + second) * std::int64_t{1000} + milliseconds;
        timeFirst_ = reading_.count == 0;
        separable_ = false;
        pending_ = '\0';
        return true;
    }

    /// Reads letters up to a digit, blank or separator, and the point of an abbreviation after them.
    std::string_view takeWord() noexcept
    {
        std::size_t end = 0;
        while (end < rest_.size() &&
               std::string_view{"0123456789./-,: \t"}.find(rest_[end]) == std::string_view::npos &&
               !rest_.substr(end).starts_with(noBreakBlank) && !rest_.substr(end).starts_with(narrowNoBreakBlank))
            ++end;
        const std::string_view word = rest_.substr(0, end);
        rest_.remove_prefix(end);
        if (!word.empty()) take(".");
        return word;
    }

    bool word()
    {
        const std::string_view word = takeWord();
        if (word.empty()) return false;
        // The T between date and time of the ISO form.
        if (reading_.iso && reading_.count == maxParts && text::equalsNoCase(word, "T"))
            return !rest_.empty() && isDigit(rest_.front()) && !reading_.milliseconds;
        // At the beginning of a French date "mar." is Tuesday (mardi); elsewhere it is the English March.
        const bool opensWithWeekday = reading_.count == 0 && words_.isRegionalWeekday(word);
        if (const std::int32_t month = words_.month(word); month != 0 && !reading_.monthNamed && !opensWithWeekday) {
            reading_.monthNamed = true;
            return addPart({month, 0});
        }
        if (!words_.isWeekday(word) || reading_.weekdayNamed) return false;
        reading_.weekdayNamed = true;
        separable_ = true;
        pending_ = '\0';
        return true;
    }

    std::string_view rest_;
    DateWords words_;
    const Regional& regional_;
    Reading reading_;
    char pending_ = '\0';    ///< a separator that has no part after it yet
    bool separable_ = false; ///< a separator may follow
    bool comma_ = false;
    bool timeFirst_ = false;
};

std::optional<Date> dayFrom(std::int32_t year, const DatePart& month, const DatePart& day)
{
    const std::int32_t full = pivot::typedText.fullYear(year);
    const bool possible = month.digits <= 2 && day.digits <= 2 && month.value >= 1 && month.value <= 12 &&
                          day.value >= 1 && day.value <= daysInMonth(full, month.value);
    return possible ? std::optional{makeDate(full, month.value, day.value)} : std::nullopt;
}

/// Returns the first date, or the second if there is no first: day and month exchanged.
std::optional<Date> either(std::optional<Date> first, std::optional<Date> second)
{
    return first ? first : second;
}

/// Day, month and year as numbers. A part that can only be a year decides; otherwise the regional order does.
std::optional<Date> threeNumbers(const Reading& reading, DateOrder order)
{
    const auto& [a, b, c] = reading.parts;
    const bool yearFirst = order == DateOrder::Ymd || order == DateOrder::Ydm;
    if (reading.iso) return dayFrom(a.value, b, c);
    // No order has the year in the middle, and no date has two years.
    if (b.isYear() || (a.isYear() && c.isYear())) return std::nullopt;
    if (a.isYear() || (yearFirst && !c.isYear())) {
        if (order != DateOrder::Ydm) return dayFrom(a.value, b, c);
        return either(dayFrom(a.value, c, b), dayFrom(a.value, b, c));
    }
    // A date that is impossible in the regional order is tried with day and month exchanged.
    if (order == DateOrder::Mdy) return either(dayFrom(c.value, a, b), dayFrom(c.value, b, a));
    return either(dayFrom(c.value, b, a), dayFrom(c.value, a, b));
}

/// Month and year, or day and month of the current year.
std::optional<Date> twoNumbers(const DatePart& a, const DatePart& b, DateOrder order)
{
    constexpr DatePart firstDay{1, 1};
    if (a.digits > 2) return dayFrom(a.value, b, firstDay);
    if (b.digits > 2) return dayFrom(b.value, a, firstDay);
    const std::int32_t year = toCivil(Platform::today()).year;
    const bool monthFirst = order == DateOrder::Mdy || order == DateOrder::Ymd;
    const DatePart& month = monthFirst ? a : b;
    const DatePart& day = monthFirst ? b : a;
    return either(dayFrom(year, month, day), dayFrom(year, day, month));
}

/// One or two numbers beside the name of a month.
std::optional<Date> withNamedMonth(const Reading& reading, DateOrder order)
{
    const auto end = reading.parts.begin() + static_cast<std::ptrdiff_t>(reading.count);
    const DatePart month = *std::find_if(reading.parts.begin(), end, [](const DatePart& p) { return p.digits == 0; });
    std::array<DatePart, maxParts> numbers;
    const auto last = std::copy_if(reading.parts.begin(), end, numbers.begin(),
                                   [](const DatePart& part) { return part.digits != 0; });
    const auto count = last - numbers.begin();
    if (count == 0) return std::nullopt;
    const DatePart& a = numbers[0];
    if (count == 1) {
        if (a.isYear()) return dayFrom(a.value, month, {1, 1});
        return dayFrom(toCivil(Platform::today()).year, month, a);
    }
    const DatePart& b = numbers[1];
    const bool yearFirst = order == DateOrder::Ymd || order == DateOrder::Ydm;
    if (a.isYear() || (yearFirst && !b.isYear())) return dayFrom(a.value, month, b);
    return dayFrom(b.value, month, a);
}

std::optional<Date> dayOf(const Reading& reading, const Regional& regional)
{
    const DateOrder order = dateOrder(regional.shortDate);
    if (reading.monthNamed) return withNamedMonth(reading, order);
    // A weekday is allowed before a complete date only.
    if (reading.weekdayNamed && reading.count < maxParts) return std::nullopt;
    switch (reading.count) {
    case 0: return Date{};
    case 2: return twoNumbers(reading.parts[0], reading.parts[1], order);
    case 3: return threeNumbers(reading, order);
    default: return std::nullopt;
    }
}

} // namespace

std::optional<Date> parseDate(std::string_view text, const Regional& regional)
{
    const auto reading = DateReader{text, regional}.read();
    if (!reading) return std::nullopt;
    const auto day = dayOf(*reading, regional);
    // A time alone belongs to day 0.
    if (!day || !reading->milliseconds) return day;
    return joinDate(static_cast<std::int32_t>(day->days), static_cast<std::int32_t>(*reading->milliseconds));
}

} // namespace tamarok::convert
