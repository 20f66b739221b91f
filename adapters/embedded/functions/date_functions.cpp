#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "functions/catalog.h"
#include "functions/conversion.h"
#include "functions/date_conversion.h"
#include "functions/date_text.h"

#include "tamarok/english_dates.h"
#include "tamarok/text.h"

/// Functions of dates and times.
namespace tamarok::embedded::functions {

namespace {

enum class Part : std::uint8_t {
    Year,
    Quarter,
    Month,
    DayOfYear,
    Day,
    Week,
    Weekday,
    IsoWeek,
    Hour,
    Minute,
    Second,
    Millisecond,
    Microsecond
};

struct PartName {
    std::string_view name;
    Part part;
};

/// All spellings of the parts of a date. The translation passes full names; a statement in SQLite's own text may use
/// any.
constexpr std::array partNames = {PartName{"year", Part::Year},
                                  PartName{"yy", Part::Year},
                                  PartName{"yyyy", Part::Year},
                                  PartName{"quarter", Part::Quarter},
                                  PartName{"qq", Part::Quarter},
                                  PartName{"q", Part::Quarter},
                                  PartName{"month", Part::Month},
                                  PartName{"mm", Part::Month},
                                  PartName{"m", Part::Month},
                                  PartName{"dayofyear", Part::DayOfYear},
                                  PartName{"dy", Part::DayOfYear},
                                  PartName{"y", Part::DayOfYear},
                                  PartName{"day", Part::Day},
                                  PartName{"dd", Part::Day},
                                  PartName{"d", Part::Day},
                                  PartName{"week", Part::Week},
                                  PartName{"wk", Part::Week},
                                  PartName{"ww", Part::Week},
                                  PartName{"weekday", Part::Weekday},
                                  PartName{"dw", Part::Weekday},
                                  PartName{"w", Part::Weekday},
                                  PartName{"iso_week", Part::IsoWeek},
                                  PartName{"isowk", Part::IsoWeek},
                                  PartName{"isoww", Part::IsoWeek},
                                  PartName{"hour", Part::Hour},
                                  PartName{"hh", Part::Hour},
                                  PartName{"minute", Part::Minute},
                                  PartName{"mi", Part::Minute},
                                  PartName{"n", Part::Minute},
                                  PartName{"second", Part::Second},
                                  PartName{"ss", Part::Second},
                                  PartName{"s", Part::Second},
                                  PartName{"millisecond", Part::Millisecond},
                                  PartName{"ms", Part::Millisecond},
                                  PartName{"microsecond", Part::Microsecond},
                                  PartName{"mcs", Part::Microsecond}};

/// Error 155 for a name that is none.
Part partOf(std::string_view name, std::string_view function)
{
    for (const PartName& entry : partNames) {
        if (text::equalsNoCase(entry.name, name)) return entry.part;
    }
    fail(155, "'" + std::string{name} + "' is not a recognized " + std::string{function} + " option.");
}

[[noreturn]] void failPart(std::string_view name, std::string_view function)
{
    fail(9810, "The datepart " + std::string{name} + " is not supported by date function " + std::string{function} +
                   " for data type datetime.");
}

/// The argument of a function of days: a text may name any day of the years 1 to 9999.
Instant dateArgument(const Call& call, std::size_t index)
{
    const Storage storage = call.storage(index);
    const bool number = storage == Storage::Whole || storage == Storage::Real;
    return toDate(call.value(index), number ? TypeKind::DateTime : TypeKind::Date, readingOf(call));
}

/// The argument of a function of times: a text is not rounded to the 1/300 s of a datetime.
Instant timeArgument(const Call& call, std::size_t index)
{
    const tsql::DateReading reading = readingOf(call);
    if (call.storage(index) == Storage::Text) {
        const auto conversion = tsql::convertDateText(call.text(index), TypeKind::DateTime2, reading);
        if (conversion.error == 0) return conversion.instant;
    }
    return toDate(call.value(index), TypeKind::DateTime, reading);
}

/// tm_date and its like: converts a date, a text, or a number of days from 1900-01-01, and rounds to the type.
void resultDate(Call& call, TypeKind type)
{
    if (call.isNull(0)) return call.resultNull();
    resultInstant(call, toDate(call.value(0), type, readingOf(call)));
}

/// Rounds down, also below 0.
constexpr std::int64_t floorDivide(std::int64_t number, std::int64_t unit) noexcept
{
    return number >= 0 ? number / unit : -((-number + unit - 1) / unit);
}

/// Weeks begin on Sunday, and week 1 contains 1 January (DATEFIRST 7).
std::int64_t weekOfYear(const CivilTime& parts) noexcept
{
    const std::int64_t newYear = serverDay(parts.year, 1, 1);
    const std::int64_t dayOfYear = serverDay(parts.year, parts.month, parts.day) - newYear;
    return (dayOfYear + weekdayOfServerDay(newYear) - 1) / 7 + 1;
}

/// What DATEPART returns.
std::int64_t partValue(Part part, Instant instant) noexcept
{
    const CivilTime parts = toParts(instant);
    switch (part) {
    case Part::Year: return parts.year;
    case Part::Quarter: return (parts.month - 1) / 3 + 1;
    case Part::Month: return parts.month;
    case Part::DayOfYear: return dayOf(instant) - serverDay(parts.year, 1, 1) + 1;
    case Part::Day: return parts.day;
    case Part::Week: return weekOfYear(parts);
    case Part::Weekday: return weekdayOfServerDay(dayOf(instant));
    case Part::IsoWeek: return isoWeek(dayOf(instant));
    case Part::Hour: return parts.hour;
    case Part::Minute: return parts.minute;
    case Part::Second: return parts.second;
    case Part::Millisecond: return parts.millisecond;
    case Part::Microsecond: return parts.millisecond * std::int64_t{1000};
    }
    return 0;
}

/// Number of the period that contains an instant. DATEDIFF is the difference of two of them: it counts boundaries.
std::int64_t periodOf(Part part, Instant instant) noexcept
{
    const CivilTime parts = toParts(instant);
    switch (part) {
    case Part::Year: return parts.year;
    case Part::Quarter: return parts.year * std::int64_t{4} + (parts.month - 1) / 3;
    case Part::Month: return parts.year * std::int64_t{12} + parts.month;
    case Part::Week:
    case Part::IsoWeek: return floorDivide(dayOf(instant) + 1, 7); // boundaries before Sundays
    case Part::DayOfYear:
    case Part::Day:
    case Part::Weekday: return dayOf(instant);
    case Part::Hour: return floorDivide(instant, oneHour);
    case Part::Minute: return floorDivide(instant, oneMinute);
    case Part::Second: return floorDivide(instant, oneSecond);
    case Part::Millisecond: return instant;
    case Part::Microsecond: return instant * 1000;
    }
    return 0;
}

/// What DATEADD returns before it is rounded; nothing outside the years 1 to 9999.
std::optional<Instant> addParts(Part part, std::int64_t number, Instant instant) noexcept
{
    switch (part) {
    case Part::Year: return addMonths(instant, number * 12);
    case Part::Quarter: return addMonths(instant, number * 3);
    case Part::Month: return addMonths(instant, number);
    case Part::DayOfYear:
    case Part::Day:
    case Part::Weekday: return instant + number * oneDay;
    case Part::Week:
    case Part::IsoWeek: return instant + number * 7 * oneDay;
    case Part::Hour: return instant + number * oneHour;
    case Part::Minute: return instant + number * oneMinute;
    case Part::Second: return instant + number * oneSecond;
    case Part::Millisecond: return instant + number;
    case Part::Microsecond: return instant + std::llround(static_cast<double>(number) / 1000.0);
    }
    return std::nullopt;
}

void resultPart(Call& call, Part part)
{
    if (call.isNull(0)) return call.resultNull();
    call.result(partValue(part, dateArgument(call, 0)));
}

} // namespace

void tmDate(Call& call)
{
    resultDate(call, TypeKind::Date);
}

void tmDateTime(Call& call)
{
    resultDate(call, TypeKind::DateTime);
}

void tmSmallDateTime(Call& call)
{
    resultDate(call, TypeKind::SmallDateTime);
}

void tmDateTime2(Call& call)
{
    resultDate(call, TypeKind::DateTime2);
}

void tmTime(Call& call)
{
    resultDate(call, TypeKind::Time);
}

/// CONVERT of a text to datetime by a style. Error 281 for an unknown style.
void tmDateTimeStyle(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const tsql::DateReading reading = readingOfStyle(call, call.whole(1));
    resultInstant(call, toDate(call.value(0), TypeKind::DateTime, reading));
}

/// CONVERT of a date to text by a style, cut to a length; a negative length is none.
void tmDateText(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const std::string text = dateText(timeArgument(call, 0), call.whole(1));
    const std::int64_t limit = call.whole(2);
    call.result(limit < 0 ? std::string_view{text} : text::left(text, static_cast<std::size_t>(limit)));
}

void getDate(Call& call)
{
    resultInstant(call, now());
}

void getUtcDate(Call& call)
{
    resultInstant(call, nowUtc());
}

void year(Call& call)
{
    resultPart(call, Part::Year);
}

void month(Call& call)
{
    resultPart(call, Part::Month);
}

void dayOfMonth(Call& call)
{
    resultPart(call, Part::Day);
}

void datePart(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const Part part = partOf(call.text(0), "datepart");
    call.result(partValue(part, timeArgument(call, 1)));
}

/// DATENAME: month and weekday as English names, the other parts as numbers.
void dateName(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const Part part = partOf(call.text(0), "datename");
    const std::int64_t value = partValue(part, timeArgument(call, 1));
    if (part == Part::Month) return call.result(english::months[static_cast<std::size_t>(value - 1)]);
    if (part == Part::Weekday) return call.result(english::days[static_cast<std::size_t>(value - 1)]);
    call.result(std::string_view{std::to_string(value)});
}

/// A datetime stays rounded to its 1/300 s; a day that the target month lacks becomes its last.
void dateAdd(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const Part part = partOf(call.text(0), "dateadd");
    // The server can read ISO weeks from a date, but not add them.
    if (part == Part::IsoWeek) failPart(call.text(0), "dateadd");
    const std::int64_t number = checkedInt(call.whole(1));
    const Instant instant = timeArgument(call, 2);
    auto moved = addParts(part, number, instant);
    // A number of milliseconds or microseconds can lead to a time between two ticks of 1/300 second.
    const bool fine = part == Part::Millisecond || part == Part::Microsecond;
    if (moved && fine) moved = roundToDateTime(*moved);
    if (!moved || *moved < firstDate || *moved > lastDate) {
        failWith(517, "Adding a value to a 'datetime' column caused an overflow.", std::to_string(number));
    }
    resultInstant(call, *moved);
}

/// The number of boundaries between two dates. Error 535 beyond 32 bits.
void dateDiff(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const Part part = partOf(call.text(0), "datediff");
    const std::int64_t difference = periodOf(part, timeArgument(call, 2)) - periodOf(part, timeArgument(call, 1));
    if (difference != static_cast<std::int32_t>(difference)) {
        failWith(535,
                 "The datediff function resulted in an overflow. The number of dateparts separating two date/time "
                 "instances is too large. Try to use datediff with a less precise datepart.",
                 std::to_string(difference));
    }
    call.result(difference);
}

/// EOMONTH(date [, months]): the last day of the month; Null months count as 0.
void endOfMonth(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const bool moves = call.count() > 1 && !call.isNull(1);
    const std::int64_t months = moves ? call.whole(1) : 0;
    const auto moved = addMonths(dateArgument(call, 0), months);
    if (!moved) {
        failWith(517, "Adding a value to a 'date' column caused an overflow.", std::to_string(months));
    }
    const CivilTime parts = toParts(*moved);
    resultInstant(call, serverDay(parts.year, parts.month, daysInMonth(parts.year, parts.month)) * oneDay);
}

/// 1 for what converts to datetime; blank texts do not count here.
void isDate(Call& call)
{
    const TextArgument text = call.text(0);
    if (call.storage(0) == Storage::Real || trimBlanks(text).empty()) return call.result(std::int64_t{0});
    const bool fits = tsql::convertDateText(text, TypeKind::DateTime, readingOf(call)).error == 0;
    call.result(std::int64_t{fits});
}

/// date + number of days, fractions being time.
void tmDateAddDays(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const Instant instant = timeArgument(call, 0);
    const double days = call.real(1);
    constexpr double furthest = 4e6; // days; farther than any two dates, and safe to multiply
    const bool near = std::fabs(days) < furthest;
    const double moved = near ? days * static_cast<double>(oneDay) : 0.0;
    const Instant target = roundToDateTime(instant + std::llround(moved));
    if (!near || target < firstDateTime || target > lastDate) {
        failWith(8115, "Arithmetic overflow error converting expression to data type datetime.", call.text(1));
    }
    resultInstant(call, target);
}

/// tm_datediff_days(a, b): the days from b to a, with the time as a fraction.
void tmDateDiffDays(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const Instant difference = timeArgument(call, 0) - timeArgument(call, 1);
    call.result(static_cast<double>(difference) / static_cast<double>(oneDay));
}

} // namespace tamarok::embedded::functions
