#include <string>

#include "ado/first_row.h"
#include "date_parts.h"
#include "regional_order.h"
#include "runtime/date_pattern.h"

#include "tamarok/comm_conv.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/pivot_years.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// Date texts in the regional order and in the order of the option USDATE.

namespace tamarok {
namespace {

/// The parts of a date text before, between and after its first two separators.
struct CutText {
    std::string_view first;
    std::string_view second;
    std::string_view third;
};

CutText cutInThree(std::string_view date, std::string_view separator)
{
    // Any further separator belongs to the third part.
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

/// Returns the first character, the last one excepted, whose code is below 48 or above 58; "" if there is none.
/// So ":" counts as a digit. Required by the contract. Do not correct.
std::string_view firstSeparator(std::string_view date)
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

struct DateTexts {
    std::string_view day;
    std::string_view month;
    std::string_view year;
};

/// Returns "month/day/year". @param spelledMonth  the month is a name
std::string usDate(const DateTexts& date, bool spelledMonth)
{
    const std::string month = spelledMonth ? std::to_string(monthNumber(date.month)) : plainInteger(date.month);
    const std::int32_t year = pivot::fullYearOperation.fullYear(convert::toInteger(Variant{date.year}));
    return joinedParts(month, plainInteger(date.day), std::to_string(year));
}

std::string inOrder(DateOrder order, std::string_view day, std::string_view month, std::string_view year)
{
    switch (order) {
    case DateOrder::Dmy: return joinedParts(day, month, year);
    case DateOrder::Mdy: return joinedParts(month, day, year);
    case DateOrder::Ymd: return joinedParts(year, month, day);
    case DateOrder::Ydm: return joinedParts(year, day, month);
    default: return {}; // the year stands in the middle, which no probe finds
    }
}

} // namespace

std::string Comm_Conv::NationalDate(std::string_view USDate) const
{
    const Regional& regional = Platform::current().regional;
    const auto [month, day, year] = cutInThree(USDate, "/");
    const std::optional<DateOrder> order = regionalOrder(regional).order;
    std::string regionalText; // stays empty, and so no date, if the order is unknown
    if (order) regionalText = inOrder(*order, day, month, year);
    return formatRegional(convert::toDate(Variant{regionalText}), regional.shortDate, regional);
}

std::string Comm_Conv::USDate(std::string_view NationalDate, const ado::ConnectionRef& dbAdo) const
{
    const auto option = ado::readFirstValue(dbAdo, "SELECT NUMBER_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'USDATE'",
                                            ado::LockType::Unspecified);
    // The option: 0 or none is day, month, year; 1 is month, day, year; any other value gives "".
    const std::int32_t order = option && !option->isNull() ? convert::toLong(*option) : 0;
    const CivilTime date = toCivil(convert::toDate(Variant{NationalDate}));
    const std::string day = std::to_string(date.day);
    const std::string month = std::to_string(date.month);
    const std::string year = std::to_string(date.year);
    if (order == 0) return joinedParts(day, month, year);
    if (order == 1) return joinedParts(month, day, year);
    return {};
}

std::string Comm_Conv::USDateA(std::string_view NationalDate) const
{
    const std::string_view separator = firstSeparator(NationalDate);
    CutText parts = cutInThree(NationalDate, separator);
    const std::string_view first = text::trim(parts.first);
    const std::string_view second = text::trim(parts.second);
    std::string_view third = text::trim(parts.third);
    // A time behind the date is dropped.
    third = third.substr(0, third.find(' '));

    const RegionalOrder machine = regionalOrder(Platform::current().regional);
    if (machine.order) {
        switch (*machine.order) {
        case DateOrder::Dmy: return usDate({first, second, third}, machine.spelledMonth);
        case DateOrder::Mdy: return usDate({second, first, third}, machine.spelledMonth);
        case DateOrder::Ymd: return usDate({third, second, first}, machine.spelledMonth);
        case DateOrder::Ydm: return usDate({second, third, first}, machine.spelledMonth);
        default: break;
        }
    }
    // Required by the contract: in an unknown order all but the first part comes back. Do not correct.
    return std::string{NationalDate.substr(NationalDate.find(separator) + separator.size())};
}

} // namespace tamarok
