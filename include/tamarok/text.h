#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

/// Text in UTF-8. Lengths, counts and positions are in characters, that is code points, never in bytes.
/// Positions begin at 1; position 0 means "not found". A byte that is not part of valid UTF-8 counts as one
/// character. The functions do not fail, except for want of memory.
namespace tamarok::text {

/// Returns the number of characters.
std::size_t length(std::string_view text) noexcept;

/// Returns the first `count` characters, or the whole text if it is shorter.
std::string_view left(std::string_view text, std::size_t count) noexcept;
/// Returns the last `count` characters, or the whole text if it is shorter.
std::string_view right(std::string_view text, std::size_t count) noexcept;

/// Returns at most `count` characters from position `start` on; empty if `start` is beyond the end.
std::string_view mid(std::string_view text, std::size_t start,
                     std::size_t count = static_cast<std::size_t>(-1)) noexcept;

/// Returns the position of the first occurrence of `wanted` that begins at `start` or later, 0 if there is
/// none. An empty `wanted` is found at `start` of a non-empty text.
std::size_t find(std::string_view text, std::string_view wanted, std::size_t start = 1) noexcept;
/// The same, ignoring case.
std::size_t findNoCase(std::string_view text, std::string_view wanted, std::size_t start = 1);

/// Returns the text without the blanks (U+0020 only) at its beginning.
constexpr std::string_view trimLeft(std::string_view text) noexcept
{
    while (text.starts_with(' '))
        text.remove_prefix(1);
    return text;
}
/// Returns the text without the blanks (U+0020 only) at its end.
constexpr std::string_view trimRight(std::string_view text) noexcept
{
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return text;
}
/// Returns the text without the blanks (U+0020 only) at both ends.
constexpr std::string_view trim(std::string_view text) noexcept
{
    return trimLeft(trimRight(text));
}

/// Converts to upper or lower case by Unicode simple case mapping: one character becomes one character.
std::string toUpper(std::string_view text);
std::string toLower(std::string_view text);
char32_t toUpper(char32_t character) noexcept;
char32_t toLower(char32_t character) noexcept;

/// Returns whether the texts are equal, ignoring case.
bool equalsNoCase(std::string_view a, std::string_view b) noexcept;
/// Returns whether the text begins with `prefix`, ignoring case.
bool startsWithNoCase(std::string_view text, std::string_view prefix) noexcept;

/// Replaces every occurrence of `wanted` from left to right, without overlap. An empty `wanted` replaces
/// nothing.
std::string replaceAll(std::string_view text, std::string_view wanted, std::string_view replacement);

/// Decodes the character at byte `offset`, which must be inside the text, and advances `offset` past it. An
/// invalid byte is returned as U+DC00 plus its value, which equals no valid character.
char32_t decode(std::string_view text, std::size_t& offset) noexcept;
/// Appends a character in UTF-8. An invalid byte that `decode` returned is appended as that byte; any other
/// value that is no character as U+FFFD.
void append(std::string& text, char32_t character);

} // namespace tamarok::text

#pragma GCC visibility pop
