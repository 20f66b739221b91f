#include "list_grid.h"

#include <algorithm>
#include <utility>

#include "wide_text.h"

namespace tamarok::com {

namespace {

constexpr std::size_t shownCharacters = 259; ///< the most that a list view shows of a cell

/// A cell on one line, and of a very long text its beginning.
std::wstring shownText(const std::string& text)
{
    std::wstring shown = toWide(text);
    if (shown.size() > shownCharacters) shown.resize(shownCharacters);
    std::ranges::replace_if(
        shown, [](wchar_t character) { return character < L' '; }, L' ');
    return shown;
}

} // namespace

const ControlKind ListGrid::kind{WC_LISTVIEWW, WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS,
                                 WS_EX_CLIENTEDGE};

ListGrid::ListGrid(HWND list) : list_{list}
{
    SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
}

void ListGrid::show(const dialogs::GridRows& rows)
{
    const bool former = std::exchange(silent_, true);
    rows_ = &rows;
    selected_.clear();
    const auto header = reinterpret_cast<HWND>(SendMessageW(list_, LVM_GETHEADER, 0, 0));
    auto present = static_cast<std::size_t>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    for (; present > rows.columns(); --present)
        SendMessageW(list_, LVM_DELETECOLUMN, static_cast<WPARAM>(present - 1), 0);
    for (std::size_t column = 0; column < rows.columns(); ++column) {
        LVCOLUMNW made{};
        made.mask = LVCF_FMT;
        made.fmt = rows.isNumber(column) ? LVCFMT_RIGHT : LVCFMT_LEFT;
        SendMessageW(list_, column < present ? LVM_SETCOLUMNW : LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&made));
    }
    SendMessageW(list_, LVM_SETITEMCOUNT, static_cast<WPARAM>(rows.count()), 0);
    InvalidateRect(list_, nullptr, TRUE);
    silent_ = former;
}

void ListGrid::columnText(std::size_t column, const std::string& text)
{
    std::wstring shown = toWide(text);
    LVCOLUMNW changed{};
    changed.mask = LVCF_TEXT;
    changed.pszText = shown.data();
    SendMessageW(list_, LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&changed));
}

void ListGrid::columnWidth(std::size_t column, int pixels)
{
    const bool former = std::exchange(silent_, true);
    if (columnWidth(column) != pixels)
        SendMessageW(list_, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), MAKELPARAM(pixels, 0));
    silent_ = former;
}

int ListGrid::columnWidth(std::size_t column) const
{
    return static_cast<int>(SendMessageW(list_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
}

int ListGrid::textWidth(const std::string& text) const
{
    const std::wstring shown = shownText(text);
    return static_cast<int>(SendMessageW(list_, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(shown.c_str())));
}

void ListGrid::select(std::span<const std::size_t> rows)
{
    const bool former = std::exchange(silent_, true);
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED;
    SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    state.state = LVIS_SELECTED;
    for (const std::size_t row : rows)
        SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&state));
    selected_.assign(rows.begin(), rows.end());
    silent_ = former;
}

void ListGrid::current(std::optional<std::size_t> row)
{
    const bool former = std::exchange(silent_, true);
    LVITEMW state{};
    state.stateMask = LVIS_FOCUSED;
    state.state = row ? LVIS_FOCUSED : 0U;
    SendMessageW(list_, LVM_SETITEMSTATE, row ? static_cast<WPARAM>(*row) : static_cast<WPARAM>(-1),
                 reinterpret_cast<LPARAM>(&state));
    if (row) SendMessageW(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(*row), FALSE);
    silent_ = former;
}

LRESULT ListGrid::notified(const NMHDR& notification)
{
    switch (notification.code) {
    case LVN_GETDISPINFOW:
        // The list waits for the text in the notification itself.
        giveCell(const_cast<NMLVDISPINFOW&>(reinterpret_cast<const NMLVDISPINFOW&>(notification)));
        return 0;
    case LVN_ITEMCHANGED: {
        const auto& change = reinterpret_cast<const NMLISTVIEW&>(notification);
        const UINT states = change.uNewState ^ change.uOldState;
        moved_ = moved_ || (!silent_ && (states & change.uNewState & LVIS_FOCUSED) != 0);
        changed_ = changed_ || (!silent_ && (states & LVIS_SELECTED) != 0);
        break;
    }
    case LVN_ODSTATECHANGED: changed_ = changed_ || !silent_; break;
    case LVN_COLUMNCLICK:
        headClicked(static_cast<std::size_t>(reinterpret_cast<const NMLISTVIEW&>(notification).iSubItem));
        return 0;
    case NM_DBLCLK: doubleClicked(); return 0;
    case HDN_ENDTRACKW:
    case HDN_DIVIDERDBLCLICKW: dragged_ = true; break;
    default: return 0;
    }
    if (moved_ || changed_ || dragged_) noted();
    return 0;
}

void ListGrid::giveCell(NMLVDISPINFOW& wanted)
{
    if ((wanted.item.mask & LVIF_TEXT) == 0 || rows_ == nullptr) return;
    const auto row = static_cast<std::size_t>(wanted.item.iItem);
    const auto column = static_cast<std::size_t>(wanted.item.iSubItem);
    cell_ = row < rows_->count() && column < rows_->columns() ? shownText(rows_->text(row, column)) : std::wstring{};
    wanted.item.pszText = cell_.data();
}

/// Keeps the rows that stay selected in their order and appends the new ones.
void ListGrid::readSelection()
{
    std::vector<std::size_t> present;
    for (LRESULT row = -1; (row = SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >= 0;)
        present.push_back(static_cast<std::size_t>(row));
    std::erase_if(selected_, [&](std::size_t row) { return !std::ranges::binary_search(present, row); });
    for (const std::size_t row : present)
        if (std::ranges::find(selected_, row) == selected_.end()) selected_.push_back(row);
}

void ListGrid::tell()
{
    if (std::exchange(dragged_, false)) widthsDragged();
    if (changed_) readSelection();
    const LRESULT row = SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
    if (std::exchange(moved_, false) && row >= 0) rowChosen(static_cast<std::size_t>(row));
    if (std::exchange(changed_, false)) selectionMoved();
}

} // namespace tamarok::com
