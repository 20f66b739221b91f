#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <span>

#include "tamarok/text.h"

// Unicode simple case mapping by ranges of characters with one distance between upper and lower case.

namespace tamarok::text {

namespace {

struct CaseRange {
    char32_t first;
    char32_t last;
    std::uint8_t step; ///< 2 where upper and lower case letters alternate
    std::int32_t distance;
};

constexpr std::array toUpperRanges = std::to_array<CaseRange>({
#include "data/case_to_upper.inc"
});
constexpr std::array toLowerRanges = std::to_array<CaseRange>({
#include "data/case_to_lower.inc"
});

constexpr bool isSorted(std::span<const CaseRange> ranges)
{
    char32_t previous = 0;
    for (const CaseRange& range : ranges) {
        if (range.first <= previous || range.last < range.first) return false;
        previous = range.last;
    }
    return true;
}
static_assert(isSorted(toUpperRanges) && isSorted(toLowerRanges));

/// Finds the last range that begins at or before the character. Between alternating letters, only every second
/// character is in the range.
char32_t mapped(std::span<const CaseRange> ranges, char32_t character) noexcept
{
    auto next = std::upper_bound(ranges.begin(), ranges.end(), character,
                                 [](char32_t wanted, const CaseRange& range) { return wanted < range.first; });
    if (next == ranges.begin()) return character;
    const CaseRange& range = *std::prev(next);
    if (character > range.last || (character - range.first) % range.step != 0) return character;
    return static_cast<char32_t>(static_cast<std::int32_t>(character) + range.distance);
}

} // namespace

char32_t toUpper(char32_t character) noexcept
{
    // ASCII needs no table.
    if (character < 0x80) return character >= U'a' && character <= U'z' ? character - 0x20 : character;
    return mapped(toUpperRanges, character);
}

char32_t toLower(char32_t character) noexcept
{
    if (character < 0x80) return character >= U'A' && character <= U'Z' ? character + 0x20 : character;
    return mapped(toLowerRanges, character);
}

} // namespace tamarok::text
