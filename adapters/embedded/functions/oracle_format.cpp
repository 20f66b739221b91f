#include "functions/oracle_format.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "functions/call.h"
#include "functions/number_text.h"

#include "tamarok/decimal_digits.h"
#include "tamarok/english_dates.h"
#include "tamarok/pivot_years.h"
#include "tamarok/text.h"

namespace tamarok::embedded::functions {

namespace {

enum class Element : std::uint8_t {
    Year4,
    Year2,
    MonthName,
    MonthShort,
    Month,
    Minute,
    Hour24,
    Hour12,
    Second,
    DayOfYear,
    Day,
    DayName,
    DayShort,
    Weekday,
    Quarter,
    Week,
    IsoWeek,
    Fraction,
    HalfOfDay,
    Compact,
    Literal
};

struct ElementName {
    std::string_view name;
    Element element;
    std::size_t digits; ///< at most, 0 where it is no number
};

/// The first match wins, so a longer name comes before its prefixes (DDD before DD).
constexpr std::array elementNames = {
    ElementName{"YYYY", Element::Year4, 4},      ElementName{"RRRR", Element::Year4, 4},
    ElementName{"YY", Element::Year2, 2},        ElementName{"RR", Element::Year2, 2},
    ElementName{"MONTH", Element::MonthName, 0}, ElementName{"MON", Element::MonthShort, 0},
    ElementName{"MM", Element::Month, 2},        ElementName{"MI", Element::Minute, 2},
    ElementName{"HH24", Element::Hour24, 2},     ElementName{"HH12", Element::Hour12, 2},
    ElementName{"HH", Element::Hour12, 2},       ElementName{"SS", Element::Second, 2},
    ElementName{"DDD", Element::DayOfYear, 3},   ElementName{"DD", Element::Day, 2},
    ElementName{"DAY", Element::DayName, 0},     ElementName{"DY", Element::DayShort, 0},
    ElementName{"D", Element::Weekday, 1},       ElementName{"Q", Element::Quarter, 1},
    ElementName{"WW", Element::Week, 2},         ElementName{"IW", Element::IsoWeek, 2},
    ElementName{"FF3", Element::Fraction, 3},    ElementName{"FF", Element::Fraction, 3},
    ElementName{"FM", Element::Compact, 0},      ElementName{"AM", Element::HalfOfDay, 0},
    ElementName{"PM", Element::HalfOfDay, 0}};

/// One element of a date mask, such as YYYY, or a literal between elements.
struct MaskPart {
    Element element = Element::Literal;
    std::string_view text; ///< as the mask spells it
    std::size_t digits = 0;
};

bool isMaskPunctuation(char character) noexcept
{
    return std::string_view{" -/,.;:"}.find(character) != std::string_view::npos;
}

/// Reads the element at `at` and moves behind it. Error 1821 for anything that is no element, punctuation or text in
/// double quotes.
MaskPart nextPart(std::string_view mask, std::size_t& at)
{
    const std::string_view rest = mask.substr(at);
    if (rest.front() == '"') {
        const std::size_t end = rest.find('"', 1);
        if (end == std::string_view::npos) failWith(1821, "Date format not recognized.", mask);
        at += end + 1;
        return {Element::Literal, rest.substr(1, end - 1), 0};
    }
    if (isMaskPunctuation(rest.front())) {
        ++at;
        return {Element::Literal, rest.substr(0, 1), 0};
    }
    for (const ElementName& entry : elementNames) {
        const std::string_view spelled = rest.substr(0, entry.name.size());
        if (!text::equalsNoCase(spelled, entry.name)) continue;
        at += spelled.size();
        return {entry.element, spelled, entry.digits};
    }
    failWith(1821, "Date format not recognized.", mask);
}

std::vector<MaskPart> partsOf(std::string_view mask)
{
    std::vector<MaskPart> parts;
    for (std::size_t at = 0; at < mask.size();)
        parts.push_back(nextPart(mask, at));
    return parts;
}

/// The name in the case of the mask: MON, Mon or mon. Long names are padded to the longest.
std::string nameText(std::string_view name, std::string_view spelled, bool compact)
{
    constexpr std::size_t longestName = 9;
    const auto isSmall = [](char character) { return character >= 'a' && character <= 'z'; };
    std::string text{name};
    if (isSmall(spelled[0])) {
        text = text::toLower(std::string_view{text});
    } else if (!isSmall(spelled[1])) {
        text = text::toUpper(std::string_view{text});
    }
    const bool isLong = spelled.size() > 3 || text::equalsNoCase(spelled, "DAY");
    if (isLong && !compact && text.size() < longestName) text.append(longestName - text.size(), ' ');
    return text;
}

/// The number that TO_CHAR writes for an element. Week 1 begins on 1 January (WW), or is that of the first Thursday
/// (IW).
std::int64_t partNumber(Element element, Instant instant, const CivilTime& parts) noexcept
{
    const std::int64_t number = dayOf(instant);
    const std::int64_t dayOfYear = number - serverDay(parts.year, 1, 1) + 1;
    switch (element) {
    case Element::Year4: return parts.year;
    case Element::Year2: return parts.year % 100;
    case Element::Month: return parts.month;
    case Element::Minute: return parts.minute;
    case Element::Hour24: return parts.hour;
    case Element::Hour12: return parts.hour % 12 == 0 ? 12 : parts.hour % 12;
    case Element::Second: return parts.second;
    case Element::DayOfYear: return dayOfYear;
    case Element::Day: return parts.day;
    case Element::Weekday: return weekdayOfServerDay(number);
    case Element::Quarter: return (parts.month - 1) / 3 + 1;
    case Element::Week: return (dayOfYear - 1) / 7 + 1;
    case Element::IsoWeek: return isoWeek(number);
    case Element::Fraction: return parts.millisecond;
    default: return 0;
    }
}

/// Reads a text along a mask.
class MaskReader {
public:
    MaskReader(std::string_view text, std::string_view mask) : text_{text}, mask_{mask} {}

