#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "window_shell.h"

#include "tamarok/lookup_window.h"

namespace tamarok::com {

/// The grid of the lookup as a list view in its report form, which asks for the cells that can be seen. It keeps the
/// order in which rows were selected.
class ListGrid final {
public:
    static const ControlKind kind;

    explicit ListGrid(HWND list);

    /// Shows rows, which outlive the list or the next call, under so many columns.
    void show(const dialogs::GridRows& rows);
    void columnText(std::size_t column, const std::string& text);
    void columnWidth(std::size_t column, int pixels); ///< 0 hides the column
    int columnWidth(std::size_t column) const;
    /// Returns the number of pixels that a text takes.
    int textWidth(const std::string& text) const;

    const std::vector<std::size_t>& selected() const noexcept { return selected_; }
    // The program's ways to select and to move, which tell nothing.
    void select(std::span<const std::size_t> rows);
    void current(std::optional<std::size_t> row);

    /// Answers a notification of the list. Notes what the user has moved and selected.
    LRESULT notified(const NMHDR& notification);
    /// Tells what was noted: first the row, then the selection.
    void tell();

    std::function<void()> noted; ///< something is there to be told
    std::function<void(std::size_t row)> rowChosen;
    std::function<void()> selectionMoved;
    std::function<void()> doubleClicked;
    std::function<void(std::size_t column)> headClicked;
    std::function<void()> widthsDragged;

private:
    void giveCell(NMLVDISPINFOW& wanted);
    void readSelection();

    HWND list_;
    const dialogs::GridRows* rows_ = nullptr;
    std::vector<std::size_t> selected_;
    std::wstring cell_;   ///< the text that the list has asked for last
    bool silent_ = false; ///< the program acts
    bool moved_ = false;
    bool changed_ = false;
    bool dragged_ = false;
};

} // namespace tamarok::com
