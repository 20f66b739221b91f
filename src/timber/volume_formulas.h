#pragma once

#include <cmath>
#include <string_view>

#include "tamarok/round_wood.h"

/// Formulas of timber measurement on plain numbers. Diameters in centimetres, lengths in metres,
/// volumes in cubic metres.
namespace tamarok::timber {

/// Required by the contract: pi has four decimals in every formula, since every volume depends on it. Do not
/// correct.
inline constexpr double pi = 3.1416;

/// Returns the volume of one round piece in m³ by Huber's formula, the area of the middle cross-section times
/// the length: d² · pi / 4 · L. The divisor 40000 is 4 times the 10000 cm² of a square metre; 4000000 holds the
/// 100 of the percentage as well. The factors multiply from left to right and the division comes last, since
/// the rounding of doubles depends on the order.
/// @param diameter  at the middle of the piece, cm  @param length  m
/// @param bark      percent of the volume or cm of the diameter, by `mode`; above 100 percent the volume is
///                  negative, and a bark thicker than the diameter counts by the square of the difference
constexpr double roundVolume(double diameter, double length, double bark, BarkMode mode) noexcept
{
    switch (mode) {
    case BarkMode::Percent:
        return (diameter * diameter * pi * length / 40000) - bark * (diameter * diameter * pi * length / 4000000);
    case BarkMode::Centimetres: return (diameter - bark) * (diameter - bark) * pi * length / 40000;
    case BarkMode::None: break;
    }
    return diameter * diameter * pi * length / 40000;
}

/// Throws Error 6, which names what is too large.
[[noreturn]] void refuseResult(std::string_view what);

/// Returns the result of arithmetic on finite numbers; Error 6 if it or a step before it overflowed.
/// @param what  name of the result in the message
inline double checkedResult(double value, std::string_view what)
{
    // Finite operands give "not a number" only after an intermediate result has overflowed.
    if (!std::isfinite(value)) [[unlikely]]
        refuseResult(what);
    return value;
}

/// Returns the square root; Error 5 for a negative number.
/// @param what  name of the number in the message
double checkedRoot(double value, std::string_view what);

} // namespace tamarok::timber
