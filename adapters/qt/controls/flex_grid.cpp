#include <QAbstractTableModel>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <algorithm>
#include <utility>

#include "controls/idle_sync.h"
#include "dialogs/grid_model.h"
#include "owned.h"
#include "tamarok_qt/grids.h"
#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

namespace tamarok::qt {

/// The cells of a headless flex grid behind its fixed rows and columns, which are the heads.
class FlexGrid::Model final : public QAbstractTableModel {
public:
    Model(std::shared_ptr<controls::FlexGrid> grid, QTableView* view);

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : columns_; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void show();
    bool isStale = true; ///< an operation has changed the grid

private:
    void showSizes();
    void showCurrent();

    QTableView* view_;
    std::shared_ptr<controls::FlexGrid> grid_;
    int rows_ = 0;
    int columns_ = 0;
    bool showing_ = false;
};

FlexGrid::Model::Model(std::shared_ptr<controls::FlexGrid> grid, QTableView* view) :
    QAbstractTableModel{view}, view_{view}, grid_{std::move(grid)}
{
    view->setModel(this);
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        const int row = current.row() + grid_->FixedRows();
        const int column = current.column() + grid_->FixedCols();
        if (showing_ || !current.isValid() || row >= grid_->Rows() || column >= grid_->Cols()) return;
        grid_->Row(row);
        grid_->Col(column);
    });
    connect(view->horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section, int, int width) {
        const int column = section + grid_->FixedCols();
        if (!showing_ && column < grid_->Cols()) grid_->ColWidth(column, static_cast<std::int32_t>(twips(width)));
    });
    makeOwned<IdleSync>([this] { show(); }, this);
}

QVariant FlexGrid::Model::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
    const int row = index.row() + grid_->FixedRows();
    const int column = index.column() + grid_->FixedCols();
    if (!index.isValid() || row >= grid_->Rows() || column >= grid_->Cols()) return {};
    return shownText(grid_->TextMatrix(row, column));
}

/// A head shows the text of the last fixed row or column.
QVariant FlexGrid::Model::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole) return {};
    const bool isHead = orientation == Qt::Horizontal;
    const int row = isHead ? grid_->FixedRows() - 1 : section + grid_->FixedRows();
    const int column = isHead ? section + grid_->FixedCols() : grid_->FixedCols() - 1;
    if (row < 0 || column < 0 || row >= grid_->Rows() || column >= grid_->Cols()) return {};
    return shownText(grid_->TextMatrix(row, column));
}

void FlexGrid::Model::show()
{
    if (!isStale || std::exchange(showing_, true)) return;
    // Cells have no objects of their own, so that each change has passed the control.
    beginResetModel();
    rows_ = grid_->Rows() - grid_->FixedRows();
    columns_ = grid_->Cols() - grid_->FixedCols();
    endResetModel();
    showSizes();
    showCurrent();
    isStale = false;
    showing_ = false;
}

void FlexGrid::Model::showSizes()
{
    view_->horizontalHeader()->setVisible(grid_->FixedRows() > 0);
    view_->verticalHeader()->setVisible(grid_->FixedCols() > 0);
    for (int column = 0; column < columns_; ++column)
        view_->setColumnWidth(column, pixels(static_cast<float>(grid_->ColWidth(column + grid_->FixedCols()))));
    constexpr std::int32_t defaultHeight = controls::FlexGrid::defaultRowHeight;
    for (int row = 0; row < rows_; ++row) {
        // A row of the default height is as high as the letters of the table need.
        const std::int32_t height = grid_->RowHeight(row + grid_->FixedRows());
        if (height != defaultHeight) view_->setRowHeight(row, pixels(static_cast<float>(height)));
    }
}

void FlexGrid::Model::showCurrent()
{
    const QModelIndex current = index(grid_->Row() - grid_->FixedRows(), grid_->Col() - grid_->FixedCols());
    if (current.isValid()) view_->selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect);
}

FlexGrid::FlexGrid(QTableView& view) : FlexGrid{view, std::make_shared<controls::FlexGrid>()} {}

FlexGrid::FlexGrid(QTableView& view, std::shared_ptr<controls::FlexGrid> grid) :
    WidgetControl{view, grid}, grid_{std::move(grid)}
{
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    model_ = &makeOwned<Model>(grid_, &view);
}

void FlexGrid::put(std::string_view name, const Variant& value)
{
    WidgetControl::put(name, value);
    if (model_) static_cast<Model*>(model_.data())->isStale = true;
}

void FlexGrid::putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value)
{
    WidgetControl::putIndexed(name, index, value);
    if (model_) static_cast<Model*>(model_.data())->isStale = true;
}

void FlexGrid::show()
{
    widget();
    if (model_) static_cast<Model*>(model_.data())->show();
}

} // namespace tamarok::qt
