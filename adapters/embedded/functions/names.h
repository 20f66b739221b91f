#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// English names of months and days, as the server's default language has them.
namespace tamarok::embedded::functions {

inline constexpr std::size_t shortNameLength = 3; ///< short names are the beginnings of the long ones

inline constexpr std::array<std::string_view, 12> monthNames = {"January",   "February", "March",    "April",
                                                                "May",       "June",     "July",     "August",
                                                                "September", "October",  "November", "December"};
inline constexpr std::array<std::string_view, 7> dayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                             "Thursday", "Friday", "Saturday"};

/// ASCII letters compared without regard to case.
constexpr bool equalsAscii(std::string_view a, std::string_view b) noexcept
{
    if (a.size() != b.size()) return false;
    for (std::size_t index = 0; index < a.size(); ++index) {
        const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
        if (lower(a[index]) != lower(b[index])) return false;
    }
    return true;
}

/// 1 to 12 for a month's long or short name, 0 for anything else.
constexpr std::int32_t monthOfName(std::string_view name) noexcept
{
    for (std::size_t index = 0; index < monthNames.size(); ++index) {
        if (equalsAscii(name, monthNames[index]) || equalsAscii(name, monthNames[index].substr(0, shortNameLength))) {
            return static_cast<std::int32_t>(index) + 1;
        }
    }
    return 0;
}

} // namespace tamarok::embedded::functions
