#include <algorithm>
#include <array>
#include <map>

#include "design_texts.h"
#include "list_grid.h"
#include "native_windows.h"
#include "wide_text.h"
#include "window_shell.h"

#include "tamarok/grids.h"

namespace tamarok::com {

namespace {

constexpr std::array<std::string_view, 3> boxes{"Text1", "Text2", "Text3"};
constexpr char32_t enter = 13;
constexpr char32_t escape = 27;
constexpr char32_t backspace = 8;

// Of the first width of a column, in pixels.
constexpr std::size_t measuredRows = 50;
constexpr int besideText = 18;
constexpr int leastWidth = 60;
constexpr int mostWidth = 320;
constexpr std::string_view headRoom = " >>  "; ///< room for the mark of the sorted column

/// The window of the lookup. `grid_` is the data grid as Comm_Models takes it: what an operation writes to its columns
/// is shown by the list behind each event, what the user drags is written to them at once.
class LookupDialog final : public Modal<dialogs::LookupWindow> {
public:
    LookupDialog() : Modal{"frmViewGrid"}, list_{makeList(shell())}
    {
        grid_->Name = "DataGrid1";
        grid_->Parent(shell().form());
        makeMonth();
        for (const std::string_view box : boxes)
            shell().addControl(box, {L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE});
        shell().addButton("cmdNew", designText(DesignText::New));
        shell().addButton("cmdSave", designText(DesignText::Save));
        shell().addButton("cmdOk", designText(DesignText::Ok));
        shell().addButton("cmdClose", designText(DesignText::Close));
        shell().escapeButton("cmdClose");
        shell().buttonGap(90);
        connect();
    }

    void showModal(dialogs::LookupEvents& events) override
    {
        showColumns();
        Modal::showModal(events);
    }

    Object& grid() override { return *grid_; }
    void showRows(const dialogs::GridRows& rows, std::span<const std::string> names) override;
    void columnCaption(std::size_t column, std::string_view caption) override
    {
        at(column).Caption = caption;
        showColumns();
    }
    void columnVisible(std::size_t column, bool visible) override
    {
        at(column).Visible = visible;
        showColumns();
    }
    float columnWidth(std::size_t column) const override { return at(column).Width; }
    void columnWidth(std::size_t column, float width) override
    {
        at(column).Width = width;
        showColumns();
    }

    void currentRow(std::optional<std::size_t> row) override;
    std::vector<std::size_t> selectedRows() const override { return list_.selected(); }
    void selectRows(std::span<const std::size_t> rows) override { list_.select(rows); }

    Date date() const override;
    void date(Date date) override;

    void selectText(std::string_view box) override { SendMessageW(shell().control(box), EM_SETSEL, 0, -1); }
    void tag(std::string_view control, std::string_view text) override { tags_[std::string{control}] = text; }
    void handleEvents() override { shell().handleWaiting(); }

private:
    static HWND makeList(WindowShell& shell)
    {
        shell.addControl("Frame1", {L"BUTTON", BS_GROUPBOX | WS_CLIPSIBLINGS});
        return shell.addControl("DataGrid1", ListGrid::kind, "Frame1");
    }
    void makeMonth();
    void connect();
    bool keyPressed(const MSG& message);
    bool gridKey(const MSG& message);
    bool monthKey(const MSG& message);
    void showColumns();
    void widthsDragged();
    float fittingWidth(const dialogs::GridRows& rows, std::span<const std::string> names, std::size_t column) const;
    controls::GridColumn& at(std::size_t column) const { return *grid_->columns()->all().at(column); }

    ListGrid list_;
    HWND month_ = nullptr;
    const dialogs::GridRows* rows_ = nullptr;
    std::shared_ptr<controls::DataGrid> grid_ = std::make_shared<controls::DataGrid>();
    std::map<std::string, std::string> tags_; ///< which the user does not see
};

void LookupDialog::makeMonth()
{
    month_ = shell().addControl("MonthView1", {MONTHCAL_CLASSW, WS_TABSTOP | MCS_WEEKNUMBERS});
    RECT least{};
    SendMessageW(month_, MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&least));
    place("MonthView1", {0, 0, shell().twips(least.right - least.left), shell().twips(least.bottom - least.top)});
}

void LookupDialog::connect()
{
    list_.noted = [this] { shell().tellLater(); };
    list_.rowChosen = [this](std::size_t row) { tell([row](auto& events) { events.rowChosen(row); }); };
    list_.selectionMoved = [this] { tell([](auto& events) { events.selectionChanged(); }); };
    list_.doubleClicked = [this] { tell([](auto& events) { events.doubleClicked(); }); };
    list_.headClicked = [this](std::size_t column) { tell([column](auto& events) { events.headClicked(column); }); };
    list_.widthsDragged = [this] { widthsDragged(); };
    shell().notified = [this](const NMHDR& notification) { return list_.notified(notification); };
    shell().later = [this] { list_.tell(); };
    shell().entered = [this](std::string_view box) { tell([box](auto& events) { events.boxEntered(box); }); };
    shell().activated = [this] { tell([](auto& events) { events.activated(); }); };
    shell().afterEvent = [this] { showColumns(); };
    shell().filter = [this](const MSG& message) { return keyPressed(message); };
}

/// The keys that the presenter takes before the controls do.
bool LookupDialog::keyPressed(const MSG& message)
{
    if (message.hwnd == shell().control("DataGrid1")) return gridKey(message);
    if (message.hwnd == month_) return monthKey(message);
    if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN) return false;
    // Enter in a box goes on to the next control, as Tab does.
    const bool isBox =
        std::ranges::any_of(boxes, [&](std::string_view box) { return shell().control(box) == message.hwnd; });
    if (isBox) SetFocus(GetNextDlgTabItem(shell().window(), message.hwnd, FALSE));
    return isBox;
}

