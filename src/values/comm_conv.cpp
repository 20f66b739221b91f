#include "tamarok/comm_conv.h"

#include <algorithm>
#include <memory>

#include "regional_order.h"
#include "runtime/date_pattern.h"

#include "tamarok/convert.h"
#include "tamarok/early_date.h"
#include "tamarok/error.h"
#include "tamarok/loc_service.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

constexpr std::int32_t informationIcon = 64;
constexpr std::int16_t noText = 5;
constexpr std::int16_t yesText = 6;

/// Day, month and year of a date as plain numbers, the year brought into the range that servers take.
struct DateParts {
    std::string day;
    std::string month;
    std::string year;
};

/// The value of a field; any other value, objects included, as it stands.
Variant contentOf(const Variant& value)
{
    const bool isField = value.isObject() && value.asObject() && isMember(value.asObject()->typeName(), "Field");
    return isField ? value.asObject()->get("Value", {}) : value;
}

/// A year of two digits that was taken by its word.
bool hasTwoDigitYear(const Variant& value)
{
    return value.kind() == Variant::Kind::Date && isEarly(value.asDate());
}

CivilTime civilOf(const Variant& value)
{
    return hasTwoDigitYear(value) ? toCivilOrEarly(value.asDate()) : toCivil(convert::toDate(value));
}

DateParts partsForDatabase(CivilTime civil)
{
    if (civil.year < 1900) {
        civil.year = 1900 + civil.year % 100;
        if (civil.day > daysInMonth(civil.year, civil.month)) { // 29 February of a year that is no leap year now
            civil.day -= daysInMonth(civil.year, civil.month);
            ++civil.month;
        }
    }
    return {std::to_string(civil.day), std::to_string(civil.month), std::to_string(civil.year)};
}

std::string joined(std::string_view a, std::string_view b, std::string_view c)
{
    std::string result{a};
    result.append("/").append(b).append("/").append(c);
    return result;
}

Variant byOrderCode(const Variant& date, const DateParts& parts, std::string_view format)
{
    const std::string code = text::toUpper(format);
    if (code == "DMY") return joined(parts.day, parts.month, parts.year);
    if (code == "MDY") return joined(parts.month, parts.day, parts.year);
    if (code == "YMD") return joined(parts.year, parts.month, parts.day);
    if (code == "YDM") return joined(parts.year, parts.day, parts.month);
    return date;
}

/// Text of one token of the format; nothing for a spelled month and for an unknown token, which is
/// told to the user.
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

/// Three parts of a date text, cut at the first two separators.
struct CutText {
    std::string_view first;
    std::string_view second;
    std::string_view third;
};

CutText cutInThree(std::string_view date, std::string_view separator)
{
    const std::size_t firstEnd = separator.empty() ? std::string_view::npos : date.find(separator);
    const std::size_t secondEnd =
        firstEnd == std::string_view::npos ? firstEnd : date.find(separator, firstEnd + separator.size());
    if (secondEnd == std::string_view::npos)
        throw Error{errors::invalidArgument,
                    "Invalid argument: \"" + std::string{date} + "\" does not consist of three parts.", "Comm_Conv"};
    const std::size_t second = firstEnd + separator.size();
    return {date.substr(0, firstEnd), date.substr(second, secondEnd - second),
            date.substr(secondEnd + separator.size())};
}

/// The first character whose code is below 48 or above 58 (":" passes for a digit), looked for up to
/// the last character but one; empty where there is none.
std::string_view ownSeparator(std::string_view date)
{
    std::size_t offset = 0;
    while (offset < date.size()) {
        const std::size_t start = offset;
        const char32_t character = text::decode(date, offset);
        if (offset >= date.size()) break;
        if (character < 48 || character > 58) return date.substr(start, offset - start);
    }
    return {};
}

std::string plainInteger(std::string_view part)
{
    return std::to_string(convert::toInteger(Variant{part}));
}

std::string usDate(std::string_view day, std::string_view month, std::string_view year, bool spelledMonth)
{
    const std::string monthText = spelledMonth ? std::to_string(monthNumber(month)) : plainInteger(month);
    const std::int16_t yearNumber = fullYear(convert::toInteger(Variant{year}));
    return joined(monthText, plainInteger(day), std::to_string(yearNumber));
}

} // namespace

Variant Comm_Conv::TransDate(const Variant& strDate, std::string_view strDateFormat) const
{
    const Variant date = contentOf(strDate);
    if (!convert::isDate(date) && !hasTwoDigitYear(date)) return strDate;
    const DateParts parts = partsForDatabase(civilOf(date));
    if (strDateFormat.find_first_of("./") != std::string_view::npos) return byTokens(parts, strDateFormat, '.');
    if (strDateFormat.find('-') != std::string_view::npos) return byTokens(parts, strDateFormat, '-');
    return byOrderCode(strDate, parts, strDateFormat);
}

