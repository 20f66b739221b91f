#include "runtime/number_digits.h"

#include <charconv>
#include <cmath>

namespace tamarok {

namespace {

/// Reads the scientific form of std::to_chars ("1.2345e-05") into digits and point.
void readScientific(const char* begin, const char* end, DecimalDigits& result) noexcept
{
    const char* at = begin;
    std::int32_t count = 0;
    for (; at != end && *at != 'e'; ++at)
        if (*at != '.') result.digits[static_cast<std::size_t>(count++)] = *at;
    std::int32_t exponent = 0;
    const char* const exponentBegin = at + (at != end && at + 1 != end && at[1] == '+' ? 2 : 1);
    if (at != end) std::from_chars(exponentBegin, end, exponent);
    result.count = count;
    result.point = exponent + 1;
}

} // namespace

DecimalDigits decimalDigits(double number) noexcept
{
    DecimalDigits result;
    result.negative = std::signbit(number) && number != 0.0;
    if (number == 0.0) return result;

    const double magnitude = std::abs(number);
    std::array<char, 40> buffer;
    char* const last = buffer.data() + buffer.size();
    readScientific(buffer.data(), std::to_chars(buffer.data(), last, magnitude, std::chars_format::scientific).ptr,
                   result);
    if (result.count <= maxSignificantDigits) {
        if (result.digits[static_cast<std::size_t>(result.count - 1)] == '0') result.keep(result.count);
        return result;
    }
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
