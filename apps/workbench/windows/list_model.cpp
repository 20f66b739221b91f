#include "windows/list_model.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "tamarok_qt/texts.h"
#include "windows/texts.h"

namespace tamarok::workbench {

namespace {

constexpr std::size_t blockRows = 200;
constexpr std::size_t keptBlocks = 100;
constexpr std::size_t wantedBlocks = 4; ///< older wishes are no longer in view
constexpr int longestCell = 400;        ///< characters that a cell shows

} // namespace

/// Reads a list on the worker's thread, and gives the model what is there: the first rows, or all of them; the keys;
/// the totals.
class ListModel::Reading {
public:
    Reading(ListModel& model, ListSetup setup, TmkVar session) :
        model_{model}, generation_{model.generation_}, setup_{std::move(setup)}, session_{std::move(session)}
    {}

    void operator()(const ado::ConnectionRef& connection, const std::stop_token& stop, const Worker::Tell& tell)
    {
        connection->CommandTimeout(0); // the user stops what takes too long
        session_.db_ADO = connection;
        const auto list = std::make_shared<const ListStatements>(setup_, session_);
        if (list->hasKeys())
            readByKeys(connection, list, stop, tell);
        else
            readWhole(connection, list, stop, tell);
        Row totals;
        if (const std::string statement = list->totals(session_); !statement.empty())
            readAllRows(connection, statement, stop, [&](Row row) { totals = std::move(row); });
        deliver(tell, [totals = std::move(totals)](ListModel& model) { model.takeTotals(totals); });
    }

private:
    using List = std::shared_ptr<const ListStatements>;
    using Rows = std::vector<std::optional<Row>>;

    void readByKeys(const ado::ConnectionRef& connection, const List& list, const std::stop_token& stop,
                    const Worker::Tell& tell)
    {
        // In another order than that of the key, the database sorts all rows for the first ones already.
        FirstRows first;
        if (setup_.order.empty()) {
            first = readFirstRows(connection, *list, blockRows, stop);
            giveRows(tell, list, first.rows);
        }
        const auto keys = std::make_shared<const RowKeys>(
            RowKeys::read(connection, *list, stop, [&](std::size_t rows) { giveProgress(tell, rows); }));
        if (!setup_.order.empty() || !areFirst(first, *keys, blockRows))
            giveRows(tell, list, readRows(connection, *list, *keys, 0, blockRows));
        deliver(tell, [keys](ListModel& model) { model.takeKeys(keys); });
    }

    void readWhole(const ado::ConnectionRef& connection, const List& list, const std::stop_token& stop,
                   const Worker::Tell& tell)
    {
        Rows rows;
        readAllRows(connection, list->rows(), stop, [&](Row row) {
            rows.emplace_back(std::move(row));
            if (rows.size() % blockRows == 0) giveProgress(tell, rows.size());
        });
        giveRows(tell, list, std::move(rows));
    }

    void giveProgress(const Worker::Tell& tell, std::size_t rows)
    {
        deliver(tell, [rows](ListModel& model) { model.listener_.progress(rows); });
    }

    void giveRows(const Worker::Tell& tell, const List& list, Rows rows)
    {
        const auto given = std::make_shared<Rows>(std::move(rows));
        deliver(tell, [list, given](ListModel& model) { model.takeFirst(list, std::move(*given)); });
    }

    /// Carries an action out in the window, unless the model shows another list by then.
    void deliver(const Worker::Tell& tell, std::function<void(ListModel&)> action)
    {
        tell([&model = model_, generation = generation_, action = std::move(action)] {
            if (generation == model.generation_) action(model);
        });
    }

    ListModel& model_;
    std::size_t generation_;
    ListSetup setup_;
    TmkVar session_;
};

ListModel::ListModel(Worker& worker, const Workplace& place, Listener listener) :
    worker_{worker}, place_{place}, listener_{std::move(listener)}
{
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, [this] { readNext(); });
}

void ListModel::show(const ListSetup& setup, const std::vector<ListColumn>& columns)
{
    worker_.stop();
    beginResetModel();
    setup_ = setup;
    columns_.clear();
    for (const std::int16_t id : setup.columns) {
        const auto found = std::ranges::find(columns, id, &ListColumn::id);
        columns_.emplace_back();
        if (found != columns.end()) columns_.back() = *found;
    }
    forget();
    list_.reset();
    endResetModel();
    read();
}

void ListModel::stop()
{
    worker_.stop();
    ++generation_;
    loading_ = false;
    reading_ = false;
}

void ListModel::forget()
{
    ++generation_;
    keys_.reset();
    count_ = 0;
    totals_.assign(columns_.size(), {});
    blocks_.clear();
    used_.clear();
    wanted_.clear();
    reading_ = false;
}

/// Posts the composing and the reading.
void ListModel::read()
{
    loading_ = true;
    worker_.post(Reading{*this, setup_, place_.sessionOver({})},
                 [this, generation = generation_](const std::string& reason) {
                     if (generation != generation_) return;
                     loading_ = false;
                     listener_.failed(reason);
                 });
}

/// Shows the first rows, or all of a list without keys.
void ListModel::takeFirst(std::shared_ptr<const ListStatements> list, std::vector<std::optional<Row>> rows)
{
    beginResetModel();
    list_ = std::move(list);
    count_ = rows.size();
    blocks_.clear();
    used_.clear();
    for (std::size_t first = 0; first < rows.size(); first += blockRows) {
        const std::size_t end = std::min(first + blockRows, rows.size());
        const auto at = [&](std::size_t row) {
            return std::make_move_iterator(rows.begin() + static_cast<std::ptrdiff_t>(row));
        };
        keep(first / blockRows, makeBlock({at(first), at(end)}));
    }
    endResetModel();
    listener_.shown();
}

