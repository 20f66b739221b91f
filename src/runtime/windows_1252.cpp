#include "tamarok/windows_1252.h"

#include <algorithm>
#include <array>

namespace tamarok::windows1252 {

namespace {

/// The characters of the bytes 0x80 to 0x9F. All other bytes are the code point of the same number.
constexpr std::array<char32_t, 32> table = {0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                            0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0x8D,   0x17D,  0x8F,
                                            0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};
constexpr std::uint8_t first = 0x80;
constexpr std::uint8_t end = first + table.size();

} // namespace

char32_t fromByte(std::uint8_t byte) noexcept
{
    return byte >= first && byte < end ? table[byte - first] : char32_t{byte};
}

std::optional<std::uint8_t> toByte(char32_t character) noexcept
{
    if (character < first || (character >= end && character < 0x100)) return static_cast<std::uint8_t>(character);
    const auto* const found = std::ranges::find(table, character);
    if (found == table.end()) return std::nullopt;
    return static_cast<std::uint8_t>(first + (found - table.begin()));
}

} // namespace tamarok::windows1252
