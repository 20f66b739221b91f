#include "pattern.h"

#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/object.h"

namespace tamarok::format {

namespace {

using Kind = Variant::Kind;

enum class PatternKind { text, number, date };

PatternKind kindOf(std::string_view pattern) noexcept
{
    if (pattern == "@") return PatternKind::text;
    bool dateLetter = false;
    PatternWalker walker{pattern};
    for (std::string_view piece; walker.next(piece);) {
        if (walker.isLiteral()) continue;
        if (piece == "0" || piece == "#") return PatternKind::number;
        dateLetter = dateLetter || (piece.size() == 1 &&
                                    std::string_view{"dmyhnsDMYHNS"}.find(piece.front()) != std::string_view::npos);
    }
    return dateLetter ? PatternKind::date : PatternKind::number;
}

std::string textAsDate(const std::string& text, std::string_view pattern, const Regional& regional)
{
    if (const auto day = convert::parseDate(text, regional)) return date(*day, pattern, regional);
    if (const auto days = convert::parseNumber(text, regional); days && isInRange({*days}))
        return date({*days}, pattern, regional);
    return text;
}

std::string textAsNumber(const std::string& text, std::string_view pattern, const Regional& regional)
{
    const auto parsed = convert::parseNumber(text, regional);
    return parsed ? number(*parsed, pattern, regional) : text;
}

} // namespace

std::string value(const Variant& value, std::string_view pattern, const Regional& regional)
{
    if (value.isNull()) return {};
    if (value.isObject() && value.asObject() && value.asObject()->typeName() == "Field") {
        const Variant content = value.asObject()->get("Value", {});
        // A field within a field is refused by the conversion to text.
        return content.isObject() ? convert::toText(value, regional) : format::value(content, pattern, regional);
    }
    const PatternKind kind = kindOf(pattern);
    const bool refused = value.isObject() || value.isArray();
    if (pattern.empty() || kind == PatternKind::text || refused) return convert::toText(value, regional);
    if (value.isString())
        return kind == PatternKind::date ? textAsDate(value.asString(), pattern, regional)
                                         : textAsNumber(value.asString(), pattern, regional);
    if (kind == PatternKind::date) return date(convert::toDate(value), pattern, regional);
    return number(convert::toDouble(value), pattern, regional);
}

std::string value(double value, std::string_view pattern, const Regional& regional)
{
    if (pattern.starts_with('0')) return number(value, pattern, regional); // whatever follows, it is a number's
    return format::value(Variant{value}, pattern, regional);
}

std::string value(const Variant& value, std::string_view pattern)
{
    return format::value(value, pattern, Platform::current().regional);
}

} // namespace tamarok::format
