#pragma once

#include <cstdint>
#include <span>
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

/// Returns the positions of the texts in their order. Equal texts keep theirs, in both directions.
std::vector<std::uint32_t> stableOrder(std::span<const std::string_view> texts, bool descending);

} // namespace tamarok::controls::text_order
