#pragma once

#include <cmath>
#include <string_view>

/// Formulas of timber measurement on plain numbers. Diameters in centimetres, lengths in metres,
/// volumes in cubic metres.
namespace tamarok::timber {

/// The trade's pi. Every volume that was ever billed depends on it.
inline constexpr double pi = 3.1416;

/// How bark is deducted: a percentage of the volume, centimetres off the diameter, or not at all.
/// Only the exact texts "%" and "cm" are modes.
enum class BarkMode { None, Percent, Centimetres };

constexpr BarkMode barkMode(std::string_view text) noexcept
{
    if (text == "%") return BarkMode::Percent;
    if (text == "cm") return BarkMode::Centimetres;
    return BarkMode::None;
}

/// Volume of one round piece: d² · pi · L / 40000, less bark. The factors multiply from left to right
/// and the division comes last, since the rounding of doubles depends on it.
/// @param diameter cm  @param length m  @param bark percent or cm by `mode`
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

/// Error 6 that names what is too large.
[[noreturn]] void refuseResult(std::string_view what);

/// The result of an arithmetic on finite numbers; Error 6 where it, or a step before it, overflowed.
/// `what` names it.
inline double checkedResult(double value, std::string_view what)
{
    // Out of finite numbers "no number" arises only where an intermediate result overflowed before.
    if (!std::isfinite(value)) [[unlikely]]
        refuseResult(what);
    return value;
}

/// The square root; Error 5 for a negative number. `what` names it.
double checkedRoot(double value, std::string_view what);

} // namespace tamarok::timber
