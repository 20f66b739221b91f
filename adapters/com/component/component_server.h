#pragma once

#include "server.h"

namespace tamarok::com {

/// Returns the twelve classes, their interfaces and the type library. Its definition is generated from the class map.
const Server& componentServer() noexcept;

} // namespace tamarok::com
