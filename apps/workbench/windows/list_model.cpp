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

/// What the worker has found out about a list: its number of rows, and either their keys and the first rows, or all of
/// them.
struct ListModel::Reading {
    std::shared_ptr<const ListStatements> list;
    std::shared_ptr<const RowKeys> keys;
    std::vector<std::optional<Row>> rows;
    Row totals;
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

/// Posts the composing and the reading of the keys, or of all rows.
void ListModel::read()
{
    loading_ = true;
    const auto fail = [this, generation = generation_](const std::string& reason) {
        if (generation != generation_) return;
        loading_ = false;
        listener_.failed(reason);
    };
    worker_.post(
        [this, generation = generation_, setup = setup_, session = place_.sessionOver({})](
            const ado::ConnectionRef& connection, const std::stop_token& stop, const Worker::Tell& tell) {
            TmkVar own = session;
            own.db_ADO = connection;
            const auto deliver = [this, generation, &tell](std::function<void()> action) {
                tell([this, generation, action = std::move(action)] {
                    if (generation == generation_) action();
                });
            };
            const auto reading =
                std::make_shared<Reading>(readList(connection, setup, own, stop, [this, &deliver](std::size_t rows) {
                    deliver([this, rows] { listener_.progress(rows); });
                }));
            deliver([this, reading] { take(std::move(*reading)); });
        },
        fail);
}

/// Runs on the worker's thread.
ListModel::Reading ListModel::readList(const ado::ConnectionRef& connection, const ListSetup& setup,
                                       const TmkVar& session, const std::stop_token& stop, const RowProgress& progress)
{
    connection->CommandTimeout(0); // the user stops what takes too long
    Reading reading;
    reading.list = std::make_shared<const ListStatements>(setup, session);
    if (reading.list->hasKeys()) {
        reading.keys = std::make_shared<const RowKeys>(RowKeys::read(connection, *reading.list, stop, progress));
        reading.rows = readRows(connection, *reading.list, *reading.keys, 0, blockRows);
    } else {
        readAllRows(connection, reading.list->rows(), stop, [&](Row row) {
            reading.rows.emplace_back(std::move(row));
            if (reading.rows.size() % blockRows == 0) progress(reading.rows.size());
        });
    }
    if (const std::string totals = reading.list->totals(session); !totals.empty())
        readAllRows(connection, totals, stop, [&](Row row) { reading.totals = std::move(row); });
    return reading;
}

void ListModel::take(Reading reading)
{
    beginResetModel();
    loading_ = false;
    list_ = std::move(reading.list);
    keys_ = std::move(reading.keys);
    count_ = keys_ ? keys_->count() : reading.rows.size();
    auto total = reading.totals.begin();
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        if (!columns_[column].isMeasure || total == reading.totals.end()) continue;
        totals_[column] = qt::toQt(cellText(*total++, columns_[column]));
    }
    // Rows that were read as a whole stay: they cannot be read again in pieces.
    for (std::size_t first = 0; first < reading.rows.size(); first += blockRows) {
        const std::size_t end = std::min(first + blockRows, reading.rows.size());
        const auto at = [&](std::size_t row) {
            return std::make_move_iterator(reading.rows.begin() + static_cast<std::ptrdiff_t>(row));
        };
        keep(first / blockRows, makeBlock({at(first), at(end)}));
    }
    endResetModel();
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
    if (keys_) used_.splice(used_.begin(), used_, found->second.used);
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
    if (keys_) {
        used_.push_front(number);
        block.used = used_.begin();
    }
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