/// Appends all further rows. They are read when they come into view.
void ListModel::takeKeys(std::shared_ptr<const RowKeys> keys)
{
    keys_ = std::move(keys);
    if (keys_->count() <= count_) return;
    beginInsertRows({}, static_cast<int>(count_), static_cast<int>(keys_->count()) - 1);
    count_ = keys_->count();
    endInsertRows();
}

void ListModel::takeTotals(const Row& totals)
{
    loading_ = false;
    auto total = totals.begin();
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        if (!columns_[column].isMeasure || total == totals.end()) continue;
        totals_[column] = qt::toQt(cellText(*total++, columns_[column]));
    }
    listener_.loaded();
}

ListModel::Block ListModel::makeBlock(std::vector<std::optional<Row>> rows) const
{
    Block block;
    block.texts.reserve(rows.size() * columns_.size());
    for (const std::optional<Row>& row : rows) {
        for (std::size_t column = 0; column < columns_.size(); ++column) {
            if (!row) {
                block.texts.push_back(column == 0 ? textOf(Text::Deleted) : QString{});
                continue;
            }
            block.texts.push_back(qt::toQt(cellText(row->at(column), columns_[column])).left(longestCell));
        }
    }
    block.rows = std::move(rows);
    return block;
}

/// Returns a block, or nothing and reads it. Called for the rows that the table paints.
const ListModel::Block* ListModel::block(std::size_t number) const
{
    const auto found = blocks_.find(number);
    if (found == blocks_.end()) {
        if (keys_) want(number);
        return nullptr;
    }
    used_.splice(used_.begin(), used_, found->second.used);
    return &found->second;
}

void ListModel::want(std::size_t number) const
{
    std::erase(wanted_, number);
    wanted_.push_back(number);
    if (wanted_.size() > wantedBlocks) wanted_.erase(wanted_.begin());
    if (reading_) return;
    soon_.start();
}

/// Reads the block that was wanted last, one at a time: while the user scrolls, most wishes become outdated.
void ListModel::readNext()
{
    if (reading_ || wanted_.empty() || !keys_) return;
    reading_ = true;
    const std::size_t number = wanted_.back();
    wanted_.pop_back();
    const auto fail = [this, generation = generation_](const std::string& reason) {
        if (generation != generation_) return;
        reading_ = false;
        wanted_.clear();
        listener_.failed(reason);
    };
    worker_.post(
        [this, number, generation = generation_, list = list_,
         keys = keys_](const ado::ConnectionRef& connection, const std::stop_token&, const Worker::Tell& tell) {
            auto rows = std::make_shared<std::vector<std::optional<Row>>>(
                readRows(connection, *list, *keys, number * blockRows, blockRows));
            tell([this, number, generation, rows] {
                if (generation == generation_) takeBlock(number, std::move(*rows));
            });
        },
        fail);
}

void ListModel::takeBlock(std::size_t number, std::vector<std::optional<Row>> rows)
{
    reading_ = false;
    if (used_.size() >= keptBlocks) {
        blocks_.erase(used_.back());
        used_.pop_back();
    }
    const auto last = static_cast<int>(number * blockRows + rows.size()) - 1;
    keep(number, makeBlock(std::move(rows)));
    emit dataChanged(index(static_cast<int>(number * blockRows), 0), index(last, columnCount() - 1));
    readNext();
}

void ListModel::keep(std::size_t number, Block block)
{
    used_.push_front(number);
    block.used = used_.begin();
    blocks_.insert_or_assign(number, std::move(block));
}

int ListModel::widestText(std::size_t column, const QFontMetrics& metrics) const
{
    constexpr std::size_t rows = 100;
    const auto first = blocks_.find(0);
    if (first == blocks_.end()) return 0;
    const std::vector<QString>& texts = first->second.texts;
    int widest = metrics.horizontalAdvance(totals_[column]);
    for (std::size_t cell = column; cell < std::min(texts.size(), rows * columns_.size()); cell += columns_.size())
        widest = std::max(widest, metrics.horizontalAdvance(texts[cell]));
    return widest;
}

std::string ListModel::statement() const
{
    return list_ ? list_->rows() : std::string{};
}

std::optional<Variant> ListModel::value(const QModelIndex& index) const
{
    if (!index.isValid()) return std::nullopt;
    const auto row = static_cast<std::size_t>(index.row());
    const Block* const found = block(row / blockRows);
    if (found == nullptr || row % blockRows >= found->rows.size()) return std::nullopt;
    const std::optional<Row>& cells = found->rows[row % blockRows];
    return cells ? std::optional{cells->at(static_cast<std::size_t>(index.column()))} : std::nullopt;
}

int ListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(count_);
}

int ListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const
{
    const auto column = static_cast<std::size_t>(index.column());
    if (role == Qt::TextAlignmentRole)
        return QVariant{(columns_[column].isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter};
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    const auto row = static_cast<std::size_t>(index.row());
    const Block* const found = block(row / blockRows);
    const std::size_t cell = row % blockRows * columns_.size() + column;
    if (found == nullptr || cell >= found->texts.size()) return {};
    return found->texts[cell];
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical) return role == Qt::DisplayRole ? QVariant{section + 1} : QVariant{};
    const ListColumn& column = columns_.at(static_cast<std::size_t>(section));
    switch (role) {
    case Qt::DisplayRole: return qt::toQt(column.header);
    case Qt::ToolTipRole: return qt::toQt(column.label);
    case Qt::TextAlignmentRole: return QVariant{(column.isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter};
    default: return {};
    }
}

} // namespace tamarok::workbench
