#pragma once

#include <cstddef>
#include <cstdint>

namespace tamarok::database {

/// A small generator of pseudo-random numbers whose every result is fixed by its seed on every
/// machine (the standard library leaves its distributions to the implementer). The sequence is
/// SplitMix64: a Weyl sequence scrambled by two multiplications.
class Random {
public:
    /// @param stream  makes independent sequences of one seed
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

    constexpr double between(double low, double high) noexcept { return low + (high - low) * unit(); }

    /// True in `perMille` of 1000 cases.
    constexpr bool chance(std::uint32_t perMille) noexcept { return below(1000) < perMille; }

    /// Bell-shaped number around 0 with a standard deviation of 1, between -3 and 3: the sum of three
    /// uniform numbers, scaled.
    constexpr double bell() noexcept { return 2.0 * (unit() + unit() + unit()) - 3.0; }

    template <class Container>
    constexpr const auto& pick(const Container& items) noexcept
    {
        return items[below(static_cast<std::uint32_t>(items.size()))];
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

/// Item of a table drawn by its member `weight`.
template <class Table>
const auto& weighted(const Table& table, Random& random)
{
    std::uint32_t total = 0;
    for (const auto& item : table)
        total += item.weight;
    std::uint32_t drawn = random.below(total);
    for (const auto& item : table) {
        if (drawn < item.weight) return item;
        drawn -= item.weight;
    }
    return table.back();
}

} // namespace tamarok::database
