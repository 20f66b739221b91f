#include "tamarok_tsql/literals.h"

#include <array>
#include <charconv>
#include <cstddef>

#include "tamarok_tsql/names.h"

namespace tamarok::tsql {
namespace {

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

struct Moment {
    int year = 1900;
    int month = 1;
    int day = 1;
    int milliseconds = 0; ///< of the day
};

constexpr int millisecondsPerMinute = 60'000;
constexpr int halfMinute = 30'001; ///< the server rounds up from 29.999 seconds on
constexpr int millisecondsPerDay = 86'400'000;

int daysInMonth(int year, int month)
{
    constexpr std::array<int, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[static_cast<std::size_t>(month - 1)];
}

void nextDay(Moment& moment)
{
    if (++moment.day <= daysInMonth(moment.year, moment.month)) return;
    moment.day = 1;
    if (++moment.month <= 12) return;
    moment.month = 1;
    ++moment.year;
}

/// Reads the parts of a date text one after the other.
class DateReader {
public:
    DateReader(std::string_view text, DateOrder order) : text_(trimmed(text)), order_(order) {}

    std::optional<Moment> read()
    {
        Moment moment;
        if (text_.empty()) return moment;
        const bool timeOnly =
            text_.find(':') != std::string_view::npos && text_.find_first_of(".-/ T") > text_.find(':');
        if (!timeOnly) {
            if (!readDate(moment)) return std::nullopt;
            if (at_ == text_.size()) return moment;
            if (text_[at_] != ' ' && text_[at_] != 'T') return std::nullopt;
            while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == 'T'))
                ++at_;
        }
        if (!readTime(moment)) return std::nullopt;
        return moment;
    }

private:
    bool digits(int& value, std::size_t& count)
    {
        const std::size_t begin = at_;
        while (at_ < text_.size() && text_[at_] >= '0' && text_[at_] <= '9')
            ++at_;
        count = at_ - begin;
        if (count == 0 || count > 8) return false;
        return std::from_chars(text_.data() + begin, text_.data() + at_, value).ec == std::errc();
    }

    static int fullYear(int year, std::size_t count)
    {
        constexpr int pivot = 50;
        return count > 2 ? year : year < pivot ? 2000 + year : 1900 + year;
    }

    bool valid(const Moment& moment) const
    {
        return moment.year >= 1 && moment.year <= 9999 && moment.month >= 1 && moment.month <= 12 && moment.day >= 1 &&
               moment.day <= daysInMonth(moment.year, moment.month);
    }

    bool readDate(Moment& moment)
    {
        std::array<int, 3> parts{};
        std::array<std::size_t, 3> counts{};
        if (!digits(parts[0], counts[0])) return false;
        const char separator = at_ < text_.size() ? text_[at_] : ' ';
        if (separator != '.' && separator != '-' && separator != '/') return compact(moment, parts[0], counts[0]);
        for (std::size_t i = 1; i < 3; ++i) {
            if (at_ >= text_.size() || text_[at_] != separator) return false;
            ++at_;
            if (!digits(parts[i], counts[i])) return false;
        }
        if (counts[0] > 4 || counts[1] > 2 || counts[2] > 4) return false;
        const std::string_view places = order(separator, counts[0]);
        for (std::size_t i = 0; i < 3; ++i) {
            if (counts[i] > 2 && (counts[i] != 4 || places[i] != 'y')) return false;
            if (places[i] == 'y') moment.year = fullYear(parts[i], counts[i]);
            if (places[i] == 'm') moment.month = parts[i];
            if (places[i] == 'd') moment.day = parts[i];
        }
        return valid(moment);
    }

    std::string_view order(char separator, std::size_t firstCount) const
    {
        if (separator == '-' || firstCount == 4) return "ymd";
        if (separator == '.') return "dmy";
        switch (order_) {
        case DateOrder::Dmy: return "dmy";
        case DateOrder::Ymd: return "ymd";
        case DateOrder::Ydm: return "ydm";
        case DateOrder::Myd: return "myd";
        case DateOrder::Dym: return "dym";
        case DateOrder::Mdy: break;
        }
        return "mdy";
    }

    bool compact(Moment& moment, int number, std::size_t count) const
    {
        if (count == 4) {
            moment.year = number;
        } else if (count == 6 || count == 8) {
            moment.year = fullYear(number / 10000, count - 4);
            moment.month = number / 100 % 100;
            moment.day = number % 100;
        } else {
            return false;
        }
        return valid(moment);
    }