    Instant read()
    {
        const auto parts = partsOf(mask_);
        for (const MaskPart& part : parts)
            readPart(part);
        skipBlanks();
        if (at_ != text_.size()) failText();
        // AM and PM may stand before or after the hour, so they are applied at the end.
        if (afternoon_ && civil_.hour < 12) civil_.hour += 12;
        if (forenoon_ && civil_.hour == 12) civil_.hour = 0;
        if (!isValid(civil_)) failWith(1843, "Not a valid date.", text_);
        return fromParts(civil_);
    }

private:
    [[noreturn]] void failText() const
    {
        failWith(1861, "Literal does not match format string '" + std::string{mask_} + "'.", text_);
    }

    void skipBlanks() noexcept
    {
        while (at_ < text_.size() && text_[at_] == ' ')
            ++at_;
    }

    /// Reads up to `digits` digits; at least one must be there.
    std::int32_t readNumber(std::size_t digits)
    {
        std::int32_t number = 0;
        std::size_t count = 0;
        while (count < digits && at_ < text_.size() && text_[at_] >= '0' && text_[at_] <= '9') {
            number = number * 10 + (text_[at_++] - '0');
            ++count;
        }
        if (count == 0) failText();
        lastDigits_ = count;
        return number;
    }

    std::string_view readWord() noexcept
    {
        const std::size_t from = at_;
        const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
        while (at_ < text_.size() && isLetter(text_[at_]))
            ++at_;
        return text_.substr(from, at_ - from);
    }

    /// Reads what one element of the mask calls for. Names of days are read and ignored: the date follows from the
    /// other parts.
    void readPart(const MaskPart& part)
    {
        if (part.element == Element::Compact) return;
        if (part.element == Element::Literal) return readLiteral(part.text);
        skipBlanks();
        if (part.digits > 0) return setNumber(part.element, readNumber(part.digits));
        const std::string_view word = readWord();
        if (part.element == Element::HalfOfDay) {
            afternoon_ = text::equalsNoCase(word, "PM");
            forenoon_ = text::equalsNoCase(word, "AM");
            if (!afternoon_ && !forenoon_) failText();
            return;
        }
        if (part.element == Element::MonthName || part.element == Element::MonthShort) {
            civil_.month = english::monthOf(word);
            if (civil_.month == 0) failText();
        }
    }

