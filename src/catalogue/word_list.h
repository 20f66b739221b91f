#pragma once

#include <algorithm>
#include <string_view>

namespace tamarok::catalogue {

/// Whether `word` is one of the words of a list that blanks separate. Case counts; "" is no word.
constexpr bool isWordOf(std::string_view list, std::string_view word) noexcept
{
    while (!list.empty()) {
        const std::size_t blank = std::min(list.find(' '), list.size());
        if (blank != 0 && list.substr(0, blank) == word) return true;
        list.remove_prefix(std::min(blank + 1, list.size()));
    }
    return false;
}

} // namespace tamarok::catalogue
