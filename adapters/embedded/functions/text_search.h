#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

/// Search for a part of a text without regard to case, in time that grows with the text and not with the product of
/// both lengths.
namespace tamarok::embedded::functions {

/// Where a part was found.
struct Found {
    std::size_t begin = 0;    ///< bytes
    std::size_t end = 0;      ///< bytes
    std::size_t position = 0; ///< characters from the place where the search began
};

/// A part to look for, prepared once (Knuth, Morris and Pratt). An expansion (ß) is found as its letters (ss) and the
/// other way round. An empty part is nowhere.
class FoldedSearch {
public:
    explicit FoldedSearch(std::string_view needle);

    /// The first occurrence at or behind byte `from`, which must begin a character.
    std::optional<Found> find(std::string_view text, std::size_t from) const;

private:
    std::vector<char32_t> needle_;
    std::vector<std::size_t> fallback_; ///< by number of matched letters: how many stay matched after a mismatch
};

} // namespace tamarok::embedded::functions
