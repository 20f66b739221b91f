#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// What the fuzz targets share: the input as text, and its parts.
namespace tamarok::fuzz {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size)
{
    // The standard has no other way from bytes to characters than this one.
    return {reinterpret_cast<const char*>(data), size}; // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast)
}

/// Takes the text up to the separator off the front of `rest`, and the separator with it.
inline std::string_view takeUpTo(std::string_view& rest, char separator)
{
    const std::size_t end = rest.find(separator);
    const std::string_view part = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end + 1);
    return part;
}

} // namespace tamarok::fuzz
