#pragma once

#include "windows_headers.h"

#include "tamarok/variant.h"

namespace tamarok::com {

/// Returns an object whose properties are the fields of a record, of which it keeps a copy. They can be read only.
/// Error 13 for a record without description.
Variant makeRecordValue(const VARIANT& record);

} // namespace tamarok::com
