#pragma once

#include <string>
#include <vector>

#include "counted_object.h"

#include "tamarok/object.h"

namespace tamarok::com {

/// Returns an object of the library as one of the interface; the null pointer for Nothing, and the client's own object
/// for an AutomationObject.
ComPointer<IDispatch> toDispatch(const ObjectRef& object);

/// Returns the library's object that `toDispatch` of this DLL has given out as `object`; empty for any other.
ObjectRef heldObject(IUnknown* object);

} // namespace tamarok::com
