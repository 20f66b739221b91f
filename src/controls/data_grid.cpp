#include <algorithm>

#include "element_keys.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/grids.h"
#include "tamarok/text.h"

// The data grid and its columns.

namespace tamarok::controls {
namespace {

constexpr std::string_view source = "DataGrid.Columns";

using Index = std::span<const Variant>;
using CallArguments = std::span<Variant>;

Variant callAdd(GridColumns& columns, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 1, "Add", source);
    return columns.Add(convert::toLong(arguments[0]));
}

Variant callRemove(GridColumns& columns, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 1, "Remove", source);
    columns.Remove(arguments[0]);
    return {};
}

constexpr Member<GridColumns> columnsMembers[]{
    {.name = "Item",
     .get = [](const GridColumns& columns, Index index) -> Variant {
         return columns.Item(onlyIndex(index, "Item", source));
     }},
    {.name = "Count", .get = [](const GridColumns& columns, Index) -> Variant { return columns.Count(); }},
    {.name = "Add", .call = callAdd},
    {.name = "Remove", .call = callRemove},
};

void putAlignment(GridColumn& column, const Variant& value)
{
    const std::int32_t alignment = convert::toLong(value);
    if (alignment < 0 || alignment > GridColumn::generalAlignment)
        throwInvalidValue("Alignment", std::to_string(alignment));
    column.Alignment = alignment;
}

/// The row of a text property.
template <std::string GridColumn::*property>
constexpr Member<GridColumn> textMember(std::string_view name)
{
    return {.name = name,
            .get = [](const GridColumn& column, Index) -> Variant { return column.*property; },
            .put = [](GridColumn& column, const Variant& value) { column.*property = convert::toText(value); }};
}

constexpr Member<GridColumn> columnMembers[]{
    {.name = "Width",
     .get = [](const GridColumn& column, Index) -> Variant { return double{column.Width}; },
     .put = [](GridColumn& column, const Variant& value) { column.Width = toSize(value, "Width"); }},
    {.name = "Visible",
     .get = [](const GridColumn& column, Index) -> Variant { return column.Visible; },
     .put = [](GridColumn& column, const Variant& value) { column.Visible = convert::toBoolean(value); }},
    {.name = "Alignment",
     .get = [](const GridColumn& column, Index) -> Variant { return column.Alignment; },
     .put = putAlignment},
    {.name = "ColIndex", .get = [](const GridColumn& column, Index) -> Variant { return column.ColIndex(); }},
    textMember<&GridColumn::Caption>("Caption"),
    textMember<&GridColumn::DataField>("DataField"),
    textMember<&GridColumn::NumberFormat>("NumberFormat"),
    {.name = "Text", .get = [](const GridColumn& column, Index) -> Variant { return column.Text; }},
};

Variant getColumns(const DataGrid& grid, Index index)
{
    if (index.empty()) return grid.columns();
    return grid.columns()->Item(onlyIndex(index, "Columns", "DataGrid"));
}

constexpr Member<DataGrid> gridMembers[]{
    {.name = "Columns", .get = getColumns},
    {.name = "Caption",
     .get = [](const DataGrid& grid, Index) -> Variant { return grid.Caption; },
     .put = [](DataGrid& grid, const Variant& value) { grid.Caption = convert::toText(value); }},
    {.name = "Row", .get = [](const DataGrid& grid, Index) -> Variant { return grid.Row; }},
    {.name = "ApproxCount", .get = [](const DataGrid& grid, Index) -> Variant { return grid.ApproxCount; }},
};

[[noreturn]] void throwNoColumn(const std::string& index, std::size_t count)
{
    throw Error{errors::subscriptOutOfRange,
                "Subscript out of range: the grid has " + std::to_string(count) + " columns, none is " + index + ".",
                std::string{source}};
}

} // namespace

std::span<const Member<GridColumn>> GridColumn::members() noexcept
{
    return columnMembers;
}

std::int32_t GridColumn::ColIndex() const
{
    if (columns_ == nullptr)
        throw Error{errors::objectNotSet, "Object not set: the column was removed from its grid.", "Column"};
    const auto found = std::ranges::find(columns_->all(), this, &GridColumnRef::get);
    return static_cast<std::int32_t>(found - columns_->all().begin());
}

std::span<const Member<GridColumns>> GridColumns::members() noexcept
{
    return columnsMembers;
}

GridColumns::~GridColumns()
{
    // A script may keep a column longer than its grid.
    for (const GridColumnRef& column : columns_)
        column->columns_ = nullptr;
}

GridColumnRef GridColumns::Add(std::int32_t index)
{
    if (index < 0 || index > Count()) throwNoColumn(std::to_string(index), columns_.size());
    return *columns_.insert(columns_.begin() + index, std::make_shared<GridColumn>(*this));
}

void GridColumns::Remove(const Variant& index)
{
    const auto place = columns_.begin() + static_cast<std::ptrdiff_t>(positionOf(index));
    (*place)->columns_ = nullptr;
    columns_.erase(place);
}

std::size_t GridColumns::positionOf(const Variant& index) const
{
    if (!index.isString()) {
        const std::int32_t position = convert::toLong(index);
        if (position < 0 || position >= Count()) throwNoColumn(std::to_string(position), columns_.size());
        return static_cast<std::size_t>(position);
    }
    const std::string& wanted = index.asString();
    const auto found = std::ranges::find_if(columns_, [&](const GridColumnRef& column) {
        return text::equalsNoCase(column->DataField, wanted) || text::equalsNoCase(column->Caption, wanted);
    });
    if (found == columns_.end()) throwNoColumn('"' + wanted + '"', columns_.size());
    return static_cast<std::size_t>(found - columns_.begin());
}

std::span<const Member<DataGrid>> DataGrid::members() noexcept
{
    return gridMembers;
}

} // namespace tamarok::controls
