#include "recordset_state.h"

#include <limits>
#include <utility>

#include "ado_failure.h"

// Opening, closing and the questions of a recordset; moves are in recordset_moves.cpp, edits in
// recordset_edit.cpp. Errors of the cursor pass through `guarded`, which adds the statement and the provider.

namespace tamarok::ado {

Field::Source::Source(ConnectionRef connection, const Opening& opening) :
    connection_{std::move(connection)}, statement_{opening.statement}, provider_{connection_->session().name()},
    cursorType_{opening.cursorType == CursorType::Unspecified ? CursorType::OpenForwardOnly : opening.cursorType},
    lockType_{opening.lockType == LockType::Unspecified ? LockType::ReadOnly : opening.lockType}
{
    // The connection releases its open recordsets when it is closed.
    connection_->attach(*this);
}

Field::Source::~Source()
{
    release();
}

std::shared_ptr<Field::Source> Field::Source::open(const ConnectionRef& connection, const Opening& opening)
{
    auto source = std::make_shared<Source>(connection, opening);
    source->run(opening);
    // A statement without columns, such as an UPDATE, has no result set.
    return source->columns_->infos.empty() ? nullptr : source;
}

// Announces and sends the statement, then decides what the rows allow: editing needs a cursor that can update,
// locking needs editing. Last it chooses between reading the cursor row by row and storing its rows.
void Field::Source::run(const Opening& opening)
{
    connection_->announce(opening.procedure ? "EXEC " + statement_ : statement_);
    const Statement statement{.text = statement_,
                              .parameters = {},
                              .cursorType = cursorType_,
                              .lockType = lockType_,
                              .timeoutSeconds = connection_->CommandTimeout(),
                              .procedure = opening.procedure};
    cursor_ = guarded([&] { return connection_->session().open(statement); });
    columns_ = std::make_shared<Columns>(Columns{cursor_->columns(), false});
    if (columns_->infos.empty()) return;
    editable_ = lockType_ != LockType::ReadOnly && cursor_->updatable();
    locking_ = lockType_ == LockType::Pessimistic;
    if (locking_ && !editable_)
        fail(errors::readOnlyRecordset, recordsetSource,
             "Open: a pessimistic lock was asked for, but the rows of this statement cannot be locked.");
    // Only a forward-only read-only recordset can do without a store: it never returns to a row.
    if (lockType_ == LockType::ReadOnly && !scrolls()) {
        standing_ = Standing::Row;
        stepStream();
    } else {
        store_ = std::make_shared<RowStore>(std::move(cursor_), 1, editable_);
        guarded([&] { moveToRowFrom(0); });
    }
    empty_ = !onRow();
}

std::shared_ptr<Field::Source> Field::Source::clone() const
{
    requireOpen("Clone", recordsetSource);
    requireScrolling("Clone");
    // The copy shares the stored rows and runs no statement.
    auto copy = std::make_shared<Source>(connection_, Opening{statement_, CursorType::OpenStatic, lockType_});
    copy->editable_ = editable_ && !locking_; // two positions cannot hold one cursor's single lock
    copy->columns_ = columns_;
    copy->store_ = store_;
    copy->guarded([&] { copy->moveToRowFrom(0); });
    return copy;
}

void Field::Source::close()
{
    requireOpen("Close", recordsetSource);
    if (edit_ != Edit::None)
        fail(errors::badCursorOperation, recordsetSource,
             "Close: an edit is pending; send it with Update or drop it with CancelUpdate first.");
    // A failure to unlock is reported, but the recordset is closed all the same.
    try {
        guarded([&] { leaveRow(); });
    } catch (...) {
        release();
        throw;
    }
    release();
}

void Field::Source::release() noexcept
{
    if (!connection_) return;
    // The order counts: unlocking needs the cursor, and the cursor must go before the connection.
    connection_->detach(*this);
    if (locked_) {
        try {
            leaveRow(); // explicitly, since a clone may share the cursor
        } catch (const Error&) {
            locked_ = false; // the cursor's destructor releases the lock
        }
    }
    standing_ = Standing::Nowhere;
    endEdit();
    cursor_.reset();
    store_.reset();
    connection_.reset();
}

void Field::Source::requireOpen(std::string_view operation, std::string_view object) const
{
    if (!isOpen()) fail(errors::objectClosed, object, std::string{operation} + ": the recordset is closed.");
}

const ColumnInfo& Field::Source::column(std::size_t ordinal) const
{
    requireOpen("Field", fieldSource);
    return columns_->infos[ordinal];
}

const ColumnInfo& Field::Source::columnWithBase(std::size_t ordinal) const
{
    requireOpen("Field", fieldSource);
    // A clone whose cursor has gone keeps the names that are known.
    Cursor* const cursor = store_ ? store_->cursorOrNull() : cursor_.get();
    if (!columns_->basesNamed && cursor != nullptr) {
        guarded([&] { cursor->nameBases(columns_->infos); });
        columns_->basesNamed = true;
    }
    return columns_->infos[ordinal];
}

void Field::Source::failWithoutRow(std::string_view operation) const
{
    std::string_view where = "the recordset has no current row.";
    if (empty_)
        where = "the recordset has no rows.";
    else if (standing_ == Standing::After)
        where = "the recordset stands behind its last row.";
    else if (standing_ == Standing::Before)
        where = "the recordset stands before its first row.";
    fail(errors::noCurrentRecord, recordsetSource, std::string{operation} + ": " + std::string{where});
}

void Field::Source::requireRow(std::string_view operation) const
{
    requireOpen(operation, recordsetSource);
    if (standing_ != Standing::Row) failWithoutRow(operation);
}

void Field::Source::requireScrolling(std::string_view operation) const
{
    if (!scrolls())
        fail(errors::readOnlyRecordset, recordsetSource,
             std::string{operation} + ": a forward-only recordset does not support this.");
}

bool Field::Source::atEnd() const
{
    requireOpen("EOF", recordsetSource);
    // Of an empty recordset both BOF and EOF are true, whichever end it stands at. While a row is being added
    // the recordset stands on that row.
    return edit_ != Edit::Add && (standing_ == Standing::After || (standing_ == Standing::Before && empty_));
}

bool Field::Source::atStart() const
{
    requireOpen("BOF", recordsetSource);
    return edit_ != Edit::Add && (standing_ == Standing::Before || (standing_ == Standing::After && empty_));
}

// Collects values column by column within each row, the order in which the array stores its first dimension.
// Afterwards the recordset stands on the row behind the last one read.
VariantArray Field::Source::getRows(std::int64_t rows)
{
    requireOpen("GetRows", recordsetSource);
    if (rows < -1) fail(errors::invalidArgument, recordsetSource, "GetRows: the number of rows is below -1.");
    // A pending edit is sent first, as before every move.
    if (store_) finishEdit();
    requireRow("GetRows");
    // An array cannot have more rows than a 32-bit index counts.
    const std::int64_t limit = rows < 0 ? std::numeric_limits<std::int32_t>::max() : rows;
    const std::size_t width = columnCount();
    std::vector<Variant> elements;
    std::int64_t taken = 0;
    if (store_) {
        auto row = static_cast<std::size_t>(position_);
        for (; taken < limit && guarded([&] { return store_->reach(row); }); ++row) {
            if (store_->removed(row)) continue;
            const auto values = store_->values(row);
            elements.insert(elements.end(), values.begin(), values.end());
            ++taken;
        }
        if (taken != 0) guarded([&] { moveToRowFrom(row); });
    } else {
        for (; taken < limit && onRow(); ++taken) {
            for (std::size_t column = 0; column < width; ++column)
                elements.push_back(value(column));
            stepStream();
        }
    }
    return VariantArray{
        {0, static_cast<std::int32_t>(width) - 1}, {0, static_cast<std::int32_t>(taken) - 1}, std::move(elements)};
}

void Field::Source::keepRows()
{
    requireOpen("keepRows", recordsetSource);
    if (scrolls()) return;
    if (!store_) {
        // The cursor stands on the first row to be kept.
        store_ = std::make_shared<RowStore>(std::move(cursor_), 1, false, onRow());
        position_ = 0;
    }
    guarded([&] { store_->reachEnd(); });
    cursorType_ = CursorType::OpenStatic;
}

std::int64_t Field::Source::recordCount() const
{
    requireOpen("RecordCount", recordsetSource);
    if (!scrolls() || cursorType_ == CursorType::OpenDynamic) return -1; // the number is not known or may change
    // The count is known only when every row has been read.
    guarded([&] { store_->reachEnd(); });
    return static_cast<std::int64_t>(store_->rowsBefore(store_->rowsRead()));
}

std::int64_t Field::Source::bookmark() const
{
    requireOpen("Bookmark", recordsetSource);
    requireScrolling("Bookmark");
    requireRow("Bookmark");
    return store_->firstMark() + position_;
}

void Field::Source::bookmark(std::int64_t mark)
{
    requireOpen("Bookmark", recordsetSource);
    requireScrolling("Bookmark");
    // A store that was filled again numbers its marks anew, so that marks of the old rows are refused.
    const std::int64_t row = mark - store_->firstMark();
    if (row < 0 || row >= static_cast<std::int64_t>(store_->rowsRead()))
        fail(errors::invalidArgument, recordsetSource,
             "Bookmark: " + std::to_string(mark) + " is no mark of a row of this recordset.");
    finishEdit();
    guarded([&] {
        leaveRow();
        if (!standOn(static_cast<std::size_t>(row)))
            fail(errors::noCurrentRecord, recordsetSource, "Bookmark: the marked row has been deleted.");
    });
}

std::int64_t Field::Source::absolutePosition() const
{
    requireOpen("AbsolutePosition", recordsetSource);
    if (!scrolls() || edit_ == Edit::Add) return positionUnknown;
    switch (standing_) {
    case Standing::Before: return positionBOF;
    case Standing::After: return positionEOF;
    case Standing::Row: return static_cast<std::int64_t>(store_->rowsBefore(static_cast<std::size_t>(position_))) + 1;
    case Standing::Nowhere: break;
    }
    return positionUnknown;
}

void Field::Source::absolutePosition(std::int64_t position)
{
    requireOpen("AbsolutePosition", recordsetSource);
    requireScrolling("AbsolutePosition");
    if (position < 1)
        fail(errors::invalidArgument, recordsetSource,
             "AbsolutePosition: " + std::to_string(position) + " is below 1, the first row.");
    finishEdit();
    guarded([&] {
        const auto index = static_cast<std::size_t>(position - 1);
        if (store_->reach(index) && store_->rowsBefore(index) == index && !store_->removed(index))
            return moveToRowFrom(index);
        // Positions count the rows that are left, while the store keeps the places of deleted rows.
        std::int64_t left = position;
        std::size_t row = 0;
        for (; store_->reach(row); ++row)
            if (!store_->removed(row) && --left == 0) return moveToRowFrom(row);
        fail(errors::noCurrentRecord, recordsetSource,
             "AbsolutePosition: there is no row " + std::to_string(position) + ".");
    });
}

} // namespace tamarok::ado
