#include <QAbstractItemModel>
#include <QHeaderView>
#include <utility>
#include <vector>

#include "controls/idle_sync.h"
#include "tamarok_qt/grids.h"
#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

namespace tamarok::qt {

/// The bond between the columns of a headless data grid and those of a table. Either side may change at any time: what
/// differs from the last look on the grid's side is shown, what differs on the table's side is read.
class DataGrid::Columns final : public QObject {
public:
    Columns(QTableView& view, std::shared_ptr<controls::DataGrid> grid) :
        view_{&view}, grid_{std::move(grid)}, idle_{[this] { look(); }, this}
    {}

    void look();

private:
    /// A column as both sides had it at the last look.
    struct Seen {
        float width = -1;
        int shown = -1; ///< pixels of it; a table has a least width
        bool visible = true;
        QString caption;
    };
    void matchCount(int count);
    void lookAt(int section, controls::GridColumn& column, Seen& seen);
    void readRow();

    QPointer<QTableView> view_;
    std::shared_ptr<controls::DataGrid> grid_;
    std::vector<Seen> seen_;
    IdleSync idle_;
};

void DataGrid::Columns::look()
{
    if (!view_) return;
    const int count = view_->model() == nullptr ? 0 : view_->model()->columnCount();
    matchCount(count);
    const auto& columns = grid_->columns()->all();
    for (int section = 0; section < count; ++section)
        lookAt(section, *columns[static_cast<std::size_t>(section)], seen_[static_cast<std::size_t>(section)]);
    readRow();
}

/// The columns are those of the table's model.
void DataGrid::Columns::matchCount(int count)
{
    controls::GridColumns& columns = *grid_->columns();
    if (columns.Count() == count && seen_.size() == static_cast<std::size_t>(count)) return;
    while (columns.Count() > 0)
        columns.Remove(Variant{columns.Count() - 1});
    seen_.assign(static_cast<std::size_t>(count), {});
    for (int section = 0; section < count; ++section) {
        controls::GridColumn& column = *columns.Add(section);
        Seen& seen = seen_[static_cast<std::size_t>(section)];
        seen = {twips(view_->columnWidth(section)), view_->columnWidth(section), true, {}};
        column.Width = seen.width;
    }
}

void DataGrid::Columns::lookAt(int section, controls::GridColumn& column, Seen& seen)
{
    if (column.Width != seen.width) {
        view_->setColumnWidth(section, pixels(column.Width));
    } else if (!view_->isColumnHidden(section) && view_->columnWidth(section) != seen.shown) {
        column.Width = twips(view_->columnWidth(section));
    }
    seen.width = column.Width;
    if (!view_->isColumnHidden(section)) seen.shown = view_->columnWidth(section);

    if (column.Visible != seen.visible)
        view_->setColumnHidden(section, !column.Visible);
    else
        column.Visible = !view_->isColumnHidden(section);
    seen.visible = column.Visible;

    QAbstractItemModel& model = *view_->model();
    const QString wanted = toQt(column.Caption);
    if (wanted != seen.caption) model.setHeaderData(section, Qt::Horizontal, wanted);
    seen.caption = model.headerData(section, Qt::Horizontal).toString();
    column.Caption = fromQt(seen.caption);
}

void DataGrid::Columns::readRow()
{
    const QAbstractItemModel* const model = view_->model();
    grid_->ApproxCount = model == nullptr ? 0 : model->rowCount();
    grid_->Row = model == nullptr ? -1 : view_->currentIndex().row();
    const auto& columns = grid_->columns()->all();
    for (std::size_t column = 0; column < columns.size(); ++column) {
        const QModelIndex cell = model->index(grid_->Row, static_cast<int>(column));
        columns[column]->Text = cell.isValid() ? fromQt(cell.data().toString()) : std::string{};
    }
}

DataGrid::DataGrid(QTableView& view) : DataGrid{view, std::make_shared<controls::DataGrid>()} {}

DataGrid::DataGrid(QTableView& view, std::shared_ptr<controls::DataGrid> grid) :
    WidgetControl{view, grid}, columns_{std::make_unique<Columns>(view, std::move(grid))}
{}

DataGrid::~DataGrid() = default;

void DataGrid::pull() const
{
    WidgetControl::pull();
    columns_->look();
}

void DataGrid::push()
{
    WidgetControl::push();
    columns_->look();
}

} // namespace tamarok::qt
