#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/regional.h"

#pragma GCC visibility push(default)

/// The volume of round wood by its numbers. `Comm_Set::CalculateRundKubatur` takes them as entry texts.
namespace tamarok::timber {

/// How bark is deducted: percent of the volume, centimetres of the diameter, or not at all.
enum class BarkMode { None, Percent, Centimetres };

/// Returns the mode of a text: exactly "%" or "cm" (the case counts); any other text deducts no bark.
constexpr BarkMode barkMode(std::string_view text) noexcept
{
    if (text == "%") return BarkMode::Percent;
    if (text == "cm") return BarkMode::Centimetres;
    return BarkMode::None;
}

/// A measured line of round wood.
struct RoundWood {
    double pieces = 0;
    double diameter = 0; ///< at the middle of the piece, cm
    double length = 0;   ///< m
    double bark = 0;     ///< percent of the volume or cm of the diameter, by `mode`; without effect where that is None
    BarkMode mode = BarkMode::None;
};

/// Returns the volume of a line in m³ by Huber's formula, under a number pattern. The piece is rounded half to even to
/// `places` decimals and then multiplied by the pieces.
/// @param places  decimals of the piece's volume, 0 to 22
/// Errors: 5 for places out of range, 6 for a volume that is too large.
std::string roundWoodVolume(const RoundWood& wood, std::string_view pattern, std::int16_t places,
                            const Regional& regional);

} // namespace tamarok::timber

#pragma GCC visibility pop
