#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tamarok/plain_number.h"
#include "tamarok/platform.h"
#include "tamarok/regional.h"
#include "tamarok/variant.h"

/// The one home of conversions between values and text. Functions without a Regional use the
/// calling thread's.
namespace tamarok::convert {

/// Longest text of a number: sign, 15 digits, point, leading zeros or exponent.
inline constexpr std::size_t maxNumberText = 32;

/// A number as text: shortest form with at most 15 significant digits, no grouping, no separator on
/// a whole number; from 1E+15 on and below 1E-4 as "1.5E+20", "1E-05", an exponent of two digits at
/// least. Error 6 for a number that is not finite.
std::string toText(double number, const Regional& regional);
/// The same with "." whatever the regional settings are.
std::string toPlainText(double number);
/// The same into `buffer` (at least maxNumberText); `decimal` is the separator. Returns the length,
/// 0 for a number that is not finite.
std::size_t writeNumber(double number, std::span<char> buffer, char decimal = '.') noexcept;

/// A date as text in the regional short form, rounded to whole seconds: date alone where the time is
/// midnight, time alone on day 0, else both with a blank. Error 6 outside the range of dates.
std::string toText(Date date, const Regional& regional);

/// Any value as text: Null fails (94), Empty gives "", Boolean its regional words, Object and Array
/// fail (13; an ADO field counts as its value, as in every conversion; an object that holds nothing
/// is 91).
std::string toText(const Variant& value, const Regional& regional);
std::string toText(const Variant& value);

/// Number out of text as a person types it: surrounding blanks, sign before or behind, thousands
/// marks between digits of the whole part wherever they stand, exponent (E or D). Where the mark is
/// a blank of any kind, every kind of blank counts as it; where it is an apostrophe, either kind.
/// Nothing where it is no number, currency signs, brackets and a number beyond the doubles included.
std::optional<double> parseNumber(std::string_view text, const Regional& regional) noexcept;
/// Any other text than the usual ones, into `number`; for readNumber.
bool readUnusualNumber(std::string_view text, const Regional& regional, double& number) noexcept;
/// The same into `number`, which stays as it is where the text is no number (false). For tables of
/// numbers: an optional is given back through memory, at twice the cost of reading a short number.
inline bool readNumber(std::string_view text, const Regional& regional, double& number) noexcept
{
    if (regional.decimal.size() == 1 && readPlainNumber(text, regional.decimal.front(), number)) [[likely]]
        return true;
    return readUnusualNumber(text, regional, number);
}
/// Number with "." only, as SQL and files have it: a sign before it, an exponent; no blanks, no marks.
std::optional<double> parsePlainNumber(std::string_view text) noexcept;

/// Date out of text: day, month and year in the regional order, divided by points, slashes, hyphens
/// or blanks; two- and four-digit years (00-29 is 20xx, 30-99 is 19xx, any other below 100 as well);
/// month names long and short, regional and English; a time alone, behind or before the date, with
/// AM and PM; ISO dates always.
///
/// A year of three or four digits, or above 31, is seen wherever it stands. Where day and month do
/// not fit the regional order but fit the other way round (13/02/2024 under M/d), they change
/// places; with the year first they never do. A year that is missing is the current one by the
/// platform's clock, a day that is missing (month and four-digit year) the first. A date of ISO
/// shape is one, except on a machine whose own short date is year-day-month with hyphens. Under a
/// pattern with the year first, a date with the year last is read day first.
///
/// Nothing where it is no date: 31.02. is none.
std::optional<Date> parseDate(std::string_view text, const Regional& regional);

/// Numbers, Booleans, Empty and texts that are numbers. Never a Date, Null, array or object.
bool isNumeric(const Variant& value, const Regional& regional);
bool isNumeric(const Variant& value);
/// Dates within their range and texts that are dates.
bool isDate(const Variant& value, const Regional& regional);
bool isDate(const Variant& value);

/// Conversions to a type, as an assignment does them. Null fails (94), Empty is 0, "" or day 0, a
/// text that is no number fails (13), a value out of range fails (6). Halves round to even. Boolean
/// true is -1, a Date its days. A text becomes a date only where parseDate reads one.
std::int16_t toInteger(const Variant& value);
std::int32_t toLong(const Variant& value);
std::int64_t toLongLong(const Variant& value);
double toDouble(const Variant& value);
Date toDate(const Variant& value);
/// Numbers: not 0; texts: the regional words, "True"/"False" in any case, or a number.
bool toBoolean(const Variant& value);

/// Overflow-checked narrowing of computed values; Error 6 names `what`.
std::int16_t checkedInteger(std::int64_t value, std::string_view what);
std::int32_t checkedLong(std::int64_t value, std::string_view what);

/// Rounds to `places` decimals (0 to 22, Error 5 otherwise): the scaled double to the nearest whole
/// number, an exact .5 to the even one, and divided back. 0.125 gives 0.12, 2.675 gives 2.68.
double roundHalfEven(double number, std::int32_t places);

/// The nearest whole number, an exact .5 to the even one.
inline double nearestEven(double number) noexcept
{
    // From 2^52 on a double has no decimals; below, adding 2^52 leaves no room for them, and the
    // processor's own rounding is to the nearest with halves to even.
    constexpr double noDecimals = 4503599627370496.0;
    if (!(std::abs(number) < noDecimals)) return number;
    const double shift = std::copysign(noDecimals, number);
    return (number + shift) - shift;
}

} // namespace tamarok::convert
