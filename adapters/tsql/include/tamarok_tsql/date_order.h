#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tamarok::tsql {

/// Order of day, month and year in date texts with slashes.
enum class DateOrder : std::uint8_t { Mdy, Dmy, Ymd, Ydm, Myd, Dym };

/// Reads the name of an order, such as "dmy", without regard to case; empty for an unknown name.
std::optional<DateOrder> parseDateOrder(std::string_view name) noexcept;

/// Name of an order as SET DATEFORMAT writes it: "dmy".
std::string_view dateOrderName(DateOrder order) noexcept;

} // namespace tamarok::tsql