    /// Any punctuation mark matches any other.
    void readLiteral(std::string_view literal)
    {
        if (at_ == text_.size()) return;
        const bool punctuation = literal.size() == 1 && isMaskPunctuation(literal[0]);
        if (punctuation && isMaskPunctuation(text_[at_])) {
            ++at_;
            return;
        }
        if (!text_.substr(at_).starts_with(literal)) failText();
        at_ += literal.size();
    }

    /// Stores a number that was read. A year of one or two digits gets its century from the pivot year, also where the
    /// mask has four. Elements that do not determine a date by themselves (quarter, week) cannot be read.
    void setNumber(Element element, std::int32_t number)
    {
        switch (element) {
        case Element::Year4:
        case Element::Year2: civil_.year = lastDigits_ > 2 ? number : pivot::databaseText.fullYear(number); return;
        case Element::Month: civil_.month = number; return;
        case Element::Day: civil_.day = number; return;
        case Element::Hour24:
        case Element::Hour12: civil_.hour = number; return;
        case Element::Minute: civil_.minute = number; return;
        case Element::Second: civil_.second = number; return;
        case Element::Fraction:
            for (std::size_t count = lastDigits_; count < 3; ++count)
                number *= 10;
            civil_.millisecond = number;
            return;
        default: failWith(1821, "Date format cannot be read.", mask_);
        }
    }

