#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "pattern.h"

#include "tamarok/convert.h"
#include "tamarok/decimal_digits.h"
#include "tamarok/error.h"
#include "tamarok/format.h"

namespace tamarok::format {

namespace {

/// What a section of a pattern asks for, found in one walk over it.
struct Layout {
    std::int32_t wholePlaces = 0;
    std::int32_t decimals = 0;
    std::int32_t firstZero = 0; ///< number of whole places from the leftmost "0" on
    std::int32_t lastZero = 0;  ///< number of decimals up to the rightmost "0"
    std::int32_t percents = 0;
    std::int32_t thousands = 0; ///< commas behind the last whole place: each divides by 1000
    bool grouped = false;
    bool exponent = false;

    bool hasPlaces() const noexcept { return wholePlaces + decimals > 0; }
};

bool beginsExponent(std::string_view rest) noexcept
{
    return rest.size() > 2 && (rest[0] == 'E' || rest[0] == 'e') && (rest[1] == '+' || rest[1] == '-') &&
           rest[2] == '0';
}

std::size_t exponentLength(std::string_view rest) noexcept
{
    return std::min(rest.find_first_not_of('0', 2), rest.size());
}

Layout layoutOf(std::string_view section) noexcept
{
    Layout layout;
    bool behindPoint = false;
    std::int32_t zerosFrom = -1;
    std::int32_t openCommas = 0;
    PatternWalker walker{section};
    for (std::string_view piece; walker.next(piece);) {
        if (walker.isLiteral()) continue;
        const char c = piece.front();
        if (c == '0' || c == '#') {
            if (behindPoint) {
                ++layout.decimals;
                if (c == '0') layout.lastZero = layout.decimals;
            } else {
                layout.grouped = layout.grouped || openCommas > 0;
                openCommas = 0;
                if (c == '0' && zerosFrom < 0) zerosFrom = layout.wholePlaces;
                ++layout.wholePlaces;
            }
        } else if (c == '.') {
            behindPoint = true;
        } else if (c == ',' && !behindPoint && layout.wholePlaces > 0) {
            ++openCommas;
        } else if (c == '%') {
            ++layout.percents;
        } else if (beginsExponent(walker.from(piece))) {
            layout.exponent = true;
            walker.skip(exponentLength(walker.from(piece)) - 1);
        }
    }
    layout.firstZero = zerosFrom < 0 ? 0 : layout.wholePlaces - zerosFrom;
    layout.thousands = openCommas;
    return layout;
}

/// Writes one number by one section.
class SectionWriter {
public:
    SectionWriter(const Layout& layout, DecimalDigits digits, const Regional& regional) :
        layout_{layout}, digits_{digits}, regional_{regional}
    {
        if (layout.exponent && digits_.count > 0) {
            const std::int32_t whole = std::max(layout.wholePlaces, 1);
            digits_.keep(whole + layout.decimals);
            exponent_ = digits_.point - whole;
            digits_.point = whole;
        }
    }

    std::string write(std::string_view section, bool sign)
    {
        if (sign) out_ += '-';
        place_ = layout_.wholePlaces;
        PatternWalker walker{section};
        for (std::string_view piece; walker.next(piece);) {
            if (walker.isLiteral())
                out_.append(piece);
            else if (layout_.exponent && beginsExponent(walker.from(piece)))
                exponent(walker, piece);
            else
                special(piece);
        }
        return std::move(out_);
    }

private:
    void special(std::string_view piece)
    {
        switch (piece.front()) {
        case '0':
        case '#':
            if (behindPoint_)
                decimal();
            else
                whole();
            break;
        case '.':
            if (behindPoint_) break;
            if (layout_.wholePlaces == 0 && digits_.point > 0) wholeDigits(digits_.point - 1, 0);
            behindPoint_ = true;
            out_.append(regional_.decimal);
            break;
        case ',': break;
        default: out_.append(piece);
        }
    }

    /// The first place also takes all the digits that have no place of their own.
    void whole()
    {
        const bool first = place_ == layout_.wholePlaces;
        --place_;
        const std::int32_t highest = first ? std::max(digits_.point - 1, place_) : place_;
        wholeDigits(highest, place_);
    }

    void wholeDigits(std::int32_t highest, std::int32_t lowest)
    {
        for (std::int32_t place = highest; place >= lowest; --place) {
            if (place >= digits_.point && place >= layout_.firstZero) continue;
            out_ += digits_.at(place);
            if (layout_.grouped && place > 0 && place % 3 == 0) out_.append(regional_.thousands);
        }
    }

    void decimal()
    {
        ++decimalsDone_;
        const bool significant = decimalsDone_ <= digits_.count - digits_.point;
        if (significant || decimalsDone_ <= layout_.lastZero) out_ += digits_.at(-decimalsDone_);
    }

    void exponent(PatternWalker& walker, std::string_view piece)
    {
        const std::string_view pattern = walker.from(piece).substr(0, exponentLength(walker.from(piece)));
        out_ += pattern[0];
        if (exponent_ < 0)
            out_ += '-';
        else if (pattern[1] == '+')
            out_ += '+';
        std::array<char, 8> buffer;
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(exponent_)).ptr;
        const auto length = static_cast<std::size_t>(end - buffer.data());
        if (length < pattern.size() - 2) out_.append(pattern.size() - 2 - length, '0');
        out_.append(buffer.data(), length);
        walker.skip(pattern.size() - 1);
    }

