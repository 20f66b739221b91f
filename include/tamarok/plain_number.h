#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tamarok/powers_of_ten.h"

namespace tamarok::convert {

/// Reads a plain number: digits with perhaps a minus before them and one separator of one byte among
/// them, in one walk into `value`. False where the text is anything else, be it a number or not, or has
/// more digits than a double is sure to hold.
inline bool readPlainNumber(std::string_view text, char decimal, double& value) noexcept
{
    constexpr std::size_t sureDigits = 15;
    constexpr std::size_t longest = sureDigits + 2; // sign and separator
    if (text.empty() || text.size() > longest) return false;
    const char* at = text.data();
    const char* const end = at + text.size();
    const bool negative = *at == '-';
    at += negative ? 1 : 0;
    std::int64_t digits = 0;
    const auto readDigits = [&] {
        for (; at != end && *at >= '0' && *at <= '9'; ++at)
            digits = digits * 10 + (*at - '0');
    };
    const char* const whole = at;
    readDigits();
    if (at == whole) return false;
    std::size_t decimals = 0;
    if (at != end && *at == decimal) {
        const char* const fraction = ++at;
        readDigits();
        decimals = static_cast<std::size_t>(at - fraction);
    }
    // Above 15 digits the quotient of two doubles may not be the nearest one.
    const auto count = static_cast<std::size_t>(at - whole) - (decimals > 0 ? 1U : 0U);
    if (at != end || count > sureDigits) return false;
    const double magnitude = static_cast<double>(digits) / powersOfTen[decimals];
    value = negative ? -magnitude : magnitude;
    return true;
}

} // namespace tamarok::convert
