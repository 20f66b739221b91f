#include "tamarok_qt/list_view.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <algorithm>
#include <utility>
#include <vector>

#include "controls/idle_sync.h"
#include "dialogs/grid_model.h"
#include "owned.h"
#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

namespace tamarok::qt {

namespace {

constexpr int aroundText = 6; ///< pixels above and below the text of a row together

} // namespace

/// The rows of a headless list view, and the bond between its columns and selection and those of the view.
class ListView::Model final : public QAbstractTableModel {
public:
    Model(std::shared_ptr<controls::ListView> list, QTreeView* view);

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(heads_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Shows what has changed in the list.
    void show();

private:
    /// A column as the view shows it.
    struct Head {
        QString text;
        int width = 0; ///< pixels
        controls::ColumnAlignment alignment = controls::ColumnAlignment::Left;
        friend bool operator==(const Head&, const Head&) = default;
    };
    std::vector<Head> wantedHeads() const;
    void showRows(std::vector<Head> heads);
    void showHeads(std::vector<Head> heads);
    void showSelected();

    QTreeView* view_;
    std::shared_ptr<controls::ListView> list_;
    std::vector<Head> heads_;
    int rows_ = 0;
    std::uint64_t revision_ = 0;
    bool showing_ = false; ///< the program acts, not the user
};

namespace {

Qt::Alignment alignmentOf(controls::ColumnAlignment alignment)
{
    switch (alignment) {
    case controls::ColumnAlignment::Right: return Qt::AlignVCenter | Qt::AlignRight;
    case controls::ColumnAlignment::Center: return Qt::AlignCenter;
    default: return Qt::AlignVCenter | Qt::AlignLeft;
    }
}

} // namespace

ListView::Model::Model(std::shared_ptr<controls::ListView> list, QTreeView* view) :
    QAbstractTableModel{view}, view_{view}, list_{std::move(list)}
{
    view->setModel(this);
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        const auto& items = list_->items()->all();
        const auto row = static_cast<std::size_t>(current.row());
        if (!showing_ && current.isValid() && row < items.size()) list_->SelectedItem(items[row]);
    });
    connect(view->header(), &QHeaderView::sectionResized, this, [this](int section, int, int width) {
        const auto column = static_cast<std::size_t>(section);
        if (showing_ || column >= heads_.size() || column >= list_->headers()->all().size()) return;
        heads_[column].width = width;
        list_->headers()->all()[column]->Width = twips(width);
    });
    makeOwned<IdleSync>([this] { show(); }, this);
}

QVariant ListView::Model::data(const QModelIndex& index, int role) const
{
    const auto& items = list_->items()->all();
    const auto row = static_cast<std::size_t>(index.row());
    const auto column = static_cast<std::size_t>(index.column());
    // Between a change of the list and its showing the view may ask for what has gone.
    if (!index.isValid() || row >= items.size() || column >= heads_.size() ||
        index.column() >= list_->headers()->Count())
        return {};
    if (role == Qt::TextAlignmentRole) return QVariant{alignmentOf(heads_[column].alignment)};
    if (role == Qt::SizeHintRole) return QSize{0, view_->fontMetrics().height() + aroundText};
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
    const controls::ListItem& item = *items[row];
    return shownText(column == 0 ? item.text() : item.SubItems(index.column()));
}

QVariant ListView::Model::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    const Head& head = heads_[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) return head.text;
    if (role == Qt::TextAlignmentRole) return QVariant{alignmentOf(head.alignment)};
    return {};
}

void ListView::Model::show()
{
    if (std::exchange(showing_, true)) return;
    std::vector<Head> heads = wantedHeads();
    if (revision_ != list_->items()->revision() || heads.size() != heads_.size())
        showRows(std::move(heads));
    else if (heads != heads_)
        showHeads(std::move(heads));
    showSelected();
    showing_ = false;
}

std::vector<ListView::Model::Head> ListView::Model::wantedHeads() const
{
    std::vector<Head> heads;
    for (const controls::ColumnHeaderRef& header : list_->headers()->all())
        heads.push_back({toQt(header->text), pixels(header->Width), header->Alignment});
    return heads;
}

void ListView::Model::showRows(std::vector<Head> heads)
{
    // A reset would scroll to the top.
    const int scrolled = view_->verticalScrollBar()->value();
    const int scrolledAside = view_->horizontalScrollBar()->value();
    beginResetModel();
    revision_ = list_->items()->revision();
    rows_ = heads.empty() ? 0 : list_->items()->Count();
    heads_ = std::move(heads);
    endResetModel();
    for (std::size_t column = 0; column < heads_.size(); ++column)
        view_->setColumnWidth(static_cast<int>(column), heads_[column].width);
    view_->verticalScrollBar()->setValue(scrolled);
    view_->horizontalScrollBar()->setValue(scrolledAside);
}

void ListView::Model::showHeads(std::vector<Head> heads)
{
    heads_ = std::move(heads);
    for (std::size_t column = 0; column < heads_.size(); ++column)
        view_->setColumnWidth(static_cast<int>(column), heads_[column].width);
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    view_->viewport()->update();
}

/// Moves the view to the selected item, unless it is there: a user who has scrolled away stays where he is.
void ListView::Model::showSelected()
{
    const controls::ListItemRef item = rows_ == 0 ? nullptr : list_->SelectedItem();
    const int row = item ? item->Index() - 1 : -1;
    if (view_->currentIndex().row() == row) return;
    if (row < 0) {
        view_->selectionModel()->clear();
        return;
    }
    const QModelIndex current = index(row, 0);
    view_->selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    view_->scrollTo(current);
}

ListView::ListView(QTreeView& view) : ListView{view, std::make_shared<controls::ListView>()} {}

ListView::ListView(QTreeView& view, std::shared_ptr<controls::ListView> list) :
    WidgetControl{view, list}, list_{std::move(list)}
{
    view.setRootIsDecorated(false);
    view.setUniformRowHeights(true);
    view.setAllColumnsShowFocus(true);
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.header()->setSectionsMovable(false);
    view.header()->setSectionsClickable(true);
    view.header()->setStretchLastSection(false);
    model_ = &makeOwned<Model>(list_, &view);
}

void ListView::show()
{
    widget();
    if (model_) static_cast<Model*>(model_.data())->show();
}

} // namespace tamarok::qt
