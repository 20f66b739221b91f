#include "functions/date_text.h"

#include <array>
#include <string_view>

#include "functions/call.h"

#include "tamarok/english_dates.h"

namespace tamarok::embedded::functions {

namespace {

/// A style of CONVERT. The pattern's letters: Y year, y its last two digits, m month, b its short
/// name, d day, e day with a leading blank, H hour, I hour of 12 with a leading blank,
/// M minute, S second, f milliseconds, F ".milliseconds" unless 0, P AM or PM.
struct StylePattern {
    std::int16_t style;
    std::string_view pattern;
};

constexpr std::array stylePatterns = {StylePattern{0, "b e Y I:MP"},
                                      StylePattern{1, "m/d/y"},
                                      StylePattern{2, "y.m.d"},
                                      StylePattern{3, "d/m/y"},
                                      StylePattern{4, "d.m.y"},
                                      StylePattern{5, "d-m-y"},
                                      StylePattern{6, "d b y"},
                                      StylePattern{7, "b d, y"},
                                      StylePattern{8, "H:M:S"},
                                      StylePattern{9, "b e Y I:M:S:fP"},
                                      StylePattern{10, "m-d-y"},
                                      StylePattern{11, "y/m/d"},
                                      StylePattern{12, "ymd"},
                                      StylePattern{13, "d b Y H:M:S:f"},
                                      StylePattern{14, "H:M:S:f"},
                                      StylePattern{20, "Y-m-d H:M:S"},
                                      StylePattern{21, "Y-m-d H:M:S.f"},
                                      StylePattern{22, "m/d/y I:M:S P"},
                                      StylePattern{23, "Y-m-d"},
                                      StylePattern{24, "H:M:S"},
                                      StylePattern{25, "Y-m-d H:M:S.f"},
                                      StylePattern{100, "b e Y I:MP"},
                                      StylePattern{101, "m/d/Y"},
                                      StylePattern{102, "Y.m.d"},
                                      StylePattern{103, "d/m/Y"},
                                      StylePattern{104, "d.m.Y"},
                                      StylePattern{105, "d-m-Y"},
                                      StylePattern{106, "d b Y"},
                                      StylePattern{107, "b d, Y"},
                                      StylePattern{108, "H:M:S"},
                                      StylePattern{109, "b e Y I:M:S:fP"},
                                      StylePattern{110, "m-d-Y"},
                                      StylePattern{111, "Y/m/d"},
                                      StylePattern{112, "Ymd"},
                                      StylePattern{113, "d b Y H:M:S:f"},
                                      StylePattern{114, "H:M:S:f"},
                                      StylePattern{120, "Y-m-d H:M:S"},
                                      StylePattern{121, "Y-m-d H:M:S.f"},
                                      StylePattern{126, "Y-m-dTH:M:SF"},
                                      StylePattern{127, "Y-m-dTH:M:SFZ"}};

/// Appends a number, filled on the left to `digits` characters.
void appendNumber(std::string& text, std::int32_t number, std::size_t digits, char fill = '0')
{
    const std::string plain = std::to_string(number);
    if (plain.size() < digits) text.append(digits - plain.size(), fill);
    text += plain;
}

/// Appends the part that a letter of a pattern denotes; any other character is copied.
void appendPart(std::string& text, char letter, const CivilTime& parts)
{
    const std::int32_t hourOfTwelve = parts.hour % 12 == 0 ? 12 : parts.hour % 12;
    switch (letter) {
    case 'Y': return appendNumber(text, parts.year, 4);
    case 'y': return appendNumber(text, parts.year % 100, 2);
    case 'm': return appendNumber(text, parts.month, 2);
    case 'b': text += english::shortName(english::months[static_cast<std::size_t>(parts.month - 1)]); return;
    case 'd': return appendNumber(text, parts.day, 2);
    case 'e': return appendNumber(text, parts.day, 2, ' ');
    case 'H': return appendNumber(text, parts.hour, 2);
    case 'I': return appendNumber(text, hourOfTwelve, 2, ' ');
    case 'M': return appendNumber(text, parts.minute, 2);
    case 'S': return appendNumber(text, parts.second, 2);
    case 'F':
        if (parts.millisecond == 0) return;
        text += '.';
        [[fallthrough]];
    case 'f': return appendNumber(text, parts.millisecond, 3);
    case 'P': text += parts.hour < 12 ? "AM" : "PM"; return;
    default: text += letter;
    }
}

} // namespace

/// Writes the pattern of the style letter by letter. Error 281 for an unknown style.
std::string dateText(Instant instant, std::int64_t style)
{
    for (const StylePattern& entry : stylePatterns) {
        if (entry.style != style) continue;
        const CivilTime parts = toParts(instant);
        std::string text;
        for (const char letter : entry.pattern)
            appendPart(text, letter, parts);
        return text;
    }
    fail(281,
         std::to_string(style) + " is not a valid style number when converting from datetime to a character string.");
}

} // namespace tamarok::embedded::functions
