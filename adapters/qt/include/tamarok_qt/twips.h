#pragma once

#include <cmath>

/// The one conversion between twips, in which the library gives sizes and places, and the logical pixels of Qt. A
/// logical pixel is 15 twips on every screen; Qt scales it by the screen's own factor.
namespace tamarok::qt {

inline constexpr float twipsPerPixel = 15;

/// Returns the nearest whole number of logical pixels.
inline int pixels(float twips)
{
    return static_cast<int>(std::lround(twips / twipsPerPixel));
}

inline float twips(int pixels)
{
    return static_cast<float>(pixels) * twipsPerPixel;
}

} // namespace tamarok::qt
