#include "functions/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "tamarok/decimal_digits.h"

namespace tamarok::embedded::functions {

namespace {

/// "e+6" as charconv has it becomes "e+006".
std::string_view widenExponent(std::span<char, 40> buffer, char* end) noexcept
{
    char* mark = buffer.data();
    while (mark != end && *mark != 'e')
        ++mark;
    if (mark == end) return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
    char* digits = mark + 2;
    const auto count = static_cast<std::size_t>(end - digits);
    if (count < 3) {
        std::memmove(digits + (3 - count), digits, count);
        std::memset(digits, '0', 3 - count);
        end = digits + 3;
    }
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

} // namespace

/// Works on the decimal digits: rounding the binary value would take 2.675 for less than it is shown as. A number with
/// no more digits than a double keeps is returned unchanged.
double roundHalfAway(double number, std::int32_t places) noexcept
{
    if (number == 0.0 || !std::isfinite(number)) return number;
    DecimalDigits form = decimalDigits(number);
    if (form.point + places >= maxSignificantDigits) return number;
    form.roundTo(places);
    return form.value();
}

/// The same for truncation.
double truncateTo(double number, std::int32_t places) noexcept
{
    if (number == 0.0 || !std::isfinite(number)) return number;
    DecimalDigits form = decimalDigits(number);
    if (form.point + places >= maxSignificantDigits) return number;
    form.truncateTo(places);
    return form.value();
}

/// Works on the magnitude, since the smallest 64-bit number has no positive counterpart.
bool roundWhole(std::int64_t number, std::int32_t places, bool cut, std::int64_t& result) noexcept
{
    if (places >= 0) {
        result = number;
        return true;
    }
    if (places < -19) {
        result = 0;
        return true;
    }
    const std::uint64_t size =
        number < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
    std::uint64_t unit = 1;
    for (std::int32_t count = 0; count > places; --count)
        unit *= 10;
    std::uint64_t rounded = size / unit;
    if (!cut && size % unit >= unit - size % unit) ++rounded;
    const auto limit = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (rounded > limit / unit) return false;
    const auto positive = static_cast<std::int64_t>(rounded * unit);
    result = number < 0 ? -positive : positive;
    return true;
}

std::string_view writeWhole(std::int64_t number, std::span<char, 40> buffer) noexcept
{
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data())};
}

/// Style 0 has six significant digits and an exponent only where needed; styles 1, 2 and 3 have 8, 16 and 17 digits and
/// always an exponent, which has three digits on the server.
std::string_view writeFloat(double number, std::int32_t style, std::span<char, 40> buffer) noexcept
{
    if (number == 0.0) number = 0.0; // no "-0"
    char* end = buffer.data() + buffer.size() - 2;
    if (style == 0) {
        const auto written = std::to_chars(buffer.data(), end, number, std::chars_format::general, 6);
        return widenExponent(buffer, written.ptr);
    }
    const std::int32_t places = style == 1 ? 7 : style == 2 ? 15 : 16;
    const auto written = std::to_chars(buffer.data(), end, number, std::chars_format::scientific, places);
    return widenExponent(buffer, written.ptr);
}

std::string decimalText(double number, std::int32_t scale)
{
    // Only the message of an overflow error can name such a number.
    if (!std::isfinite(number)) return number < 0.0 ? "-inf" : "inf";
    const DecimalDigits form = decimalDigits(roundHalfAway(number, scale));
    std::string text;
    if (form.negative) text += '-';
    for (std::int32_t place = std::max(form.point - 1, 0); place >= 0; --place)
        text += form.at(place);
    if (scale > 0) text += '.';
    for (std::int32_t decimal = 1; decimal <= scale; ++decimal)
        text += form.at(-decimal);
    return text;
}

/// Styles 0 and 1 have two decimals, 2 and 126 four. Style 1 groups the whole part with commas.
std::string moneyText(double number, std::int32_t style)
{
    std::string text = decimalText(number, style == 2 || style == 126 ? 4 : 2);
    if (style != 1) return text;
    const std::size_t first = text[0] == '-' ? 1 : 0;
    for (std::size_t point = text.size() - 3; point > first + 3;) {
        point -= 3;
        text.insert(point, 1, ',');
    }
    return text;
}

} // namespace tamarok::embedded::functions
