#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "functions/call.h"

/// Converts values to the server's number types. Failures are the server's errors.
namespace tamarok::embedded::functions {

enum class WholeType : std::uint8_t { TinyInt, SmallInt, Int, BigInt };

/// Floats are cut; a text must be a whole number, blanks around it are allowed, a blank text or a lone sign is 0
/// (errors 245, 8114 for bigint, 244, 248). Error 220 or 8115 outside the type. Null counts as 0: callers check for it
/// before.
std::int64_t toWhole(sqlite3_value* value, WholeType type);

/// A text must be a number, with or without exponent (E or D); a blank text is 0. Error 8114.
double toFloat(sqlite3_value* value);

/// Error 8115 where the result of a computation leaves its type; checkedInt for int.
std::int64_t checkedWhole(std::int64_t number, WholeType type);
std::int64_t checkedInt(std::int64_t number);
double checkedMoney(double number, bool small);
/// Rounds to the scale first.
double checkedDecimal(double number, std::int64_t precision, std::int64_t scale);

/// Reads a number with the decimal separator ".". Returns nothing for any other text and beyond a double.
std::optional<double> readFloat(std::string_view text) noexcept;

/// Trims blanks on both sides.
std::string_view trimBlanks(std::string_view text) noexcept;

/// True for a text that ISNUMERIC accepts: a float or an amount of money.
bool isNumericText(std::string_view text);

/// Reads an amount of money: a currency sign is allowed, commas in the whole part are ignored. Returns nothing for
/// any other text.
std::optional<double> readMoney(std::string_view text);

} // namespace tamarok::embedded::functions
