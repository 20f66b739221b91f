#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tamarok/error.h"

namespace tamarok::catalogue {

/// Calls `visit` with each id of a list such as "5, 182, 289-303", in the order of the list. Used
/// at compile time, where a malformed list fails the build; Error 5 at run time.
template <class Visit>
constexpr void forEachId(std::string_view list, Visit visit)
{
    std::size_t at = 0;
    const auto number = [&]() -> std::int16_t {
        int value = 0;
        const std::size_t first = at;
        for (; at < list.size() && list[at] >= '0' && list[at] <= '9'; ++at) {
            value = value * 10 + (list[at] - '0');
        }
        if (at == first || value > INT16_MAX) {
            throw Error{errors::invalidArgument, "An id is expected in the list of column ids."};
        }
        return static_cast<std::int16_t>(value);
    };
    while (at < list.size()) {
        const std::int16_t first = number();
        std::int16_t last = first;
        if (at < list.size() && list[at] == '-') {
            ++at;
            last = number();
        }
        for (int id = first; id <= last; ++id) {
            visit(static_cast<std::int16_t>(id));
        }
        if (list.substr(at, 2) == ", ") {
            at += 2;
        } else if (at < list.size()) {
            throw Error{errors::invalidArgument, "Column ids are divided by a comma and a blank."};
        }
    }
}

} // namespace tamarok::catalogue
