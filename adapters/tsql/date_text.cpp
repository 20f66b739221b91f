#include "tamarok_tsql/date_text.h"

#include <algorithm>

#include "tamarok/english_dates.h"
#include "tamarok/pivot_years.h"
#include "tamarok/text.h"

namespace tamarok::tsql {

namespace {

constexpr bool isDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
}

constexpr bool isLetter(char character) noexcept
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

constexpr bool isSeparator(char character) noexcept
{
    return character == '/' || character == '-' || character == '.';
}

/// A run of digits.
struct Number {
    std::int32_t value = 0;
    std::int32_t digits = 0; ///< 0 for none
};

/// A position in a text, with the few questions that the grammar asks.
class TextPosition {
public:
    explicit TextPosition(std::string_view text) noexcept : text_{text} {}

    bool atEnd() const noexcept { return at_ == text_.size(); }
    char peek(std::size_t ahead = 0) const noexcept { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
    void advance(std::size_t count = 1) noexcept { at_ += count; }

    bool accept(char wanted) noexcept
    {
        if (atEnd() || peek() != wanted) return false;
        advance();
        return true;
    }

    void skipBlanks() noexcept
    {
        while (accept(' ')) {}
    }

    /// What may stand beside the name of a month: blanks, commas and separators.
    void skipFiller() noexcept
    {
        while (peek() == ' ' || peek() == ',' || isSeparator(peek()))
            advance();
    }

    /// The number here, of at most eight digits; no digits for anything else.
    Number number() noexcept
    {
        constexpr std::int32_t mostDigits = 8;
        Number result;
        for (; isDigit(peek()); advance()) {
            if (++result.digits > mostDigits) return {};
            result.value = result.value * 10 + (peek() - '0');
        }
        return result;
    }

    std::string_view word() noexcept
    {
        const std::size_t begin = at_;
        while (isLetter(peek()))
            advance();
        return text_.substr(begin, at_ - begin);
    }

    /// True if AM or PM stands `ahead` characters from here.
    bool isHalfOfDay(std::size_t ahead) const noexcept
    {
        const std::string_view rest = text_.substr(std::min(at_ + ahead, text_.size()));
        const std::string_view word = rest.substr(0, 2);
        const bool named = text::equalsNoCase(word, "AM") || text::equalsNoCase(word, "PM");
        return named && !(rest.size() > 2 && isLetter(rest[2]));
    }

    std::size_t blanksAhead(std::size_t ahead = 0) const noexcept
    {
        while (peek(ahead) == ' ')
            ++ahead;
        return ahead;
    }

    /// True if a time begins here: one or two digits, then a colon or AM or PM.
    bool isTime() const noexcept
    {
        std::size_t digits = 0;
        while (isDigit(peek(digits)))
            ++digits;
        if (digits == 0 || digits > 2) return false;
        return peek(digits) == ':' || isHalfOfDay(blanksAhead(digits));
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

/// Reads a time of day into hour, minute, second and millisecond.
class TimeReader {
public:
    explicit TimeReader(TextPosition& position) noexcept : at_{position} {}

    /// False for a text that has not the form of a time. Hours above 23 and the like have that form.
    bool read(CivilTime& parts) noexcept
    {
        parts.hour = at_.number().value;
        if (at_.accept(':') && !readTwoDigits(parts.minute)) return false;
        if (at_.accept(':') && !readSeconds(parts)) return false;
        const std::size_t blanks = at_.blanksAhead();
        if (!at_.isHalfOfDay(blanks)) return true;
        at_.advance(blanks);
        return readHalfOfDay(parts.hour);
    }

    /// Decimals of the second; the types allow different numbers of them.
    std::int32_t fractionDigits() const noexcept { return fractionDigits_; }

private:
    bool readTwoDigits(std::int32_t& value) noexcept
    {
        const Number number = at_.number();
        value = number.value;
        return number.digits == 1 || number.digits == 2;
    }

    bool readSeconds(CivilTime& parts) noexcept
    {
        if (!readTwoDigits(parts.second)) return false;
        if (at_.accept('.')) return readDecimals(parts.millisecond);
        if (at_.accept(':')) return readMilliseconds(parts.millisecond);
        return true;
    }

    /// After a point: tenths, hundredths and so on, cut to milliseconds.
    bool readDecimals(std::int32_t& milliseconds) noexcept
    {
        constexpr std::int32_t mostDigits = 7;
        const Number number = at_.number();
        fractionDigits_ = number.digits;
        milliseconds = number.value;
        for (std::int32_t digits = number.digits; digits < 3; ++digits)
            milliseconds *= 10;
        for (std::int32_t digits = number.digits; digits > 3; --digits)
            milliseconds /= 10;
        return number.digits >= 1 && number.digits <= mostDigits;
    }

    /// After a colon: thousandths, whatever the number of digits.
    bool readMilliseconds(std::int32_t& milliseconds) noexcept
    {
        const Number number = at_.number();
        fractionDigits_ = number.digits;
        milliseconds = number.value;
        return number.digits >= 1 && number.digits <= 3;
    }

    /// AM and PM: 12 AM is midnight. The hours 13 to 23 may have PM, hour 0 may have AM.
    bool readHalfOfDay(std::int32_t& hour) noexcept
    {
        const bool afternoon = text::equalsNoCase(at_.word(), "PM");
        if (hour > 12) return afternoon;
        if (hour == 0) return !afternoon;
        hour = hour % 12 + (afternoon ? 12 : 0);
        return true;
    }

    TextPosition& at_;
    std::int32_t fractionDigits_ = 0;
};

/// Reads a date into year, month and day.
class DateReader {
public:
    DateReader(TextPosition& position, const DateReading& reading, CivilTime& parts) noexcept :
        at_{position}, reading_{reading}, parts_{parts}
    {}

    /// False for a text that has not the form of a date. "2024-02-30" has that form.
    bool read() noexcept
    {
        if (isLetter(at_.peek())) return readMonthFirst();
        const Number first = at_.number();
        if (first.digits == 6 || first.digits == 8) return readUnseparated(first);
        const TextPosition afterNumber = at_;
        at_.skipBlanks();
        if (isSeparator(at_.peek())) return readSeparated(first);
        if (isLetter(at_.peek()) && isMonthAhead()) return readMonthInside(first);
        at_ = afterNumber;
        return first.digits == 4 && setYear(first);
    }

private:
    bool isMonthAhead() const noexcept
    {
        TextPosition ahead = at_;
        return english::monthOf(ahead.word()) != 0;
    }

    /// "20241231" and "241231": year, month and day in any date order.
    bool readUnseparated(const Number& number) noexcept
    {
        parts_.month = number.value / 100 % 100;
        parts_.day = number.value % 100;
        return setYear({number.value / 10'000, number.digits - 4});
    }

    /// "31.12.2024" and "31-Dec-2024". Both separators of three numbers are the same.
    bool readSeparated(const Number& first) noexcept
    {
        const char separator = at_.peek();
        at_.advance();
        at_.skipBlanks();
        if (isLetter(at_.peek())) return readMonthInside(first);
        const Number middle = at_.number();
        at_.skipBlanks();
        if (middle.digits == 0 || !at_.accept(separator)) return false;
        at_.skipBlanks();
        const Number last = at_.number();
        return last.digits != 0 && assign(first, middle, last, separator);
    }

    /// A number of four digits is the year wherever it stands; the date order decides about the rest.
    bool assign(const Number& first, const Number& middle, const Number& last, char separator) noexcept
    {
        const DateOrder order = reading_.order;
        const bool dayFirst = order == DateOrder::Dmy || order == DateOrder::Ydm || order == DateOrder::Dym;
        const bool yearInside = order == DateOrder::Myd || order == DateOrder::Dym;
        if (first.digits == 4) {
            const bool iso = reading_.hyphensAreIso && separator == '-';
            return dayFirst && !iso ? set(first, last, middle) : set(first, middle, last);
        }
        if (last.digits == 4) return dayFirst ? set(last, middle, first) : set(last, first, middle);
        if (middle.digits == 4 && !yearInside) return false;
        switch (order) {
        case DateOrder::Mdy: return set(last, first, middle);
        case DateOrder::Dmy: return set(last, middle, first);
        case DateOrder::Ymd: return set(first, middle, last);
        case DateOrder::Ydm: return set(first, last, middle);
        case DateOrder::Myd: return set(middle, first, last);
        case DateOrder::Dym: return set(middle, last, first);
        }
        return false;
    }

    /// "Mar 5 2024", "March 5, 2024", "Mar 2024". A time may follow: "Mar 2024 10:15".
    bool readMonthFirst() noexcept
    {
        parts_.month = english::monthOf(at_.word());
        if (parts_.month == 0) return false;
        at_.skipFiller();
        const Number first = at_.number();
        const TextPosition afterNumber = at_;
        at_.skipFiller();
        if (!at_.isTime() && isDigit(at_.peek())) return setDayAndYear(first, at_.number());
        at_ = afterNumber;
        return first.digits == 4 && setYear(first);
    }

    /// "5 Mar 2024", "5-Mar-24", "2024 Mar 5", "2024 Mar".
    bool readMonthInside(const Number& first) noexcept
    {
        parts_.month = english::monthOf(at_.word());
        if (parts_.month == 0) return false;
        const TextPosition afterMonth = at_;
        at_.skipFiller();
        if (!at_.isTime() && isDigit(at_.peek())) return setDayAndYear(first, at_.number());
        at_ = afterMonth;
        return first.digits == 4 && setYear(first);
    }

    /// Beside the name of a month the day stands before the year, unless the first number has four digits.
    bool setDayAndYear(const Number& first, const Number& last) noexcept
    {
        const bool yearFirst = first.digits == 4;
        const Number& day = yearFirst ? last : first;
        parts_.day = day.value;
        return day.digits >= 1 && day.digits <= 2 && setYear(yearFirst ? first : last);
    }

    bool set(const Number& year, const Number& month, const Number& day) noexcept
    {
        parts_.month = month.value;
        parts_.day = day.value;
        return month.digits <= 2 && day.digits <= 2 && setYear(year);
    }

    bool setYear(const Number& number) noexcept
    {
        parts_.year = number.digits <= 2 ? pivot::databaseText.fullYear(number.value) : number.value;
        return number.digits == 1 || number.digits == 2 || number.digits == 4;
    }

    TextPosition& at_;
    const DateReading& reading_;
    CivilTime& parts_;
};

/// Reads a date, a time, or both.
class DateTextReader {
public:
    DateTextReader(std::string_view text, const DateReading& reading) noexcept : at_{text}, reading_{reading} {}

    /// False for a text that has not the form of a date and a time.
    bool read() noexcept
    {
        at_.skipBlanks();
        while (!at_.atEnd()) {
            if (!(at_.isTime() ? readTime() : readDate())) return false;
        }
        return true;
    }

    const CivilTime& parts() const noexcept { return parts_; }
    std::int32_t fractionDigits() const noexcept { return fractionDigits_; }

private:
    /// A time, and the blanks after it. A Z may end the ISO form; it names no other time zone.
    bool readTime() noexcept
    {
        if (hasTime_) return false;
        hasTime_ = true;
        TimeReader time{at_};
        if (!time.read(parts_)) return false;
        fractionDigits_ = time.fractionDigits();
        if (isIso_) at_.accept('Z');
        return skipGap();
    }

    /// A date, and the blanks or the T after it.
    bool readDate() noexcept
    {
        if (hasDate_) return false;
        hasDate_ = true;
        if (!DateReader{at_, reading_, parts_}.read()) return false;
        isIso_ = !hasTime_ && at_.peek() == 'T' && isDigit(at_.peek(1));
        if (!isIso_) return skipGap();
        at_.advance();
        return at_.isTime();
    }

    /// True at the end of the text and after at least one blank.
    bool skipGap() noexcept
    {
        if (at_.atEnd()) return true;
        const bool hasGap = at_.peek() == ' ';
        at_.skipBlanks();
        return hasGap;
    }

    TextPosition at_;
    const DateReading& reading_;
    CivilTime parts_ = serverEpoch;
    std::int32_t fractionDigits_ = 0;
    bool hasDate_ = false;
    bool hasTime_ = false;
    bool isIso_ = false; ///< date and time are joined by a T
};

DateConversion malformed(TypeKind type) noexcept
{
    return {0, type == TypeKind::SmallDateTime ? dateErrors::malformedSmallDateTime : dateErrors::malformed};
}

/// The types date, time and datetime2 have one error for both failures.
DateConversion outOfRange(TypeKind type) noexcept
{
    const bool hasOwnError = type == TypeKind::DateTime || type == TypeKind::SmallDateTime;
    return {0, hasOwnError ? dateErrors::outOfRange : dateErrors::malformed};
}

} // namespace

DateConversion convertDateText(std::string_view text, TypeKind type, const DateReading& reading)
{
    const std::int32_t mostFractionDigits = type == TypeKind::DateTime ? 3 : 7;
    Instant instant = 0;
    if (const auto stored = readStored(text)) {
        instant = *stored;
    } else {
        DateTextReader reader{text, reading};
        if (!reader.read() || reader.fractionDigits() > mostFractionDigits) return malformed(type);
        if (!isValid(reader.parts())) return outOfRange(type);
        instant = fromParts(reader.parts());
    }
    const auto rounded = roundToType(instant, type);
    return rounded ? DateConversion{*rounded, 0} : outOfRange(type);
}

std::string_view dateTypeName(TypeKind type) noexcept
{
    switch (type) {
    case TypeKind::Date: return "date";
    case TypeKind::Time: return "time";
    case TypeKind::SmallDateTime: return "smalldatetime";
    case TypeKind::DateTime2: return "datetime2";
    default: return "datetime";
    }
}

std::string dateErrorMessage(std::int32_t error, TypeKind type)
{
    if (error == dateErrors::malformedSmallDateTime)
        return "Conversion failed when converting character string to smalldatetime data type.";
    if (error == dateErrors::malformed)
        return "Conversion failed when converting date and/or time from character string.";
    return "The conversion of a nvarchar data type to a " + std::string{dateTypeName(type)} +
           " data type resulted in an out-of-range value.";
}

} // namespace tamarok::tsql
