#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/date.h"
#include "tamarok/dialog_window.h"

#pragma GCC visibility push(default)

/// The window of the lookup, which is a date picker too.
namespace tamarok::dialogs {

/// The rows that a grid shows. A window asks for the cells that can be seen. Rows and columns count from 0.
class GridRows {
public:
    virtual ~GridRows() = default;
    virtual std::size_t count() const = 0;
    virtual std::size_t columns() const = 0;
    /// Returns the text of a cell, "" for Null.
    virtual std::string text(std::size_t row, std::size_t column) const = 0;
    /// Returns whether the column holds numbers, which a window aligns right.
    virtual bool isNumber(std::size_t /*column*/) const { return false; }

protected:
    GridRows() = default;
    GridRows(const GridRows&) = default;
    GridRows& operator=(const GridRows&) = default;
};

/// What else the user does with a lookup.
class LookupEvents : public DialogEvents {
public:
    /// The window has become the active one.
    virtual void activated() = 0;
    /// A key was pressed in the grid: a character, or 8 for backspace, 13 for Enter (OK), 27 for Escape (cancel).
    virtual void keyPressed(char32_t key) = 0;
    /// The head of a column was clicked.
    virtual void headClicked(std::size_t column) = 0;
    /// The user has moved to a row, by the mouse, a cursor key or the scroll bar.
    virtual void rowChosen(std::size_t row) = 0;
    /// The user has selected other rows.
    virtual void selectionChanged() = 0;
    /// The user has changed the width of a column.
    virtual void columnResized() = 0;
    /// The grid was double-clicked, or a date of the month view.
    virtual void doubleClicked() = 0;
    /// A key was pressed in the month view.
    virtual void monthKeyPressed(char32_t key) = 0;
    /// A text box has received the focus.
    virtual void boxEntered(std::string_view box) = 0;
};

/// The lookup `frmViewGrid`: frame `Frame1` with the grid `DataGrid1`, month view `MonthView1`, boxes `Text1` to
/// `Text3`, buttons `cmdOk`, `cmdClose`, `cmdNew`, `cmdSave`.
class LookupWindow : public ModalWindow<LookupEvents> {
public:
    /// Returns the grid as Comm_Models takes it: a DataGrid with its columns, whose Parent is the form frmViewGrid.
    virtual Object& grid() = 0;

    /// Shows rows, which outlive the window or the next call, under the names of their columns. Widths and visibility
    /// of the columns stay if their number does.
    virtual void showRows(const GridRows& rows, std::span<const std::string> names) = 0;
    virtual void columnCaption(std::size_t column, std::string_view caption) = 0;
    virtual void columnVisible(std::size_t column, bool visible) = 0;
    virtual float columnWidth(std::size_t column) const = 0; ///< twips, also of a hidden column
    virtual void columnWidth(std::size_t column, float width) = 0;

    /// Shows which row is the current one; nothing for none. Does not call `rowChosen`.
    virtual void currentRow(std::optional<std::size_t> row) = 0;
    /// Returns the selected rows in the order of their selection.
    virtual std::vector<std::size_t> selectedRows() const = 0;
    /// Selects other rows. Does not call `selectionChanged`.
    virtual void selectRows(std::span<const std::size_t> rows) = 0;

    /// Returns or sets the date of the month view.
    virtual Date date() const = 0;
    virtual void date(Date date) = 0;

    /// Selects the whole text of a box.
    virtual void selectText(std::string_view box) = 0;
    /// Sets the tag of a control, which the user does not see.
    virtual void tag(std::string_view control, std::string_view text) = 0;
    /// Handles the events that wait.
    virtual void handleEvents() = 0;
};

} // namespace tamarok::dialogs

#pragma GCC visibility pop
