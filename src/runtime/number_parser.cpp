#include <algorithm>
#include <array>

#include "number_reader.h"

#include "tamarok/convert.h"
#include "tamarok/plain_number.h"

namespace tamarok::convert {

namespace {

constexpr std::string_view noBreakBlank = "\u00A0";
constexpr std::string_view narrowNoBreakBlank = "\u202F";
constexpr std::string_view thinBlank = "\u2009";
constexpr std::array<std::string_view, 4> blankMarks{" ", noBreakBlank, narrowNoBreakBlank, thinBlank};
constexpr std::array<std::string_view, 2> apostropheMarks{"'", "\u2019"};
constexpr std::array<std::string_view, 4> surroundingBlanks{" ", "\t", noBreakBlank, narrowNoBreakBlank};

constexpr bool isDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

using Marks = std::span<const std::string_view>;

/// A mark is also accepted in the form that the keyboard has: a blank for any kind of blank, an
/// apostrophe for either kind.
Marks acceptedMarks(const std::string_view& thousands) noexcept
{
    for (const Marks family : {Marks{blankMarks}, Marks{apostropheMarks}})
        if (std::find(family.begin(), family.end(), thousands) != family.end()) return family;
    return thousands.empty() ? Marks{} : Marks{&thousands, 1};
}

class NumberParser {
public:
    NumberParser(std::string_view text, std::string_view decimal, Marks marks) noexcept :
        rest_{text}, decimal_{decimal}, marks_{marks}
    {}

    std::optional<double> typed() noexcept
    {
        skip(surroundingBlanks);
        bool hasSign = sign();
        skip(surroundingBlanks);
        if (!magnitude()) return std::nullopt;
        skip(surroundingBlanks);
        if (!hasSign) hasSign = sign();
        skip(surroundingBlanks);
        return finish();
    }

    std::optional<double> plain() noexcept
    {
        sign();
        if (!magnitude()) return std::nullopt;
        return finish();
    }

private:
    bool take(std::string_view wanted) noexcept
    {
        if (wanted.empty() || !rest_.starts_with(wanted)) return false;
        rest_.remove_prefix(wanted.size());
        return true;
    }

    bool takeAny(Marks wanted) noexcept
    {
        return std::any_of(wanted.begin(), wanted.end(), [this](std::string_view mark) { return take(mark); });
    }

    void skip(Marks wanted) noexcept
    {
        while (takeAny(wanted)) {}
    }

    bool sign() noexcept
    {
        if (take("+")) return true;
        negative_ = take("-");
        return negative_;
    }

    bool magnitude() noexcept
    {
        whole();
        if (take(decimal_))
            while (startsWithDigit())
                digits_.addFraction(takeDigit());
        return digits_.any() && exponent();
    }

    void whole() noexcept
    {
        while (startsWithDigit()) {
            digits_.addWhole(takeDigit());
            if (startsWithDigit() || rest_.empty() || rest_.starts_with(decimal_)) continue;
            const std::string_view before = rest_;
            // A mark counts between two digits only; elsewhere it is left for the caller to refuse.
            if (takeAny(marks_) && !startsWithDigit()) rest_ = before;
        }
    }

    /// True unless an exponent is begun and holds no digit.
    bool exponent() noexcept
    {
        constexpr std::int32_t enough = 1'000'000;
        if (!(take("E") || take("e") || take("D") || take("d"))) return true;
        const bool below = take("-");
        if (!below) take("+");
        if (!startsWithDigit()) return false;
        while (startsWithDigit())
            exponent_ = std::min(enough, exponent_ * 10 + (takeDigit() - '0'));
        if (below) exponent_ = -exponent_;
        return true;
    }

    std::optional<double> finish() noexcept
    {
        if (!rest_.empty()) return std::nullopt;
        const auto value = digits_.value(exponent_);
        return value && negative_ ? std::optional{-*value} : value;
    }

    bool startsWithDigit() const noexcept { return !rest_.empty() && isDigit(rest_.front()); }

    char takeDigit() noexcept
    {
        const char digit = rest_.front();
        rest_.remove_prefix(1);
        return digit;
    }

    std::string_view rest_;
    std::string_view decimal_;
    Marks marks_;
    bool negative_ = false;
    std::int32_t exponent_ = 0;
    DigitCollector digits_;
};

} // namespace

bool readUnusualNumber(std::string_view text, const Regional& regional, double& number) noexcept
{
    const std::string_view thousands = regional.thousands;
    const auto typed = NumberParser{text, regional.decimal, acceptedMarks(thousands)}.typed();
    number = typed.value_or(number);
    return typed.has_value();
}

std::optional<double> parseNumber(std::string_view text, const Regional& regional) noexcept
{
    double number = 0.0;
    return readNumber(text, regional, number) ? std::optional{number} : std::nullopt;
}

std::optional<double> parsePlainNumber(std::string_view text) noexcept
{
    double usual = 0.0;
    if (readPlainNumber(text, '.', usual)) return usual;
    return NumberParser{text, ".", {}}.plain();
}

} // namespace tamarok::convert