    const Layout& layout_;
    DecimalDigits digits_;
    const Regional& regional_;
    std::string out_;
    std::int32_t place_ = 0;
    std::int32_t decimalsDone_ = 0;
    std::int32_t exponent_ = 0;
    bool behindPoint_ = false;
};

DecimalDigits rounded(DecimalDigits digits, const Layout& layout) noexcept
{
    if (digits.count == 0) return digits;
    digits.point += 2 * layout.percents - 3 * layout.thousands;
    if (!layout.exponent) digits.roundTo(layout.decimals);
    return digits;
}

std::string writeSection(std::string_view section, const DecimalDigits& digits, const Regional& regional, bool sign)
{
    const Layout layout = layoutOf(section);
    const DecimalDigits shown = rounded(digits, layout);
    return SectionWriter{layout, shown, regional}.write(section, sign && shown.negative && layout.hasPlaces());
}

/// Number of decimals of "0", "0.0", "0.00" and so on, the patterns of measures; -1 for any other.
std::int32_t plainDecimals(std::string_view pattern) noexcept
{
    constexpr std::size_t head = 2; // "0."
    if (pattern == "0") return 0;
    if (pattern.size() <= head || !pattern.starts_with("0.")) return -1;
    for (const char c : pattern.substr(head))
        if (c != '0') return -1;
    return static_cast<std::int32_t>(pattern.size() - head);
}

/// The same as the general way gives for such a pattern, without walking over it.
std::string writePlain(DecimalDigits digits, std::int32_t decimals, const Regional& regional)
{
    digits.roundTo(decimals);
    const std::int32_t whole = std::max(digits.point, 1);
    std::string out;
    out.reserve(static_cast<std::size_t>(whole + decimals) + regional.decimal.size() + 1);
    if (digits.negative) out += '-';
    for (std::int32_t place = whole - 1; place >= 0; --place)
        out += digits.at(place);
    if (decimals > 0) out.append(regional.decimal);
    for (std::int32_t place = -1; place >= -decimals; --place)
        out += digits.at(place);
    return out;
}

/// `scaled` ten-thousandths in units of that many decimals (0 to 4), halves up.
std::uint64_t unitsOf(std::uint64_t scaled, std::int32_t decimals) noexcept
{
    switch (decimals) { // divisions by constants are multiplications
    case 0: return (scaled + 5'000) / 10'000;
    case 1: return (scaled + 500) / 1'000;
    case 2: return (scaled + 50) / 100;
    case 3: return (scaled + 5) / 10;
    default: return scaled;
    }
}

/// The same for a measure, given as its ten-thousandths, by whole numbers.
std::string writeMeasure(bool negative, std::uint64_t scaled, std::int32_t decimals, const Regional& regional)
{
    std::uint64_t rest = unitsOf(scaled, decimals);
    const bool sign = negative && rest != 0;
    std::array<char, 32> buffer; // written from its end
    char* const end = buffer.data() + buffer.size();
    char* at = end;
    const auto writeDigit = [&] {
        *--at = static_cast<char>('0' + rest % 10);
        rest /= 10;
    };
    for (std::int32_t place = 0; place < decimals; ++place)
        writeDigit();
    if (decimals > 0)
        for (std::size_t index = regional.decimal.size(); index > 0; --index)
            *--at = regional.decimal[index - 1];
    // Two whole places at once and the first one dropped where it is 0: how many there are is a coin toss
    // with measures, which would cost more than the digit.
    writeDigit();
    writeDigit();
    if (rest == 0) [[likely]]
        at += *at == '0' ? 1 : 0;
    else
        do
            writeDigit();
        while (rest != 0);
    if (sign) *--at = '-';
    return {at, end};
}

} // namespace

std::string number(double value, std::string_view pattern, const Regional& regional)
{
    if (pattern.empty()) return convert::toText(value, regional);
    if (!std::isfinite(value)) throw Error{errors::overflow, "Overflow: the number is not finite."};
    const std::int32_t plain = plainDecimals(pattern);
    constexpr std::size_t longestSeparator = 8;
    if (std::uint64_t scaled = 0; plain >= 0 && plain <= measureDecimals && isMeasure(std::abs(value), scaled) &&
                                  regional.decimal.size() <= longestSeparator)
        return writeMeasure(value < 0, scaled, plain, regional);
    const DecimalDigits digits = decimalDigits(value);
    if (plain >= 0) return writePlain(digits, plain, regional);
    const PatternSections sections{pattern};
    const std::string_view positive = sections[0];
    const bool ownNegative = !sections[1].empty();
    const std::string_view wanted = digits.negative && ownNegative ? sections[1] : positive;
    if (!sections[2].empty() && rounded(digits, layoutOf(wanted)).count == 0)
        return writeSection(sections[2], {}, regional, false);
    return writeSection(wanted, digits, regional, wanted.data() == positive.data());
}

std::string decimalSeparator(const Regional& regional)
{
    return std::string{text::mid(number(0.0, "0.0", regional), 2, 1)};
}

} // namespace tamarok::format
