#pragma once

#include <string>
#include <string_view>

#include "tamarok/regional.h"
#include "tamarok/variant.h"

/// Number and date patterns.
namespace tamarok::format {

/// A number by a pattern: "0" a digit always, "#" a digit where there is one, "." the decimal place
/// (prints the regional separator), "," between digit places grouping by the regional mark, "%"
/// times 100, "E+00"; "," behind the last whole place divides by 1000; literals in quotes, behind a
/// backslash or as any other character; up to three sections divided by ";" (positive, negative,
/// zero). Rounds the 15-significant-digit decimal form, halves away from zero; what rounds to zero
/// has no sign and takes the section for zero. A "." prints the separator even where no decimal
/// follows it ("0.##" of 5). An empty pattern gives the number's plain text. Error 6 for a number
/// that is not finite.
std::string number(double value, std::string_view pattern, const Regional& regional);

/// A date by a pattern: d dd ddd dddd m mm mmm mmmm M MM MMM MMMM yy yyyy h hh n nn s ss AM/PM; "m"
/// and "mm" directly behind an hour (or before seconds) are minutes; "/" prints the separator of the
/// regional short date and ":" that of the time; h counts to 12 where the pattern holds AM/PM (or
/// A/P, or AMPM for the regional words), else to 24. Case counts nowhere but in AM/PM. Literals in
/// quotes or behind a backslash. Rounds to whole seconds. Error 6 outside the range of dates.
std::string date(Date value, std::string_view pattern, const Regional& regional);

/// Any value: a pattern with date letters and no digit place takes the date form (a text that is a
/// date counts, or that is the number of a day), any other the number form (a text that is a number
/// counts); a text that is neither comes back as it stands. "@" and the empty pattern give the
/// value's text. Null gives "", Empty counts as 0, a field as its value; other objects and arrays
/// fail (13).
std::string value(const Variant& value, std::string_view pattern, const Regional& regional);
std::string value(const Variant& value, std::string_view pattern);
std::string value(double value, std::string_view pattern, const Regional& regional);

/// The machine's decimal separator as the input filters find it: the second character of 0 under "0.0".
std::string decimalSeparator(const Regional& regional);

} // namespace tamarok::format
