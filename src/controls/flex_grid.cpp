#include <algorithm>
#include <utility>

#include "element_keys.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/grids.h"

// The flex grid. Only cells and sizes that were set take memory: a grid of a million empty rows costs nothing.

namespace tamarok::controls {
namespace {

constexpr std::string_view source = "MSFlexGrid";
const std::string noText;

using Index = std::span<const Variant>;

/// Error 381 unless `index` is from 0 to below `count`.
void checkIndex(std::int32_t index, std::int32_t count, std::string_view what)
{
    if (index < 0 || index >= count)
        throw Error{errors::invalidPropertyArrayIndex,
                    "Subscript out of range: the grid has no " + std::string{what} + " " + std::to_string(index) + ".",
                    std::string{source}};
}

/// Keeps the size of a row or column; -1 removes it, so that the default holds.
void putSize(std::map<std::int32_t, std::int32_t>& sizes, std::int32_t index, std::int32_t size,
             std::string_view property)
{
    if (size < -1) throwInvalidValue(property, std::to_string(size));
    if (size == -1)
        sizes.erase(index);
    else
        sizes.insert_or_assign(index, size);
}

std::int32_t sizeOf(const std::map<std::int32_t, std::int32_t>& sizes, std::int32_t index, std::int32_t otherwise)
{
    const auto found = sizes.find(index);
    return found == sizes.end() ? otherwise : found->second;
}

/// The table's row of a number that has a reader and a writer of one name.
template <std::int32_t (FlexGrid::*read)() const noexcept, void (FlexGrid::*write)(std::int32_t)>
constexpr Member<FlexGrid> numberMember(std::string_view name)
{
    return {.name = name,
            .get = [](const FlexGrid& grid, Index) -> Variant { return (grid.*read)(); },
            .put = [](FlexGrid& grid, const Variant& value) { (grid.*write)(convert::toLong(value)); }};
}

std::pair<std::int32_t, std::int32_t> cellIndex(Index index)
{
    checkArgumentCount(index.size(), 2, 2, "TextMatrix", source);
    return {convert::toLong(index[0]), convert::toLong(index[1])};
}

std::int32_t lineIndex(Index index, std::string_view property)
{
    return convert::toLong(onlyIndex(index, property, source));
}

constexpr Member<FlexGrid> gridMembers[]{
    {.name = "TextMatrix",
     .get = [](const FlexGrid& grid, Index index) -> Variant {
         const auto [row, column] = cellIndex(index);
         return grid.TextMatrix(row, column);
     },
     .putIndexed =
         [](FlexGrid& grid, Index index, const Variant& value) {
             const auto [row, column] = cellIndex(index);
             grid.TextMatrix(row, column, convert::toText(value));
         }},
    {.name = "ColWidth",
     .get = [](const FlexGrid& grid, Index index) -> Variant { return grid.ColWidth(lineIndex(index, "ColWidth")); },
     .putIndexed = [](FlexGrid& grid, Index index,
                      const Variant& value) { grid.ColWidth(lineIndex(index, "ColWidth"), convert::toLong(value)); }},
    {.name = "RowHeight",
     .get = [](const FlexGrid& grid, Index index) -> Variant { return grid.RowHeight(lineIndex(index, "RowHeight")); },
     .putIndexed = [](FlexGrid& grid, Index index,
                      const Variant& value) { grid.RowHeight(lineIndex(index, "RowHeight"), convert::toLong(value)); }},
    {.name = "Text",
     .get = [](const FlexGrid& grid, Index) -> Variant { return grid.text(); },
     .put = [](FlexGrid& grid, const Variant& value) { grid.text(convert::toText(value)); }},
    numberMember<&FlexGrid::Rows, &FlexGrid::Rows>("Rows"),
    numberMember<&FlexGrid::Cols, &FlexGrid::Cols>("Cols"),
    numberMember<&FlexGrid::FixedRows, &FlexGrid::FixedRows>("FixedRows"),
    numberMember<&FlexGrid::FixedCols, &FlexGrid::FixedCols>("FixedCols"),
    numberMember<&FlexGrid::Row, &FlexGrid::Row>("Row"),
    numberMember<&FlexGrid::Col, &FlexGrid::Col>("Col"),
};

} // namespace

std::span<const Member<FlexGrid>> FlexGrid::members() noexcept
{
    return gridMembers;
}

void FlexGrid::Rows(std::int32_t count)
{
    if (count < fixedRows_) throwInvalidValue("Rows", std::to_string(count));
    rows_ = count;
    // In a grid without rows the current cell is (0, ...), which has no text.
    row_ = std::clamp(row_, 0, std::max(rows_ - 1, 0));
    // The rows beyond take their texts and heights along.
    cells_.erase(cells_.lower_bound({count, 0}), cells_.end());
    heights_.erase(heights_.lower_bound(count), heights_.end());
}

void FlexGrid::Cols(std::int32_t count)
{
    if (count < fixedCols_) throwInvalidValue("Cols", std::to_string(count));
    cols_ = count;
    col_ = std::clamp(col_, 0, std::max(cols_ - 1, 0));
    std::erase_if(cells_, [count](const auto& cell) { return cell.first.second >= count; });
    widths_.erase(widths_.lower_bound(count), widths_.end());
}

void FlexGrid::FixedRows(std::int32_t count)
{
    if (count < 0 || count > rows_) throwInvalidValue("FixedRows", std::to_string(count));
    fixedRows_ = count;
}

void FlexGrid::FixedCols(std::int32_t count)
{
    if (count < 0 || count > cols_) throwInvalidValue("FixedCols", std::to_string(count));
    fixedCols_ = count;
}

std::int32_t FlexGrid::ColWidth(std::int32_t column) const
{
    checkIndex(column, cols_, "column");
    return sizeOf(widths_, column, defaultColWidth);
}

void FlexGrid::ColWidth(std::int32_t column, std::int32_t width)
{
    checkIndex(column, cols_, "column");
    putSize(widths_, column, width, "ColWidth");
}

std::int32_t FlexGrid::RowHeight(std::int32_t row) const
{
    checkIndex(row, rows_, "row");
    return sizeOf(heights_, row, defaultRowHeight);
}

void FlexGrid::RowHeight(std::int32_t row, std::int32_t height)
{
    checkIndex(row, rows_, "row");
    putSize(heights_, row, height, "RowHeight");
}

const std::string& FlexGrid::TextMatrix(std::int32_t row, std::int32_t column) const
{
    checkIndex(row, rows_, "row");
    checkIndex(column, cols_, "column");
    const auto found = cells_.find({row, column});
    return found == cells_.end() ? noText : found->second;
}

void FlexGrid::TextMatrix(std::int32_t row, std::int32_t column, std::string text)
{
    checkIndex(row, rows_, "row");
    checkIndex(column, cols_, "column");
    cells_.insert_or_assign({row, column}, std::move(text));
}

void FlexGrid::Row(std::int32_t row)
{
    if (row < 0 || row >= rows_)
        throw Error{errors::invalidRow, "Invalid row: the grid has no row " + std::to_string(row) + ".",
                    std::string{source}};
    row_ = row;
}

void FlexGrid::Col(std::int32_t column)
{
    if (column < 0 || column >= cols_)
        throw Error{errors::invalidColumn, "Invalid column: the grid has no column " + std::to_string(column) + ".",
                    std::string{source}};
    col_ = column;
}

} // namespace tamarok::controls
