#include "row_store.h"

#include <algorithm>
#include <utility>

#include "ado_failure.h"

// A store reads its cursor forward only. `rows_` has one entry per row read, `values_` the values of all rows one
// after the other, `width_` for each row.

namespace tamarok::ado {

RowStore::RowStore(std::unique_ptr<Cursor> cursor, std::int64_t firstMark, bool keyed, bool onRow) :
    cursor_{std::move(cursor)}, width_{cursor_->columns().size()}, keyed_{keyed}, onRow_{onRow}, firstMark_{firstMark}
{}

bool RowStore::reach(std::size_t row)
{
    while (rows_.size() <= row)
        if (!step()) return false;
    return true;
}

void RowStore::reachEnd()
{
    while (step()) {}
}

/// Reads the next row of the cursor. A failure is kept and raised again by later steps.
bool RowStore::step()
{
    if (failure_) throw *failure_;
    if (ended_) return false;
    try {
        if (!std::exchange(onRow_, false) && !cursor_->next()) {
            ended_ = true;
            return false;
        }
        values_.resize(rows_.size() * width_); // removes the values of a row that failed half-way
        for (std::size_t column = 0; column < width_; ++column)
            values_.push_back(cursor_->value(column));
        // The entry comes last: a failure within the row leaves the rows before it readable.
        rows_.push_back({keyed_ ? cursor_->rowKey() : 0, false});
        return true;
    } catch (const Error& error) {
        failure_ = error;
        throw;
    }
}

bool RowStore::hasRows()
{
    for (std::size_t row = 0; reach(row); ++row)
        if (!rows_[row].removed) return true;
    return false;
}

std::size_t RowStore::rowsBefore(std::size_t row) const noexcept
{
    if (removedRows_ == 0) return row; // the common case needs no walk
    const auto end = rows_.begin() + static_cast<std::ptrdiff_t>(row);
    return static_cast<std::size_t>(std::count_if(rows_.begin(), end, [](const Row& r) { return !r.removed; }));
}

bool RowStore::refresh(std::size_t row)
{
    // Another user may have deleted the row since it was read; then the store drops it too.
    const bool found = readAgain(row);
    if (!found) remove(row);
    return found;
}

bool RowStore::readAgain(std::size_t row)
{
    std::vector<Variant> fresh;
    if (!cursor().readRow(rows_[row].key, fresh)) return false;
    if (fresh.empty()) return true; // without a key the row stays as it was read
    fresh.resize(width_, Null{});
    std::ranges::move(fresh, values_.begin() + static_cast<std::ptrdiff_t>(row * width_));
    return true;
}

std::size_t RowStore::append(std::int64_t key, std::span<const Assignment> assignments)
{
    // First drops the values of a row that failed half-way, then adds one row.
    values_.resize(rows_.size() * width_);
    values_.resize((rows_.size() + 1) * width_, Null{});
    for (const Assignment& assignment : assignments)
        values_[rows_.size() * width_ + assignment.column] = assignment.value;
    rows_.push_back({key, false});
    // The database fills in defaults and keys. A row that the statement's condition does not meet may not be found.
    readAgain(rows_.size() - 1);
    return rows_.size() - 1;
}

void RowStore::remove(std::size_t row) noexcept
{
    if (rows_[row].removed) return;
    // The entry stays, so that the bookmarks of the other rows keep their meaning.
    rows_[row].removed = true;
    ++removedRows_;
}

Cursor& RowStore::cursor() const
{
    if (!cursor_)
        fail(errors::readOnlyRecordset, recordsetSource,
             "The recordset that this clone came from has run its statement again; the clone's rows can only be read.");
    return *cursor_;
}

std::unique_ptr<Cursor> RowStore::takeCursor() noexcept
{
    ended_ = true;
    return std::exchange(cursor_, nullptr);
}

} // namespace tamarok::ado