std::string Comm_Conv::NoComma(std::string_view strVar, std::string_view strThousantSep_dll) const
{
    const bool isWide = strThousantSep_dll.size() > 1 && text::length(strThousantSep_dll) == 1;
    std::string result = isWide ? text::replaceAll(strVar, strThousantSep_dll, "") : std::string{strVar};
    // Without a mark the comma stands for it, which is never dropped: it becomes a point before.
    const char mark = strThousantSep_dll.size() == 1 ? strThousantSep_dll.front() : ',';
    auto end = result.begin();
    for (const char character : result) {
        if (character == ',')
            *end++ = '.';
        else if (character != mark)
            *end++ = character;
    }
    result.erase(end, result.end());
    return result;
}

std::string Comm_Conv::NoComma3(const std::string& strVar) const
{
    return NoComma(strVar, "");
}

std::string Comm_Conv::NoSpace(const std::string& strValue) const
{
    std::string result;
    result.reserve(strValue.size());
    for (const char character : strValue)
        if (character != ' ') result += character;
    return result;
}

std::string Comm_Conv::AddBrackets(const std::string& rObjName) const
{
    return rObjName;
}

std::string Comm_Conv::AddSpaces(const std::string& rstring, std::int16_t rnumber) const
{
    const auto missing = static_cast<std::int64_t>(rnumber) - static_cast<std::int64_t>(text::length(rstring));
    if (missing < 0)
        throw Error{errors::invalidArgument,
                    "Invalid argument: \"" + rstring + "\" is longer than " + std::to_string(rnumber) + " characters.",
                    "Comm_Conv.AddSpaces"};
    return std::string(static_cast<std::size_t>(missing * 2), ' ') + rstring;
}

std::string Comm_Conv::NationalDate(std::string_view USDate) const
{
    const Regional& regional = Platform::current().regional;
    const auto [month, day, year] = cutInThree(USDate, "/");
    std::string regionalText;
    switch (regionalOrder(regional).order.value_or(DateOrder::Myd)) {
    case DateOrder::Dmy: regionalText = joined(day, month, year); break;
    case DateOrder::Mdy: regionalText = joined(month, day, year); break;
    case DateOrder::Ymd: regionalText = joined(year, month, day); break;
    case DateOrder::Ydm: regionalText = joined(year, day, month); break;
    default: break; // the year stands in the middle
    }
    return formatRegional(convert::toDate(Variant{regionalText}), regional.shortDate, regional);
}

std::string Comm_Conv::USDate(std::string_view NationalDate, const ado::ConnectionRef& dbAdo) const
{
    ado::Recordset option;
    option.Open("SELECT NUMBER_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'USDATE'", dbAdo,
                ado::CursorType::OpenForwardOnly, ado::LockType::Unspecified);
    std::int32_t order = 0;
    if (!option.AtEOF()) {
        const Variant value = option.Fields().Item(0).Value();
        if (!value.isNull()) order = convert::toLong(value);
    }
    option.Close();

    const CivilTime date = toCivil(convert::toDate(Variant{NationalDate}));
    const std::string day = std::to_string(date.day);
    const std::string month = std::to_string(date.month);
    const std::string year = std::to_string(date.year);
    if (order == 0) return joined(day, month, year);
    if (order == 1) return joined(month, day, year);
    return {};
}

std::string Comm_Conv::USDateA(std::string_view NationalDate) const
{
    const std::string_view separator = ownSeparator(NationalDate);
    CutText parts = cutInThree(NationalDate, separator);
    const std::string_view first = text::trim(parts.first);
    const std::string_view second = text::trim(parts.second);
    std::string_view third = text::trim(parts.third);
    third = third.substr(0, third.find(' '));

    const RegionalOrder machine = regionalOrder(Platform::current().regional);
    switch (machine.order.value_or(DateOrder::Myd)) {
    case DateOrder::Dmy: return usDate(first, second, third, machine.spelledMonth);
    case DateOrder::Mdy: return usDate(second, first, third, machine.spelledMonth);
    case DateOrder::Ymd: return usDate(third, second, first, machine.spelledMonth);
    case DateOrder::Ydm: return usDate(second, third, first, machine.spelledMonth);
    default: break; // the year stands in the middle
    }
    return std::string{NationalDate.substr(NationalDate.find(separator) + separator.size())};
}

std::string Comm_Conv::ConvBoolSQLColumnToStr(const TmkVar& tmkVar, std::string_view strColumn,
                                              std::string_view /*strLanguage*/)
{
    if (!booleanWords_) {
        const std::unique_ptr<LocService> texts = Platform::locService();
        booleanWords_ = BooleanWords{texts->GetText(noText, tmkVar), texts->GetText(yesText, tmkVar)};
    }
    std::string result{"(CASE "};
    result.append(strColumn)
        .append(" WHEN 1 THEN '")
        .append(booleanWords_->yes)
        .append("' ELSE '")
        .append(booleanWords_->no)
        .append("' END) AS ")
        .append(strColumn);
    return result;
}

} // namespace tamarok
