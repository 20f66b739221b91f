#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "functions/call.h"

/// Values to the server's number types. Failures are the server's errors.
namespace tamarok::embedded::functions {

enum class WholeType : std::uint8_t { TinyInt, SmallInt, Int, BigInt };

/// Floats are cut; a text must be a whole number, blanks around it are allowed, a blank text or a lone sign is 0
/// (errors 245, 8114 for bigint, 244, 248). Error 220 or 8115 outside the type. Null counts as 0: callers look before.
std::int64_t toWhole(sqlite3_value* value, WholeType type);

/// A text must be a number, with or without exponent (E or D); a blank text is 0. Error 8114.
double toFloat(sqlite3_value* value);

/// Error 8115 where `number` leaves 32 bits.
std::int64_t checkedInt(std::int64_t number);

/// The number that stands in `text`, with "." only; nothing where it is none or beyond a double.
std::optional<double> readFloat(std::string_view text) noexcept;

/// Blanks taken off both ends.
std::string_view trimBlanks(std::string_view text) noexcept;

/// What ISNUMERIC says of a text.
bool isNumericText(std::string_view text);

/// A text as money: signs of currencies, commas in the whole part. Nothing where it is none.
std::optional<double> readMoney(std::string_view text);

} // namespace tamarok::embedded::functions
