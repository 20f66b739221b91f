#include "tamarok_embedded/shown_text.h"

namespace tamarok::embedded {

namespace {

void appendCode(std::string& shown, unsigned char byte)
{
    static constexpr std::string_view digits = "0123456789ABCDEF";
    shown.append({'\\', 'x', digits[byte >> 4U], digits[byte & 15U]});
}

} // namespace

/// U+0080 to U+009F, the control characters above ASCII, are the bytes C2 80 to C2 9F.
std::string shownText(std::string_view text)
{
    std::string shown;
    shown.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        const auto next = static_cast<unsigned char>(at + 1 < text.size() ? text[at + 1] : '\0');
        if (byte < 0x20 || byte == 0x7F) {
            appendCode(shown, byte);
        } else if (byte == 0xC2 && next >= 0x80 && next <= 0x9F) {
            appendCode(shown, byte);
            appendCode(shown, next);
            ++at;
        } else {
            shown += text[at];
        }
    }
    return shown;
}

} // namespace tamarok::embedded
