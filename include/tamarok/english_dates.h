#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "tamarok/text.h"

#pragma GCC visibility push(default)

/// English names of months and days: the database's default language, and the words that date texts may use on
/// a machine of any language.
namespace tamarok::english {

inline constexpr std::array<std::string_view, 12> months{"January",   "February", "March",    "April",
                                                         "May",       "June",     "July",     "August",
                                                         "September", "October",  "November", "December"};
inline constexpr std::array<std::string_view, 7> days{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};

/// A short name is the first three letters of the long one.
inline constexpr std::size_t shortNameLength = 3;

constexpr std::string_view shortName(std::string_view name) noexcept
{
    return name.substr(0, shortNameLength);
}

/// Position of a long or short name in `names`, counted from 1, without regard to case; 0 for any other word.
template <std::size_t count>
std::int32_t indexOf(const std::array<std::string_view, count>& names, std::string_view word) noexcept
{
    for (std::size_t index = 0; index < count; ++index)
        if (text::equalsNoCase(word, names[index]) || text::equalsNoCase(word, shortName(names[index])))
            return static_cast<std::int32_t>(index) + 1;
    return 0;
}

/// 1 to 12 for the long or short name of a month, 0 for any other word.
inline std::int32_t monthOf(std::string_view word) noexcept
{
    return indexOf(months, word);
}

} // namespace tamarok::english

#pragma GCC visibility pop
