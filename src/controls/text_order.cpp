#include "text_order.h"

#include "tamarok/text.h"

namespace tamarok::controls::text_order {
namespace {

constexpr char32_t firstAccented = 0xC0;
/// The base letters of U+00C0 to U+017F. "*" stands for a character of its own; "a", "o" and "s" for AE, OE and SS.
constexpr std::string_view baseLetters = "AAAAAAaCEEEEIIII"  // C0
                                         "DNOOOOO*OUUUUY*s"  // D0
                                         "AAAAAAaCEEEEIIII"  // E0
                                         "DNOOOOO*OUUUUY*Y"  // F0
                                         "AAAAAACCCCCCCCDD"  // 100
                                         "DDEEEEEEEEEEGGGG"  // 110
                                         "GGGGHHHHIIIIIIII"  // 120
                                         "II**JJKK*LLLLLLL"  // 130
                                         "LLLNNNNNN***OOOO"  // 140
                                         "OOooRRRRRRSSSSSS"  // 150
                                         "SSTTTTTTUUUUUUUU"  // 160
                                         "UUUUWWYYYZZZZZZ*"; // 170
static_assert(baseLetters.size() == 0x180 - firstAccented);

/// Appends the base letters of an upper-case character. @return whether it is accented
bool appendBase(std::string& keys, char32_t character)
{
    const char base = character >= firstAccented && character - firstAccented < baseLetters.size()
                          ? baseLetters[character - firstAccented]
                          : '*';
    switch (base) {
    case '*': text::append(keys, character); return false;
    case 'a': keys += "AE"; return true;
    case 'o': keys += "OE"; return true;
    case 's': keys += "SS"; return true;
    default: keys += base; return true;
    }
}

} // namespace

void appendKey(std::string& keys, std::string_view text)
{
    bool accented = false;
    for (std::size_t offset = 0; offset < text.size();) {
        const auto byte = static_cast<unsigned char>(text[offset]);
        if (byte < 0x80) {
            // ASCII needs no decoding.
            keys += static_cast<char>(byte >= 'a' && byte <= 'z' ? byte - 0x20 : byte);
            ++offset;
        } else
            accented |= appendBase(keys, text::toUpper(text::decode(text, offset)));
    }
    if (!accented) return;
    // The accents decide last, so they stand at the end, behind a character below all others.
    keys += '\0';
    keys += text::toUpper(text);
}

std::string keyOf(std::string_view text)
{
    std::string key;
    key.reserve(text.size());
    appendKey(key, text);
    return key;
}

} // namespace tamarok::controls::text_order
