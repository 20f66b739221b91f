#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "tamarok/ado_backend.h"
#include "tamarok/error.h"

namespace tamarok::ado {

/// The rows of a scrolling recordset. A row is read from the cursor on the first visit and kept. A recordset and
/// its clones share one store. A deleted row keeps its index, so that positions and bookmarks stay valid.
class RowStore {
public:
    /// @param firstMark  the bookmark of the first row
    /// @param keyed      reads the keys of the rows, for editing
    /// @param onRow      the cursor stands on the first row of the store already
    RowStore(std::unique_ptr<Cursor> cursor, std::int64_t firstMark, bool keyed, bool onRow = false);

    /// Reads rows up to index `row`. Returns false if there are fewer. A failure to read is final: every later
    /// call for a row after it fails again, since the rows are not complete.
    bool reach(std::size_t row);
    /// Reads all rows.
    void reachEnd();
    /// Returns the number of rows read so far, deleted ones included.
    std::size_t rowsRead() const noexcept { return rows_.size(); }

    bool removed(std::size_t row) const noexcept { return rows_[row].removed; }
    std::int64_t key(std::size_t row) const noexcept { return rows_[row].key; }
    const Variant& value(std::size_t row, std::size_t column) const { return values_[row * width_ + column]; }
    std::span<const Variant> values(std::size_t row) const { return {values_.data() + row * width_, width_}; }
    /// Returns whether any row is not deleted; reads on if necessary.
    bool hasRows();
    /// Returns the number of rows before `row` that are not deleted.
    std::size_t rowsBefore(std::size_t row) const noexcept;

    /// Reads the present values of a row from the database. Removes a deleted row and returns false.
    bool refresh(std::size_t row);
    /// Appends a new row, with its present values, and returns its index. A row that the cursor does not find again has
    /// the assigned values alone.
    std::size_t append(std::int64_t key, std::span<const Assignment> assignments);
    void remove(std::size_t row) noexcept;

    std::int64_t firstMark() const noexcept { return firstMark_; }
    /// Returns the cursor. Error 3251 after `takeCursor`.
    Cursor& cursor() const;
    /// Returns nullptr instead.
    Cursor* cursorOrNull() const noexcept { return cursor_.get(); }
    /// Moves the cursor out; the rows read so far remain.
    std::unique_ptr<Cursor> takeCursor() noexcept;

private:
    struct Row {
        std::int64_t key = 0;
        bool removed = false;
    };

    bool step();
    bool readAgain(std::size_t row);

    std::unique_ptr<Cursor> cursor_;
    std::size_t width_;
    bool keyed_;
    bool onRow_; ///< the cursor stands on a row that is not in the store yet
    bool ended_ = false;
    std::optional<Error> failure_;
    std::int64_t firstMark_;
    std::size_t removedRows_ = 0;
    std::vector<Row> rows_;
    std::vector<Variant> values_;
};

} // namespace tamarok::ado
