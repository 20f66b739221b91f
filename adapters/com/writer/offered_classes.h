#pragma once

#include <span>

#include "identifiers.h"

#include "tamarok/component.h"

namespace tamarok::com {

/// A class of the interface with its identifiers.
struct OfferedRow {
    const component::ClassInfo& info;
    const Identifiers& identifiers;
};

/// Returns the place in the interface of the first operation with this one's name, which is its dispatch id: the
/// functions of a property share theirs.
inline std::size_t dispatchId(const component::ClassInfo& info, const component::OperationInfo& operation) noexcept
{
    std::size_t place = 1;
    for (const component::OperationInfo& other : info.operations) {
        if (other.name == operation.name) break;
        ++place;
    }
    return place;
}

} // namespace tamarok::com
