#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace tamarok {

/// Collects the digits of a number and turns them into the nearest double. Takes any count of
/// digits in linear time: what lies beyond the digits that can decide a rounding is only remembered
/// as being zero or not.
class DigitCollector {
public:
    void addWhole(char digit) noexcept;
    void addFraction(char digit) noexcept;
    bool any() const noexcept { return any_; }

    /// The number times ten to the power of `exponent`; nothing where it is beyond the doubles.
    std::optional<double> value(std::int32_t exponent) noexcept;

private:
    static constexpr std::size_t maxDigits = 780; ///< more than any midpoint between two doubles has

    void add(char digit) noexcept;
    std::optional<double> convert(std::int64_t scale) noexcept;

    std::array<char, maxDigits + 24> digits_;
    std::size_t count_ = 0;
    std::uint64_t leading_ = 0; ///< value of the first 19 digits
    std::int64_t scale_ = 0;    ///< power of ten that the digits are multiplied by
    bool any_ = false;
    bool remainder_ = false;
};

} // namespace tamarok
