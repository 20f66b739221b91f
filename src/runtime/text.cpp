#include "tamarok/text.h"

#include <algorithm>
#include <array>

#include "runtime/occurrences.h"

// Functions that count characters decode UTF-8 from the beginning of the text; the others work on bytes, which is
// correct in UTF-8, since no character is part of another.

namespace tamarok::text {

namespace {

constexpr char32_t strayByteBase = 0xDC00; ///< low surrogates are no characters of their own

constexpr std::uint32_t byteAt(std::string_view text, std::size_t offset) noexcept
{
    return static_cast<unsigned char>(text[offset]);
}

/// Returns the length in bytes of the character that a lead byte begins, 0 for any other byte.
constexpr std::size_t announcedLength(std::uint32_t lead) noexcept
{
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

/// Returns the byte offset after `count` characters from `offset` on.
std::size_t advance(std::string_view text, std::size_t offset, std::size_t count) noexcept
{
    for (; count > 0 && offset < text.size(); --count)
        decode(text, offset);
    return offset;
}

bool isAscii(std::string_view text) noexcept
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

template <class Map>
std::string mapEach(std::string_view text, Map map)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();)
        append(result, map(decode(text, offset)));
    return result;
}

} // namespace

char32_t decode(std::string_view text, std::size_t& offset) noexcept
{
    // The smallest character of each length in bytes: a longer encoding than needed is invalid UTF-8.
    static constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    const std::uint32_t lead = byteAt(text, offset);
    if (lead < 0x80) {
        ++offset;
        return lead;
    }
    // An invalid byte becomes a character of its own, so that decoding and appending give the same bytes again.
    const std::size_t length = announcedLength(lead);
    const char32_t stray = strayByteBase + lead;
    if (length == 0 || length > text.size() - offset) {
        ++offset;
        return stray;
    }
    // The lead byte gives its low bits, each further byte six.
    char32_t character = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const std::uint32_t byte = byteAt(text, offset + i);
        if ((byte & 0xC0U) != 0x80U) {
            ++offset;
            return stray;
        }
        character = (character << 6U) | (byte & 0x3FU);
    }
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (character < smallest[length] || character > 0x10FFFF || surrogate) {
        ++offset;
        return stray;
    }
    offset += length;
    return character;
}

void append(std::string& text, char32_t character)
{
    const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    const auto tail = [&](char32_t shift) { put(0x80U | ((character >> shift) & 0x3FU)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0U | (character >> 6U));
        tail(0);
    } else if (character >= strayByteBase + 0x80 && character <= strayByteBase + 0xFF) {
        put(character - strayByteBase);
    } else if ((character >= 0xD800 && character <= 0xDFFF) || character > 0x10FFFF) {
        text.append("\uFFFD");
    } else if (character < 0x10000) {
        put(0xE0U | (character >> 12U));
        tail(6);
        tail(0);
    } else {
        put(0xF0U | (character >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

std::size_t length(std::string_view text) noexcept
{
    // Every ASCII character is one byte.
    if (isAscii(text)) return text.size();
    std::size_t count = 0;
    for (std::size_t offset = 0; offset < text.size(); ++count)
        decode(text, offset);
    return count;
}

std::string_view left(std::string_view text, std::size_t count) noexcept
{
    if (count >= text.size()) return text;
    return text.substr(0, advance(text, 0, count));
}

std::string_view right(std::string_view text, std::size_t count) noexcept
{
    if (count >= text.size()) return text;
    const std::size_t all = length(text);
    return count >= all ? text : text.substr(advance(text, 0, all - count));
}

std::string_view mid(std::string_view text, std::size_t start, std::size_t count) noexcept
{
    const std::size_t begin = advance(text, 0, start > 0 ? start - 1 : 0);
    return left(text.substr(begin), count);
}

std::size_t find(std::string_view text, std::string_view wanted, std::size_t start) noexcept
{
    // Searches bytes, then counts the characters up to the hit.
    std::size_t position = std::max<std::size_t>(start, 1);
    std::size_t offset = advance(text, 0, position - 1);
    if (offset >= text.size()) return 0;
    for (std::size_t hit = text.find(wanted, offset); hit != std::string_view::npos; hit = text.find(wanted, offset)) {
        for (; offset < hit; ++position)
            decode(text, offset);
        if (offset == hit) return position;
        // `wanted` begins with an invalid byte that is part of a character here: search on after it.
    }
    return 0;
}

std::size_t findNoCase(std::string_view text, std::string_view wanted, std::size_t start)
{
    const std::string upper = toUpper(text);
    const std::string upperWanted = toUpper(wanted);
    std::size_t position = std::max<std::size_t>(start, 1);
    std::size_t offset = advance(upper, 0, position - 1);
    if (offset >= upper.size()) return 0;
    if (upperWanted.empty()) return position;
    // Searches bytes, then counts the characters up to the hit.
    const Occurrences<char> occurrences{upperWanted};
    std::size_t matched = 0;
    for (std::size_t end = offset; end < upper.size();) {
        matched = occurrences.after(matched, upper[end++]);
        if (!occurrences.isFound(matched)) continue;
        const std::size_t hit = end - upperWanted.size();
        for (; offset < hit; ++position)
            decode(upper, offset);
        if (offset == hit) return position;
        // `wanted` begins with an invalid byte that is part of a character here: search on.
    }
    return 0;
}

std::string toUpper(std::string_view text)
{
    return mapEach(text, [](char32_t character) { return toUpper(character); });
}

std::string toLower(std::string_view text)
{
    return mapEach(text, [](char32_t character) { return toLower(character); });
}

bool equalsNoCase(std::string_view a, std::string_view b) noexcept
{
    std::size_t offsetA = 0;
    std::size_t offsetB = 0;
    // Compares by single characters: their number of bytes may differ between upper and lower case.
    while (offsetA < a.size() && offsetB < b.size())
        if (toUpper(decode(a, offsetA)) != toUpper(decode(b, offsetB))) return false;
    return offsetA == a.size() && offsetB == b.size();
}

bool startsWithNoCase(std::string_view text, std::string_view prefix) noexcept
{
    std::size_t offset = 0;
    for (std::size_t wanted = 0; wanted < prefix.size();) {
        if (offset >= text.size()) return false;
        if (toUpper(decode(text, offset)) != toUpper(decode(prefix, wanted))) return false;
    }
    return true;
}

std::string replaceAll(std::string_view text, std::string_view wanted, std::string_view replacement)
{
    // An empty text would be found everywhere.
    if (wanted.empty()) return std::string{text};
    std::string result;
    result.reserve(text.size());
    std::size_t offset = 0;
    for (std::size_t hit = text.find(wanted); hit != std::string_view::npos; hit = text.find(wanted, offset)) {
        result.append(text, offset, hit - offset).append(replacement);
        offset = hit + wanted.size();
    }
    return result.append(text, offset);
}

} // namespace tamarok::text
