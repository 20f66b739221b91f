#include <algorithm>
#include <string>
#include <utility>

#include "functions/catalog.h"
#include "functions/collation.h"
#include "functions/conversion.h"
#include "functions/number_text.h"
#include "functions/text_search.h"

#include "tamarok/text.h"
#include "tamarok/windows_1252.h"

/// Functions of texts. Characters are code points; positions begin at 1.
namespace tamarok::embedded::functions {

namespace {

constexpr std::int64_t longestRepeated = 8000; ///< characters of a varchar that is not varchar(max)

std::string_view cutBlanksBehind(std::string_view text) noexcept
{
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

std::string_view cutBlanksBefore(std::string_view text) noexcept
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    return text;
}

std::size_t count(std::int64_t number) noexcept
{
    return static_cast<std::size_t>(std::max<std::int64_t>(number, 0));
}

/// Sets the result to one character in UTF-8.
void resultCharacter(Call& call, char32_t character)
{
    std::string text;
    text::append(text, character);
    call.result(std::string_view{text});
}

} // namespace

/// LEN: trailing blanks do not count.
void len(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const TextArgument text = call.text(0);
    call.result(static_cast<std::int64_t>(text::length(cutBlanksBehind(text))));
}

/// DATALENGTH: bytes that the server would use. A text counts two for each UTF-16 unit, as NVARCHAR does; a code point
/// above FFFF has two units.
void dataLength(Call& call)
{
    constexpr std::int64_t intBytes = 4;
    constexpr std::int64_t bigBytes = 8;
    switch (call.storage(0)) {
    case Storage::Null: return call.resultNull();
    case Storage::Whole: {
        const std::int64_t number = call.whole(0);
        return call.result(number == static_cast<std::int32_t>(number) ? intBytes : bigBytes);
    }
    case Storage::Real: return call.result(bigBytes);
    case Storage::Blob: return call.result(std::int64_t{sqlite3_value_bytes(call.value(0))});
    case Storage::Text: break;
    }
    const TextArgument text = call.text(0);
    std::int64_t units = 0;
    for (std::size_t at = 0; at < text.view().size();)
        units += text::decode(text, at) > 0xFFFF ? 2 : 1;
    call.result(units * 2);
}

/// tm_bytes(value, bytes): DATALENGTH of a type of fixed size.
void tmBytes(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    call.result(call.whole(1));
}

/// DATALENGTH of a text that is not in Unicode: one byte for each character.
void tmCharacters(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const TextArgument text = call.text(0);
    call.result(static_cast<std::int64_t>(text::length(text)));
}

void left(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const std::int64_t size = call.whole(1);
    if (size < 0) {
        failWith(537, "Invalid length parameter passed to the LEFT or SUBSTRING function.", std::to_string(size));
    }
    const TextArgument text = call.text(0);
    call.result(text::left(text, count(size)));
}

void right(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const std::int64_t size = call.whole(1);
    if (size < 0) failWith(536, "Invalid length parameter passed to the right function.", std::to_string(size));
    const TextArgument text = call.text(0);
    call.result(text::right(text, count(size)));
}

/// The part ends before position start + length, even if start is below 1.
void substring(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const std::int64_t size = call.whole(2);
    if (size < 0) {
        failWith(537, "Invalid length parameter passed to the LEFT or SUBSTRING function.", std::to_string(size));
    }
    const std::int64_t start = checkedInt(call.whole(1));
    const std::int64_t first = std::max<std::int64_t>(start, 1);
    const std::int64_t end = start + std::min<std::int64_t>(size, INT32_MAX);
    const TextArgument text = call.text(0);
    call.result(end > first ? text::mid(text, count(first), count(end - first)) : std::string_view{});
}

/// CHARINDEX(part, text [, start]). The case of letters does not count. An empty part is nowhere.
void charIndex(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const TextArgument needle = call.text(0);
    const TextArgument text = call.text(1);
    const std::int64_t start = call.count() > 2 ? std::max<std::int64_t>(call.whole(2), 1) : 1;
    std::size_t from = 0;
    for (std::int64_t position = 1; position < start && from < text.view().size(); ++position)
        text::decode(text, from);
    const auto found = FoldedSearch{needle}.find(text, from);
    call.result(found ? start + static_cast<std::int64_t>(found->position) : 0);
}

/// REPLACE(text, part, replacement [, characters]) without regard to case, which SQLite's function of that name does
/// not do. The translation adds the fourth argument for a text with a declared length: the result is cut to it, as the
/// server cuts it to 8000 bytes. A (max) text has the server's limit as an error, before the memory is taken.
void replace(Call& call)
{
    constexpr std::size_t longestText = std::size_t{1} << 29U; // bytes; SQLite's own limit is 10^9
    if (call.anyNull()) return call.resultNull();
    const TextArgument text = call.text(0);
    const TextArgument replacement = call.text(2);
    const FoldedSearch part{call.text(1)};
    const std::int64_t most = call.count() > 3 ? call.whole(3) : -1;
    std::string replaced;
    std::size_t at = 0;
    const auto append = [&](std::string_view more) {
        if (replaced.size() + more.size() > longestText) {
            fail(7119, "Attempting to grow LOB beyond maximum allowed size of 536870912 bytes.");
        }
        replaced += more;
    };
    for (auto found = part.find(text, at); found; found = part.find(text, at)) {
        append(text.view().substr(at, found->begin - at));
        append(replacement);
        at = found->end;
        // A character has at most four bytes: the rest would be cut anyway.
        if (most >= 0 && replaced.size() > count(most) * 4) break;
    }
    append(text.view().substr(at));
    call.result(most < 0 ? std::string_view{replaced} : text::left(replaced, count(most)));
}

/// Returns Null if the position is outside the text or the length is negative. A Null replacement only deletes.
void stuff(Call& call)
{
    if (call.isNull(0) || call.isNull(1) || call.isNull(2)) return call.resultNull();
    const TextArgument text = call.text(0);
    const TextArgument replacement = call.text(3);
    const std::int64_t start = call.whole(1);
    const std::int64_t size = call.whole(2);
    const auto length = static_cast<std::int64_t>(text::length(text));
    if (start <= 0 || start > length || size < 0) return call.resultNull();
    std::string result{text::left(text, count(start - 1))};
    result += replacement.view();
    if (size <= length - start) result += text::mid(text, count(start + size));
    call.result(std::string_view{result});
}

/// REPLICATE: the result is cut to 8000 characters, as on the server, unless the text alone is longer.
void replicate(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const std::int64_t times = call.whole(1);
    if (times < 0) return call.resultNull();
    const TextArgument text = call.text(0);
    const auto length = static_cast<std::int64_t>(text::length(text));
    if (times == 0 || length == 0) return call.result(std::string_view{});
    const std::int64_t most = std::max(longestRepeated, length);
    const std::int64_t whole = std::min(times, most / length);
    std::string result;
    result.reserve(text.view().size() * count(whole + 1));
    for (std::int64_t index = 0; index < whole; ++index)
        result += text.view();
    if (whole < times) result += text::left(text, count(most - whole * length));
    call.result(std::string_view{result});
}

void space(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const std::int64_t size = call.whole(0);
    if (size < 0) return call.resultNull();
    call.result(std::string_view{std::string(count(std::min(size, longestRepeated)), ' ')});
}

/// Moves whole characters: the bytes inside each keep their order.
void reverse(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const TextArgument text = call.text(0);
    std::string reversed(text.view().size(), ' ');
    std::size_t end = reversed.size();
    for (std::size_t at = 0; at < text.view().size();) {
        const std::size_t from = at;
        text::decode(text, at);
        end -= at - from;
        text.view().copy(reversed.data() + end, at - from, from);
    }
    call.result(std::string_view{reversed});
}

void upper(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    call.result(std::string_view{text::toUpper(call.text(0).view())});
}

void lower(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    call.result(std::string_view{text::toLower(call.text(0).view())});
}

void ltrim(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const TextArgument text = call.text(0);
    call.result(cutBlanksBefore(text));
}

void rtrim(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const TextArgument text = call.text(0);
    call.result(cutBlanksBehind(text));
}

void trim(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const TextArgument text = call.text(0);
    call.result(cutBlanksBefore(cutBlanksBehind(text)));
}

/// CHAR(code): a character of code page 1252.
void character(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const std::int64_t code = call.whole(0);
    if (code < 0 || code > 255) return call.resultNull();
    resultCharacter(call, windows1252::fromByte(static_cast<std::uint8_t>(code)));
}

/// NCHAR(code): a character of the basic plane of Unicode.
void nationalCharacter(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const std::int64_t code = call.whole(0);
    if (code < 0 || code > 0xFFFF) return call.resultNull();
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF; // half of a surrogate pair has no UTF-8 form
    resultCharacter(call, surrogate ? U'\uFFFD' : static_cast<char32_t>(code));
}

/// ASCII(text): the code of the first character in code page 1252, or that of "?" if it has none there.
void ascii(Call& call)
{
    const TextArgument text = call.text(0);
    if (text.view().empty()) return call.resultNull();
    std::size_t at = 0;
    const char32_t first = text::decode(text, at);
    if (const auto byte = windows1252::toByte(first)) return call.result(std::int64_t{*byte});
    call.result(first < 0x100 ? std::int64_t{first} : std::int64_t{'?'});
}

void unicode(Call& call)
{
    const TextArgument text = call.text(0);
    if (text.view().empty()) return call.resultNull();
    std::size_t at = 0;
    call.result(std::int64_t{text::decode(text, at)});
}

/// STR(number [, length [, decimals]]): right-justified, stars where the whole part does not fit.
void str(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    constexpr std::int64_t defaultSize = 10;
    constexpr std::int64_t mostDecimals = 16;
    const std::int64_t size = call.count() > 1 ? call.whole(1) : defaultSize;
    const std::int64_t decimals = call.count() > 2 ? std::min(call.whole(2), mostDecimals) : 0;
    if (size <= 0 || size > longestRepeated || decimals < 0) return call.resultNull();
    const double number = call.real(0);
    // If the length is short, decimals are dropped.
    std::int64_t shown = decimals;
    std::string text = decimalText(number, static_cast<std::int32_t>(shown));
    while (shown > 0 && std::cmp_greater(text.size(), size)) {
        text = decimalText(number, static_cast<std::int32_t>(--shown));
    }
    if (std::cmp_greater(text.size(), size)) return call.result(std::string_view{std::string(count(size), '*')});
    text.insert(0, count(size) - text.size(), ' ');
    call.result(std::string_view{text});
}

/// CONCAT: Null counts as an empty text, unlike in a join with +.
void concat(Call& call)
{
    std::string text;
    for (std::size_t index = 0; index < call.count(); ++index)
        text += call.text(index).view();
    call.result(std::string_view{text});
}

/// ISNUMERIC: 1 or 0, never Null.
void isNumeric(Call& call)
{
    switch (call.storage(0)) {
    case Storage::Null:
    case Storage::Blob: return call.result(std::int64_t{0});
    case Storage::Whole:
    case Storage::Real: return call.result(std::int64_t{1});
    case Storage::Text: break;
    }
    const TextArgument text = call.text(0);
    call.result(std::int64_t{isNumericText(text)});
}

} // namespace tamarok::embedded::functions
