#pragma once

#include <string>
#include <string_view>

#include "tamarok/regional.h"
#include "tamarok/variant.h"

/// Number and date patterns.
namespace tamarok::format {

/// A number by a pattern: "0" a digit always, "#" a digit where there is one, "." the decimal place
/// (prints the regional separator), "," between digit places grouping by the regional mark, "%"
/// times 100, "E+00"; literals in quotes or behind a backslash; up to three sections divided by ";" (positive,
/// negative, zero). Rounds the 15-significant-digit decimal form, halves away from zero. An empty pattern gives the
/// number's plain text.
std::string number(double value, std::string_view pattern, const Regional& regional);

/// A date by a pattern: d dd ddd dddd m mm mmm mmmm M MM MMM MMMM yy yyyy h hh n nn s ss AM/PM; "m"
/// and "mm" directly behind an hour (or before seconds) are minutes; "/" and ":" stand as they are
/// except that "/" prints the separator of the regional short date. Case counts nowhere but in AM/PM.
std::string date(Date value, std::string_view pattern, const Regional& regional);

/// Any value: a pattern with date letters takes the date form (a text that is a date counts), any
/// other the number form (a text that is a number counts); a text that is neither comes back as it
/// stands. Null gives "".
std::string value(const Variant& value, std::string_view pattern, const Regional& regional);
std::string value(const Variant& value, std::string_view pattern);

/// The machine's decimal separator as the input filters find it: the second character of 0 under "0.0".
std::string decimalSeparator(const Regional& regional);

} // namespace tamarok::format
