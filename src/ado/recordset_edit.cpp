#include <algorithm>

#include "ado_failure.h"
#include "recordset_state.h"

// Editing. An edit collects new values by column; Update sends them.

namespace tamarok::ado {

namespace {

/// Returns the value to be stored in a field: a plain value, the default value of an object (such as another
/// field), or Null for Empty.
Variant plainValue(const Variant& value)
{
    if (value.isEmpty()) return Null{};
    if (value.isArray()) fail(errors::typeMismatch, fieldSource, "Value: an array cannot be the value of a field.");
    if (!value.isObject()) return value;
    if (!value.asObject() || !value.asObject()->hasDefaultValue())
        fail(errors::typeMismatch, fieldSource, "Value: this object cannot be the value of a field.");
    return value.asObject()->defaultValue();
}

} // namespace

Variant Field::Source::keptValue(std::size_t ordinal) const
{
    requireOpen("Value", fieldSource);
    // An edited field shows its new value before Update; the other fields of a new row are Null.
    if (edit_ != Edit::None && edits_[ordinal]) return *edits_[ordinal];
    if (edit_ == Edit::Add) return Null{};
    if (standing_ != Standing::Row) failWithoutRow("Value of column " + columns_->infos[ordinal].name);
    return store_->value(static_cast<std::size_t>(position_), ordinal);
}

void Field::Source::setValue(std::size_t ordinal, const Variant& value)
{
    requireOpen("Value", fieldSource);
    const std::string operation = "Value of column " + columns_->infos[ordinal].name;
    requireEditable(operation);
    if (edit_ == Edit::None && standing_ != Standing::Row) failWithoutRow(operation);
    Variant plain = plainValue(value);
    // Checked and converted above: a refused value must not begin an edit.
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
    // AddNew during an edit sends that edit first.
    finishEdit();
    edits_.assign(columnCount(), std::nullopt);
    edit_ = Edit::Add;
}

void Field::Source::update()
{
    requireEditable("Update");
    if (edit_ == Edit::None) return;
    std::vector<Assignment> assignments;
    // Only assigned columns are sent: the others keep the defaults of the table or the values in the row.
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
    // Without a lock the row may have changed since it was read: compare all its values first.
    if (!locking_) {
        std::vector<Variant> present;
        const bool found = store_->cursor().readRow(key, present);
        if (!found || (!present.empty() && !std::ranges::equal(present, store_->values(row))))
            fail(errors::rowChanged, recordsetSource, "Update: the row has been changed or deleted since it was read.");
    }
    // After a failure the edit stays pending, so that the caller can correct a value and try again.
    store_->cursor().updateRow(key, assignments);
    endEdit();
    reloadRow();
}

void Field::Source::sendNewRow(std::span<const Assignment> assignments)
{
    store_->reachEnd(); // before the insertion: otherwise the statement could return the new row too
    const std::int64_t key = store_->cursor().insertRow(assignments);
    endEdit();
    leaveRow();
    const std::size_t row = store_->append(key, assignments);
    position_ = static_cast<std::int64_t>(row);
    standOn(row);
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
