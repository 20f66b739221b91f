#include "wide_text.h"

#include <algorithm>
#include <array>

#include "tamarok/text.h"

namespace tamarok::odbc {

namespace {

constexpr char32_t replacement = 0xFFFD;

constexpr bool isLowSurrogate(SQLWCHAR unit) noexcept
{
    return unit >= 0xDC00 && unit < 0xE000;
}

/// Units that are converted in one go. One more may be read, the second half of a character of two units.
constexpr std::size_t portion = 128;

constexpr char byteOf(char32_t bits) noexcept
{
    return static_cast<char>(static_cast<unsigned char>(bits));
}

constexpr char tailOf(char32_t bits) noexcept
{
    return byteOf(0x80U | (bits & 0x3FU));
}

/// Each writes one character and returns the place behind it.
char* write2(char* out, char32_t character) noexcept
{
    *out++ = byteOf(0xC0U | (character >> 6U));
    *out++ = tailOf(character);
    return out;
}

char* write3(char* out, char32_t character) noexcept
{
    *out++ = byteOf(0xE0U | (character >> 12U));
    *out++ = tailOf(character >> 6U);
    *out++ = tailOf(character);
    return out;
}

char* write4(char* out, char32_t character) noexcept
{
    *out++ = byteOf(0xF0U | (character >> 18U));
    *out++ = tailOf(character >> 12U);
    *out++ = tailOf(character >> 6U);
    *out++ = tailOf(character);
    return out;
}

} // namespace

std::vector<SQLWCHAR> toWide(std::string_view text)
{
    std::vector<SQLWCHAR> wide;
    wide.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();) {
        const auto byte = static_cast<unsigned char>(text[offset]);
        if (byte < 0x80) {
            wide.push_back(byte);
            ++offset;
            continue;
        }
        char32_t character = text::decode(text, offset);
        // An invalid byte is decoded as a single surrogate.
        if (character >= 0xD800 && character < 0xE000) character = replacement;
        if (character < 0x10000) {
            wide.push_back(static_cast<SQLWCHAR>(character));
            continue;
        }
        character -= 0x10000;
        wide.push_back(static_cast<SQLWCHAR>(0xD800U + (character >> 10U)));
        wide.push_back(static_cast<SQLWCHAR>(0xDC00U + (character & 0x3FFU)));
    }
    return wide;
}

void appendUtf8(std::string& text, std::span<const SQLWCHAR> wide)
{
    // Written by portions into a buffer: a character at a time would check the text's capacity for each.
    std::array<char, 3 * portion> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): filled before it is read
    for (std::size_t at = 0; at < wide.size();) {
        char* out = bytes.data();
        const std::size_t end = std::min(wide.size(), at + portion - 1);
        while (at < end) {
            const SQLWCHAR unit = wide[at++];
            if (unit < 0x80) [[likely]] {
                *out++ = static_cast<char>(unit);
            } else if (unit < 0x800) {
                out = write2(out, unit);
            } else if (isHighSurrogate(unit) && at < wide.size() && isLowSurrogate(wide[at])) {
                out = write4(out, 0x10000U + ((unit - 0xD800U) << 10U) + (wide[at++] - 0xDC00U));
            } else {
                out = write3(out, isHighSurrogate(unit) || isLowSurrogate(unit) ? replacement : char32_t{unit});
            }
        }
        text.append(bytes.data(), out);
    }
}

std::string toUtf8(std::span<const SQLWCHAR> wide)
{
    std::string text;
    appendUtf8(text, wide);
    return text;
}

} // namespace tamarok::odbc
