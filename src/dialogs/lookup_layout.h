#pragma once

#include <array>
#include <cstddef>

#include "tamarok/dialog_window.h"

/// Where the controls of the lookup stand. All sizes are in twips.
namespace tamarok::dialogs {

inline constexpr std::size_t lookupBoxes = 3;

/// A column of the grid: its place from the left end of the grid, and its width.
struct ColumnSpan {
    float left = 0;
    float width = 0;
};

struct LookupLayout {
    Size form;
    Box frame;
    Box grid; ///< inside the frame
    std::array<Box, lookupBoxes> boxes;
    Box newButton, saveButton, okButton, closeButton;
};

/// Returns the places in a window of that size, which is at least 3500 wide and 2000 high.
/// @param showsNew  leaves room for the text boxes
/// @param columns   of the text boxes
LookupLayout layOutLookup(Size form, bool showsNew, const std::array<ColumnSpan, lookupBoxes>& columns);

/// Where the frame and the month view of a date picker stand.
struct DateLayout {
    Size form;
    Box frame;
    Box month;
};

/// Returns the places around a month view of that size.
DateLayout layOutDate(Size month);

} // namespace tamarok::dialogs
