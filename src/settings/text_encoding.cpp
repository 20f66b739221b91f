#include "text_encoding.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

#include "tamarok/error.h"
#include "tamarok/text.h"
#include "tamarok/windows_1252.h"

namespace tamarok::settings {

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 16U;
constexpr std::size_t longestCharacter = 4; ///< bytes in UTF-8

constexpr std::uint8_t byteOf(char character) noexcept
{
    return static_cast<std::uint8_t>(character);
}

/// True for what text::decode returns for a byte that is not part of valid UTF-8.
constexpr bool isInvalid(char32_t character) noexcept
{
    return character >= 0xDC80 && character <= 0xDCFF;
}

/// Checks a block up to its end, or, if more follows, up to a character that may go on behind it.
/// @return number of bytes checked; `bytes.size() + 1` if one is invalid
std::size_t checkUtf8(std::string_view bytes, bool isLast) noexcept
{
    std::size_t at = 0;
    while (at < bytes.size()) {
        if (byteOf(bytes[at]) < 0x80) {
            ++at;
            continue;
        }
        if (!isLast && bytes.size() - at < longestCharacter) break;
        if (isInvalid(text::decode(bytes, at))) return bytes.size() + 1;
    }
    return at;
}

/// A character as a message shows it: "'č' (U+010D)", or the number alone where it has no form.
std::string shown(char32_t character)
{
    if (isInvalid(character)) return "the byte " + std::to_string(character - 0xDC00) + ", which is no UTF-8,";
    static constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::size_t fewestDigits = 4;
    std::string number;
    for (char32_t rest = character; rest != 0 || number.size() < fewestDigits; rest >>= 4U)
        number.insert(number.begin(), digits[rest & 0xFU]);
    std::string text = "the character '";
    text::append(text, character);
    return text + "' (U+" + number + ")";
}

[[noreturn]] void refuse(char32_t character, std::string_view encoding)
{
    throw Error{errors::invalidArgument,
                "Invalid argument: " + shown(character) + " cannot be written in a file in " + std::string{encoding}};
}

} // namespace

TextEncoding encodingOf(const File& file)
{
    const auto block = std::make_unique<std::array<char, blockSize>>();
    std::size_t kept = 0; // bytes of a character that the last block ended in
    for (std::uint64_t position = 0;;) {
        const std::size_t count = file.readAt(position, std::span{*block}.subspan(kept));
        position += count;
        const std::string_view bytes{block->data(), kept + count};
        const std::size_t checked = checkUtf8(bytes, count == 0);
        if (checked > bytes.size()) return TextEncoding::Windows1252;
        if (count == 0) return TextEncoding::Utf8;
        kept = bytes.size() - checked;
        std::memmove(block->data(), block->data() + checked, kept);
    }
}

std::string decode(std::string_view bytes, TextEncoding encoding)
{
    if (encoding == TextEncoding::Utf8) return std::string{bytes};
    std::string decoded;
    for (const char byte : bytes)
        text::append(decoded, windows1252::fromByte(byteOf(byte)));
    return decoded;
}

std::string encode(std::string_view text, TextEncoding encoding)
{
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t character = text::decode(text, at);
        if (encoding == TextEncoding::Utf8) {
            if (isInvalid(character)) refuse(character, "UTF-8");
            continue;
        }
        const auto byte = windows1252::toByte(character);
        if (!byte) refuse(character, "Windows-1252");
        bytes += static_cast<char>(*byte);
    }
    return encoding == TextEncoding::Utf8 ? std::string{text} : bytes;
}

bool isAscii(std::string_view text) noexcept
{
    return std::ranges::all_of(text, [](char character) { return byteOf(character) < 0x80; });
}

} // namespace tamarok::settings
