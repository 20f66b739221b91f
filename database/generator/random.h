#pragma once

#include <cstddef>
#include <cstdint>

namespace tamarok::database {

/// A generator of pseudo-random numbers whose every result is fixed by its seed on every machine. The
/// distributions of the standard library differ between implementations. The sequence is SplitMix64: a
/// Weyl sequence scrambled by two multiplications.
class Random {
public:
    /// @param stream  one seed has an independent sequence per stream
    explicit constexpr Random(std::uint64_t seed, std::uint64_t stream = 0) noexcept :
        state_{scramble(seed + weyl) ^ scramble(stream * weyl + 1)}
    {}

    constexpr std::uint64_t next() noexcept { return scramble(state_ += weyl); }

    /// Whole number from 0 to `limit` - 1. @param limit at least 1
    constexpr std::uint32_t below(std::uint32_t limit) noexcept
    {
        return static_cast<std::uint32_t>(((next() >> 32U) * limit) >> 32U);
    }

    /// Whole number from `low` to `high`, both included.
    constexpr std::int32_t between(std::int32_t low, std::int32_t high) noexcept
    {
        return low + static_cast<std::int32_t>(below(static_cast<std::uint32_t>(high - low) + 1U));
    }

    /// Number from 0 to less than 1.
    constexpr double unit() noexcept { return static_cast<double>(next() >> 11U) * 0x1.0p-53; }

    /// Number from `low` to less than `high`.
    constexpr double between(double low, double high) noexcept { return low + (high - low) * unit(); }

    /// Whole number from `low` to `high`, both included, divided by ten: one decimal.
    constexpr double tenths(std::int32_t low, std::int32_t high) noexcept
    {
        return static_cast<double>(between(low, high)) / 10.0;
    }

    /// True in `perMille` of 1000 cases.
    constexpr bool chance(std::uint32_t perMille) noexcept { return below(1000) < perMille; }

    /// Approximately normal number with mean 0 and standard deviation 1, between -3 and 3: the scaled sum
    /// of three uniform numbers.
    constexpr double normal() noexcept { return 2.0 * (unit() + unit() + unit()) - 3.0; }

    /// Item of a table, all equally likely. @param items not empty
    template <class Container>
    constexpr const auto& pick(const Container& items) noexcept
    {
        return items[below(static_cast<std::uint32_t>(items.size()))];
    }

    /// Item of a table, as likely as its member `weight` is of the sum of weights. @param items not empty
    template <class Container>
    constexpr const auto& pickWeighted(const Container& items) noexcept
    {
        std::uint32_t total = 0;
        for (const auto& item : items)
            total += item.weight;
        std::uint32_t drawn = below(total);
        for (const auto& item : items) {
            if (drawn < item.weight) return item;
            drawn -= item.weight;
        }
        return items.back();
    }

private:
    static constexpr std::uint64_t weyl = 0x9E3779B97F4A7C15U;

    static constexpr std::uint64_t scramble(std::uint64_t value) noexcept
    {
        value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
        value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
        return value ^ (value >> 31U);
    }

    std::uint64_t state_;
};

} // namespace tamarok::database
