#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tamarok/platform.h"
#include "tamarok/regional.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

/// Conversions between values and text, and between types. All conversions of the library are here;
/// patterns are in format.h. Functions without a `Regional` use the regional settings of the calling
/// thread's platform.
///
/// An object with a default value, such as a recordset's Field, converts as that value. Any other object
/// is Error 13, an empty object reference Error 91.
namespace tamarok::convert {

// Values to text.

/// Buffer size for `writeNumber`: sign, 15 digits, separator, leading zeros or exponent.
inline constexpr std::size_t maxNumberText = 32;

/// Returns a number as text with at most 15 significant digits, without grouping and without trailing
/// zeros: "0.5", "-1234.25", "7". From 1E+15 on and below 1E-4 in exponent form with at least two
/// exponent digits: "1.5E+20", "1E-05". The separator is `regional.decimal`.
/// Error 6 for a number that is not finite.
std::string toText(double number, const Regional& regional);

/// Returns the same text with "." as separator. The 15 digits of the largest numbers, from 1.797693134862315E+308 on,
/// round up to "1.79769313486232E+308", which lies beyond the range: `parsePlainNumber` gives nothing for it.
std::string toPlainText(double number);

/// Writes the same text into `buffer`, which has room for `maxNumberText` characters.
/// @return the length, 0 for a number that is not finite
std::size_t writeNumber(double number, std::span<char> buffer, char decimal = '.') noexcept;

/// Returns a date as text by the regional date and time patterns, rounded to whole seconds: the date alone
/// at midnight, the time alone on day 0 (30 December 1899), otherwise both with a blank between.
/// Error 6 outside the years 100 to 9999.
std::string toText(Date date, const Regional& regional);

/// Returns any value as text. Empty gives "", a Boolean the regional words for true and false.
/// Errors: 94 for Null, 13 for an array or an object without default value, 91, 6.
std::string toText(const Variant& value, const Regional& regional);
std::string toText(const Variant& value);

/// Returns a number text as SQL needs it: each "," becomes "." and each thousands separator is removed. A
/// thousands separator "," becomes "." instead. Required by the contract. Do not correct.
/// @param thousands  one character; a text of any other length removes nothing
std::string toSqlNumber(std::string_view numberText, std::string_view thousands = {});

/// Returns the regional text of a number with "." for ",".
/// Error 6 for a number that is not finite.
std::string toSqlNumber(double number, const Regional& regional);

// Text to values.

/// Reads a number as a person types it. Allowed are blanks around it, a sign before or after it, thousands
/// separators anywhere between the digits before the decimal separator, and an exponent (E or D). If
/// the thousands separator is a kind of blank, every kind of blank is accepted for it; the same holds
/// for apostrophes.
/// @return nothing for any other text, such as one with a currency sign or brackets, and for a number
/// beyond the range of double
std::optional<double> parseNumber(std::string_view text, const Regional& regional);

/// Reads a number with "." as decimal separator, as SQL text and files have it: sign, digits, exponent; no
/// blanks and no thousands separators. Nothing for any other text, and for a number beyond the range of double.
std::optional<double> parsePlainNumber(std::string_view text);

/// Reads a date as a person types it: day, month and year in the regional order, separated by points,
/// slashes, hyphens or blanks; months also by name, long and short, regional and English; a time alone, or
/// before or after the date, also with AM and PM; ISO dates always.
///
/// - A two-digit year from 00 to 29 is 20xx, from 30 to 99 is 19xx.
/// - A number of three or four digits, or above 31, is the year, wherever it stands.
/// - If day and month do not fit the regional order, they are exchanged (13/02/2024 under M/d). This does
///   not happen with the year first.
/// - A missing year is the current one; a missing day (month and four-digit year) is the first.
/// - A text of ISO shape is an ISO date, except where the regional short date is year-day-month with hyphens.
/// - Under a pattern with the year first, a date with the year last is read day first.
///
/// @return nothing for any other text and for a day that does not exist, such as 31.02.
std::optional<Date> parseDate(std::string_view text, const Regional& regional);

/// Returns whether a value is a number: a numeric type, Boolean, Empty, or a text that `parseNumber` reads.
/// False for dates, Null, arrays and objects without default value.
bool isNumeric(const Variant& value, const Regional& regional);
bool isNumeric(const Variant& value);

/// Returns whether a value is a date within the years 100 to 9999 or a text that `parseDate` reads.
bool isDate(const Variant& value, const Regional& regional);
bool isDate(const Variant& value);

// Values to types, as an assignment to a variable of that type converts them. Empty is 0, "" or day 0; a
// Boolean true is -1; a Date counts as its number of days; halves round to the even number.
// Errors: 94 for Null, 13 for a text or object that does not convert and for arrays, 6 outside the range of
// the type, 91.

std::int16_t toInteger(const Variant& value);
std::int32_t toLong(const Variant& value);
std::int64_t toLongLong(const Variant& value);
double toDouble(const Variant& value);

/// A text becomes a date if `parseDate` reads it; a number is the number of days.
Date toDate(const Variant& value);

/// A number is true unless it is 0. A text is one of the regional words for true and false, "True" or
/// "False" (in any case), or a number.
bool toBoolean(const Variant& value);

// Arithmetic.

/// Returns `value` in the narrower type. Error 6, which names `what`, outside its range.
std::int16_t checkedInteger(std::int64_t value, std::string_view what);
std::int32_t checkedLong(std::int64_t value, std::string_view what);

/// Rounds to decimals: scales the number by a power of ten, rounds the product to the nearest whole number,
/// an exact .5 to the even one, and divides again. 0.125 gives 0.12, 2.675 gives 2.68.
/// @param places  0 to 22; Error 5 otherwise
/// Error 6 if the product overflows.
double roundHalfEven(double number, std::int32_t places);

/// Returns the nearest whole number; an exact .5 goes to the even one. The result is never -0.
inline double nearestEven(double number) noexcept
{
    return std::nearbyint(number) + 0.0;
}

} // namespace tamarok::convert

#pragma GCC visibility pop