    bool readTime(Moment& moment)
    {
        std::array<int, 3> clock{};
        std::size_t count = 0;
        std::size_t parts = 0;
        do {
            if (parts == 3 || !digits(clock[parts], count) || count > 2) return false;
            ++parts;
        } while (accept(':'));
        int milliseconds = 0;
        if (parts == 3 && accept('.')) {
            int fraction = 0;
            if (!digits(fraction, count) || count > 7) return false;
            for (; count < 3; ++count)
                fraction *= 10;
            for (; count > 4; --count)
                fraction /= 10;
            milliseconds = count == 4 ? (fraction + 5) / 10 : fraction;
        }
        if (!halfOfDay(clock[0], parts)) return false;
        if (clock[0] > 23 || clock[1] > 59 || clock[2] > 59) return false;
        moment.milliseconds = ((clock[0] * 60 + clock[1]) * 60 + clock[2]) * 1000 + milliseconds;
        accept('Z');
        return at_ == text_.size();
    }

    bool halfOfDay(int& hour, std::size_t parts)
    {
        const std::string_view rest = trimmed(text_.substr(at_));
        const bool morning = sameName(rest, "AM");
        const bool evening = sameName(rest, "PM");
        if (!morning && !evening) return parts > 1;
        at_ = text_.size();
        if (hour < 1 || hour > 12) return false;
        hour = hour % 12 + (evening ? 12 : 0);
        return true;
    }

    bool accept(char c)
    {
        if (at_ >= text_.size() || text_[at_] != c) return false;
        ++at_;
        return true;
    }

    std::string_view text_;
    DateOrder order_;
    std::size_t at_ = 0;
};

/// The server keeps a datetime in 300ths of a second, a smalldatetime in minutes, a date without time.
bool roundTo(Moment& moment, TypeKind kind)
{
    switch (kind) {
    case TypeKind::Date: moment.milliseconds = 0; break;
    case TypeKind::Time:
        moment.year = 1900;
        moment.month = 1;
        moment.day = 1;
        break;
    case TypeKind::SmallDateTime:
        moment.milliseconds = (moment.milliseconds + halfMinute) / millisecondsPerMinute * millisecondsPerMinute;
        break;
    case TypeKind::DateTime: {
        const int ticks = (moment.milliseconds * 3 + 5) / 10;
        moment.milliseconds = (ticks * 10 + 1) / 3;
        break;
    }
    default: break;
    }
    if (moment.milliseconds >= millisecondsPerDay) {
        moment.milliseconds -= millisecondsPerDay;
        nextDay(moment);
    }
    if (kind == TypeKind::DateTime) return moment.year >= 1753;
    if (kind != TypeKind::SmallDateTime) return true;
    const int day = moment.year * 10000 + moment.month * 100 + moment.day;
    return day >= 19000101 && day <= 20790606;
}

void append(std::string& text, int number, int width)
{
    std::string digits = std::to_string(number);
    text.append(static_cast<std::size_t>(width) - std::min(digits.size(), static_cast<std::size_t>(width)), '0');
    text += digits;
}

} // namespace

std::int32_t textLength(std::string_view raw)
{
    std::int32_t length = 0;
    for (std::size_t i = 1; i + 1 < raw.size(); ++i) {
        const auto c = static_cast<unsigned char>(raw[i]);
        if (c == '\'') ++i;
        if ((c & 0xC0U) != 0x80U) ++length;
    }
    return length;
}

std::string textValue(std::string_view raw)
{
    std::string value;
    value.reserve(raw.size());
    for (std::size_t i = 1; i + 1 < raw.size(); ++i) {
        value += raw[i];
        if (raw[i] == '\'') ++i;
    }
    return value;
}

std::optional<std::string> storedDate(std::string_view text, DateOrder order, TypeKind kind)
{
    std::optional<Moment> moment = DateReader(text, order).read();
    if (!moment || !roundTo(*moment, kind)) return std::nullopt;
    std::string stored;
    append(stored, moment->year, 4);
    stored += '-';
    append(stored, moment->month, 2);
    stored += '-';
    append(stored, moment->day, 2);
    stored += ' ';
    append(stored, moment->milliseconds / 3'600'000, 2);
    stored += ':';
    append(stored, moment->milliseconds / 60'000 % 60, 2);
    stored += ':';
    append(stored, moment->milliseconds / 1000 % 60, 2);
    stored += '.';
    append(stored, moment->milliseconds % 1000, 3);
    return stored;
}

std::optional<std::int64_t> wholeOf(std::string_view text)
{
    std::string_view digits = trimmed(text);
    if (digits.empty()) return 0;
    if (digits.front() == '+') digits.remove_prefix(1);
    std::int64_t value = 0;
    const char* end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return value;
}

bool isNumberText(std::string_view text, bool floating)
{
    std::string_view digits = trimmed(text);
    if (digits.empty()) return floating;
    if (digits.front() == '+' || digits.front() == '-') digits.remove_prefix(1);
    const bool begun = !digits.empty() && (digits.front() == '.' || (digits.front() >= '0' && digits.front() <= '9'));
    if (!begun) return false;
    double value = 0;
    const char* end = digits.data() + digits.size();
    const auto format = floating ? std::chars_format::general : std::chars_format::fixed;
    const auto read = std::from_chars(digits.data(), end, value, format);
    return read.ec == std::errc() && read.ptr == end;
}

} // namespace tamarok::tsql
