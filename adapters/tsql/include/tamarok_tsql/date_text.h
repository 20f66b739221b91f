#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tamarok_tsql/date_value.h"
#include "tamarok_tsql/types.h"

#include "tamarok/date_order.h"

/// The one grammar of date texts: a literal, the value of a text column and a text parameter are all converted by
/// convertDateText, so that the same text has the same value, or the same error, in all three places.
namespace tamarok::tsql {

/// How the three numbers of a date text are understood.
struct DateReading {
    DateOrder order = DateOrder::Dmy; ///< of three numbers, with slashes, hyphens or points alike
    bool hyphensAreIso = true;        ///< a year of four digits in front with hyphens: year, month, day in any order
};

/// How a connection with that date order reads date texts. This function alone decides what the order means.
DateReading readingOf(DateOrder order) noexcept;

/// How CONVERT with that style reads date texts; nothing if the server has no such style.
std::optional<DateReading> readingOfStyle(std::int64_t style, DateOrder order) noexcept;

/// The result of a conversion: an instant, or the number of the server's error.
struct DateConversion {
    Instant instant = 0;
    std::int32_t error = 0; ///< 0 for none, otherwise one of dateErrors
};

/// The server's errors of date conversions.
namespace dateErrors {
inline constexpr std::int32_t malformed = 241;              ///< not a date; for date and time also no such day
inline constexpr std::int32_t outOfRange = 242;             ///< no such day or time, or beyond the type
inline constexpr std::int32_t malformedSmallDateTime = 295; ///< not a date, for smalldatetime
} // namespace dateErrors

/// Converts a text to Date, DateTime, DateTime2, SmallDateTime or Time, rounded as roundToType does.
///
/// Dates are three numbers between slashes, hyphens or points ("12/31/2024", "31.12.24", "2024-12-31"), six or
/// eight digits ("20241231"), a year of four digits, or an English month name with day and year ("Dec 31 2024",
/// "31-Dec-24", "Dec 2024"). Times are "22:15", "22:15:30", "22:15:30.125", "22:15:30:125" and "10 PM", each with
/// or without AM or PM. Date and time stand on either side of blanks, or with the time behind a "T", which a "Z"
/// may end. A missing date is 1900-01-01, a missing time midnight; a blank text has neither. Years of two digits
/// follow pivot::databaseText.
DateConversion convertDateText(std::string_view text, TypeKind type, const DateReading& reading);

/// The server's message for an error of convertDateText.
std::string dateErrorMessage(std::int32_t error, TypeKind type);

/// The server's name of a date type, such as "smalldatetime".
std::string_view dateTypeName(TypeKind type) noexcept;

} // namespace tamarok::tsql
