#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

#include "tamarok/convert.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// Most significant digits of a decimal form: as many as every double keeps.
inline constexpr std::int32_t maxSignificantDigits = 15;

/// A finite number in decimal form with at most 15 significant digits: the shortest digits that read back as the
/// same double if 15 are enough, otherwise the exact value rounded to 15. Whatever prints or rounds a number by its
/// decimals works on this form.
struct DecimalDigits {
    std::array<char, 24> digits; ///< '0' to '9', no leading and no trailing zero
    std::int32_t count = 0;      ///< number of digits, 0 for zero
    std::int32_t point = 0;      ///< digits before the decimal point; negative: zeros between point and digits
    bool negative = false;

    std::string_view text() const noexcept { return {digits.data(), static_cast<std::size_t>(count)}; }

    /// The digit of the ones (place 0), tens (1), tenths (-1) and so on; '0' outside the digits.
    char at(std::int32_t place) const noexcept
    {
        const std::int32_t index = point - 1 - place;
        return index >= 0 && index < count ? digits[static_cast<std::size_t>(index)] : '0';
    }

    /// Rounds to `places` decimals, half away from zero; below 0 to tens, hundreds and so on.
    void roundTo(std::int32_t places) noexcept;
    /// Drops the digits after `places` decimals, below 0 those after the tens, hundreds and so on.
    void truncateTo(std::int32_t places) noexcept;
    /// Rounds to the first `wanted` digits, half away from zero.
    void keep(std::int32_t wanted) noexcept;
    /// The double nearest to this form.
    double value() const noexcept;

private:
    void trim() noexcept;
    void increment(std::int32_t last) noexcept;
};

/// Decimals of a measure: lengths, diameters, volumes and prices have no more.
inline constexpr std::int32_t measureDecimals = 4;

/// True if the decimal form of `magnitude` (0 or above) has at most four decimals and lies below 1e10; `scaled` is
/// then that form times 10,000. Within 2 ulp of a double the 15-digit form is unique, so no search is needed.
inline bool isMeasure(double magnitude, std::uint64_t& scaled) noexcept
{
    constexpr double largest = 1e10;
    constexpr double scale = 1e4;
    if (!(magnitude < largest)) return false;
    const double product = magnitude * scale;
    const double nearest = convert::nearestEven(product);
    scaled = static_cast<std::uint64_t>(nearest);
    return std::abs(nearest - product) <= product * std::numeric_limits<double>::epsilon();
}

/// The decimal form of a number, which must be finite.
DecimalDigits decimalDigits(double number) noexcept;

} // namespace tamarok

#pragma GCC visibility pop
