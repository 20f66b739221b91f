#pragma once

#include <optional>
#include <string_view>

#include "tamarok/date_order.h"

#pragma GCC visibility push(default)

namespace tamarok::tsql {

using tamarok::DateOrder;

/// Reads the name of an order, such as "dmy", without regard to case; empty for an unknown name.
std::optional<DateOrder> parseDateOrder(std::string_view name) noexcept;

/// Name of an order as SET DATEFORMAT writes it: "dmy".
std::string_view dateOrderName(DateOrder order) noexcept;

} // namespace tamarok::tsql

#pragma GCC visibility pop
