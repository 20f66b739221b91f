#include "tamarok/comm_find.h"

#include <string_view>

#include "runtime/occurrences.h"

#include "tamarok/convert.h"
#include "tamarok/text.h"

// Both scanners count characters, not bytes.

namespace tamarok {
namespace {

/// Returns the characters in upper case, one element a character.
std::u32string upperCharacters(std::string_view text)
{
    std::u32string characters;
    characters.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();)
        characters += text::toUpper(text::decode(text, offset));
    return characters;
}

} // namespace

std::int16_t Comm_find::FindNumOfChar(const std::string& sTmpString, const std::string& strFChar) const
{
    const std::u32string wanted = upperCharacters(strFChar);
    const text::Occurrences<char32_t> occurrences{wanted};
    std::int64_t count = 0;
    std::size_t matched = 0;
    // Occurrences may overlap; an empty text is found at every position.
    for (std::size_t offset = 0; offset < sTmpString.size();) {
        const char32_t character = text::toUpper(text::decode(sTmpString, offset));
        if (!wanted.empty()) matched = occurrences.after(matched, character);
        if (occurrences.isFound(matched)) convert::checkedInteger(++count, "number of occurrences");
    }
    return static_cast<std::int16_t>(count);
}

std::string Comm_find::FindSubstring(const std::string& sTmpString, const std::string& strFChar,
                                     std::int16_t tmp_Number) const
{
    // A separator of several characters is no error: it matches nothing.
    const bool canMatch = text::length(strFChar) == 1;
    std::int64_t separators = 0;
    std::size_t fieldStart = 0;
    std::size_t offset = 0;
    while (offset < sTmpString.size()) {
        const std::size_t start = offset;
        text::decode(sTmpString, offset);
        if (!canMatch || sTmpString.compare(start, offset - start, strFChar) != 0) continue;
        if (convert::checkedInteger(++separators, "number of separators") > tmp_Number)
            return sTmpString.substr(fieldStart, start - fieldStart);
        fieldStart = offset;
    }
    return sTmpString.substr(fieldStart);
}

} // namespace tamarok
