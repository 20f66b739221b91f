#include "tamarok_tsql/date_order.h"

#include <array>

#include "tamarok_tsql/names.h"

namespace tamarok::tsql {
namespace {

/// In the order of the enumeration.
constexpr std::array<std::string_view, 6> names{"mdy", "dmy", "ymd", "ydm", "myd", "dym"};
static_assert(names[static_cast<std::size_t>(DateOrder::Dym)] == "dym");

} // namespace

std::optional<DateOrder> parseDateOrder(std::string_view name) noexcept
{
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (sameName(names[i], name)) return static_cast<DateOrder>(i);
    }
    return std::nullopt;
}

std::string_view dateOrderName(DateOrder order) noexcept
{
    return names.at(static_cast<std::size_t>(order));
}

} // namespace tamarok::tsql
