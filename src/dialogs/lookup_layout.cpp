#include "lookup_layout.h"

#include <algorithm>

namespace tamarok::dialogs {

namespace {

constexpr Size least{3500, 2000};
constexpr float belowFrame = 840; ///< room for the buttons and the title
constexpr float rowOfBoxes = 360; ///< further room for the text boxes
constexpr float gridLeft = 120;   ///< half of what the grid is narrower than the frame
constexpr float gridTop = 240;    ///< below the caption of the frame
constexpr float boxGap = 80;      ///< between frame and text boxes
constexpr float boxHeight = 285;
constexpr float buttonGap = 110; ///< between frame and buttons
constexpr Size button{1275, 345};
constexpr float closeMargin = 180; ///< from the right end of the window
constexpr float okMargin = 30;     ///< from the button for closing

} // namespace

LookupLayout layOutLookup(Size form, bool showsNew, const std::array<ColumnSpan, lookupBoxes>& columns)
{
    LookupLayout layout;
    layout.form = {std::max(form.width, least.width), std::max(form.height, least.height)};
    const float boxesRoom = showsNew ? rowOfBoxes : 0;
    layout.frame = {0, 0, layout.form.width - 150, layout.form.height - belowFrame - boxesRoom};
    layout.grid = {gridLeft, gridTop, layout.frame.width - 240, layout.frame.height - 360};

    // The first box stands under its column, each further one directly behind the one before it.
    float left = layout.frame.left + layout.grid.left + columns[0].left;
    for (std::size_t box = 0; box < lookupBoxes; ++box) {
        layout.boxes[box] = {left, layout.frame.top + layout.frame.height + boxGap, columns[box].width, boxHeight};
        left += columns[box].width;
    }

    const float top = layout.frame.top + layout.frame.height + buttonGap + boxesRoom;
    const auto at = [top](float buttonLeft) { return Box{buttonLeft, top, button.width, button.height}; };
    layout.closeButton = at(layout.form.width - closeMargin - button.width);
    layout.okButton = at(layout.closeButton.left - okMargin - button.width);
    layout.newButton = at(layout.frame.left + layout.grid.left);
    layout.saveButton = at(layout.newButton.left + button.width + okMargin);
    return layout;
}

DateLayout layOutDate(Size month)
{
    const Box place{0, 0, month.width, month.height};
    return {{month.width + 110, month.height + 350}, place, place};
}

} // namespace tamarok::dialogs
