#pragma once

#include <cstddef>
#include <span>

#include "windows_headers.h"

namespace tamarok::com {

/// Where a field of the type library's record lies in it, and its type.
struct FieldPlace {
    std::size_t offset;
    VARTYPE type;
};

/// Returns the places in the order of tmkVarFields. Its definition is generated.
std::span<const FieldPlace> recordLayout() noexcept;

} // namespace tamarok::com
