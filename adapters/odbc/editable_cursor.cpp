#include "editable_cursor.h"

#include "base_columns.h"
#include "failures.h"
#include "session.h"

namespace tamarok::odbc {

// A server that cannot hold rows is refused before the statement runs.
EditableCursor::EditableCursor(std::shared_ptr<SessionState> session, const ado::Statement& statement) :
    StreamCursor{std::move(session), statement}, pessimistic_{statement.lockType == ado::LockType::Pessimistic}
{
    if (pessimistic_) this->session().locks.requireSupport();
}

EditableCursor::~EditableCursor()
{
    try {
        unlockRow();
    } catch (const Error&) {
        held_.reset(); // the connection has gone, and the row with it
    }
}

/// All rows are taken from the connection at once: every change and every lock needs it.
void EditableCursor::start()
{
    StreamCursor::start();
    spool();
    if (!described_) findTable();
    described_ = true;
}

/// The names of the base columns are needed now: they tell the table and its key.
void EditableCursor::findTable()
{
    if (columnInfos().empty()) return;
    nameBases(columnInfos());
    auto table = BaseTable::of(session().catalogue, columnInfos());
    if (table && !table->showsKey() && !showsSingleRows(text())) return;
    if (table) changes_.emplace(link(), std::move(*table), columnInfos(), timeoutSeconds());
}

/// Keeps the key of each row that is read; its index is the number by which the recordset names the row.
bool EditableCursor::next()
{
    if (!StreamCursor::next()) return false;
    if (changes_) {
        KeyValues key;
        for (const std::size_t column : changes_->table().keyPositions)
            key.push_back(value(column));
        keys_.push_back(std::move(key));
    }
    return true;
}

std::int64_t EditableCursor::rowKey() const
{
    return static_cast<std::int64_t>(keys_.size()) - 1;
}

/// A cursor holds one row, the current one.
void EditableCursor::lockRow(std::int64_t key)
{
    if (held_ == key) return;
    unlockRow();
    if (!session().locks.hold(changes_->rowName(keyAt(key)), timeoutSeconds()))
        throw Error{errors::rowDeleted, "The row of table '" + changes_->table().name + "' has been deleted.",
                    std::string{sourceName}};
    held_ = key;
}

void EditableCursor::unlockRow()
{
    if (!held_) return;
    held_.reset();
    session().locks.release();
}

/// The row keeps its number when its key changes.
void EditableCursor::updateRow(std::int64_t key, std::span<const ado::Assignment> assignments)
{
    keys_.at(static_cast<std::size_t>(key)) = changes_->update(keyAt(key), assignments);
}

/// A row that cannot be found again is refused where it would have to be locked.
std::int64_t EditableCursor::insertRow(std::span<const ado::Assignment> assignments)
{
    keys_.push_back(changes_->insert(assignments, pessimistic_));
    return rowKey();
}

/// A deleted row needs no lock any more.
void EditableCursor::deleteRow(std::int64_t key)
{
    changes_->erase(keyAt(key));
    if (held_ == key) unlockRow();
}

/// A row without key keeps its values: a new one those that were assigned, not the defaults of the table.
bool EditableCursor::readRow(std::int64_t key, std::vector<Variant>& values)
{
    if (keyAt(key).empty()) return true;
    if (!changes_->table().plain) return readFromStatement(keyAt(key), values);
    auto row = changes_->read(keyAt(key));
    if (!row) return false;
    values = std::move(*row);
    return true;
}

/// A result with expressions is read anew as a whole: only the statement knows how to compute them.
bool EditableCursor::readFromStatement(const KeyValues& key, std::vector<Variant>& values)
{
    for (auto& row : link().read({text(), parameters(), timeoutSeconds()})) {
        bool same = true;
        for (std::size_t i = 0; i < key.size(); ++i)
            same = same && row.at(changes_->table().keyPositions[i]) == key[i];
        if (!same) continue;
        values = std::move(row);
        return true;
    }
    return false;
}

} // namespace tamarok::odbc
