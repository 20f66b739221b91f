#include <utility>

#include "ado_failure.h"
#include "find_criterion.h"
#include "open_options.h"
#include "recordset_state.h"

#include "tamarok/convert.h"

// The recordset passes every operation to the state that it shares with its fields; a recordset that was never
// opened has none.

namespace tamarok::ado {

namespace {

[[noreturn]] void failClosed(std::string_view operation)
{
    fail(errors::objectClosed, recordsetSource, std::string{operation} + ": the recordset is closed.");
}

/// Returns the state of a recordset that was opened once. The operations of the state check that it is still open.
Field::Source& opened(const std::shared_ptr<Field::Source>& source, std::string_view operation)
{
    if (!source) failClosed(operation);
    return *source;
}

} // namespace

Recordset::Recordset() = default;

Recordset::~Recordset()
{
    // Fields that outlive the recordset keep the state; released, it answers them with Error 3704.
    if (source_) source_->release();
}

void Recordset::Open(std::string_view source, const ConnectionRef& connection, CursorType cursorType, LockType lockType,
                     std::int32_t options)
{
    if (State() == ObjectState::Open)
        fail(errors::objectOpen, recordsetSource, "Open: the recordset is open already; close it first.");
    // A closed connection is reported before a wrong option.
    require(connection).session(); // checked first
    const bool procedure = namesProcedure(options, recordsetSource);
    adopt(Field::Source::open(connection, {source, cursorType, lockType, procedure}));
}

/// Takes over a state and makes its fields. Null: a statement without result set leaves the recordset closed.
void Recordset::adopt(std::shared_ptr<Field::Source> source)
{
    // The fields of the previous opening keep the previous state.
    source_ = std::move(source);
    fields_ = {};
    if (!source_) return;
    fields_.fields_.reserve(source_->columnCount());
    for (std::size_t ordinal = 0; ordinal < source_->columnCount(); ++ordinal)
        fields_.fields_.push_back(std::make_shared<Field>(source_, ordinal));
}

void Recordset::Close()
{
    opened(source_, "Close").close();
    fields_ = {};
}

ObjectState Recordset::State() const noexcept
{
    return source_ && source_->isOpen() ? ObjectState::Open : ObjectState::Closed;
}

bool Recordset::AtEOF() const
{
    return opened(source_, "EOF").atEnd();
}

bool Recordset::AtBOF() const
{
    return opened(source_, "BOF").atStart();
}

const FieldCollection& Recordset::Fields() const
{
    // Checked here: a closed recordset has dropped its fields, and an empty collection would hide the reason.
    if (State() == ObjectState::Closed) failClosed("Fields");
    return fields_;
}

void Recordset::keepRows()
{
    opened(source_, "keepRows").keepRows();
}

std::int64_t Recordset::RecordCount() const
{
    return opened(source_, "RecordCount").recordCount();
}

void Recordset::MoveNext()
{
    opened(source_, "MoveNext").moveNext();
}

void Recordset::MoveFirst()
{
    opened(source_, "MoveFirst").moveFirst();
}

void Recordset::MoveLast()
{
    opened(source_, "MoveLast").moveLast();
}

void Recordset::MovePrevious()
{
    opened(source_, "MovePrevious").move(-1, "MovePrevious");
}

void Recordset::Move(std::int64_t rows)
{
    opened(source_, "Move").move(rows, "Move");
}

VariantArray Recordset::GetRows(std::int64_t rows)
{
    return opened(source_, "GetRows").getRows(rows);
}

void Recordset::Find(std::string_view criterion, std::int64_t skip, SearchDirection direction)
{
    Field::Source& source = opened(source_, "Find");
    source.requireOpen("Find", recordsetSource);
    // The criterion and its column are checked before the position, so that a mistake in the text always shows.
    const FindCriterion wanted{criterion};
    const Field& field = fields_.Item(wanted.column());
    if (skip < 0) fail(errors::invalidArgument, recordsetSource, "Find: the number of rows to skip is below 0.");
    const std::int64_t step = direction == SearchDirection::Forward ? 1 : -1;
    if (step < 0 && !source.scrolls())
        fail(errors::badCursorOperation, recordsetSource, "Find: a forward-only recordset cannot search backwards.");
    source.requireRow("Find");
    // The search moves row by row, so that a pessimistic recordset locks each row that it tests.
    if (skip > 0) source.move(skip * step, "Find");
    while (source.onRow() && !wanted.holds(field.Value()))
        source.move(step, "Find");
}

std::shared_ptr<Recordset> Recordset::Clone() const
{
    // The clone has its own position in the same rows.
    auto copy = std::make_shared<Recordset>();
    copy->adopt(opened(source_, "Clone").clone());
    return copy;
}

Variant Recordset::Bookmark() const
{
    return opened(source_, "Bookmark").bookmark();
}

void Recordset::Bookmark(const Variant& mark)
{
    // Error 13 for a mark that is no number.
    opened(source_, "Bookmark").bookmark(convert::toLongLong(mark));
}

std::int64_t Recordset::AbsolutePosition() const
{
    return opened(source_, "AbsolutePosition").absolutePosition();
}

void Recordset::AbsolutePosition(std::int64_t position)
{
    opened(source_, "AbsolutePosition").absolutePosition(position);
}

void Recordset::AddNew()
{
    opened(source_, "AddNew").addNew();
}

void Recordset::Update()
{
    opened(source_, "Update").update();
}

void Recordset::CancelUpdate()
{
    opened(source_, "CancelUpdate").cancelUpdate();
}

void Recordset::Delete(std::int32_t affect)
{
    constexpr std::int32_t currentRecord = 1;
    Field::Source& source = opened(source_, "Delete");
    source.requireOpen("Delete", recordsetSource);
    if (affect != currentRecord)
        fail(errors::invalidArgument, recordsetSource,
             "Delete: only the current record (1) can be deleted, not " + std::to_string(affect) + ".");
    source.deleteCurrent();
}

} // namespace tamarok::ado
