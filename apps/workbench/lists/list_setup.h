#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tamarok/variant.h"

namespace tamarok::workbench {

/// A condition: a column has a value, which may be Null.
struct ValueFilter {
    std::int16_t column = 0;
    Variant value;
    friend bool operator==(const ValueFilter&, const ValueFilter&) = default;
};

/// What a list shows.
struct ListSetup {
    std::string type = "LOG";  ///< in capitals
    std::string version = "R"; ///< settlement, for a type whose columns have versions
    std::vector<std::int16_t> columns;
    std::vector<ValueFilter> filters; ///< all of them hold
    std::vector<std::int16_t> order;
    bool descending = false;
    bool grouped = false; ///< one row for each combination of the columns that are no measures
};

} // namespace tamarok::workbench
