#include <limits>

#include "ado_failure.h"
#include "recordset_state.h"

// Moves of a recordset. A move in a store first reads the new row, then releases the lock on the old row and
// locks the new one. So a row that cannot be read leaves the recordset at its old position.

namespace tamarok::ado {

void Field::Source::stepStream()
{
    standing_ = Standing::After; // also after a failed step: the cursor gives no rows after a failure
    ++position_;
    if (guarded([&] { return cursor_->next(); })) standing_ = Standing::Row;
}

void Field::Source::moveFirst()
{
    requireOpen("MoveFirst", recordsetSource);
    finishEdit();
    if (!scrolls()) {
        if (empty_) failWithoutRow("MoveFirst");
        if (position_ == 0 && onRow()) return;
        fail(errors::badCursorOperation, recordsetSource, "MoveFirst: a forward-only recordset cannot move backwards.");
    }
    guarded([&] {
        if (cursorType_ == CursorType::OpenDynamic)
            restart();
        else
            moveToRowFrom(0);
    });
    if (!onRow()) failWithoutRow("MoveFirst");
}

void Field::Source::moveLast()
{
    requireOpen("MoveLast", recordsetSource);
    if (!scrolls())
        fail(errors::badCursorOperation, recordsetSource,
             "MoveLast: a forward-only recordset cannot know its last row.");
    finishEdit();
    guarded([&] {
        store_->reachEnd();
        moveToRowBack(static_cast<std::int64_t>(store_->rowsRead()) - 1);
        if (!onRow()) moveToRowFrom(store_->rowsRead());
    });
    if (!onRow()) failWithoutRow("MoveLast");
}

void Field::Source::move(std::int64_t rows, std::string_view operation)
{
    requireOpen(operation, recordsetSource);
    if (rows < 0 && !scrolls())
        fail(errors::badCursorOperation, recordsetSource,
             std::string{operation} + ": a forward-only recordset cannot move backwards.");
    if (!store_) {
        if (!onRow()) failWithoutRow(operation);
        for (; rows > 0 && onRow(); --rows)
            stepStream();
        return;
    }
    finishEdit();
    const bool beyond = (rows > 0 && standing_ == Standing::After) || (rows < 0 && standing_ == Standing::Before) ||
                        (rows == 0 && !onRow());
    if (beyond || (empty_ && !onRow())) failWithoutRow(operation);
    guarded([&] {
        if (rows > 0)
            moveToRowFrom(findRowForward(rows));
        else if (rows < 0)
            moveToRowBack(findRowBackward(rows));
        else
            reloadRow();
    });
}

/// Returns the index of the row `rows` rows after the current one, deleted rows not counted; the end of the
/// store if there are fewer.
std::size_t Field::Source::findRowForward(std::int64_t rows)
{
    auto row = static_cast<std::size_t>(position_ + 1);
    for (; store_->reach(row); ++row)
        if (!store_->removed(row) && --rows == 0) return row;
    return store_->rowsRead();
}

/// Returns the index of the row `-rows` rows before the current one, deleted rows not counted; -1 if there are
/// fewer.
std::int64_t Field::Source::findRowBackward(std::int64_t rows) const
{
    for (std::int64_t row = position_ - 1; row >= 0; --row)
        if (!store_->removed(static_cast<std::size_t>(row)) && ++rows == 0) return row;
    return -1;
}

void Field::Source::reloadRow()
{
    if (!editable_) return;
    const auto row = static_cast<std::size_t>(position_);
    if (!store_->refresh(row)) leaveRow();
}

/// Runs the statement again. Clones keep the old store with the rows read so far.
void Field::Source::restart()
{
    leaveRow();
    store_->cursor().restart();
    const std::int64_t firstMark = store_->firstMark() + static_cast<std::int64_t>(store_->rowsRead());
    store_ = std::make_shared<RowStore>(store_->takeCursor(), firstMark, editable_);
    position_ = -1;
    moveToRowFrom(0);
}

/// Moves to the first row from index `row` on that is not deleted, or to the end.
void Field::Source::moveToRowFrom(std::size_t row)
{
    store_->reach(row); // a failure to read must leave the current row unchanged
    leaveRow();
    for (; store_->reach(row); ++row)
        if (standOn(row)) return;
    position_ = static_cast<std::int64_t>(store_->rowsRead());
    standing_ = Standing::After;
    empty_ = !store_->hasRows();
}

/// Moves to the first row from index `row` backwards that is not deleted, or before the first row.
void Field::Source::moveToRowBack(std::int64_t row)
{
    leaveRow();
    for (; row >= 0; --row)
        if (standOn(static_cast<std::size_t>(row))) return;
    position_ = -1;
    standing_ = Standing::Before;
    empty_ = !store_->hasRows();
}

/// Makes a row the current one and locks it if the recordset is pessimistic. Returns false for a deleted row.
bool Field::Source::standOn(std::size_t row)
{
    if (store_->removed(row)) return false;
    if (locking_ && !lock(row)) return false;
    position_ = static_cast<std::int64_t>(row);
    standing_ = Standing::Row;
    empty_ = false;
    return true;
}

/// Locks a row and reads its present values. Returns false if it was deleted before it was locked.
bool Field::Source::lock(std::size_t row)
{
    try {
        store_->cursor().lockRow(store_->key(row));
        locked_ = true;
    } catch (const Error& error) {
        if (error.number != errors::rowDeleted) throw;
        store_->remove(row);
        return false;
    }
    if (store_->refresh(row)) return true;
    leaveRow();
    return false;
}

void Field::Source::leaveRow()
{
    standing_ = Standing::Nowhere;
    if (!locked_) return;
    locked_ = false;
    store_->cursor().unlockRow();
}

} // namespace tamarok::ado
