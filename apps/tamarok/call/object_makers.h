#pragma once

#include <string>
#include <string_view>

#include "tamarok/object.h"

namespace tamarok::cli {

/// A new object by the name of its type: an ADO object, a headless control, or a class of the library.
/// Names compare without regard to case. Error 429 that lists the known names for any other.
ObjectRef makeObject(std::string_view typeName);

} // namespace tamarok::cli
