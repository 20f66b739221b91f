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

/// The rows of a scrolling recordset: read from the cursor when first visited and kept. A recordset
/// and its clones share one. A deleted row keeps its place, so that positions and marks stay true.
class RowStore {
public:
    /// @param firstMark  the bookmark of the first row
    /// @param keyed      the rows' keys are wanted, for editing
    RowStore(std::unique_ptr<Cursor> cursor, std::int64_t firstMark, bool keyed);

    /// Reads rows until `row` is there; false where the rows end before. A failed step fails again
    /// whenever a row behind it is wanted, since the rows are not complete.
    bool reach(std::size_t row);
    /// Reads all rows.
    void reachEnd();
    /// Rows read so far, deleted ones included.
    std::size_t known() const noexcept { return rows_.size(); }

    bool removed(std::size_t row) const noexcept { return rows_[row].removed; }
    std::int64_t key(std::size_t row) const noexcept { return rows_[row].key; }
    const Variant& value(std::size_t row, std::size_t column) const { return values_[row * width_ + column]; }
    std::span<const Variant> values(std::size_t row) const { return {values_.data() + row * width_, width_}; }
    /// True if there is a row that is not deleted, known or still to be read.
    bool hasLiving();
    /// Living rows before `row`.
    std::size_t livingBefore(std::size_t row) const noexcept;

    /// Reads a row anew from the database; false, and the row is removed, where it has gone.
    bool refresh(std::size_t row);
    /// A row that was added, at the end. Its values are Null until `refresh`.
    std::size_t append(std::int64_t key);
    void remove(std::size_t row) noexcept;

    std::int64_t firstMark() const noexcept { return firstMark_; }
    /// Error 3251 where the cursor has gone to another store.
    Cursor& cursor() const;
    /// Takes the cursor away; the rows read so far stay.
    std::unique_ptr<Cursor> takeCursor() noexcept;

private:
    struct Row {
        std::int64_t key = 0;
        bool removed = false;
    };

    bool step();

    std::unique_ptr<Cursor> cursor_;
    std::size_t width_;
    bool keyed_;
    bool ended_ = false;
    std::optional<Error> failure_;
    std::int64_t firstMark_;
    std::size_t removedRows_ = 0;
    std::vector<Row> rows_;
    std::vector<Variant> values_;
};

} // namespace tamarok::ado
