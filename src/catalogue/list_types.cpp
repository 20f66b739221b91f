#include "list_types.h"

#include <algorithm>
#include <array>
#include <string>

#include "column_values.h"
#include "dialect/sql_template.h"
#include "select_values.h"

#include "tamarok/text.h"

namespace tamarok::catalogue {

namespace {

using enum Aggregate;
using enum Applies;

constexpr ListDescription descriptions[] = {
#include "types/acl.inc"
#include "types/akat.inc"
#include "types/artikel.inc"
#include "types/bbf.inc"
#include "types/bbf_plann.inc"
#include "types/bbfahr.inc"
#include "types/bbfak.inc"
#include "types/bbfb.inc"
#include "types/bbfs.inc"
#include "types/bbhab.inc"
#include "types/bbhunde.inc"
#include "types/bbjagd.inc"
#include "types/bbjb.inc"
#include "types/bbklr.inc"
#include "types/bblag.inc"
#include "types/bbltn.inc"
#include "types/bbmap.inc"
#include "types/bbobj.inc"
#include "types/bbplan.inc"
#include "types/bbstrk.inc"
#include "types/bbtalk.inc"
#include "types/bbun.inc"
#include "types/bbvs.inc"
#include "types/bbwal.inc"
#include "types/bbwild.inc"
#include "types/bbzv.inc"
#include "types/berm.inc"
#include "types/fhpexp.inc"
#include "types/kiz.inc"
#include "types/log.inc"
#include "types/msch.inc"
#include "types/mvlose.inc"
#include "types/personal.inc"
#include "types/plan.inc"
#include "types/rj.inc"
#include "types/sapagruppe.inc"
#include "types/steh.inc"
#include "types/transport.inc"
#include "types/users.inc"
#include "types/vertrag.inc"
#include "types/waren.inc"
};

constexpr ListDescription deductions[] = {
#include "types/deductions.inc"
};

// What follows checks the descriptions and computes their look-up by column id, at compile time.

constexpr std::size_t slotCount(const ListDescription& description)
{
    std::int16_t last = 0;
    for (const Column& column : description.columns) {
        last = std::max(last, column.id);
    }
    for (const SelectExpression& expression : description.selectExpressions) {
        last = std::max(last, expression.id);
    }
    return static_cast<std::size_t>(last) + 1;
}

constexpr std::size_t slotCount(std::span<const ListDescription> all)
{
    std::size_t count = 0;
    for (const ListDescription& description : all) {
        count += slotCount(description);
    }
    return count;
}

/// Enters the position of the next row into its slot. Error 5 if the slot has one already.
constexpr void enter(std::uint16_t& slot, std::size_t& position)
{
    if (slot != 0) {
        throw Error{errors::invalidArgument, "A column id has two rows, joins or select expressions."};
    }
    slot = static_cast<std::uint16_t>(++position);
}

constexpr void enterRows(const ListDescription& description, std::span<ColumnSlot> slots)
{
    std::size_t position = 0;
    for (const Column& column : description.columns) {
        enter(slots[static_cast<std::size_t>(column.id)].column, position);
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

/// The slots of all descriptions, one description behind the other.
template <std::size_t count>
constexpr std::array<ColumnSlot, count> makeSlots(std::span<const ListDescription> all)
{
    std::array<ColumnSlot, count> slots{};
    std::size_t first = 0;
    for (const ListDescription& description : all) {
        const std::size_t size = slotCount(description);
        enterRows(description, std::span{slots}.subspan(first, size));
        first += size;
    }
    return slots;
}

template <std::size_t count>
constexpr auto makeListTypes(const ListDescription (&all)[count], std::span<const ColumnSlot> slots)
{
    const auto makeOne = [&](std::size_t position) {
        const std::size_t first = slotCount(std::span{all}.first(position));
        return ListType{all[position], slots.subspan(first, slotCount(all[position]))};
    };
    return [&]<std::size_t... position>(std::index_sequence<position...>)
    {
        return std::array<ListType, count>{makeOne(position)...};
    }
    (std::make_index_sequence<count>{});
}

constexpr auto slotsOfTypes = makeSlots<slotCount(descriptions)>(descriptions);
constexpr auto types = makeListTypes(descriptions, slotsOfTypes);

constexpr auto slotsOfDeductions = makeSlots<slotCount(deductions)>(deductions);
constexpr auto deductionTypes = makeListTypes(deductions, slotsOfDeductions);

/// Ids rise from row to row, so that none occurs twice and a reader finds them.
constexpr bool idsRise(const ListDescription& description)
{
    const auto rise = [](const auto& rows) {
        return std::ranges::adjacent_find(rows, [](const auto& a, const auto& b) { return a.id >= b.id; }) ==
                   rows.end() &&
               std::ranges::all_of(rows, [](const auto& row) { return row.id > 0; });
    };
    return rise(description.columns) && rise(description.selectExpressions);
}

/// A join without a column would never be used, and a prerequisite without a join would add nothing.
constexpr bool joinsFitColumns(const ListType& type)
{
    bool fit = true;
    for (const Join& join : type.description().joins) {
        forEachId(join.ids, [&](std::int16_t id) { fit = fit && type.column(id) != nullptr; });
        forEachId(join.prerequisites, [&](std::int16_t id) { fit = fit && type.join(id) != nullptr; });
    }
    return fit;
}

/// An expression of a grouped list takes the place of a sum.
constexpr bool expressionsFitColumns(const ListType& type)
{
    return std::ranges::all_of(type.description().selectExpressions, [&](const SelectExpression& expression) {
        const Column* column = type.column(expression.id);
        return expression.applies == always || (column != nullptr && column->aggregate == sum);
    });
}

constexpr bool templatesNameValues(const ListDescription& description)
{
    const auto named = [](const auto& rows, const auto& isValue) {
        return std::ranges::all_of(rows, [&](const auto& row) { return dialect::namesOnly(row.text, isValue); });
    };
    return named(description.columns, isColumnValue) && named(description.joins, isColumnValue) &&
           named(description.selectExpressions, isSelectValue);
}

constexpr bool isUpperCase(std::string_view key)
{
    return std::ranges::none_of(key, [](char c) { return c >= 'a' && c <= 'z'; });
}

constexpr bool keysAreUnique()
{
    return std::ranges::all_of(types, [](const ListType& type) {
        const std::string_view key = type.description().key;
        return isUpperCase(key) &&
               std::ranges::count_if(types, [&](const ListType& other) { return other.description().key == key; }) == 1;
    });
}

constexpr bool isComplete(const ListType& type)
{
    return idsRise(type.description()) && joinsFitColumns(type) && expressionsFitColumns(type) &&
           templatesNameValues(type.description());
}

static_assert(keysAreUnique());
static_assert(std::ranges::all_of(types, isComplete));
static_assert(std::ranges::all_of(deductionTypes, isComplete));

constexpr const ListType& typeOf(std::string_view key)
{
    return *std::ranges::find_if(types, [&](const ListType& type) { return type.description().key == key; });
}

} // namespace

std::span<const ListType> listTypes() noexcept
{
    return types;
}

const ListType* findListType(std::string_view key)
{
    const std::string upperKey = text::toUpper(key);
    const auto found =
        std::ranges::find_if(types, [&](const ListType& type) { return upperKey == type.description().key; });
    return found == types.end() ? nullptr : found;
}

const ListType& logList() noexcept
{
    static constexpr const ListType& log = typeOf("LOG");
    return log;
}

const ListType& deductionList() noexcept
{
    return deductionTypes.front();
}

} // namespace tamarok::catalogue
