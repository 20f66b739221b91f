#include <limits>

#include "ado_failure.h"
#include "recordset_state.h"

// Moves of a recordset. In a store a move first finds its row, then gives up the lock on the old one
// and takes the new one, so that a row that cannot be read leaves the recordset where it was.

namespace tamarok::ado {

void Field::Source::stepStream()
{
    standing_ = Standing::Behind; // also where the step fails: nothing behind the failure can be trusted
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
            settleForward(0);
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
        settleBackward(static_cast<std::int64_t>(store_->known()) - 1);
        if (!onRow()) settleForward(store_->known());
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
    const bool beyond = (rows > 0 && standing_ == Standing::Behind) || (rows < 0 && standing_ == Standing::Before) ||
                        (rows == 0 && !onRow());
    if (beyond || (empty_ && !onRow())) failWithoutRow(operation);
    guarded([&] {
        if (rows > 0)
            settleForward(rowsOnward(rows));
        else if (rows < 0)
            settleBackward(rowsBack(rows));
        else
            readAgain();
    });
}

/// The store's row that lies `rows` living rows behind the present position, or the end.
std::size_t Field::Source::rowsOnward(std::int64_t rows)
{
    auto row = static_cast<std::size_t>(position_ + 1);
    for (; store_->reach(row); ++row)
        if (!store_->removed(row) && --rows == 0) return row;
    return store_->known();
}

/// The same before the present position for a negative number of rows, or -1.
std::int64_t Field::Source::rowsBack(std::int64_t rows) const
{
    for (std::int64_t row = position_ - 1; row >= 0; --row)
        if (!store_->removed(static_cast<std::size_t>(row)) && ++rows == 0) return row;
    return -1;
}

void Field::Source::readAgain()
{
    if (!editable_) return;
    const auto row = static_cast<std::size_t>(position_);
    if (!store_->refresh(row)) leaveRow();
}

/// The rows as they are now. Clones keep the store with the rows they know.
void Field::Source::restart()
{
    leaveRow();
    store_->cursor().restart();
    const std::int64_t firstMark = store_->firstMark() + static_cast<std::int64_t>(store_->known());
    store_ = std::make_shared<RowStore>(store_->takeCursor(), firstMark, editable_);
    position_ = -1;
    settleForward(0);
}

/// Stands on the first living row from `row` on, or at the end.
void Field::Source::settleForward(std::size_t row)
{
    store_->reach(row); // a failure to read comes before the present row is given up
    leaveRow();
    for (; store_->reach(row); ++row)
        if (hold(row)) return;
    position_ = static_cast<std::int64_t>(store_->known());
    standing_ = Standing::Behind;
    empty_ = !store_->hasLiving();
}

/// Stands on the first living row from `row` on towards the beginning, or before it.
void Field::Source::settleBackward(std::int64_t row)
{
    leaveRow();
    for (; row >= 0; --row)
        if (hold(static_cast<std::size_t>(row))) return;
    position_ = -1;
    standing_ = Standing::Before;
    empty_ = !store_->hasLiving();
}

/// Stands on a row and locks it if the recordset does so; false where the row has been deleted.
bool Field::Source::hold(std::size_t row)
{
    if (store_->removed(row)) return false;
    if (locking_ && !lock(row)) return false;
    position_ = static_cast<std::int64_t>(row);
    standing_ = Standing::Row;
    empty_ = false;
    return true;
}

/// Locks a row and reads what it has become; false where it went, before or while its lock was waited for.
bool Field::Source::lock(std::size_t row)
{
    try {
        store_->cursor().lockRow(store_->key(row));
        locked_ = true;
    } catch (const Error& error) {
        if (error.number != rowGone) throw;
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
