#include "functions/date_parse.h"

#include <array>
#include <cmath>
#include <string>

#include "functions/names.h"
#include "functions/number_text.h"

namespace tamarok::embedded::functions {

namespace {

using tsql::DateOrder;

constexpr std::int32_t lastYearOfThisCentury = 49;

bool isDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
}

bool isLetter(char character) noexcept
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isSeparator(char character) noexcept
{
    return character == '/' || character == '-' || character == '.';
}

struct Group {
    std::int32_t number = 0;
    std::int32_t digits = 0;
};

class DateParser {
public:
    DateParser(std::string_view text, const DateReading& reading) : text_{text}, reading_{reading} {}

    ParsedDate parse()
    {
        while (peek() == ' ')
            ++at_;
        while (!text_.empty() && text_.back() == ' ')
            text_.remove_suffix(1);
        bool date = false;
        bool time = false;
        while (at_ < text_.size()) {
            const bool isTime = startsTime();
            if (isTime ? time : date) return {};
            if (!(isTime ? readTime() : readDate())) return {};
            (isTime ? time : date) = true;
            if (!skipJoint(isTime)) return {};
        }
        ParsedDate result;
        result.fractionDigits = fractionDigits_;
        result.status = isValid(parts_) ? ParsedDate::Status::Ok : ParsedDate::Status::OutOfRange;
        if (result.status == ParsedDate::Status::Ok) result.instant = fromParts(parts_);
        return result;
    }

private:
    char peek(std::size_t ahead = 0) const noexcept { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
    void skipBlanks() noexcept
    {
        while (peek() == ' ')
            ++at_;
    }

    /// Between date and time: blanks, or the T of ISO 8601.
    bool skipJoint(bool afterTime) noexcept
    {
        if (at_ == text_.size()) return true;
        if (!afterTime && (peek() == 'T' || peek() == 't') && isDigit(peek(1))) {
            ++at_;
            return true;
        }
        if (peek() != ' ') return false;
        skipBlanks();
        return true;
    }

    bool startsTime() const noexcept
    {
        std::size_t ahead = 0;
        while (isDigit(peek(ahead)))
            ++ahead;
        if (ahead == 0 || ahead > 2) return false;
        if (peek(ahead) == ':') return true;
        while (peek(ahead) == ' ')
            ++ahead;
        return isHalfOfDay(ahead);
    }

    bool isHalfOfDay(std::size_t ahead) const noexcept
    {
        const char first = peek(ahead);
        const char next = peek(ahead + 1);
        return (first == 'A' || first == 'a' || first == 'P' || first == 'p') && (next == 'M' || next == 'm') &&
               !isLetter(peek(ahead + 2));
    }

    bool readGroup(Group& group) noexcept
    {
        group = {};
        while (isDigit(peek())) {
            if (++group.digits > 8) return false;
            group.number = group.number * 10 + (text_[at_++] - '0');
        }
        return group.digits > 0;
    }

    /// Name of a month, long or short; 0 for any other word.
    std::int32_t readMonthName() noexcept
    {
        const std::size_t from = at_;
        while (isLetter(peek()))
            ++at_;
        return monthOfName(text_.substr(from, at_ - from));
    }

    bool readDate()
    {
        if (isLetter(peek())) return readMonthFirst();
        Group first;
        if (!readGroup(first)) return false;
        if (first.digits == 8 || first.digits == 6) return readUnseparated(first);
        const std::size_t behind = at_;
        skipBlanks();
        if (isSeparator(peek())) {
            const char separator = text_[at_++];
            skipBlanks();
            return isLetter(peek()) ? readNameInside(first) : readGroups(first, separator);
        }
        if (isLetter(peek()) && behind != at_) return readNameInside(first);
        if (isLetter(peek()) && monthAhead()) return readNameInside(first);
        at_ = behind;
        if (first.digits != 4) return false;
        parts_.year = first.number;
        return true;
    }

    bool monthAhead() noexcept
    {
        const std::size_t from = at_;
        const bool found = readMonthName() != 0;
        at_ = from;
        return found;
    }

    /// "20241231" or "241231".
    bool readUnseparated(const Group& group)
    {
        const std::int32_t year = group.number / 10'000;
        return setYear({year, group.digits == 8 ? 4 : 2}) && setMonth({group.number / 100 % 100, 2}) &&
               setDay({group.number % 100, 2});
    }

    bool readGroups(const Group& first, char separator)
    {
        Group middle;
        Group last;
        if (!readGroup(middle)) return false;
        skipBlanks();
        if (peek() != separator) return false;
        ++at_;
        skipBlanks();
        if (!readGroup(last)) return false;
        const DateOrder order = separator == '.' ? reading_.points : reading_.slashes;
        return assign(first, middle, last, order);
    }

    bool assign(const Group& first, const Group& middle, const Group& last, DateOrder order)
    {
        const bool dayBeforeMonth = order == DateOrder::Dmy || order == DateOrder::Ydm || order == DateOrder::Dym;
        if (first.digits == 4) {
            const bool swapped = dayBeforeMonth && !reading_.yearFirstIsIso;
            return setYear(first) && setMonth(swapped ? last : middle) && setDay(swapped ? middle : last);
        }
        if (last.digits == 4) {
            return setYear(last) && setMonth(dayBeforeMonth ? middle : first) &&
                   setDay(dayBeforeMonth ? first : middle);
        }
        if (middle.digits == 4 && order != DateOrder::Myd && order != DateOrder::Dym) return false;
        switch (order) {
        case DateOrder::Mdy: return setMonth(first) && setDay(middle) && setYear(last);
        case DateOrder::Dmy: return setDay(first) && setMonth(middle) && setYear(last);
        case DateOrder::Ymd: return setYear(first) && setMonth(middle) && setDay(last);
        case DateOrder::Ydm: return setYear(first) && setDay(middle) && setMonth(last);
        case DateOrder::Myd: return setMonth(first) && setYear(middle) && setDay(last);
        case DateOrder::Dym: return setDay(first) && setYear(middle) && setMonth(last);
        }
        return false;
    }

    /// "Mar 5 2024", "March 5, 2024", "Mar 2024".
    bool readMonthFirst()
    {
        parts_.month = readMonthName();
        if (parts_.month == 0) return false;
        skipFiller();
        Group first;
        if (!readGroup(first)) return false;
        const std::size_t behind = at_;
        skipFiller();
        Group last;
        const bool timeFollows = startsTime();
        if (!timeFollows && isDigit(peek()) && readGroup(last)) {
            return first.digits == 4 ? setYear(first) && setDay(last) : setDay(first) && setYear(last);
        }
        at_ = behind;
        return first.digits == 4 && setYear(first);
    }

    /// "5 Mar 2024", "5-Mar-24", "2024 Mar 5".
    bool readNameInside(const Group& first)
    {
        parts_.month = readMonthName();
        if (parts_.month == 0) return false;
        skipFiller();
        Group last;
        if (!readGroup(last)) return first.digits == 4 && setYear(first);
        return first.digits == 4 ? setYear(first) && setDay(last) : setDay(first) && setYear(last);
    }

    void skipFiller() noexcept
    {
        while (peek() == ' ' || peek() == ',' || isSeparator(peek()))
            ++at_;
    }

    bool setYear(const Group& group) noexcept
    {
        if (group.digits == 3 || group.digits > 4) return false;
        parts_.year = group.number;
        if (group.digits <= 2) parts_.year += group.number <= lastYearOfThisCentury ? 2000 : 1900;
        return true;
    }

    bool setMonth(const Group& group) noexcept
    {
        parts_.month = group.number;
        return group.digits <= 2;
    }

    bool setDay(const Group& group) noexcept
    {
        parts_.day = group.number;
        return group.digits <= 2;
    }

    bool readTime()
    {
        Group part;
        if (!readGroup(part)) return false;
        parts_.hour = part.number;
        if (peek() == ':') {
            ++at_;
            if (!readGroup(part) || part.digits > 2) return false;
            parts_.minute = part.number;
        }
        if (peek() == ':') {
            ++at_;
            if (!readGroup(part) || part.digits > 2) return false;
            parts_.second = part.number;
            if ((peek() == '.' || peek() == ':') && !readFraction()) return false;
        }
        std::size_t ahead = 0;
        while (peek(ahead) == ' ')
            ++ahead;
        return isHalfOfDay(ahead) ? readHalfOfDay(ahead) : true;
    }

    /// Behind a point tenths, hundredths...; behind a colon milliseconds.
    bool readFraction()
    {
        const bool point = text_[at_++] == '.';
        Group part;
        if (!readGroup(part) || part.digits > (point ? 7 : 3)) return false;
        fractionDigits_ = part.digits;
        if (!point) {
            parts_.millisecond = part.number;
            return true;
        }
        double milliseconds = part.number * 1000.0;
        for (std::int32_t count = 0; count < part.digits; ++count)
            milliseconds /= 10.0;
        parts_.millisecond = static_cast<std::int32_t>(milliseconds + 1e-6);
        return true;
    }

    bool readHalfOfDay(std::size_t ahead)
    {
        at_ += ahead;
        const bool afternoon = peek() == 'P' || peek() == 'p';
        at_ += 2;
        if (parts_.hour > 12) return afternoon;
        if (parts_.hour == 0) return !afternoon;
        parts_.hour = parts_.hour % 12 + (afternoon ? 12 : 0);
        return true;
    }

    std::string_view text_;
    const DateReading& reading_;
    std::size_t at_ = 0;
    Civil parts_;
    std::int32_t fractionDigits_ = 0;
};

/// What a style of CONVERT says about the order of day, month and year.
struct StyleOrder {
    std::int16_t style;
    std::int8_t order; ///< of DateOrder, or -1 for the connection's own
};

constexpr std::int8_t own = -1;
constexpr std::int8_t mdy = static_cast<std::int8_t>(DateOrder::Mdy);
constexpr std::int8_t dmy = static_cast<std::int8_t>(DateOrder::Dmy);
constexpr std::int8_t ymd = static_cast<std::int8_t>(DateOrder::Ymd);

constexpr std::array styleOrders = {
    StyleOrder{0, own},   StyleOrder{1, mdy},   StyleOrder{2, ymd},   StyleOrder{3, dmy},   StyleOrder{4, dmy},
    StyleOrder{5, dmy},   StyleOrder{6, dmy},   StyleOrder{7, mdy},   StyleOrder{8, own},   StyleOrder{9, own},
    StyleOrder{10, mdy},  StyleOrder{11, ymd},  StyleOrder{12, ymd},  StyleOrder{13, dmy},  StyleOrder{14, own},
    StyleOrder{20, ymd},  StyleOrder{21, ymd},  StyleOrder{22, mdy},  StyleOrder{23, ymd},  StyleOrder{24, own},
    StyleOrder{25, ymd},  StyleOrder{100, own}, StyleOrder{101, mdy}, StyleOrder{102, ymd}, StyleOrder{103, dmy},
    StyleOrder{104, dmy}, StyleOrder{105, dmy}, StyleOrder{106, dmy}, StyleOrder{107, mdy}, StyleOrder{108, own},
    StyleOrder{109, own}, StyleOrder{110, mdy}, StyleOrder{111, ymd}, StyleOrder{112, ymd}, StyleOrder{113, dmy},
    StyleOrder{114, own}, StyleOrder{120, ymd}, StyleOrder{121, ymd}, StyleOrder{126, ymd}, StyleOrder{127, ymd}};

std::string_view typeName(DateType type) noexcept
{
    constexpr std::array<std::string_view, 4> names = {"datetime", "smalldatetime", "date", "time"};
    return names[static_cast<std::size_t>(type)];
}

[[noreturn]] void failMalformed(DateType type, std::string_view source)
{
    if (type == DateType::SmallDateTime) {
        failWith(295, "Conversion failed when converting character string to smalldatetime data type.", source);
    }
    failWith(241, "Conversion failed when converting date and/or time from character string.", source);
}

[[noreturn]] void failOutOfRange(DateType type, std::string_view source)
{
    if (type == DateType::Date || type == DateType::Time) {
        failWith(241, "Conversion failed when converting date and/or time from character string.", source);
    }
    std::string message = "The conversion of a nvarchar data type to a ";
    message += typeName(type);
    message += " data type resulted in an out-of-range value.";
    failWith(242, message, source);
}

Instant fromDayCount(double days, DateType type)
{
    constexpr double furthest = 4e6;
    if (!(std::fabs(days) < furthest)) {
        char buffer[40];
        return fitDate(lastDate + 1, type, false, writeFloat(days, 0, buffer));
    }
    const double whole = std::floor(days);
    const auto time = std::llround((days - whole) * static_cast<double>(day));
    char buffer[40];
    return fitDate(static_cast<Instant>(whole) * day + time, type, false, writeFloat(days, 0, buffer));
}

} // namespace

ParsedDate parseDate(std::string_view text, const DateReading& reading)
{
    return DateParser{text, reading}.parse();
}

DateReading readingOfStyle(std::int64_t style, DateOrder order)
{
    for (const StyleOrder& entry : styleOrders) {
        if (entry.style != style) continue;
        if (entry.order == own) return {order, DateOrder::Dmy, true};
        const auto chosen = static_cast<DateOrder>(entry.order);
        return {chosen, chosen, false};
    }
    fail(281, std::to_string(style) + " is not a valid style number when converting from nvarchar to datetime.");
}

Instant fitDate(Instant instant, DateType type, bool fromText, std::string_view source)
{
    Instant first = firstDate;
    Instant last = lastDate;
    if (type == DateType::Date) instant -= timeOfDay(instant);
    if (type == DateType::Time) instant = timeOfDay(instant);
    if (type == DateType::DateTime) {
        instant = roundToDateTime(instant);
        first = firstDateTime;
    }
    if (type == DateType::SmallDateTime) {
        instant = roundToMinute(instant);
        first = firstSmallDateTime;
        last = lastSmallDateTime;
    }
    if (instant >= first && instant <= last) return instant;
    if (fromText) failOutOfRange(type, source);
    std::string message = "Arithmetic overflow error converting expression to data type ";
    message += typeName(type);
    failWith(8115, message + '.', source);
}

Instant toDate(sqlite3_value* value, DateType type, const DateReading& reading)
{
    const Storage storage = storageOf(value);
    if (storage == Storage::Whole || storage == Storage::Real) return fromDayCount(sqlite3_value_double(value), type);
    const TextArgument text{value};
    if (const auto stored = readStorage(text)) return fitDate(*stored, type, true, text);
    const ParsedDate parsed = parseDate(text, reading);
    const std::int32_t fractionLimit = type == DateType::DateTime ? 3 : 7;
    if (parsed.status == ParsedDate::Status::Malformed || parsed.fractionDigits > fractionLimit) {
        failMalformed(type, text);
    }
    if (parsed.status == ParsedDate::Status::OutOfRange) failOutOfRange(type, text);
    return fitDate(parsed.instant, type, true, text);
}

DateReading defaultReading(const Call& call) noexcept
{
    return {call.settings().dateOrder, DateOrder::Dmy, true};
}

} // namespace tamarok::embedded::functions
