#pragma once

#include <cstdint>

#pragma GCC visibility push(default)

/// Years of two digits. Three rules exist, and all three are required by the contract: a text may be read by one
/// and printed or stored by another. Do not make them one.
namespace tamarok::pivot {

/// The first of the years 0 to 99 that belongs to the 1900s; the years before it belong to the 2000s.
struct PivotYear {
    std::int32_t firstOf1900s;

    /// The full year of 0 to 99; any other number stands as it is.
    constexpr std::int32_t fullYear(std::int32_t year) const noexcept
    {
        if (year < 0 || year > 99) return year;
        return year + (year < firstOf1900s ? 2000 : 1900);
    }
};

/// Texts that a user types, read by convert::parseDate: the platform's rule, 1930 to 2029.
inline constexpr PivotYear typedText{30};

/// Date texts in the database, and Oracle's masks YY and RR here: the server's default "two digit year cutoff" of
/// 2049, so 1950 to 2049.
inline constexpr PivotYear databaseText{50};

/// Comm_Conv::FullYear and what is built on it: 50 is still 2050, so 1951 to 2050.
inline constexpr PivotYear fullYearOperation{51};

static_assert(typedText.fullYear(29) == 2029 && typedText.fullYear(30) == 1930);
static_assert(databaseText.fullYear(49) == 2049 && databaseText.fullYear(50) == 1950);
static_assert(fullYearOperation.fullYear(50) == 2050 && fullYearOperation.fullYear(51) == 1951);

} // namespace tamarok::pivot

#pragma GCC visibility pop