    std::string_view text_;
    std::string_view mask_;
    std::size_t at_ = 0;
    std::size_t lastDigits_ = 0;
    bool afternoon_ = false;
    bool forenoon_ = false;
    CivilTime civil_ = tsql::serverEpoch;
};

/// A number mask such as "S999G990D00", taken apart.
struct NumberMask {
    std::size_t whole = 0;
    std::size_t decimals = 0;
    std::size_t zeroFrom = 0; ///< whole digits that are always printed
    bool point = false;
    bool compact = false;
    bool signFirst = false;
    bool signLast = false;
    bool minusLast = false;
    std::vector<std::size_t> groups; ///< number of whole digits before each grouping mark
};

/// Takes the sign element off either end, then counts the places before and after the point. Error 1481 for any other
/// character and for a mask without digits.
NumberMask parseNumberMask(std::string_view mask)
{
    NumberMask form;
    std::string_view rest = mask;
    if (text::equalsNoCase(rest.substr(0, 2), "FM")) {
        form.compact = true;
        rest.remove_prefix(2);
    }
    if (!rest.empty() && (rest.front() == 'S' || rest.front() == 's')) {
        form.signFirst = true;
        rest.remove_prefix(1);
    } else if (rest.size() >= 2 && text::equalsNoCase(rest.substr(rest.size() - 2), "MI")) {
        form.minusLast = true;
        rest.remove_suffix(2);
    } else if (!rest.empty() && (rest.back() == 'S' || rest.back() == 's')) {
        form.signLast = true;
        rest.remove_suffix(1);
    }
    std::size_t firstZero = std::string_view::npos;
    for (const char letter : rest) {
        if (letter == '9' || letter == '0') {
            if (letter == '0' && !form.point && firstZero == std::string_view::npos) firstZero = form.whole;
            ++(form.point ? form.decimals : form.whole);
        } else if ((letter == '.' || letter == 'D' || letter == 'd') && !form.point) {
            form.point = true;
        } else if ((letter == ',' || letter == 'G' || letter == 'g') && !form.point) {
            form.groups.push_back(form.whole);
        } else {
            failWith(1481, "Invalid number format model.", mask);
        }
    }
    if (form.whole + form.decimals == 0) failWith(1481, "Invalid number format model.", mask);
    if (firstZero != std::string_view::npos) form.zeroFrom = form.whole - firstZero;
    return form;
}

/// Writes the whole digits right-aligned to the places of the mask. A separator is printed only after a digit.
std::string placeDigits(const NumberMask& form, const std::string& digits)
{
    std::string text;
    const std::size_t lead = form.whole - digits.size();
    const std::size_t shown = std::max(digits.size(), form.zeroFrom);
    for (std::size_t place = 0; place < form.whole; ++place) {
        const bool printed = place >= form.whole - shown;
        if (std::ranges::find(form.groups, place) != form.groups.end() && place > 0) {
            text += printed && place > form.whole - shown ? ',' : ' ';
        }
        text += !printed ? ' ' : place < lead ? '0' : digits[place - lead];
    }
    return text;
}

} // namespace

std::string oracleDateText(Instant instant, std::string_view mask)
{
    const CivilTime civil = toParts(instant);
    const std::string_view month = english::months[static_cast<std::size_t>(civil.month - 1)];
    const std::string_view weekday = english::days[static_cast<std::size_t>(weekdayOfServerDay(dayOf(instant)) - 1)];
    std::string result;
    bool compact = false;
    for (const MaskPart& part : partsOf(mask)) {
        switch (part.element) {
        case Element::Compact: compact = !compact; break;
        case Element::Literal: result += part.text; break;
        case Element::MonthName: result += nameText(month, part.text, compact); break;
        case Element::MonthShort: result += nameText(english::shortName(month), part.text, true); break;
        case Element::DayName: result += nameText(weekday, part.text, compact); break;
        case Element::DayShort: result += nameText(english::shortName(weekday), part.text, true); break;
        case Element::HalfOfDay: result += nameText(civil.hour < 12 ? "AM" : "PM", part.text, true); break;
        default: {
            const std::string digits = std::to_string(partNumber(part.element, instant, civil));
            if (!compact && digits.size() < part.digits) result.append(part.digits - digits.size(), '0');
            result += digits;
        }
        }
    }
    return result;
}

Instant oracleDate(std::string_view text, std::string_view mask)
{
    return MaskReader{text, mask}.read();
}

/// Rounds to the decimals of the mask, places the whole digits, and puts the sign directly before the first digit or at
/// the end. A number with too many digits is shown as "#" in every place.
std::string oracleNumberText(double number, std::string_view mask)
{
    const NumberMask form = parseNumberMask(mask);
    std::string plain = decimalText(number, static_cast<std::int32_t>(form.decimals));
    const bool negative = plain.front() == '-';
    if (negative) plain.erase(0, 1);
    const std::size_t point = plain.find('.');
    std::string whole = plain.substr(0, point);
    if (whole == "0" && form.zeroFrom == 0 && form.point) whole.clear();
    if (whole.size() > form.whole) {
        return std::string(form.whole + form.decimals + (form.point ? 1U : 0U) + form.groups.size() + 1, '#');
    }
    std::string body = placeDigits(form, whole);
    if (form.point) body += '.';
    if (point != std::string::npos) body += plain.substr(point + 1);
    const std::size_t first = std::min(body.find_first_not_of(' '), body.size());
    const std::string sign = negative ? "-" : form.signFirst || form.signLast ? "+" : " ";
    if (form.signLast || form.minusLast) {
        body += sign;
    } else {
        body.insert(first, sign);
    }
    if (!form.compact) return body;
    const std::size_t from = body.find_first_not_of(' ');
    const std::size_t to = body.find_last_not_of(' ');
    body = from == std::string::npos ? std::string{} : body.substr(from, to - from + 1);
    return body;
}

/// At most 15 digits, without a 0 before the point; very large and very small numbers with an exponent.
std::string oracleNumberText(double number)
{
    if (number == 0.0) return "0";
    constexpr std::int32_t widest = 40;
    const DecimalDigits form = decimalDigits(number);
    const std::int32_t exponent = form.point - 1;
    if (exponent >= widest || exponent < -widest) {
        char buffer[40];
        return std::string{writeFloat(number, 2, buffer)};
    }
    const std::int32_t scale = std::max(form.count - form.point, 0);
    std::string text = decimalText(number, scale);
    const std::size_t zero = form.negative ? 1 : 0;
    if (text.size() > zero + 1 && text[zero] == '0' && text[zero + 1] == '.') text.erase(zero, 1);
    return text;
}

} // namespace tamarok::embedded::functions
