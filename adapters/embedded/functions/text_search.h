#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "functions/collation.h"

/// Search for a part of a text without regard to case, in time that grows with the text and not with the product of
/// both lengths.
namespace tamarok::embedded::functions {

/// The folded letters of a text one by one, expansions as their letters.
class LetterReader {
public:
    LetterReader(std::string_view text, std::size_t at) noexcept : text_{text}, at_{at} {}

    bool isAtEnd() const noexcept { return pending_ == 0 && at_ >= text_.size(); }
    /// True behind the first letter of an expansion.
    bool isBetweenLetters() const noexcept { return pending_ != 0; }
    std::size_t offset() const noexcept { return at_; }
    char32_t next() noexcept
    {
        if (pending_ != 0) return std::exchange(pending_, 0);
        const Letters letters = lettersOf(decodeFolded(text_, at_));
        pending_ = letters.second;
        return letters.first;
    }

private:
    std::string_view text_;
    std::size_t at_;
    char32_t pending_ = 0;
};

/// Where a part was found.
struct Found {
    std::size_t begin = 0;    ///< bytes
    std::size_t end = 0;      ///< bytes
    std::size_t position = 0; ///< characters from the place where the search began
};

/// A part to look for, prepared once (Knuth, Morris and Pratt). An empty part is nowhere.
class FoldedSearch {
public:
    explicit FoldedSearch(std::string_view needle);

    /// The first occurrence of whole characters at or behind byte `from`, which must begin a character: "s" is no part
    /// of "ß".
    std::optional<Found> find(std::string_view text, std::size_t from) const;

private:
    std::vector<char32_t> needle_;
    std::vector<std::size_t> fallback_; ///< by number of matched letters: how many stay matched after a mismatch
};

} // namespace tamarok::embedded::functions
