#include <array>
#include <charconv>
#include <cstdint>

#include "runtime/date_pattern.h"

#include "tamarok/format.h"
#include "tamarok/text.h"

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

/// Cuts a pattern into its tokens, from left to right.
class PatternLexer {
public:
    PatternLexer(std::string_view pattern, bool regionalPattern) noexcept :
        rest_{pattern}, regionalPattern_{regionalPattern}
    {}

    bool next(Token& token) noexcept
    {
        if (rest_.empty()) return false;
        token = literal();
        if (token.part != Part::literal || !token.text.empty() || consumed_) return true;
        token = regionalPattern_ ? regionalPart() : patternPart();
        return true;
    }

private:
    Token take(Part part, std::size_t count) noexcept
    {
        const Token token{part, rest_.substr(0, count)};
        rest_.remove_prefix(std::min(count, rest_.size()));
        return token;
    }

    /// Quoted and escaped text; marks that no text was quoted here by `consumed_` false.
    Token literal() noexcept
    {
        consumed_ = true;
        const char first = rest_.front();
        if (first == '"' || (regionalPattern_ && first == '\'')) {
            rest_.remove_prefix(1);
            const std::size_t end = std::min(rest_.find(first), rest_.size());
            const Token token = take(Part::literal, end);
            if (!rest_.empty()) rest_.remove_prefix(1);
            return token;
        }
        if (first == '\\') {
            rest_.remove_prefix(1);
            return take(Part::literal, characterLength());
        }
        consumed_ = false;
        return {};
    }

    std::size_t characterLength() const noexcept
    {
        if (rest_.empty()) return 0;
        if (static_cast<unsigned char>(rest_.front()) < 0x80) return 1;
        std::size_t end = 0;
        text::decode(rest_, end);
        return end;
    }

    std::size_t runLength(bool anyCase) const noexcept
    {
        const char first = rest_.front();
        std::size_t end = 1;
        while (end < rest_.size() && (rest_[end] == first || (anyCase && lower(rest_[end]) == lower(first))))
            ++end;
        return end;
    }

    Token regionalPart() noexcept
    {
        switch (rest_.front()) {
        case 'd': return take(Part::day, runLength(false));
        case 'M': return take(Part::month, runLength(false));
        case 'y': return take(Part::year, runLength(false));
        case 'H': return take(Part::hour, runLength(false));
        case 'h': return take(Part::hour12, runLength(false));
        case 'm': return take(Part::minute, runLength(false));
        case 's': return take(Part::second, runLength(false));
        case 't': return take(Part::halfDay, runLength(false));
        default: return take(Part::literal, characterLength());
        }
    }

    Token patternPart() noexcept
    {
        static constexpr std::array<std::string_view, 3> halfDays{"AM/PM", "AMPM", "A/P"};
        if (lower(rest_.front()) == 'a')
            for (const std::string_view halfDay : halfDays)
                if (text::startsWithNoCase(rest_, halfDay)) return take(Part::halfDay, halfDay.size());
        switch (lower(rest_.front())) {
        case 'd': return take(Part::day, runLength(true));
        case 'm': return take(Part::month, runLength(true));
        case 'y': return take(Part::year, runLength(true));
        case 'h': return take(Part::hour, runLength(true));
        case 'n': return take(Part::minute, runLength(true));
        case 's': return take(Part::second, runLength(true));
        case '/': return take(Part::dateMark, 1);
        case ':': return take(Part::timeMark, 1);
        default: return take(Part::literal, characterLength());
        }
    }

    std::string_view rest_;
    bool regionalPattern_;
    bool consumed_ = false;
};

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
        case Part::hour: number(parts_.hour, length > 1 ? 2 : 1); break;
        case Part::hour12: number((parts_.hour + 11) % 12 + 1, length > 1 ? 2 : 1); break;
        case Part::minute: number(parts_.minute, length > 1 ? 2 : 1); break;
        case Part::second: number(parts_.second, length > 1 ? 2 : 1); break;
        case Part::halfDay: halfDay(token.text); break;
        case Part::dateMark: out_.append(dateSeparator(regional_.shortDate)); break;
        case Part::timeMark: out_.append(timeSeparator(regional_.time)); break;
        }
    }

    std::string take() { return std::move(out_); }

private:
    void number(std::int32_t value, std::ptrdiff_t width)
    {
        std::array<char, 12> buffer;
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
        for (std::ptrdiff_t missing = width - (end - buffer.data()); missing > 0; --missing)
            out_ += '0';
        out_.append(buffer.data(), end);
    }

    /// Of the day that is shown, which the rounding to seconds may have moved.
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
            number(parts_.day, static_cast<std::ptrdiff_t>(length));
    }

    void month(std::size_t length)
    {
        const auto index = static_cast<std::size_t>(parts_.month - 1);
        if (length == 3)
            out_.append(regional_.shortMonths[index]);
        else if (length > 3)
            out_.append(regional_.months[index]);
        else
            number(parts_.month, static_cast<std::ptrdiff_t>(length));
    }

    void year(std::size_t length)
    {
        if (length > 2)
            number(parts_.year, 4);
        else
            number(parts_.year % 100, static_cast<std::ptrdiff_t>(length));
    }

    void halfDay(std::string_view letters)
    {
        const bool afternoon = parts_.hour >= 12;
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

/// The part of the next token that is no literal, or `literal` at the end.
Part nextPart(PatternLexer lexer) noexcept
{
    Token token;
    while (lexer.next(token))
        if (token.part != Part::literal && token.part != Part::dateMark && token.part != Part::timeMark)
            return token.part;
    return Part::literal;
}

bool namesHalfDay(std::string_view pattern) noexcept
{
    if (pattern.find_first_of("aA") == std::string_view::npos) return false;
    PatternLexer lexer{pattern, false};
    Token token;
    while (lexer.next(token))
        if (token.part == Part::halfDay) return true;
    return false;
}

/// "m" and "mm" are minutes directly behind an hour or before seconds.
bool isMinute(const Token& token, Part previous, const PatternLexer& rest) noexcept
{
    if (token.part != Part::month || token.text.size() > 2) return false;
    return previous == Part::hour || nextPart(rest) == Part::second;
}

} // namespace

std::string formatRegional(Date date, std::string_view pattern, const Regional& regional)
{
    DateWriter writer{date, regional};
    PatternLexer lexer{pattern, true};
    for (Token token; lexer.next(token);)
        writer.write(token);
    return writer.take();
}

namespace format {

std::string date(Date value, std::string_view pattern, const Regional& regional)
{
    DateWriter writer{value, regional};
    PatternLexer lexer{pattern, false};
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
