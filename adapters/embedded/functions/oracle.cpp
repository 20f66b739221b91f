#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

#include "functions/catalog.h"
#include "functions/conversion.h"
#include "functions/date_conversion.h"
#include "functions/number_text.h"
#include "functions/oracle_format.h"

#include "tamarok/text.h"

/// Functions of statements in Oracle's language. Where Oracle has no empty text but Null, Null it is.
namespace tamarok::embedded::functions {

namespace {

constexpr std::int64_t longestPadded = 4000; ///< characters of a varchar2

void resultOrNull(Call& call, std::string_view text)
{
    if (text.empty()) return call.resultNull();
    call.result(text);
}

/// A text whose numbers are spelled as Oracle spells them.
std::string oracleText(const Call& call, std::size_t index)
{
    if (call.storage(index) == Storage::Real) return oracleNumberText(call.real(index));
    return std::string{call.text(index).view()};
}

/// Repeats `fill` to `size` characters, the last one cut.
std::string padding(std::string_view fill, std::size_t fillLength, std::size_t size)
{
    std::string text;
    for (; size >= fillLength; size -= fillLength)
        text += fill;
    text += text::left(fill, size);
    return text;
}

/// LPAD and RPAD: a text that is longer than the size is cut at its end by both.
void resultPadded(Call& call, bool before)
{
    if (call.anyNull()) return call.resultNull();
    const std::int64_t size = std::min(call.whole(1), longestPadded);
    const std::string text = oracleText(call, 0);
    const std::string fill = call.count() > 2 ? oracleText(call, 2) : " ";
    if (size <= 0) return call.resultNull();
    const std::size_t wanted = static_cast<std::size_t>(size);
    const std::size_t length = text::length(text);
    if (length >= wanted) return resultOrNull(call, text::left(text, wanted));
    const std::size_t fillLength = text::length(fill);
    if (fillLength == 0) return call.resultNull();
    const std::string added = padding(fill, fillLength, wanted - length);
    call.result(std::string_view{before ? added + text : text + added});
}

/// An argument that is a text in the stored form of a date. Types are unknown here, so that the form alone tells a date
/// from a text.
std::optional<Instant> storedDate(const Call& call, std::size_t index)
{
    if (call.storage(index) != Storage::Text) return std::nullopt;
    return readStored(call.text(index));
}

/// TRUNC(date [, unit]): the first instant of the day, month, quarter or year.
Instant truncated(Instant instant, std::string_view unit)
{
    CivilTime parts = toParts(instant);
    parts.hour = parts.minute = parts.second = parts.millisecond = 0;
    if (text::equalsNoCase(unit, "DD") || text::equalsNoCase(unit, "DDD") || text::equalsNoCase(unit, "J"))
        return fromParts(parts);
    parts.day = 1;
    for (const std::string_view name : {"MM", "MON", "MONTH"}) {
        if (text::equalsNoCase(unit, name)) return fromParts(parts);
    }
    if (text::equalsNoCase(unit, "Q")) {
        parts.month = (parts.month - 1) / 3 * 3 + 1;
        return fromParts(parts);
    }
    parts.month = 1;
    for (const std::string_view name : {"YYYY", "YEAR", "YY", "Y"}) {
        if (text::equalsNoCase(unit, name)) return fromParts(parts);
    }
    failWith(1898, "Too many or unknown precision specifiers.", unit);
}

} // namespace

void lpad(Call& call)
{
    resultPadded(call, true);
}

void rpad(Call& call)
{
    resultPadded(call, false);
}

/// INSTR(text, part [, start [, occurrence]]): a start below 0 counts and searches from the end.
void instr(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const TextArgument text = call.text(0);
    const TextArgument part = call.text(1);
    const std::int64_t start = call.count() > 2 ? call.whole(2) : 1;
    std::int64_t occurrence = call.count() > 3 ? call.whole(3) : 1;
    if (occurrence < 1) failWith(1428, "Argument is out of range.", std::to_string(occurrence));
    if (part.view().empty()) return call.resultNull();
    const auto length = static_cast<std::int64_t>(text::length(text));
    if (start == 0) return call.result(std::int64_t{0});
    const std::int64_t step = start > 0 ? 1 : -1;
    std::int64_t position = start > 0 ? start : length + start + 1;
    for (; position >= 1 && position <= length; position += step) {
        const std::string_view rest = text::mid(text, static_cast<std::size_t>(position));
        if (rest.starts_with(part.view()) && --occurrence == 0) return call.result(position);
    }
    call.result(std::int64_t{0});
}

/// SUBSTR(text, start [, length]): 0 counts as 1, a start below 0 counts from the end.
void substr(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const std::string text = oracleText(call, 0);
    const auto length = static_cast<std::int64_t>(text::length(text));
    std::int64_t start = call.whole(1);
    const std::int64_t size = call.count() > 2 ? std::min(call.whole(2), length) : length;
    if (start == 0) start = 1;
    if (start < 0) start += length + 1;
    if (start < 1 || start > length || size < 1) return call.resultNull();
    resultOrNull(call, text::mid(text, static_cast<std::size_t>(start), static_cast<std::size_t>(size)));
}

/// Trailing blanks count; an empty text is Null.
void length(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const std::size_t size = text::length(oracleText(call, 0));
    if (size == 0) return call.resultNull();
    call.result(static_cast<std::int64_t>(size));
}

/// TRUNC(date [, unit]) or TRUNC(number [, places]).
void trunc(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    if (const auto date = storedDate(call, 0)) {
        return resultInstant(call, truncated(*date, call.count() > 1 ? call.text(1).view() : "DD"));
    }
    const std::int64_t places = call.count() > 1 ? std::clamp<std::int64_t>(call.whole(1), -400, 400) : 0;
    if (call.storage(0) != Storage::Whole) {
        return call.result(truncateTo(call.real(0), static_cast<std::int32_t>(places)));
    }
    std::int64_t cut = 0;
    roundWhole(call.whole(0), static_cast<std::int32_t>(places), true, cut);
    call.result(cut);
}

/// MOD(a, 0) is a.
void mod(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    if (call.storage(0) == Storage::Whole && call.storage(1) == Storage::Whole) {
        const std::int64_t a = call.whole(0);
        const std::int64_t b = call.whole(1);
        return call.result(b == 0 ? a : b == -1 ? 0 : a % b);
    }
    const double a = call.real(0);
    const double b = call.real(1);
    call.result(b == 0.0 ? a : std::fmod(a, b));
}

/// TO_CHAR(date or number [, mask]).
void toChar(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    if (const auto date = storedDate(call, 0)) {
        const std::string text = oracleDateText(*date, call.count() > 1 ? call.text(1).view() : "DD-MON-RR");
        return resultOrNull(call, text);
    }
    if (call.count() == 1) return call.result(std::string_view{oracleText(call, 0)});
    call.result(std::string_view{oracleNumberText(call.real(0), call.text(1))});
}

/// TO_DATE(text [, mask]). A value that is a date already is converted without the mask.
void toDateOfMask(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    if (call.count() == 1 || storedDate(call, 0)) {
        return resultInstant(call, toDate(call.value(0), TypeKind::Date, readingOf(call)));
    }
    resultInstant(call, oracleDate(call.text(0), call.text(1)));
}

/// TO_NUMBER(text [, mask]): a mask allows grouping marks.
void toNumber(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    if (call.storage(0) == Storage::Whole || call.storage(0) == Storage::Real) return call.resultValue(0);
    std::string text{call.text(0).view()};
    if (call.count() > 1) std::erase(text, ',');
    const auto number = readFloat(text);
    if (!number) failWith(1722, "Invalid number.", call.text(0));
    call.result(*number);
}

} // namespace tamarok::embedded::functions
