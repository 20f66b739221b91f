#include "tamarok_tsql/schema.h"

#include "tamarok_tsql/names.h"

namespace tamarok::tsql {

void Table::indexColumns()
{
    std::size_t size = 8;
    while (size < columns.size() * 2)
        size *= 2;
    slots.assign(size, 0);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::size_t slot = nameHash(columns[i].name) & (size - 1);
        while (slots[slot] != 0)
            slot = (slot + 1) & (size - 1);
        slots[slot] = static_cast<std::uint16_t>(i + 1);
    }
}

std::int32_t Table::column(std::string_view wanted) const
{
    if (slots.empty()) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (sameName(columns[i].name, wanted)) return static_cast<std::int32_t>(i);
        }
        return -1;
    }
    const std::size_t mask = slots.size() - 1;
    for (std::size_t slot = nameHash(wanted) & mask; slots[slot] != 0; slot = (slot + 1) & mask) {
        const auto index = static_cast<std::size_t>(slots[slot] - 1);
        if (sameName(columns[index].name, wanted)) return static_cast<std::int32_t>(index);
    }
    return -1;
}

} // namespace tamarok::tsql
