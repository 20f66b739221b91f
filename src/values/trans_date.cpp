#include <algorithm>
#include <optional>
#include <string>

#include "date_parts.h"

#include "tamarok/comm_conv.h"
#include "tamarok/convert.h"
#include "tamarok/early_date.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// Dates in the format of the database.

namespace tamarok {
namespace {

constexpr std::int32_t informationIcon = 64;

/// Day, month and year as numbers without leading zeros.
struct DateParts {
    std::string day;
    std::string month;
    std::string year;
};

/// Returns the calendar date of a date or of a date text; nothing for any other value. A year of two digits may have
/// been taken by its word.
std::optional<CivilTime> civilOf(const Variant& value)
{
    if (value.isString()) {
        const std::optional<Date> date = convert::parseDate(value.asString(), Platform::current().regional);
        return date ? std::optional{toCivil(*date)} : std::nullopt;
    }
    if (value.kind() == Variant::Kind::Date && isEarly(value.asDate())) return toCivilOrEarly(value.asDate());
    return convert::isDate(value) ? std::optional{toCivil(convert::toDate(value))} : std::nullopt;
}

/// Returns the parts for the database. A year below 1900 becomes 1900 plus its last two digits; 29 February of
/// a year that then is no leap year becomes 1 March.
DateParts partsForDatabase(CivilTime civil)
{
    if (civil.year < 1900) {
        civil.year = 1900 + civil.year % 100;
        if (civil.day > daysInMonth(civil.year, civil.month)) {
            civil.day -= daysInMonth(civil.year, civil.month);
            ++civil.month;
        }
    }
    return {std::to_string(civil.day), std::to_string(civil.month), std::to_string(civil.year)};
}

Variant byOrderCode(const Variant& date, const DateParts& parts, std::string_view format)
{
    const std::string code = text::toUpper(format);
    if (code == "DMY") return joinedParts(parts.day, parts.month, parts.year);
    if (code == "MDY") return joinedParts(parts.month, parts.day, parts.year);
    if (code == "YMD") return joinedParts(parts.year, parts.month, parts.day);
    if (code == "YDM") return joinedParts(parts.year, parts.day, parts.month);
    return date;
}

/// Returns the text of one token of the format. Returns nothing for a spelled month and for an unknown token;
/// an unknown token also shows a message.
std::string_view tokenText(std::string_view token, const DateParts& parts)
{
    if (token == "DD") return parts.day;
    if (token == "MM") return parts.month;
    if (token == "YY") return text::right(parts.year, 2);
    if (token == "YYYY") return parts.year;
    if (token != "MON" && token != "MONTH")
        mComm::ShowMessage("Critical Error IN transDate Function. Oracle problem!!! Please call to Brenntal G.m.b.H",
                           informationIcon, "Critical Error");
    return {};
}

std::string byTokens(const DateParts& parts, std::string_view format, char separator)
{
    std::string result;
    for (std::size_t start = 0; start <= format.size();) {
        const std::size_t end = std::min(format.find(separator, start), format.size());
        const std::string_view part = tokenText(format.substr(start, end - start), parts);
        if (!part.empty()) {
            if (!result.empty()) result += separator;
            result += part;
        }
        start = end + 1;
    }
    return result;
}

} // namespace

Variant Comm_Conv::TransDate(const Variant& strDate, std::string_view strDateFormat) const
{
    const Object* const object = strDate.isObject() ? strDate.asObject().get() : nullptr;
    const Variant date = object != nullptr && object->hasDefaultValue() ? object->defaultValue() : strDate;
    const std::optional<CivilTime> civil = civilOf(date);
    if (!civil) return strDate;
    const DateParts parts = partsForDatabase(*civil);
    if (strDateFormat.find_first_of("./") != std::string_view::npos) return byTokens(parts, strDateFormat, '.');
    if (strDateFormat.find('-') != std::string_view::npos) return byTokens(parts, strDateFormat, '-');
    return byOrderCode(strDate, parts, strDateFormat);
}

} // namespace tamarok
