#pragma once

#include <cstdint>
#include <string_view>

/// The server's text comparison: letters without regard to case, accents counted, trailing blanks ignored.
namespace tamarok::embedded::functions {

/// Negative, 0 or positive. First by base letters (punctuation, digits, letters), then by accents.
/// Texts are equal only where they differ in case and trailing blanks alone.
int compareTexts(std::string_view a, std::string_view b) noexcept;

/// The case-folded form of a character.
char32_t foldCase(char32_t character) noexcept;

/// Decodes and folds the character at `offset`, and moves `offset` to the next one.
char32_t decodeFolded(std::string_view text, std::size_t& offset) noexcept;

/// compareTexts for two single folded characters.
int compareCharacters(char32_t a, char32_t b) noexcept;

} // namespace tamarok::embedded::functions
