#pragma once

#include <cstdint>
#include <string_view>

#include "functions/calendar.h"
#include "functions/call.h"
#include "tamarok_tsql/date_order.h"

/// Dates out of texts and numbers, as the server's conversions read them.
namespace tamarok::embedded::functions {

/// The server's types of dates.
enum class DateType : std::uint8_t { DateTime, SmallDateTime, Date, Time };

/// How the groups of a date text are to be read.
struct DateReading {
    tsql::DateOrder slashes = tsql::DateOrder::Mdy; ///< order of groups with slashes; hyphens with the year last too
    tsql::DateOrder points = tsql::DateOrder::Dmy;
    bool yearFirstIsIso = true; ///< a year of four digits in front means year, month, day whatever the order
};

struct ParsedDate {
    enum class Status : std::uint8_t {
        Ok,
        Malformed, ///< no date text at all
        OutOfRange ///< a date text whose day, month or time does not exist
    };
    Status status = Status::Malformed;
    Instant instant = 0;
    std::int32_t fractionDigits = 0;
};

/// "31.12.2024", "12/31/2024", "2024-12-31", "20241231", "Dec 31 2024", "31-Dec-24", each with or without
/// a time "22:15[:30[.125]] [PM]"; a time alone lies on 1900-01-01, and so does an empty text. Years
/// of two digits: 00 to 49 are 20xx.
ParsedDate parseDate(std::string_view text, const DateReading& reading);

/// Reading by a style of CONVERT; error 281 for a number that is none.
DateReading readingOfStyle(std::int64_t style, tsql::DateOrder order);

/// Rounded and range-checked as the type wants it; errors 242 and 8115.
Instant fitDate(Instant instant, DateType type, bool fromText, std::string_view source);

/// A value as a date: the storage form, another date text (errors 241, 242, 295), or a number of days since
/// 1900-01-01.
Instant toDate(sqlite3_value* value, DateType type, const DateReading& reading);
DateReading defaultReading(const Call& call) noexcept;

} // namespace tamarok::embedded::functions
