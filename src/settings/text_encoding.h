#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/files.h"

namespace tamarok::settings {

enum class TextEncoding : std::uint8_t { Utf8, Windows1252 };

/// Reads a file to its end: UTF-8 if all of it is valid UTF-8, otherwise Windows-1252. Takes bounded memory.
TextEncoding encodingOf(const File& file);

/// Returns bytes of a file as text.
std::string decode(std::string_view bytes, TextEncoding encoding);

/// Returns text as bytes of a file. Error 5, which names the character, for one that the encoding does not have.
std::string encode(std::string_view text, TextEncoding encoding);

/// Tells whether the text has no character beyond ASCII, so that its bytes are the same in every encoding.
bool isAscii(std::string_view text) noexcept;

} // namespace tamarok::settings