bool LookupDialog::gridKey(const MSG& message)
{
    if (message.message == WM_CHAR) {
        const auto key = static_cast<char32_t>(message.wParam);
        // The keys below are told when they go down.
        if (key >= U' ') tell([key](auto& events) { events.keyPressed(key); });
        return true;
    }
    if (message.message != WM_KEYDOWN) return false;
    const char32_t key = message.wParam == VK_RETURN   ? enter
                         : message.wParam == VK_ESCAPE ? escape
                         : message.wParam == VK_BACK   ? backspace
                                                       : 0;
    if (key != 0) tell([key](auto& events) { events.keyPressed(key); });
    return key != 0;
}

bool LookupDialog::monthKey(const MSG& message)
{
    if (message.message == WM_LBUTTONDBLCLK) {
        tell([](auto& events) { events.doubleClicked(); });
        return true;
    }
    if (message.message != WM_KEYDOWN || (message.wParam != VK_RETURN && message.wParam != VK_ESCAPE)) return false;
    const char32_t key = message.wParam == VK_RETURN ? enter : escape;
    tell([key](auto& events) { events.monthKeyPressed(key); });
    return true;
}

void LookupDialog::showRows(const dialogs::GridRows& rows, std::span<const std::string> names)
{
    rows_ = &rows;
    controls::GridColumns& columns = *grid_->columns();
    if (columns.all().size() != names.size()) {
        while (columns.Count() > 0)
            columns.Remove(Variant{0});
        for (std::size_t column = 0; column < names.size(); ++column)
            columns.Add(static_cast<std::int32_t>(column))->Width = fittingWidth(rows, names, column);
    }
    for (std::size_t column = 0; column < names.size(); ++column) {
        at(column).DataField = names[column];
        at(column).Caption = names[column];
        at(column).Alignment = rows.isNumber(column) ? 1 : 0;
    }
    grid_->ApproxCount = static_cast<std::int32_t>(rows.count());
    list_.show(rows);
    showColumns();
}

/// Returns the first width of a column, which fits its head and the cells of the first rows.
float LookupDialog::fittingWidth(const dialogs::GridRows& rows, std::span<const std::string> names,
                                 std::size_t column) const
{
    int widest = list_.textWidth(std::string{headRoom} + names[column]);
    for (std::size_t row = 0; row < std::min(rows.count(), measuredRows); ++row)
        widest = std::max(widest, list_.textWidth(rows.text(row, column)));
    return shell().twips(std::clamp(widest + besideText, leastWidth, mostWidth));
}

/// Shows the widths, heads and visibility that the presenter or an operation has given to the grid.
void LookupDialog::showColumns()
{
    const auto& columns = grid_->columns()->all();
    for (std::size_t column = 0; column < columns.size() && rows_ != nullptr; ++column) {
        const controls::GridColumn& wanted = *columns[column];
        list_.columnWidth(column, wanted.Visible ? shell().pixels(wanted.Width) : 0);
        list_.columnText(column, wanted.Caption);
    }
}

void LookupDialog::widthsDragged()
{
    bool isChanged = false;
    const auto& columns = grid_->columns()->all();
    for (std::size_t column = 0; column < columns.size(); ++column) {
        controls::GridColumn& known = *columns[column];
        const int width = list_.columnWidth(column);
        if (!known.Visible || width == shell().pixels(known.Width)) continue;
        known.Width = shell().twips(width);
        isChanged = true;
    }
    if (isChanged) tell([](auto& events) { events.columnResized(); });
}

void LookupDialog::currentRow(std::optional<std::size_t> row)
{
    grid_->Row = row ? static_cast<std::int32_t>(*row) : -1;
    for (std::size_t column = 0; column < grid_->columns()->all().size(); ++column)
        at(column).Text = row && rows_ != nullptr ? rows_->text(*row, column) : std::string{};
    list_.current(row);
}

Date LookupDialog::date() const
{
    SYSTEMTIME day{};
    SendMessageW(month_, MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&day));
    return makeDate(day.wYear, day.wMonth, day.wDay);
}

void LookupDialog::date(Date date)
{
    const CivilTime parts = toCivil(date);
    SYSTEMTIME day{};
    day.wYear = static_cast<WORD>(parts.year);
    day.wMonth = static_cast<WORD>(parts.month);
    day.wDay = static_cast<WORD>(parts.day);
    SendMessageW(month_, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&day));
}

} // namespace

std::unique_ptr<dialogs::LookupWindow> makeLookupWindow()
{
    return std::make_unique<LookupDialog>();
}

} // namespace tamarok::com
