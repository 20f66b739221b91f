#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The server's text comparison by the collation Latin1_General_CI_AS: letters without regard to case, accents counted,
/// expansions (ß and ss, æ and ae, œ and oe, þ and th) equal, trailing blanks ignored.
namespace tamarok::embedded::functions {

/// Negative, 0 or positive. First by base letters (punctuation, digits, letters), then by accents.
/// Texts are equal only where they differ in case, expansions and trailing blanks alone.
int compareTexts(std::string_view a, std::string_view b) noexcept;

/// The case-folded form of a character.
char32_t foldCase(char32_t character) noexcept;

/// Decodes and folds the character at `offset`, and moves `offset` to the next one.
char32_t decodeFolded(std::string_view text, std::size_t& offset) noexcept;

/// The letters that a character stands for.
struct Letters {
    char32_t first;
    char32_t second; ///< of an expansion; 0 for any other character
};
Letters lettersOf(char32_t folded) noexcept;

/// The folded letters of a text one by one, expansions as their letters.
class LetterReader {
public:
    /// @param at  byte at which a character begins
    LetterReader(std::string_view text, std::size_t at) noexcept : text_{text}, at_{at} {}

    bool isAtEnd() const noexcept { return pending_ == 0 && at_ >= text_.size(); }
    /// Whether the next letter is the second one of an expansion.
    bool isInsideCharacter() const noexcept { return pending_ != 0; }
    /// Byte behind the character of the last letter.
    std::size_t offset() const noexcept { return at_; }
    char32_t next() noexcept;

private:
    std::string_view text_;
    std::size_t at_;
    char32_t pending_ = 0;
};

/// compareTexts for two single folded characters.
int compareCharacters(char32_t a, char32_t b) noexcept;

} // namespace tamarok::embedded::functions
