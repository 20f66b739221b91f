#include <algorithm>
#include <array>
#include <cstdint>

#include "runtime/date_pattern.h"

#include "tamarok/format.h"
#include "tamarok/text.h"

// Date patterns. PatternLexer cuts a pattern into tokens, DateWriter writes each token. Regional patterns and format
// patterns differ in their letters only.

namespace tamarok {

namespace {

enum class Part { literal, day, month, year, hour, hour12, minute, second, halfDay, dateMark, timeMark };

struct Token {
    Part part = Part::literal;
    std::string_view text; ///< the letters of the part, or the literal text without its quotes
};

constexpr char lower(char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Returns the part that a letter of a regional pattern stands for. Case counts: M is the month, m the minute.
constexpr Part regionalPart(char letter) noexcept
{
    switch (letter) {
    case 'd': return Part::day;
    case 'M': return Part::month;
    case 'y': return Part::year;
    case 'H': return Part::hour;
    case 'h': return Part::hour12;
    case 'm': return Part::minute;
    case 's': return Part::second;
    case 't': return Part::halfDay;
    default: return Part::literal;
    }
}

/// Returns the part that a letter of a format pattern stands for, in any case.
constexpr Part formatPart(char letter) noexcept
{
    switch (lower(letter)) {
    case 'd': return Part::day;
    case 'm': return Part::month;
    case 'y': return Part::year;
    case 'h': return Part::hour;
    case 'n': return Part::minute;
    case 's': return Part::second;
    case '/': return Part::dateMark;
    case ':': return Part::timeMark;
    default: return Part::literal;
    }
}

/// Cuts a pattern into tokens from left to right.
class PatternLexer {
public:
    enum class Kind { regional, format };
    PatternLexer(std::string_view pattern, Kind kind) noexcept : rest_{pattern}, kind_{kind} {}

    /// Reads the next token; false at the end of the pattern.
    bool next(Token& token) noexcept
    {
        if (rest_.empty()) return false;
        // AM/PM is the one token that its first letter does not identify.
        const char first = rest_.front();
        const Part part = kind_ == Kind::regional ? regionalPart(first) : formatPart(first);
        if (part == Part::dateMark || part == Part::timeMark)
            token = take(part, 1);
        else if (part != Part::literal)
            token = take(part, runLength());
        else if (first == '"' || (first == '\'' && kind_ == Kind::regional))
            token = quoted(first);
        else if (const std::size_t length = halfDayLength(); length > 0)
            token = take(Part::halfDay, length);
        else
            token = character();
        return true;
    }

private:
    Token take(Part part, std::size_t count) noexcept
    {
        const Token token{part, rest_.substr(0, count)};
        rest_.remove_prefix(token.text.size());
        return token;
    }

    Token quoted(char quote) noexcept
    {
        rest_.remove_prefix(1);
        // A quote that is never closed reaches to the end of the pattern.
        const Token token = take(Part::literal, rest_.find(quote));
        if (!rest_.empty()) rest_.remove_prefix(1);
        return token;
    }

    /// One character of literal text, without the backslash before it.
    Token character() noexcept
    {
        if (rest_.front() == '\\') rest_.remove_prefix(1);
        std::size_t end = 0;
        if (!rest_.empty()) text::decode(rest_, end);
        return take(Part::literal, end);
    }

    std::size_t runLength() const noexcept
    {
        const char first = rest_.front();
        // Runs of one letter form a token; a format pattern takes "Mm" as one run.
        const bool anyCase = kind_ == Kind::format;
        std::size_t end = 1;
        while (end < rest_.size() && (rest_[end] == first || (anyCase && lower(rest_[end]) == lower(first))))
            ++end;
        return end;
    }

    std::size_t halfDayLength() const noexcept
    {
        static constexpr std::array<std::string_view, 3> halfDays{"AM/PM", "AMPM", "A/P"};
        if (kind_ == Kind::regional || lower(rest_.front()) != 'a') return 0;
        for (const std::string_view halfDay : halfDays)
            if (text::startsWithNoCase(rest_, halfDay)) return halfDay.size();
        return 0;
    }

    std::string_view rest_;
    Kind kind_;
};

/// Writes the tokens of a pattern for one date.
class DateWriter {
public:
    DateWriter(Date date, const Regional& regional) : parts_{toCivilSeconds(date)}, regional_{regional} {}

    void write(const Token& token)
    {
        const std::size_t length = token.text.size();
        switch (token.part) {
        case Part::literal: out_.append(token.text); break;
        case Part::day: day(length); break;
        case Part::month: month(length); break;
        case Part::year: year(length); break;
        case Part::hour: number(parts_.hour, length > 1); break;
        // Maps 0 to 12, and 13 to 1.
        case Part::hour12: number((parts_.hour + 11) % 12 + 1, length > 1); break;
        case Part::minute: number(parts_.minute, length > 1); break;
        case Part::second: number(parts_.second, length > 1); break;
        case Part::halfDay: halfDay(token.text); break;
        case Part::dateMark: out_.append(dateSeparator(regional_.shortDate)); break;
        case Part::timeMark: out_.append(timeSeparator(regional_.time)); break;
        }
    }

    std::string take() { return std::move(out_); }

private:
    /// Writes a number below 100.
    void number(std::int32_t value, bool twoDigits)
    {
        if (twoDigits || value >= 10) out_ += static_cast<char>('0' + value / 10);
        out_ += static_cast<char>('0' + value % 10);
    }

    /// Sunday is 0. Computed from the parts: rounding to seconds may have moved the date to the next day.
    std::size_t weekday() const
    {
        return static_cast<std::size_t>(weekdayOf(makeDate(parts_.year, parts_.month, parts_.day)) - 1);
    }

    void day(std::size_t length)
    {
        if (length == 3)
            out_.append(regional_.shortDays[weekday()]);
        else if (length > 3)
            out_.append(regional_.days[weekday()]);
        else
            number(parts_.day, length > 1);
    }

    void month(std::size_t length)
    {
        const auto index = static_cast<std::size_t>(parts_.month - 1);
        if (length == 3)
            out_.append(regional_.shortMonths[index]);
        else if (length > 3)
            out_.append(regional_.months[index]);
        else
            number(parts_.month, length > 1);
    }

    void year(std::size_t length)
    {
        // One letter writes the year of the century without a leading 0.
        if (length > 2) number(parts_.year / 100, true);
        number(parts_.year % 100, length > 1);
    }

    void halfDay(std::string_view letters)
    {
        const bool afternoon = parts_.hour >= 12;
        // AM/PM, am/pm and A/P write their own letters. Any other spelling writes the regional word, "t" the first
        // character of it.
        if (letters == "AM/PM")
            out_.append(afternoon ? "PM" : "AM");
        else if (letters == "am/pm")
            out_.append(afternoon ? "pm" : "am");
        else if (letters.size() == 3 && letters[1] == '/')
            out_ += afternoon ? letters[2] : letters[0];
        else if (letters == "t")
            out_.append(text::left(afternoon ? regional_.pm : regional_.am, 1));
        else
            out_.append(afternoon ? regional_.pm : regional_.am);
    }

    CivilTime parts_;
    const Regional& regional_;
    std::string out_;
};

/// Returns the part of the next token that is neither literal nor separator, or `literal` at the end.
Part nextPart(PatternLexer lexer) noexcept
{
    Token token;
    while (lexer.next(token))
        if (token.part != Part::literal && token.part != Part::dateMark && token.part != Part::timeMark)
            return token.part;
    return Part::literal;
}

/// Returns whether the pattern holds AM/PM, so that hours count to 12.
bool namesHalfDay(std::string_view pattern) noexcept
{
    // Cuts the pattern a second time only if it has an "a".
    if (std::none_of(pattern.begin(), pattern.end(), [](char c) { return lower(c) == 'a'; })) return false;
    PatternLexer lexer{pattern, PatternLexer::Kind::format};
    Token token;
    while (lexer.next(token))
        if (token.part == Part::halfDay) return true;
    return false;
}

/// "m" and "mm" are minutes directly after an hour or before seconds.
bool isMinute(const Token& token, Part previous, const PatternLexer& rest) noexcept
{
    if (token.part != Part::month || token.text.size() > 2) return false;
    return previous == Part::hour || nextPart(rest) == Part::second;
}

} // namespace

std::string formatRegional(Date date, std::string_view pattern, const Regional& regional)
{
    DateWriter writer{date, regional};
    PatternLexer lexer{pattern, PatternLexer::Kind::regional};
    for (Token token; lexer.next(token);)
        writer.write(token);
    return writer.take();
}

namespace format {

std::string date(Date value, std::string_view pattern, const Regional& regional)
{
    DateWriter writer{value, regional};
    PatternLexer lexer{pattern, PatternLexer::Kind::format};
    const bool halfDays = namesHalfDay(pattern);
    Part previous = Part::literal;
    for (Token token; lexer.next(token);) {
        if (isMinute(token, previous, lexer)) token.part = Part::minute;
        const bool separator =
            token.part == Part::literal || token.part == Part::dateMark || token.part == Part::timeMark;
        if (!separator) previous = token.part;
        if (token.part == Part::hour && halfDays) token.part = Part::hour12;
        writer.write(token);
    }
    return writer.take();
}

} // namespace format

} // namespace tamarok
