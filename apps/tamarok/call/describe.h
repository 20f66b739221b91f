#pragma once

#include "call/json.h"

namespace tamarok::cli {

/// The class map: classes, their operations in slot order, parameters.
Json describeClasses();

} // namespace tamarok::cli
