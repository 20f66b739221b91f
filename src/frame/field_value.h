#pragma once

#include "tamarok/variant.h"

namespace tamarok {

/// The value itself, or the value of the field where an ADODB.Field was handed in.
Variant fieldValue(const Variant& value);

} // namespace tamarok
