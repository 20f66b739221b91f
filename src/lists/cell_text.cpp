#include "cell_text.h"

#include <utility>

#include "tamarok/convert.h"
#include "tamarok/date.h"
#include "tamarok/format.h"
#include "tamarok/platform.h"

namespace tamarok::lists {

namespace {

constexpr std::string_view monthName = "MMMM";

/// A number stands for the month, where a date pattern alone would take it for the number of a day.
Variant firstOfMonth(const std::string& month)
{
    return makeDate(2000, convert::toInteger(month), 1);
}

} // namespace

std::string cellText(Variant&& value, std::string_view nullText, std::string_view format, std::string_view emptyText)
{
    std::string text = value.isNull()     ? std::string{nullText}
                       : value.isString() ? std::move(value).asString()
                                          : convert::toText(value);
    if (format.empty() || text.empty() || text == emptyText) return text;
    const Regional& regional = Platform::current().regional;
    if (format == monthName) return format::value(firstOfMonth(text), format, regional);
    return format::value(Variant{std::move(text)}, format, regional);
}

} // namespace tamarok::lists
