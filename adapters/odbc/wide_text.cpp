#include "wide_text.h"

#include "tamarok/text.h"

namespace tamarok::odbc {

namespace {

constexpr char32_t replacement = 0xFFFD;

constexpr bool isLowSurrogate(SQLWCHAR unit) noexcept
{
    return unit >= 0xDC00 && unit < 0xE000;
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
    // Most texts are ASCII, and then as long as their units: they are written without growing the text in between.
    const std::size_t start = text.size();
    text.resize(start + wide.size());
    std::size_t at = 0;
    for (; at < wide.size() && wide[at] < 0x80; ++at)
        text[start + at] = static_cast<char>(wide[at]);
    if (at == wide.size()) return;
    text.resize(start + at);
    for (; at < wide.size(); ++at) {
        char32_t character = wide[at];
        if (isHighSurrogate(wide[at]) && at + 1 < wide.size() && isLowSurrogate(wide[at + 1])) {
            character = 0x10000U + ((character - 0xD800U) << 10U) + (wide[at + 1] - 0xDC00U);
            ++at;
        } else if (isHighSurrogate(wide[at]) || isLowSurrogate(wide[at])) {
            character = replacement;
        }
        text::append(text, character);
    }
}

std::string toUtf8(std::span<const SQLWCHAR> wide)
{
    std::string text;
    appendUtf8(text, wide);
    return text;
}

} // namespace tamarok::odbc
