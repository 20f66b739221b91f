#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Numbers as the server prints and rounds them. Decimals lie in the file as doubles, so everything
/// that looks at decimal places looks at the 15-digit decimal form of the double.
namespace tamarok::embedded::functions {

/// The 15 significant decimal digits of a number: d.dddddddddddddd times 10^exponent.
struct DecimalDigits {
    bool negative = false;
    char digits[15]; ///< characters '0' to '9'
    std::int32_t exponent = 0;
};
DecimalDigits decimalDigits(double number) noexcept;

/// Rounds to `places` decimals (negative ones before the point), halves away from zero.
double roundHalfAway(double number, std::int32_t places) noexcept;
/// The same by cutting the further places off.
double cutToPlaces(double number, std::int32_t places) noexcept;
/// Whole numbers, `places` < 0; false where the result leaves 64 bits.
bool roundWhole(std::int64_t number, std::int32_t places, bool cut, std::int64_t& result) noexcept;

/// Both write into `buffer` and give the text in it.
std::string_view writeWhole(std::int64_t number, std::span<char, 40> buffer) noexcept;
/// CONVERT of a float. @param style 0: at most 6 digits; 1: 8 digits and 2: 16 digits, 3: 17 digits, with exponent
std::string_view writeFloat(double number, std::int32_t style, std::span<char, 40> buffer) noexcept;

/// A number with exactly `scale` decimals (0 to 38), rounded half away from zero.
std::string decimalText(double number, std::int32_t scale);

/// A money value. @param style 0: two decimals, 1: the same with commas, 2 and 126: four decimals
std::string moneyText(double number, std::int32_t style);

} // namespace tamarok::embedded::functions
