#pragma once

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

/// compareTexts for two single folded characters.
int compareCharacters(char32_t a, char32_t b) noexcept;

} // namespace tamarok::embedded::functions
