#include "number_reader.h"

#include <charconv>
#include <system_error>

#include "tamarok/powers_of_ten.h"

namespace tamarok {

namespace {

constexpr std::size_t maxExactDigits = 19;
constexpr std::uint64_t firstInexact = std::uint64_t{1} << 53U;
constexpr std::int64_t farBeyondDoubles = 1000;

} // namespace

void DigitCollector::addWhole(char digit) noexcept
{
    const std::size_t before = count_;
    add(digit);
    if (before == maxDigits) ++scale_;
}

void DigitCollector::addFraction(char digit) noexcept
{
    const std::size_t before = count_;
    add(digit);
    if (before != maxDigits) --scale_;
}

void DigitCollector::add(char digit) noexcept
{
    any_ = true;
    if (count_ == maxDigits) {
        remainder_ = remainder_ || digit != '0';
        return;
    }
    if (count_ == 0 && digit == '0') return; // leading zeros carry no value; a fraction's place is in the scale
    if (count_ < maxExactDigits) leading_ = leading_ * 10 + static_cast<std::uint64_t>(digit - '0');
    digits_[count_++] = digit;
}

std::optional<double> DigitCollector::value(std::int32_t exponent) noexcept
{
    if (count_ == 0) return 0.0;
    const std::int64_t scale = scale_ + exponent;
    // Both factors are exact doubles, so the one operation rounds correctly.
    if (count_ <= maxExactDigits && leading_ <= firstInexact) {
        const auto whole = static_cast<double>(leading_);
        if (scale == 0) return whole;
        if (scale < 0 && -scale < static_cast<std::int64_t>(powersOfTen.size()))
            return whole / powersOfTen[static_cast<std::size_t>(-scale)];
        if (scale > 0 && scale < static_cast<std::int64_t>(powersOfTen.size()))
            return whole * powersOfTen[static_cast<std::size_t>(scale)];
    }
    return convert(scale);
}

std::optional<double> DigitCollector::convert(std::int64_t scale) noexcept
{
    const std::int64_t magnitude = static_cast<std::int64_t>(count_) + scale;
    if (magnitude > farBeyondDoubles) return std::nullopt;
    if (magnitude < -farBeyondDoubles) return 0.0;
    char* at = digits_.data() + count_;
    if (remainder_) {
        *at++ = '1';
        --scale;
    }
    *at++ = 'e';
    char* const end = std::to_chars(at, digits_.data() + digits_.size(), scale).ptr;
    double value = 0.0;
    const auto result = std::from_chars(digits_.data(), end, value);
    if (result.ec == std::errc{}) return value;
    return magnitude > 0 ? std::nullopt : std::optional{0.0};
}

} // namespace tamarok
