#pragma once

#include <string>
#include <string_view>

#include "tamarok/regional.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

/// Formatting by number and date patterns.
namespace tamarok::format {

/// Formats a number by a pattern:
///
/// | In the pattern | Output |
/// | --- | --- |
/// | `0` | a digit, 0 if the number has none at this place |
/// | `#` | a digit, nothing if the number has none at this place |
/// | `.` | the regional decimal separator, also if no decimal follows it ("0.##" of 5 is "5.") |
/// | `,` between digit places | groups the whole digits by the regional thousands separator |
/// | `,` after the last whole place | divides by 1000; may be repeated |
/// | `%` | multiplies by 100, and stands for itself |
/// | `E+00`, `E-00` | exponent form; with `E+` the sign of the exponent is always written |
/// | `"text"`, `\x`, any other character | stands for itself |
/// | `;` | separates up to three sections: positive, negative, zero |
///
/// The number is taken in its decimal form of 15 significant digits; halves are rounded away from zero. A
/// number that rounds to zero has no sign and is written by the section for zero. An empty pattern gives
/// the same text as convert::toText.
/// Error 6 for a number that is not finite.
std::string number(double value, std::string_view pattern, const Regional& regional);

/// Formats a date by a pattern. Letters count in any case, except in AM/PM.
///
/// | In the pattern | Output |
/// | --- | --- |
/// | `d`, `dd`, `ddd`, `dddd` | day, with two digits; name of the weekday, short and long |
/// | `m`, `mm`, `mmm`, `mmmm` | month, with two digits; its name, short and long |
/// | `m`, `mm` after an hour or before seconds | minute |
/// | `yy`, `yyyy` | year of two or four digits |
/// | `h`, `hh`, `n`, `nn`, `s`, `ss` | hour, minute, second |
/// | `AM/PM`, `A/P`, `AMPM` | before or after noon, AMPM by the regional words; hours then count to 12 |
/// | `/`, `:` | separator of the regional short date, of the regional time |
/// | `"text"`, `\x`, any other character | stands for itself |
///
/// The date is rounded to whole seconds. Error 6 outside the years 100 to 9999.
std::string date(Date value, std::string_view pattern, const Regional& regional);

/// Formats any value. A pattern with a digit place is a number pattern, any other one with a date letter a
/// date pattern.
///
/// - A text is converted to a number or date first; a text that does not convert is returned unchanged. For a
///   date pattern, a text may also be the number of a day.
/// - "@" and the empty pattern give the value's text.
/// - Null gives "", Empty counts as 0, an object as its default value.
///
/// Errors: 13 for an array or an object without default value, 91 for an empty object reference, 6.
std::string value(const Variant& value, std::string_view pattern, const Regional& regional);
std::string value(const Variant& value, std::string_view pattern);
std::string value(double value, std::string_view pattern, const Regional& regional);

/// Returns the decimal separator as the input filters determine it: the second character of 0 under "0.0".
std::string decimalSeparator(const Regional& regional);

} // namespace tamarok::format

#pragma GCC visibility pop
