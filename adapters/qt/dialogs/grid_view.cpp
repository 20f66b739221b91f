#include "dialogs/grid_view.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QItemSelection>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <utility>

namespace tamarok::qt {

namespace {

constexpr char32_t backspace = 8;
constexpr char32_t enter = 13;
constexpr char32_t escape = 27;
constexpr int aroundText = 6; ///< pixels above and below the text of a row together

} // namespace

GridView::GridView(QWidget* parent) : QTableView{parent}
{
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setAttribute(Qt::WA_InputMethodEnabled);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(QFontMetrics{font()}.height() + aroundText);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
}

void GridView::select(const std::vector<std::size_t>& rows)
{
    QItemSelection selection;
    for (const std::size_t row : rows) {
        const QModelIndex index = model()->index(static_cast<int>(row), 0);
        if (index.isValid()) selection.select(index, model()->index(index.row(), model()->columnCount() - 1));
    }
    const bool former = std::exchange(silent_, true);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    selected_ = rows;
    silent_ = former;
}

/// A single selected row goes along with the current one, so that what is marked is what is taken.
void GridView::current(int row)
{
    if (selected_.size() <= 1)
        select(row < 0 ? std::vector<std::size_t>{} : std::vector{static_cast<std::size_t>(row)});
    const bool former = std::exchange(silent_, true);
    int column = std::max(currentIndex().column(), 0);
    while (isColumnHidden(column) && column + 1 < model()->columnCount())
        ++column;
    const QModelIndex index = row < 0 ? QModelIndex{} : model()->index(row, column);
    const int left = horizontalScrollBar()->value(); // the current cell may be out of view, the row is meant
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    if (index.isValid()) scrollTo(index);
    horizontalScrollBar()->setValue(left);
    silent_ = former;
}

void GridView::forget()
{
    selected_.clear();
    moved_ = false;
    changed_ = false;
}

void GridView::keyPressEvent(QKeyEvent* event)
{
    const bool isCommand = (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    const QString text = event->text();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return keyPressed(enter);
    case Qt::Key_Escape: return keyPressed(escape);
    case Qt::Key_Backspace: return keyPressed(backspace);
    default: break;
    }
    // AltGr, by which some keyboards write a character, comes as Ctrl and Alt together.
    const bool writes = !isCommand || event->modifiers() == (Qt::ControlModifier | Qt::AltModifier);
    if (writes && !text.isEmpty() && QChar::isPrint(text.toUcs4().front())) return type(text);
    QTableView::keyPressEvent(event);
}

void GridView::inputMethodEvent(QInputMethodEvent* event)
{
    type(event->commitString());
    event->accept();
}

void GridView::type(const QString& text)
{
    for (const uint character : text.toUcs4())
        keyPressed(static_cast<char32_t>(character));
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTableView::mouseDoubleClickEvent(event);
    tell();
    if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid()) doubleClicked();
}

bool GridView::event(QEvent* event)
{
    const bool done = QTableView::event(event);
    tell();
    return done;
}

bool GridView::viewportEvent(QEvent* event)
{
    const bool done = QTableView::viewportEvent(event);
    tell();
    return done;
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    if (!silent_ && current.isValid() && current.row() != previous.row()) moved_ = true;
}

// Qt tells what was added and removed, from which the order of the selection follows.
void GridView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTableView::selectionChanged(selected, deselected);
    if (silent_) return;
    for (const QItemSelectionRange& range : deselected) {
        const auto first = static_cast<std::size_t>(range.top());
        const auto last = static_cast<std::size_t>(range.bottom());
        std::erase_if(selected_, [&](std::size_t row) { return row >= first && row <= last; });
    }
    for (const QItemSelectionRange& range : selected)
        for (int row = range.top(); row <= range.bottom(); ++row)
            selected_.push_back(static_cast<std::size_t>(row));
    changed_ = true;
}

/// By the mouse Qt moves first and selects then, by the keyboard the other way round: the presenter always hears of the
/// row first, since it keeps the current one of several selected rows.
void GridView::tell()
{
    if (silent_) return;
    if (std::exchange(moved_, false) && currentIndex().isValid())
        rowChosen(static_cast<std::size_t>(currentIndex().row()));
    if (std::exchange(changed_, false)) selectionMoved();
}

} // namespace tamarok::qt
