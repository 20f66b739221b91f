#include <algorithm>

#include "ado_failure.h"
#include "recordset_state.h"

// Editing. An edit gathers values by column; Update sends them.

namespace tamarok::ado {

namespace {

/// What a field takes: a plain value, the value of another field, or Null for Empty.
Variant plainValue(const Variant& value)
{
    if (value.isEmpty()) return Null{};
    if (value.isArray()) fail(errors::typeMismatch, fieldSource, "Value: an array cannot be the value of a field.");
    if (!value.isObject()) return value;
    const auto* field = dynamic_cast<const Field*>(value.asObject().get());
    if (!field) fail(errors::typeMismatch, fieldSource, "Value: this object cannot be the value of a field.");
    return field->Value();
}

} // namespace

Variant Field::Source::keptValue(std::size_t ordinal) const
{
    requireOpen("Value", fieldSource);
    if (edit_ != Edit::None && edits_[ordinal]) return *edits_[ordinal];
    if (edit_ == Edit::Add) return Null{};
    if (standing_ != Standing::Row) failWithoutRow("Value of column " + (*columns_)[ordinal].name);
    return store_->value(static_cast<std::size_t>(position_), ordinal);
}

void Field::Source::setValue(std::size_t ordinal, const Variant& value)
{
    requireOpen("Value", fieldSource);
    const std::string operation = "Value of column " + (*columns_)[ordinal].name;
    requireEditable(operation);
    if (edit_ == Edit::None && standing_ != Standing::Row) failWithoutRow(operation);
    Variant plain = plainValue(value);
    edits_.resize(columnCount());
    edits_[ordinal] = std::move(plain);
    if (edit_ == Edit::None) edit_ = Edit::Change;
}

void Field::Source::requireEditable(std::string_view operation) const
{
    requireOpen(operation, recordsetSource);
    if (!editable_)
        fail(errors::readOnlyRecordset, recordsetSource,
             std::string{operation} + ": the recordset is read-only" +
                 (lockType_ == LockType::ReadOnly ? "." : ", since the rows of its statement cannot be changed."));
}

void Field::Source::addNew()
{
    requireEditable("AddNew");
    finishEdit();
    edits_.assign(columnCount(), std::nullopt);
    edit_ = Edit::Add;
}

void Field::Source::update()
{
    requireEditable("Update");
    if (edit_ == Edit::None) return;
    std::vector<Assignment> assignments;
    for (std::size_t column = 0; column < edits_.size(); ++column)
        if (edits_[column]) assignments.push_back({column, *edits_[column]});
    guarded([&] {
        if (edit_ == Edit::Add)
            sendNewRow(assignments);
        else
            sendChange(assignments);
    });
}

void Field::Source::sendChange(std::span<const Assignment> assignments)
{
    const auto row = static_cast<std::size_t>(position_);
    const std::int64_t key = store_->key(row);
    if (!locking_) {
        std::vector<Variant> present;
        if (!store_->cursor().readRow(key, present) || !std::ranges::equal(present, store_->values(row)))
            fail(rowChanged, recordsetSource, "Update: the row has been changed or deleted since it was read.");
    }
    store_->cursor().updateRow(key, assignments);
    endEdit();
    readAgain();
}

void Field::Source::sendNewRow(std::span<const Assignment> assignments)
{
    store_->reachEnd(); // before the new row is there, or the statement could give it a second time
    const std::int64_t key = store_->cursor().insertRow(assignments);
    endEdit();
    leaveRow();
    const std::size_t row = store_->append(key);
    position_ = static_cast<std::int64_t>(row);
    if (store_->refresh(row)) hold(row);
}

void Field::Source::cancelUpdate()
{
    requireEditable("CancelUpdate");
    endEdit();
}

void Field::Source::deleteCurrent()
{
    requireEditable("Delete");
    if (edit_ == Edit::Add)
        fail(errors::badCursorOperation, recordsetSource,
             "Delete: a new row is being added; drop it with CancelUpdate.");
    requireRow("Delete");
    endEdit();
    const auto row = static_cast<std::size_t>(position_);
    guarded([&] {
        store_->cursor().deleteRow(store_->key(row));
        store_->remove(row);
        leaveRow();
    });
}

void Field::Source::finishEdit()
{
    if (edit_ != Edit::None) update();
}

void Field::Source::endEdit() noexcept
{
    edit_ = Edit::None;
    edits_.clear();
}

} // namespace tamarok::ado
