#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Numbers as the server prints and rounds them. The file holds decimals as doubles, so every decimal place is one
/// of the double's 15-digit form (tamarok/decimal_digits.h).
namespace tamarok::embedded::functions {

/// Rounds to `places` decimals, half away from zero; below 0 to tens, hundreds and so on.
double roundHalfAway(double number, std::int32_t places) noexcept;
/// Drops the decimals after the first `places`, below 0 tens, hundreds and so on.
double truncateTo(double number, std::int32_t places) noexcept;
/// Rounds a whole number to tens, hundreds and so on (`places` below 0), half away from zero or, with `cut`,
/// towards zero. Returns false if the result leaves 64 bits.
bool roundWhole(std::int64_t number, std::int32_t places, bool cut, std::int64_t& result) noexcept;

/// Writes a whole number into `buffer` and returns its text.
std::string_view writeWhole(std::int64_t number, std::span<char, 40> buffer) noexcept;
/// Writes a float as CONVERT does and returns its text.
/// @param style 0: at most 6 digits; with an exponent 1: 8 digits, 2: 16 digits, 3: 17 digits
std::string_view writeFloat(double number, std::int32_t style, std::span<char, 40> buffer) noexcept;

/// A number with exactly `scale` decimals (0 to 38), rounded half away from zero.
std::string decimalText(double number, std::int32_t scale);

/// A money value. @param style 0: two decimals, 1: the same with commas, 2 and 126: four decimals
std::string moneyText(double number, std::int32_t style);

} // namespace tamarok::embedded::functions
