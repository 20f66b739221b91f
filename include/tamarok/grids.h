#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tamarok/controls.h"

#pragma GCC visibility push(default)

/// The error numbers of grids.
namespace tamarok::errors {
inline constexpr std::int32_t invalidRow = 30009;    ///< A flex grid has no row of this number.
inline constexpr std::int32_t invalidColumn = 30010; ///< A flex grid has no column of this number.
} // namespace tamarok::errors

namespace tamarok::controls {

/// A grid of texts with rows and columns from 0, the first of which are fixed. One cell is current; its text is the
/// default value. By name the class is "MSFlexGrid". An index outside the grid is Error 381 unless told otherwise.
class FlexGrid final : public WithMembers<FlexGrid, Control> {
public:
    static constexpr std::int32_t defaultColWidth = 960;
    static constexpr std::int32_t defaultRowHeight = 240;

    static std::span<const Member<FlexGrid>> members() noexcept;
    std::string_view typeName() const override { return "MSFlexGrid"; }
    Variant defaultValue() const override { return text(); }
    bool hasDefaultValue() const noexcept override { return true; }

    /// Returns or sets the number of rows or columns, at first 2. Cells beyond it are lost; a current cell beyond it
    /// moves to the last row or column. Error 380 below the number of fixed ones.
    std::int32_t Rows() const noexcept { return rows_; }
    void Rows(std::int32_t count);
    std::int32_t Cols() const noexcept { return cols_; }
    void Cols(std::int32_t count);

    /// Returns or sets the number of fixed rows or columns, at first 1. Error 380 below 0 and above the number of all.
    std::int32_t FixedRows() const noexcept { return fixedRows_; }
    void FixedRows(std::int32_t count);
    std::int32_t FixedCols() const noexcept { return fixedCols_; }
    void FixedCols(std::int32_t count);

    /// Returns or sets the size of a column or row in whole twips; -1 sets the default. Error 380 below -1.
    std::int32_t ColWidth(std::int32_t column) const;
    void ColWidth(std::int32_t column, std::int32_t width);
    std::int32_t RowHeight(std::int32_t row) const;
    void RowHeight(std::int32_t row, std::int32_t height);

    const std::string& TextMatrix(std::int32_t row, std::int32_t column) const;
    void TextMatrix(std::int32_t row, std::int32_t column, std::string text);

    /// Returns or sets the current cell, at first (1, 1). Errors: 30009 for a wrong row, 30010 for a wrong column.
    std::int32_t Row() const noexcept { return row_; }
    void Row(std::int32_t row);
    std::int32_t Col() const noexcept { return col_; }
    void Col(std::int32_t column);

    /// Returns or sets the text of the current cell.
    const std::string& text() const { return TextMatrix(row_, col_); }
    void text(std::string value) { TextMatrix(row_, col_, std::move(value)); }

private:
    std::int32_t rows_ = 2;
    std::int32_t cols_ = 2;
    std::int32_t fixedRows_ = 1;
    std::int32_t fixedCols_ = 1;
    std::int32_t row_ = 1;
    std::int32_t col_ = 1;
    std::map<std::int32_t, std::int32_t> widths_;                        ///< of columns that have not the default
    std::map<std::int32_t, std::int32_t> heights_;                       ///< of rows that have not the default
    std::map<std::pair<std::int32_t, std::int32_t>, std::string> cells_; ///< by row and column, those that were written
};

class GridColumns;

/// A column of a data grid. By name the class is "Column". One that was removed raises Error 91 for its ColIndex.
class GridColumn final : public WithMembers<GridColumn> {
public:
    static constexpr float defaultWidth = 1440;
    static constexpr std::int32_t generalAlignment = 3;

    explicit GridColumn(const GridColumns& columns) noexcept : columns_{&columns} {}

    static std::span<const Member<GridColumn>> members() noexcept;
    std::string_view typeName() const override { return "Column"; }

    /// Returns the position in the grid, from 0.
    std::int32_t ColIndex() const;

    float Width = defaultWidth; ///< twips; by name Error 380 for a negative one
    bool Visible = true;
    std::string Caption;
    std::string DataField;
    std::int32_t Alignment = generalAlignment; ///< 0 left, 1 right, 2 centre, 3 by type; by name otherwise Error 380
    std::string NumberFormat;
    std::string Text; ///< of the cell in the current row; read-only by name

private:
    friend class GridColumns;
    const GridColumns* columns_; ///< nullptr once removed
};

using GridColumnRef = std::shared_ptr<GridColumn>;

/// The columns of a data grid, from 0.
class GridColumns final : public WithMembers<GridColumns> {
public:
    GridColumns() = default;
    GridColumns(const GridColumns&) = delete;
    GridColumns& operator=(const GridColumns&) = delete;
    ~GridColumns() override;

    static std::span<const Member<GridColumns>> members() noexcept;
    std::string_view typeName() const override { return "Columns"; }

    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(columns_.size()); }
    /// Inserts a column, which is visible. Error 9 unless `index` is 0 to Count.
    GridColumnRef Add(std::int32_t index);
    /// Returns a column by its position or, for a text, by its DataField or Caption, without regard to case. Error 9 if
    /// there is none.
    const GridColumnRef& Item(const Variant& index) const { return columns_[positionOf(index)]; }
    /// Removes a column. Error 9 if there is none.
    void Remove(const Variant& index);

    const std::vector<GridColumnRef>& all() const noexcept { return columns_; }

private:
    std::size_t positionOf(const Variant& index) const;
    std::vector<GridColumnRef> columns_;
};

/// A grid that shows a recordset. It has no columns and no rows at first; whoever binds it sets what the rows give.
class DataGrid final : public WithMembers<DataGrid, Control> {
public:
    static std::span<const Member<DataGrid>> members() noexcept;
    std::string_view typeName() const override { return "DataGrid"; }

    const std::shared_ptr<GridColumns>& columns() const noexcept { return columns_; }

    std::string Caption;
    std::int32_t Row = -1;        ///< the current row, from 0; -1 for none; read-only by name
    std::int32_t ApproxCount = 0; ///< number of rows; read-only by name

private:
    std::shared_ptr<GridColumns> columns_ = std::make_shared<GridColumns>();
};

} // namespace tamarok::controls

#pragma GCC visibility pop
