#pragma once

#include <cstdint>
#include <string_view>

#include "tamarok/object.h"
#include "tamarok/variant.h"

/// Access to the members of controls by name. All functions pass on the errors of the control; a property that holds no
/// object is error 13, one that holds Nothing is error 91.
namespace tamarok::lists {

/// Returns the object that a property holds, such as `ListItems`.
ObjectRef objectOf(const Object& object, std::string_view property);

/// Returns an element of a collection, counted from 1.
ObjectRef elementOf(const Object& collection, std::int32_t position);

/// Returns a property as a whole number.
std::int32_t numberOf(const Object& object, std::string_view property);

} // namespace tamarok::lists
