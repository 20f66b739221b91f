#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The alphabetical order of lists. Letters are compared without regard to case. An accented Latin letter stands beside
/// its base letter, ß as "ss", Æ and Œ as two letters; accents count only between texts that are equal otherwise. Any
/// other character goes by its number.
namespace tamarok::controls::text_order {

/// Appends a text that has the place of `text` when compared byte by byte.
void appendKey(std::string& keys, std::string_view text);

std::string keyOf(std::string_view text);

/// Returns eight bytes of a key as a number that compares as they do; zeros stand beyond its end.
inline std::uint64_t packedBytes(std::string_view key, std::size_t begin) noexcept
{
    std::uint64_t packed = 0;
    for (std::size_t index = begin; index < begin + sizeof packed; ++index)
        packed = packed << 8U | (index < key.size() ? static_cast<unsigned char>(key[index]) : 0U);
    return packed;
}

/// Returns the positions of `count` texts in their order. Equal texts keep theirs, in both directions.
/// @param textOf  gives the text at a position from 0
template <class TextOf>
std::vector<std::uint32_t> stableOrder(std::size_t count, const TextOf& textOf, bool descending)
{
    // All keys lie in one text, made once: keys made in each comparison take 12 times as long (bench: keysMadeOnce).
    std::string keys;
    std::vector<std::size_t> ends(count + 1);
    // The first characters decide most comparisons, without a look at the keys: 1.4 times as fast (bench:
    // orderListView).
    struct Entry {
        std::uint64_t first;
        std::uint64_t second;
        std::uint32_t position;
        std::uint32_t length;
    };
    std::vector<Entry> entries(count);
    for (std::size_t position = 0; position < count; ++position) {
        appendKey(keys, textOf(position));
        ends[position + 1] = keys.size();
        const std::string_view key = std::string_view{keys}.substr(ends[position]);
        entries[position] = {packedBytes(key, 0), packedBytes(key, sizeof(std::uint64_t)),
                             static_cast<std::uint32_t>(position),
                             static_cast<std::uint32_t>(std::min<std::size_t>(key.size(), UINT32_MAX))};
    }
    const auto keyOfEntry = [&](const Entry& entry) {
        const std::size_t begin = ends[entry.position];
        return std::string_view{keys}.substr(begin, ends[entry.position + 1] - begin);
    };
    const auto precedes = [&](const Entry& a, const Entry& b) {
        if (a.first != b.first) return a.first < b.first;
        if (a.second != b.second) return a.second < b.second;
        constexpr std::uint32_t packed = 2 * sizeof(std::uint64_t);
        if (a.length <= packed && b.length <= packed) return a.length < b.length;
        return keyOfEntry(a) < keyOfEntry(b);
    };
    if (descending)
        std::stable_sort(entries.begin(), entries.end(),
                         [&](const Entry& a, const Entry& b) { return precedes(b, a); });
    else
        std::stable_sort(entries.begin(), entries.end(), precedes);
    std::vector<std::uint32_t> order(count);
    std::ranges::transform(entries, order.begin(), &Entry::position);
    return order;
}

} // namespace tamarok::controls::text_order
