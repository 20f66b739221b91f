#include "pattern.h"

#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/object.h"

// Values by pattern: the pattern decides between number and date, a text is converted to that first.

namespace tamarok::format {

namespace {

using Kind = Variant::Kind;

enum class PatternKind { text, number, date };

/// A digit place makes a number pattern; without one, a date letter makes a date pattern.
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
    // A text that is no date may be a day number; any other text comes back unchanged.
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
    if (value.isObject()) {
        const ObjectRef& object = value.asObject();
        const Variant content = object && object->hasDefaultValue() ? object->defaultValue() : value;
        // The conversion to text refuses any other object, and a field within a field.
        return content.isObject() ? convert::toText(value, regional) : format::value(content, pattern, regional);
    }
    // An empty pattern and "@" give the text of the value.
    const PatternKind kind = kindOf(pattern);
    if (pattern.empty() || kind == PatternKind::text || value.isArray()) return convert::toText(value, regional);
    if (value.isString())
        return kind == PatternKind::date ? textAsDate(value.asString(), pattern, regional)
                                         : textAsNumber(value.asString(), pattern, regional);
    if (kind == PatternKind::date) return date(convert::toDate(value), pattern, regional);
    return number(convert::toDouble(value), pattern, regional);
}

std::string value(double value, std::string_view pattern, const Regional& regional)
{
    if (pattern.starts_with('0')) return number(value, pattern, regional); // a digit place makes it a number pattern
    return format::value(Variant{value}, pattern, regional);
}

std::string value(const Variant& value, std::string_view pattern)
{
    return format::value(value, pattern, Platform::current().regional);
}

} // namespace tamarok::format
