#pragma once

#include <cstdint>
#include <optional>

#pragma GCC visibility push(default)

/// The code page Windows-1252. Its five unassigned bytes stand for the control characters of the same number, so that
/// all 256 bytes come back as they were.
namespace tamarok::windows1252 {

/// Returns the character that a byte stands for.
char32_t fromByte(std::uint8_t byte) noexcept;

/// Returns the byte of a character; nothing if the code page does not have it.
std::optional<std::uint8_t> toByte(char32_t character) noexcept;

} // namespace tamarok::windows1252

#pragma GCC visibility pop
