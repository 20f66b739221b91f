#include "functions/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "tamarok/powers_of_ten.h"

namespace tamarok::embedded::functions {

namespace {

constexpr std::int32_t significantDigits = 15;
constexpr auto exactPowers = static_cast<std::int32_t>(powersOfTen.size()) - 1;

double scaleDown(double whole, std::int32_t places) noexcept
{
    if (places >= 0) {
        return places <= exactPowers ? whole / powersOfTen[static_cast<std::size_t>(places)]
                                     : whole * std::pow(10.0, -places);
    }
    return -places <= exactPowers ? whole * powersOfTen[static_cast<std::size_t>(-places)]
                                  : whole * std::pow(10.0, -places);
}

/// Keeps the digits down to `places` of the 15-digit form. The kept digits are a whole number below
/// 10^15, so that one correctly rounded division gives the nearest double.
double roundDigits(double number, std::int32_t places, bool cut) noexcept
{
    const DecimalDigits form = decimalDigits(number);
    const std::int64_t kept = std::int64_t{form.exponent} + 1 + places;
    if (kept >= significantDigits) return number;
    if (kept < 0) return 0.0;
    std::int64_t whole = 0;
    for (std::int64_t index = 0; index < kept; ++index)
        whole = whole * 10 + (form.digits[index] - '0');
    if (!cut && form.digits[kept] >= '5') ++whole;
    const double result = scaleDown(static_cast<double>(whole), places);
    return form.negative && whole != 0 ? -result : result;
}

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

DecimalDigits decimalDigits(double number) noexcept
{
    std::array<char, 40> text{};
    const double size = std::fabs(number);
    const auto written = std::to_chars(text.data(), text.data() + text.size(), size, std::chars_format::scientific,
                                       significantDigits - 1);
    DecimalDigits form;
    form.negative = std::signbit(number);
    form.digits[0] = text[0];
    std::memcpy(form.digits + 1, text.data() + 2, significantDigits - 1);
    const char* exponent = text.data() + 2 + (significantDigits - 1) + 1; // behind the 'e'
    if (*exponent == '+') ++exponent;
    std::from_chars(exponent, written.ptr, form.exponent);
    return form;
}

double roundHalfAway(double number, std::int32_t places) noexcept
{
    if (number == 0.0 || !std::isfinite(number)) return number;
    const double size = std::fabs(number);
    if (places >= 0 && places <= significantDigits) {
        const double scaled = size * powersOfTen[static_cast<std::size_t>(places)];
        if (scaled < 1e14) {
            const double whole = std::floor(scaled);
            const double rest = scaled - whole;
            // Far enough from a half, the double and its 15-digit form round alike.
            if (std::fabs(rest - 0.5) > scaled * 2e-14) {
                const double rounded = rest > 0.5 ? whole + 1.0 : whole;
                const double result = rounded / powersOfTen[static_cast<std::size_t>(places)];
                return number < 0.0 && rounded != 0.0 ? -result : result;
            }
        }
    }
    return roundDigits(number, places, false);
}

double cutToPlaces(double number, std::int32_t places) noexcept
{
    if (number == 0.0 || !std::isfinite(number)) return number;
    return roundDigits(number, places, true);
}

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
    const double rounded = roundHalfAway(number, scale);
    const DecimalDigits form = decimalDigits(rounded);
    std::string text;
    if (form.negative && rounded != 0.0) text += '-';
    const auto digitAt = [&form](std::int32_t power) { // digit of 10^power
        const std::int32_t index = form.exponent - power;
        return index >= 0 && index < significantDigits ? form.digits[index] : '0';
    };
    for (std::int32_t power = form.exponent > 0 ? form.exponent : 0; power >= 0; --power)
        text += digitAt(power);
    if (scale > 0) text += '.';
    for (std::int32_t place = 1; place <= scale; ++place)
        text += digitAt(-place);
    return text;
}

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
