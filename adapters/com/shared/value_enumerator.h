#pragma once

#include <vector>

#include "com_pointer.h"

#include "tamarok/object.h"
#include "tamarok/variant.h"

namespace tamarok::com {

/// Makes an enumerator, as For Each of a script uses it, over the elements that a list object has now: its members
/// Count and Item, whose index begins at 0 or 1. Errors: 438 for an object that is no list.
ComPointer<IEnumVARIANT> makeEnumerator(const Object& list);

} // namespace tamarok::com
