#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text in UTF-8. Whatever counts or cuts, counts and cuts code points; positions begin at 1 and 0
/// means "not found", as the interface has it. A byte that is no UTF-8 counts as one character.
namespace tamarok::text {

/// Number of characters.
std::size_t length(std::string_view text) noexcept;

/// The first / last `count` characters, or the whole text where it is shorter.
std::string_view left(std::string_view text, std::size_t count) noexcept;
std::string_view right(std::string_view text, std::size_t count) noexcept;

/// From character `start` (1-based) on, at most `count` characters; empty beyond the end.
std::string_view mid(std::string_view text, std::size_t start,
                     std::size_t count = static_cast<std::size_t>(-1)) noexcept;

/// Position of the first occurrence at or behind character `start`, 0 where there is none. An empty
/// `wanted` is found at `start` of a non-empty text.
std::size_t find(std::string_view text, std::string_view wanted, std::size_t start = 1) noexcept;
/// The same without regard to case.
std::size_t findNoCase(std::string_view text, std::string_view wanted, std::size_t start = 1);

/// Blanks (U+0020 only) taken off both ends, the front, the end.
constexpr std::string_view trimLeft(std::string_view text) noexcept
{
    while (text.starts_with(' '))
        text.remove_prefix(1);
    return text;
}
constexpr std::string_view trimRight(std::string_view text) noexcept
{
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return text;
}
constexpr std::string_view trim(std::string_view text) noexcept
{
    return trimLeft(trimRight(text));
}

/// Unicode simple case mapping, one character to one character.
std::string toUpper(std::string_view text);
std::string toLower(std::string_view text);
char32_t toUpper(char32_t character) noexcept;
char32_t toLower(char32_t character) noexcept;

bool equalsNoCase(std::string_view a, std::string_view b) noexcept;
bool startsWithNoCase(std::string_view text, std::string_view prefix) noexcept;

/// Every occurrence of `wanted` (not empty) replaced, from left to right, without overlap.
std::string replaceAll(std::string_view text, std::string_view wanted, std::string_view replacement);

/// Decodes the character at byte `offset` and moves `offset` behind it. A byte that is no UTF-8
/// comes back as U+DC00 plus its value, so that it never equals a real character.
char32_t decode(std::string_view text, std::size_t& offset) noexcept;
/// Appends a character in UTF-8 (and gives a byte from `decode` back as it was).
void append(std::string& text, char32_t character);

} // namespace tamarok::text
