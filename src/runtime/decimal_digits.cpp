#include "tamarok/decimal_digits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "tamarok/powers_of_ten.h"

namespace tamarok {

namespace {

/// Reads the scientific form of std::to_chars ("1.2345e-05") into digits and point.
void readScientific(const char* begin, const char* end, DecimalDigits& result) noexcept
{
    const char* mark = end - 1; // the "e" stands before two or three digits and their sign
    std::int32_t exponent = 0;
    for (std::int32_t worth = 1; *mark != '-' && *mark != '+'; --mark, worth *= 10)
        exponent += (*mark - '0') * worth;
    if (*mark == '-') exponent = -exponent;
    --mark;
    result.digits[0] = *begin;
    char* last = result.digits.data() + 1;
    if (mark - begin > 1) last = std::copy(begin + 2, mark, last);
    result.count = static_cast<std::int32_t>(last - result.digits.data());
    result.point = exponent + 1;
}

/// `whole` times 10 to the power of `exponent`. Both factors are exact up to 10^22, so that one operation gives the
/// nearest double.
double scaled(double whole, std::int32_t exponent) noexcept
{
    constexpr auto largestExact = static_cast<std::int32_t>(powersOfTen.size()) - 1;
    if (exponent < -largestExact || exponent > largestExact) return whole * std::pow(10.0, exponent);
    const double power = powersOfTen[static_cast<std::size_t>(std::abs(exponent))];
    return exponent < 0 ? whole / power : whole * power;
}

/// Measures, whose digits are those of a whole number. False for any other number.
bool readMeasure(double magnitude, DecimalDigits& result) noexcept
{
    std::uint64_t scaled = 0;
    if (!isMeasure(magnitude, scaled) || scaled == 0) return false;
    char* const begin = result.digits.data();
    const auto end = std::to_chars(begin, begin + result.digits.size(), scaled).ptr;
    result.count = static_cast<std::int32_t>(end - begin);
    result.point = result.count - measureDecimals;
    result.keep(result.count);
    return true;
}

} // namespace

DecimalDigits decimalDigits(double number) noexcept
{
    DecimalDigits result;
    result.negative = std::signbit(number) && number != 0.0;
    if (number == 0.0) return result;

    const double magnitude = std::abs(number);
    if (readMeasure(magnitude, result)) return result;
    std::array<char, 40> buffer;
    char* const last = buffer.data() + buffer.size();
    readScientific(buffer.data(), std::to_chars(buffer.data(), last, magnitude, std::chars_format::scientific).ptr,
                   result);
    if (result.count <= maxSignificantDigits) return result;
    // Rounding the shortest form is rounding the exact value, unless the shortest form ends in the very
    // middle between two 15-digit numbers: it may have been rounded to the middle itself.
    if (result.count == maxSignificantDigits + 1 && result.digits[maxSignificantDigits] == '5')
        readScientific(
            buffer.data(),
            std::to_chars(buffer.data(), last, magnitude, std::chars_format::scientific, maxSignificantDigits - 1).ptr,
            result);
    result.keep(maxSignificantDigits);
    return result;
}

void DecimalDigits::roundTo(std::int32_t places) noexcept
{
    keep(point + places);
}

void DecimalDigits::truncateTo(std::int32_t places) noexcept
{
    count = std::clamp(point + places, 0, count);
    trim();
}

double DecimalDigits::value() const noexcept
{
    std::int64_t whole = 0;
    for (const char digit : text())
        whole = whole * 10 + (digit - '0');
    const double magnitude = scaled(static_cast<double>(whole), point - count);
    return negative ? -magnitude : magnitude;
}

void DecimalDigits::keep(std::int32_t wanted) noexcept
{
    if (wanted < 0) {
        count = 0;
    } else if (wanted < count) {
        const bool up = digits[static_cast<std::size_t>(wanted)] >= '5';
        count = wanted;
        if (up) increment(wanted - 1);
    }
    trim();
}

void DecimalDigits::increment(std::int32_t last) noexcept
{
    while (last >= 0 && digits[static_cast<std::size_t>(last)] == '9')
        --last;
    if (last >= 0) {
        ++digits[static_cast<std::size_t>(last)];
        count = last + 1;
        return;
    }
    digits[0] = '1';
    count = 1;
    ++point;
}

void DecimalDigits::trim() noexcept
{
    while (count > 0 && digits[static_cast<std::size_t>(count - 1)] == '0')
        --count;
    if (count > 0) return;
    point = 0;
    negative = false;
}

} // namespace tamarok
