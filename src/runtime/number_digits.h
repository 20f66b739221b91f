#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

#include "tamarok/convert.h"

namespace tamarok {

/// A finite number as its decimal form of at most 15 significant digits: the shortest digits that
/// read back as the same double where 15 are enough, else the exact value rounded to 15.
struct DecimalDigits {
    std::array<char, 24> digits; ///< '0' to '9', no leading and no trailing zero
    std::int32_t count = 0;      ///< number of digits, 0 for zero
    std::int32_t point = 0;      ///< digits before the decimal point; negative for zeros behind it
    bool negative = false;

    std::string_view text() const noexcept { return {digits.data(), static_cast<std::size_t>(count)}; }

    /// The digit `place` places before the point (0 the ones, -1 the tenths), '0' outside the digits.
    char at(std::int32_t place) const noexcept
    {
        const std::int32_t index = point - 1 - place;
        return index >= 0 && index < count ? digits[static_cast<std::size_t>(index)] : '0';
    }

    /// Keeps `places` decimals (negative: whole places), halves away from zero.
    void roundTo(std::int32_t places) noexcept;
    /// Keeps the first `wanted` digits, halves away from zero.
    void keep(std::int32_t wanted) noexcept;

private:
    void trim() noexcept;
    void increment(std::int32_t last) noexcept;
};

inline constexpr std::int32_t maxSignificantDigits = 15;

inline constexpr std::int32_t measureDecimals = 4;

/// Whether the decimal form of `magnitude` (0 or above) has at most four decimals and lies below 1e10, as
/// measures and what they are multiplied to do; `scaled` is then that form times 10,000. It needs no search:
/// what is within two units of the last place of a double is nearer than half a unit of a 15th digit.
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

/// `number` must be finite.
DecimalDigits decimalDigits(double number) noexcept;

} // namespace tamarok
