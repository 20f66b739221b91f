#pragma once

#include "windows_headers.h"

#include "tamarok/variant.h"

namespace tamarok::com {

/// Returns an array of the library with the elements and bounds of an array of the interface; a null pointer is an
/// array without elements. Errors: 13 for elements that no Variant can hold.
VariantArray fromSafeArray(SAFEARRAY* array);

/// Makes an array of the interface, which the caller destroys, with elements of a type (VT_VARIANT for any). Errors:
/// 13 and 6 for elements that do not convert, 7.
SAFEARRAY* toSafeArray(const VariantArray& array, VARTYPE element);

} // namespace tamarok::com
