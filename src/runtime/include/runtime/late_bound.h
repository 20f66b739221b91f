#pragma once

#include <cstdint>
#include <string_view>

#include "tamarok/object.h"
#include "tamarok/variant.h"

/// Access to the members of controls by name. All functions pass on the errors of the control; a property that holds no
/// object is error 13, one that holds Nothing is error 91.
namespace tamarok::late_bound {

/// Returns the object that a property holds, such as `ListItems`.
ObjectRef objectOf(const Object& object, std::string_view property);

/// Returns the object at an index of a property, such as `Columns(0)`.
ObjectRef elementOf(const Object& object, std::string_view property, std::int32_t index);

/// Returns an element of a collection by its position: `Item(position)`.
ObjectRef elementOf(const Object& collection, std::int32_t position);

/// Returns a property as a whole number.
std::int32_t numberOf(const Object& object, std::string_view property);

} // namespace tamarok::late_bound
