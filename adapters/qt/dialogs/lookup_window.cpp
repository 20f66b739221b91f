#include <QCalendarWidget>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QStyle>
#include <QTableView>
#include <QTextCharFormat>
#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "dialogs/design_texts.h"
#include "dialogs/dialog_shell.h"
#include "dialogs/grid_model.h"
#include "dialogs/grid_view.h"
#include "dialogs/search_frame.h"
#include "dialogs/windows.h"
#include "owned.h"
#include "tamarok_qt/dates.h"
#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

#include "tamarok/grids.h"

namespace tamarok::qt {

namespace {

constexpr std::array<std::string_view, 3> boxes{"Text1", "Text2", "Text3"};
constexpr char32_t enter = 13;
constexpr char32_t escape = 27;

// Of the first width of a column, in pixels.
constexpr std::size_t measuredRows = 50;
constexpr int leastWidth = 60;
constexpr int mostWidth = 320;
const QString headRoom = QStringLiteral(" »»  "); ///< the mark of the sorted column

/// The window of the lookup. `grid_` is the data grid as Comm_Models takes it: what an operation writes to its columns
/// is shown by the table behind each event, what the user drags is written to them at once.
class LookupDialog final : public Modal<dialogs::LookupWindow> {
public:
    explicit LookupDialog(const std::shared_ptr<Desk>& desk) : Modal{"frmViewGrid", desk}
    {
        makeGrid();
        makeMonth();
        for (const std::string_view box : boxes)
            makeBox(box);
        shell().addButton("cmdNew", designText(DesignText::New));
        shell().addButton("cmdSave", designText(DesignText::Save));
        shell().addButton("cmdOk", designText(DesignText::Ok));
        shell().addButton("cmdClose", designText(DesignText::Close));
        shell().escapeButton("cmdClose");
        shell().buttonGap(6);
        shell().afterEvent = [this] { showColumns(); };
        shell().activated = [this] { tell([](auto& events) { events.activated(); }); };
    }

    void caption(std::string_view text) override
    {
        Modal::caption(text);
        view_->setAccessibleName(toQt(text));
        month_->setAccessibleName(toQt(text));
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
        if (!view_->isVisible()) widenForHead(column); // until then no width is the user's
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
    std::vector<std::size_t> selectedRows() const override { return view_->selected(); }
    void selectRows(std::span<const std::size_t> rows) override { view_->select({rows.begin(), rows.end()}); }

    Date date() const override { return toDate(month_->selectedDate()); }
    void date(Date date) override { month_->setSelectedDate(toQtDate(date)); }

    void selectText(std::string_view box) override
    {
        if (auto* const edit = qobject_cast<QLineEdit*>(&shell().control(box))) edit->selectAll();
    }
    void tag(std::string_view control, std::string_view text) override
    {
        shell().control(control).setProperty("tag", toQt(text));
    }
    void handleEvents() override { QCoreApplication::processEvents(); }

private:
    void makeGrid();
    void makeMonth();
    void makeBox(std::string_view name);
    void showColumns();
    void nameBoxes();
    float fittingWidth(const dialogs::GridRows& rows, std::span<const std::string> names, std::size_t column) const;
    void widenForHead(std::size_t column);
    void widthDragged(int column, int width);
    controls::GridColumn& at(std::size_t column) const { return *grid_->columns()->all().at(column); }

    SearchFrame* frame_ = nullptr;
    GridView* view_ = nullptr;
    QCalendarWidget* month_ = nullptr;
    GridModel model_;
    std::shared_ptr<controls::DataGrid> grid_ = std::make_shared<controls::DataGrid>();
    bool showing_ = false; ///< the program sets widths
};

/// Calls a function when a widget receives the focus, or gets Enter or Escape. A filter takes the place of a class for
/// each kind of widget.
class KeyWatch final : public QObject {
public:
    using QObject::QObject;

