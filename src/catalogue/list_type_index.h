#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "list_type.h"

#include "tamarok/error.h"

// The look-up of a description by column id, computed at compile time: one slot for each id from 0 to the highest.
namespace tamarok::catalogue {

/// Number of slots of a description, whose ids rise from row to row.
constexpr std::size_t slotCount(const ListDescription& description)
{
    const auto lastId = [](const auto& rows) -> std::int16_t {
        return rows.size() == 0 ? std::int16_t{0} : (rows.end() - 1)->id;
    };
    return static_cast<std::size_t>(std::max(lastId(description.columns), lastId(description.selectExpressions))) + 1;
}

/// Enters the position of the next row into its slot. Error 5 if the slot has one already.
constexpr void enter(std::uint16_t& slot, std::size_t& position)
{
    if (slot != 0) {
        throw Error{errors::invalidArgument, "A column id has two rows, joins or select expressions."};
    }
    slot = static_cast<std::uint16_t>(++position);
}

/// Fills the slots of a description.
constexpr void enterRows(const ListDescription& description, std::span<ColumnSlot> slots)
{
    std::size_t position = 0;
    for (const Column& column : description.columns) {
        ColumnSlot& slot = slots[static_cast<std::size_t>(column.id)];
        enter(slot.column, position);
        const std::string_view text = column.text;
        const bool isPlain = text.find('{') == std::string_view::npos && text.size() <= UINT16_MAX;
        slot.plainLength = isPlain ? static_cast<std::uint16_t>(text.size()) : std::uint16_t{0};
    }
    position = 0;
    for (const SelectExpression& expression : description.selectExpressions) {
        enter(slots[static_cast<std::size_t>(expression.id)].selectExpression, position);
    }
    position = 0;
    for (const Join& join : description.joins) {
        forEachId(join.ids, [&](std::int16_t id) {
            std::size_t same = position;
            enter(slots[static_cast<std::size_t>(id)].join, same);
        });
        ++position;
    }
}

/// The slots of a description, by column id.
template <std::size_t count>
constexpr std::array<ColumnSlot, count> makeSlots(const ListDescription& description)
{
    std::array<ColumnSlot, count> slots{};
    enterRows(description, slots);
    return slots;
}

} // namespace tamarok::catalogue
