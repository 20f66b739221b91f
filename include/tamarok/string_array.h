#pragma once

#include <cstdint>
#include <string>
#include <vector>

#pragma GCC visibility push(default)

namespace tamarok {

/// An array of texts whose first index an operation sets, such as 1. The class map hands it to the caller with that
/// lower bound.
struct StringArray {
    std::vector<std::string> values;
    std::int32_t lower = 0; ///< index of the first element

    friend bool operator==(const StringArray&, const StringArray&) = default;
};

} // namespace tamarok

#pragma GCC visibility pop
