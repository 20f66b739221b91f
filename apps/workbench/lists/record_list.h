#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "lists/list_statements.h"

#include "tamarok/ado.h"
#include "tamarok/variant.h"

/// The rows of a list, read where they are looked at.
///
/// The keys of all rows are read, in the order of the list: 8 bytes a row. Then any rows are read by their keys,
/// so that the end of a list of a million rows is shown as fast as its beginning. A key that several rows have tells
/// them apart by its occurrence: the rows of a record come in the order of the list both times. A list in the order of
/// its key shows its first rows before the keys are there.
namespace tamarok::workbench {

/// Thrown by long work that was asked to stop.
struct Stopped {};

/// Told of the number of rows done, now and then.
using RowProgress = std::function<void(std::size_t)>;

/// The keys of a list's rows, in the order of the list.
class RowKeys {
public:
    /// Reads the keys. Errors: those of the database; Stopped.
    static RowKeys read(const ado::ConnectionRef& connection, const ListStatements& list, const std::stop_token& stop,
                        const RowProgress& progress = {});

    std::size_t count() const noexcept { return isText_ ? texts_.size() : numbers_.size(); }
    /// Returns the key of a row as the text of an SQL number, or as the text itself.
    std::string text(std::size_t row) const;
    /// Returns which of its record's rows a row is, from 0.
    std::size_t occurrence(std::size_t row) const { return occurrences_.empty() ? 0 : occurrences_[row]; }

private:
    void add(const Variant& key);
    void numberOccurrences();

    bool isText_ = false;
    std::vector<std::int64_t> numbers_;
    std::vector<std::string> texts_;
    std::vector<std::uint32_t> occurrences_; ///< empty if each record has one row
};

using Row = std::vector<Variant>;

/// The first rows of a list, read before the keys of all.
struct FirstRows {
    std::vector<std::string> keys;
    std::vector<std::optional<Row>> rows;
};

/// Reads the first rows of a list that has keys. Errors: those of the database; Stopped.
FirstRows readFirstRows(const ado::ConnectionRef& connection, const ListStatements& list, std::size_t most,
                        const std::stop_token& stop);

/// Returns whether rows that were read as the first ones still are, now that the keys of all have been read.
/// @param most  how many rows were asked for
bool areFirst(const FirstRows& first, const RowKeys& keys, std::size_t most);

/// Reads rows of a list by their keys.
/// @param first, count  rows of `keys`
/// @return a row for each, nothing for one that has been deleted since
std::vector<std::optional<Row>> readRows(const ado::ConnectionRef& connection, const ListStatements& list,
                                         const RowKeys& keys, std::size_t first, std::size_t count);

/// Reads all rows of a list one after another. `take` receives each. Errors: those of the database; Stopped.
void readAllRows(const ado::ConnectionRef& connection, const std::string& statement, const std::stop_token& stop,
                 const std::function<void(Row)>& take);

} // namespace tamarok::workbench
