#pragma once

#include <QAbstractTableModel>
#include <QFontMetrics>
#include <QTimer>
#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "lists/list_columns.h"
#include "lists/record_list.h"
#include "work/worker.h"
#include "work/workplace.h"

namespace tamarok::workbench {

/// The rows of a list for a table. Rows are read when they come into view, in blocks, by the worker; until a block has
/// come its cells are empty. A list without keys is read as a whole.
class ListModel final : public QAbstractTableModel {
public:
    /// Told how the reading goes, on the window's thread.
    struct Listener {
        std::function<void(std::size_t rows)> progress;
        std::function<void()> shown;  ///< the first rows are there
        std::function<void()> loaded; ///< all rows and the totals are known
        std::function<void(const std::string& reason)> failed;
    };

    /// @param worker, place  outlive the model
    ListModel(Worker& worker, const Workplace& place, Listener listener);

    /// Reads a list anew. @param columns  all columns of its type
    void show(const ListSetup& setup, const std::vector<ListColumn>& columns);
    /// Ends the reading; the rows that are there stay.
    void stop();

    std::size_t rows() const noexcept { return count_; }
    bool isLoading() const noexcept { return loading_; }
    const ListSetup& setup() const noexcept { return setup_; }
    const std::vector<ListColumn>& columns() const noexcept { return columns_; }
    /// Returns the totals of the columns by their order, "" for one without.
    const std::vector<QString>& totals() const noexcept { return totals_; }
    /// Returns the statement of the list, "" before it was composed.
    std::string statement() const;
    /// Returns the list's statements, nothing before they were composed.
    std::shared_ptr<const ListStatements> statements() const noexcept { return list_; }
    /// Returns the width of the widest text among the first rows and the total of a column, 0 while there are none.
    int widestText(std::size_t column, const QFontMetrics& metrics) const;
    /// Returns the value of a cell, nothing if its row is not there (yet).
    std::optional<Variant> value(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Block {
        std::vector<std::optional<Row>> rows;
        std::vector<QString> texts; ///< of all cells, row after row
        std::list<std::size_t>::iterator used;
    };
    class Reading; ///< reads a list on the worker's thread

    void read();
    void takeFirst(std::shared_ptr<const ListStatements> list, std::vector<std::optional<Row>> rows);
    void takeKeys(std::shared_ptr<const RowKeys> keys);
    void takeTotals(const Row& totals);
    const Block* block(std::size_t number) const;
    void want(std::size_t number) const;
    void readNext();
    void takeBlock(std::size_t number, std::vector<std::optional<Row>> rows);
    Block makeBlock(std::vector<std::optional<Row>> rows) const;
    void keep(std::size_t number, Block block);
    void forget();

    Worker& worker_;
    const Workplace& place_;
    Listener listener_;
    ListSetup setup_;
    std::vector<ListColumn> columns_;
    std::shared_ptr<const ListStatements> list_;
    std::shared_ptr<const RowKeys> keys_; ///< none for a list that is read as a whole
    std::size_t count_ = 0;
    std::vector<QString> totals_;
    bool loading_ = false;
    std::size_t generation_ = 0; ///< answers for a former list are dropped
    mutable std::unordered_map<std::size_t, Block> blocks_;
    mutable std::list<std::size_t> used_; ///< the block used last in front
    mutable std::vector<std::size_t> wanted_;
    mutable QTimer soon_;  ///< lets the wishes of one painting come together before one is read
    bool reading_ = false; ///< a block is being read
};

} // namespace tamarok::workbench
