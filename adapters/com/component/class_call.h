#pragma once

#include <array>
#include <span>

#include "values.h"

#include "tamarok/component.h"

namespace tamarok::com {

/// Returns the type by which the interface carries values of a type of the class map.
VARTYPE typeOf(component::ValueType type) noexcept;

/// Calls an operation of a class with values of the interface.
/// @param arguments  in the order of the signature; what is left out at the end is missing. Arguments by reference hold
///                   the new values afterwards, also where the operation failed after it had changed them.
/// @return the result in the declared type, which the caller clears
/// Errors: those of component::invoke; 13 for a value that the interface cannot carry.
VARIANT callOperation(const component::ClassInfo& info, const component::OperationInfo& operation,
                      const Object& instance, std::span<const VARIANT> arguments);

} // namespace tamarok::com
