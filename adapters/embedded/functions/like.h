#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

/// Patterns of LIKE and PATINDEX, compiled once and matched without exponential backtracking.
namespace tamarok::embedded::functions {

/// A compiled pattern. tm_like, tm_nlike and PATINDEX keep one for each constant pattern of a statement. Letters match
/// without regard to case, and an expansion (ß) matches its letters (ss).
class LikePattern {
public:
    /// @param escape  the escape character, 0 for none
    LikePattern(std::string_view pattern, char32_t escape);

    /// Whether the whole text matches. @param ignoreBlanks  trailing blanks of the text need no match
    bool matches(std::string_view text, bool ignoreBlanks) const noexcept;

    /// 1-based position of the first character that the part after a leading "%" matches; 0 for no match.
    std::int64_t find(std::string_view text) const noexcept;

    char32_t escape() const noexcept { return escape_; }

private:
    struct Range {
        char32_t first;
        char32_t last;
    };
    struct Item {
        enum class Kind : std::uint8_t { Character, AnyOne, AnyMany, Class } kind;
        bool negated = false;
        char32_t character = 0;
        std::uint32_t firstRange = 0; ///< of ranges_
        std::uint32_t ranges = 0;
    };

    /// A place in the text: behind a whole character, or between the letters of an expansion.
    struct Place {
        std::size_t at = 0;
        char32_t pending = 0; ///< the second letter of the expansion before `at`
    };

    void addLetters(char32_t folded);
    bool take(const Item& item, std::string_view text, Place& place) const noexcept;
    void compileClass(std::string_view pattern, std::size_t& at);
    bool accepts(const Item& item, char32_t character) const noexcept;
    std::optional<std::size_t> partEnd(std::size_t item, std::string_view text, std::size_t at) const noexcept;
    std::int64_t lastPartAt(std::string_view text) const noexcept;
    bool matchesFrom(std::size_t item, std::string_view text, bool ignoreBlanks) const noexcept;

    std::vector<Item> items_;
    std::vector<Range> ranges_;
    char32_t escape_;
    bool broken_ = false; ///< an unclosed class or an escape at the end: nothing matches
};

} // namespace tamarok::embedded::functions
