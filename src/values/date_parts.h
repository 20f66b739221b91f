#pragma once

#include <string>
#include <string_view>

namespace tamarok {

/// Returns the three parts of a date text joined by "/".
inline std::string joinedParts(std::string_view first, std::string_view second, std::string_view third)
{
    std::string result{first};
    result.append("/").append(second).append("/").append(third);
    return result;
}

} // namespace tamarok