    std::function<void()> focused;
    std::function<bool(int key)> pressed; ///< returns whether the key is used up

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn && focused) focused();
        if (event->type() == QEvent::KeyPress && pressed && pressed(static_cast<QKeyEvent*>(event)->key())) return true;
        return QObject::eventFilter(watched, event);
    }
};

bool isEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

void LookupDialog::makeGrid()
{
    frame_ = &makeOwned<SearchFrame>(&shell().content());
    shell().addControl("Frame1", *frame_);
    view_ = &makeOwned<GridView>(frame_);
    shell().addControl("DataGrid1", *view_);
    grid_->Name = "DataGrid1";
    grid_->Parent(shell().form());
    view_->setModel(&model_);
    view_->keyPressed = [this](char32_t key) { tell([key](auto& events) { events.keyPressed(key); }); };
    view_->rowChosen = [this](std::size_t row) { tell([row](auto& events) { events.rowChosen(row); }); };
    view_->selectionMoved = [this] { tell([](auto& events) { events.selectionChanged(); }); };
    view_->doubleClicked = [this] { tell([](auto& events) { events.doubleClicked(); }); };
    const QHeaderView* const heads = view_->horizontalHeader();
    QObject::connect(heads, &QHeaderView::sectionClicked, view_, [this](int column) {
        tell([column](auto& events) { events.headClicked(static_cast<std::size_t>(column)); });
    });
    QObject::connect(heads, &QHeaderView::sectionResized, view_,
                     [this](int column, int, int width) { widthDragged(column, width); });
}

void LookupDialog::makeMonth()
{
    month_ = &makeOwned<QCalendarWidget>(&shell().content());
    month_->setGridVisible(false);
    QTextCharFormat weekend; // a red that can be read on light and on dark
    weekend.setForeground(QColor{0xD0, 0x4A, 0x42});
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        month_->setWeekdayTextFormat(day, weekend);
    month_->setVerticalHeaderFormat(QCalendarWidget::ISOWeekNumbers);
    shell().addControl("MonthView1", *month_);
    month_->resize(month_->sizeHint());
    auto& watch = makeOwned<KeyWatch>(month_);
    watch.pressed = [this](int key) {
        if (!isEnter(key) && key != Qt::Key_Escape) return false;
        tell([key](auto& events) { events.monthKeyPressed(isEnter(key) ? enter : escape); });
        return true;
    };
    // The days are a view inside the calendar, which takes the keys. Enter and Escape would activate a date and close
    // the dialog without the presenter.
    for (QTableView* const days : month_->findChildren<QTableView*>())
        days->installEventFilter(&watch);
    month_->installEventFilter(&watch);
    QObject::connect(month_, &QCalendarWidget::activated, month_,
                     [this] { tell([](auto& events) { events.doubleClicked(); }); });
}

/// Enter in a box goes on to the next control, as Tab does.
void LookupDialog::makeBox(std::string_view name)
{
    auto& box = makeOwned<QLineEdit>(&shell().content());
    shell().addControl(name, box);
    auto& watch = makeOwned<KeyWatch>(&box);
    watch.focused = [this, name] { tell([name](auto& events) { events.boxEntered(name); }); };
    watch.pressed = [&box](int key) {
        if (!isEnter(key)) return false;
        QKeyEvent tab{QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier};
        QCoreApplication::sendEvent(&box, &tab);
        return true;
    };
    box.installEventFilter(&watch);
}

void LookupDialog::showRows(const dialogs::GridRows& rows, std::span<const std::string> names)
{
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
    view_->forget();
    const bool former = std::exchange(showing_, true);
    model_.show(rows, names);
    showing_ = former;
    showColumns();
}

/// Returns the first width of a column, which fits its head and the cells of the first rows.
float LookupDialog::fittingWidth(const dialogs::GridRows& rows, std::span<const std::string> names,
                                 std::size_t column) const
{
    const QFontMetrics metrics{view_->font()};
    const int besideText = 2 * (view_->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view_) + 1) + 6;
    int widest = metrics.horizontalAdvance(headRoom + toQt(names[column]));
    for (std::size_t row = 0; row < std::min(rows.count(), measuredRows); ++row)
        widest = std::max(widest, metrics.horizontalAdvance(shownText(rows.text(row, column))));
    return twips(std::clamp(widest + besideText, leastWidth, mostWidth));
}

/// Makes a column as wide as its head with the mark of the order.
void LookupDialog::widenForHead(std::size_t column)
{
    const int mark = QFontMetrics{view_->font()}.horizontalAdvance(headRoom);
    const int head = view_->horizontalHeader()->sectionSizeHint(static_cast<int>(column)) + mark;
    at(column).Width = std::max(at(column).Width, twips(std::min(head, mostWidth)));
    showColumns();
}

/// Shows the widths, heads and visibility that the presenter or an operation has given to the grid.
void LookupDialog::showColumns()
{
    const bool former = std::exchange(showing_, true);
    const auto& columns = grid_->columns()->all();
    for (std::size_t column = 0; column < columns.size() && model_.rows() != nullptr; ++column) {
        const controls::GridColumn& wanted = *columns[column];
        const int section = static_cast<int>(column);
        if (view_->isColumnHidden(section) == wanted.Visible) view_->setColumnHidden(section, !wanted.Visible);
        if (wanted.Visible && view_->columnWidth(section) != pixels(wanted.Width))
            view_->setColumnWidth(section, pixels(wanted.Width));
        if (model_.caption(column) != toQt(wanted.Caption)) model_.caption(column, wanted.Caption);
    }
    nameBoxes();
    showing_ = former;
}

/// A box is read out under the name of its column.
void LookupDialog::nameBoxes()
{
    std::size_t box = 0;
    for (const controls::GridColumnRef& column : grid_->columns()->all())
        if (column->Visible && box < boxes.size())
            shell().control(boxes[box++]).setAccessibleName(toQt(column->Caption));
}

void LookupDialog::widthDragged(int column, int width)
{
    if (showing_ || view_->isColumnHidden(column)) return;
    at(static_cast<std::size_t>(column)).Width = twips(width);
    tell([](auto& events) { events.columnResized(); });
}

void LookupDialog::currentRow(std::optional<std::size_t> row)
{
    grid_->Row = row ? static_cast<std::int32_t>(*row) : -1;
    for (std::size_t column = 0; column < grid_->columns()->all().size(); ++column)
        at(column).Text = row ? model_.rows()->text(*row, column) : std::string{};
    view_->current(grid_->Row);
}

} // namespace

std::unique_ptr<dialogs::LookupWindow> makeLookupWindow(const std::shared_ptr<Desk>& desk)
{
    return std::make_unique<LookupDialog>(desk);
}

} // namespace tamarok::qt
