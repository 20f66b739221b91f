#include "editable_cursor.h"

#include <algorithm>

#include "column_values.h"
#include "engine.h"
#include "failures.h"
#include "parameters.h"
#include "tamarok_embedded/procedures.h"
#include "tamarok_tsql/names.h"

namespace tamarok::embedded {

namespace {

using tsql::sameName;

void bindAssignments(sqlite3_stmt* statement, std::span<const ado::Assignment> assignments)
{
    int position = 0;
    for (const ado::Assignment& assignment : assignments) {
        bindValue(statement, ++position, assignment.value);
    }
}

} // namespace

EditableCursor::EditableCursor(Engine& engine, std::shared_ptr<const CachedBatch> batch, Lease lease,
                               const ado::Statement& statement, const tsql::Table& table) :
    StreamCursor{engine, std::move(batch), std::move(lease), statement.timeoutSeconds},
    table_{table}, parameters_{statement.parameters.begin(), statement.parameters.end()}
{
    if (statement.lockType == ado::LockType::Pessimistic) {
        engine.openRowLocks();
    }
}

EditableCursor::~EditableCursor()
{
    releaseLock();
}

bool EditableCursor::next()
{
    // A form may stay open for hours: a statement left open would keep SQLite from shrinking its write-ahead log.
    bufferRows();
    return StreamCursor::next();
}

std::int64_t EditableCursor::rowKey() const
{
    return keys_.at(bufferedRow());
}

/// A cursor holds one lock: that of its current row.
void EditableCursor::lockRow(std::int64_t key)
{
    if (held_ && held_->key == key) {
        return;
    }
    releaseLock();
    engine().database().deadline().arm(timeoutSeconds());
    try {
        held_ = HeldLock{key, engine().lockRow(table_, key)};
    } catch (...) {
        rethrow();
    }
}

void EditableCursor::unlockRow()
{
    releaseLock();
}

void EditableCursor::updateRow(std::int64_t key, std::span<const ado::Assignment> assignments)
{
    if (assignments.empty()) {
        return;
    }
    // Every text ends with the rowid as last parameter, after the values in order.
    std::string text = "UPDATE " + quoted(table_.name) + " SET ";
    for (const ado::Assignment& assignment : assignments) {
        const tsql::TableColumn& column = target(assignment.column);
        if (column.identity) {
            throw failure(native::identityUpdated, "Cannot update identity column '" + column.name + "'.");
        }
        text += quoted(column.name) + "=" + storageExpression(column.type) + ",";
    }
    text.back() = ' ';
    changeRow(key, text + "WHERE rowid=?", assignments);
}

/// The row locks are not checked: no session can hold a row that does not exist yet.
std::int64_t EditableCursor::insertRow(std::span<const ado::Assignment> assignments)
{
    std::string names;
    std::string values;
    bool givesIdentity = false;
    for (const ado::Assignment& assignment : assignments) {
        const tsql::TableColumn& column = target(assignment.column);
        givesIdentity = givesIdentity || column.identity;
        names += (names.empty() ? "" : ",") + quoted(column.name);
        values += (values.empty() ? "" : ",") + storageExpression(column.type);
    }
    Engine& engine = this->engine();
    engine.database().deadline().arm(timeoutSeconds());
    try {
        engine.bufferOpenCursors();
        const Compiled statement = engine.database().compile(
            "INSERT INTO " + quoted(table_.name) +
            (names.empty() ? std::string{" DEFAULT VALUES"} : "(" + names + ") VALUES(" + values + ")"));
        bindAssignments(statement.get(), assignments);
        engine.insertRow(statement.get(), table_.name, givesIdentity);
    } catch (...) {
        rethrow();
    }
    return sqlite3_last_insert_rowid(engine.database().handle());
}

void EditableCursor::deleteRow(std::int64_t key)
{
    changeRow(key, "DELETE FROM " + quoted(table_.name) + " WHERE rowid=?", {});
    // A deleted row needs no lock any more.
    if (held_ && held_->key == key) {
        releaseLock();
    }
}

bool EditableCursor::readRow(std::int64_t key, std::vector<Variant>& values)
{
    Engine& engine = this->engine();
    engine.database().deadline().arm(timeoutSeconds());
    try {
        const Compiled row = engine.database().compile(readText());
        // The key is the last parameter of the text; those of the query come before it.
        const int last = sqlite3_bind_parameter_count(row.get());
        if (last > 1) {
            bindParameters(row.get(), step().parameters, parameters_);
        }
        sqlite3_bind_int64(row.get(), last, key);
        if (!engine.database().step(row.get())) {
            return false;
        }
        values.clear();
        for (std::size_t i = 0; i < layout().readings.size(); ++i) {
            values.push_back(readValue(row.get(), static_cast<int>(i), layout().readings[i]));
        }
    } catch (...) {
        rethrow();
    }
    return true;
}

void EditableCursor::abandon() noexcept
{
    releaseLock();
    StreamCursor::abandon();
}

void EditableCursor::bufferExtra()
{
    // The row key follows the columns of the query.
    keys_.push_back(sqlite3_column_int64(statement(), static_cast<int>(layout().readings.size())));
}

/// The column of the table that a column of the recordset comes from.
const tsql::TableColumn& EditableCursor::target(std::size_t column) const
{
    const std::string& name = layout().columns.at(column).baseColumn;
    const auto found = std::ranges::find_if(
        table_.columns, [&name](const tsql::TableColumn& candidate) { return sameName(candidate.name, name); });
    if (name.empty() || found == table_.columns.end()) {
        throw Error{errors::readOnlyRecordset,
                    "Column " + std::to_string(column) + " of the recordset is an expression and cannot be changed.",
                    std::string{sourceName}};
    }
    return *found;
}

/// The text that reads one row again: from the table where all columns come from it, otherwise from the query.
std::string EditableCursor::readText() const
{
    // Reading by rowid from the table finds the row even if it no longer meets the query's condition.
    const bool plain = std::ranges::none_of(layout().columns, [](const auto& c) { return c.baseColumn.empty(); });
    std::string names;
    for (std::size_t i = 0; i < layout().columns.size(); ++i) {
        names += (plain ? quoted(layout().columns[i].baseColumn) : "c" + std::to_string(i)) + ",";
    }
    if (plain) {
        names.back() = ' ';
        return "SELECT " + names + "FROM " + quoted(table_.name) + " WHERE rowid=?";
    }
    return "WITH q(" + names + "k) AS (" + step().text + ") SELECT * FROM q WHERE k=?";
}

/// Changes one row unless another session holds its lock. The row may have gone in the meantime.
void EditableCursor::changeRow(std::int64_t key, const std::string& text, std::span<const ado::Assignment> assignments)
{
    Engine& engine = this->engine();
    engine.database().deadline().arm(timeoutSeconds());
    try {
        const Compiled statement = engine.database().compile(text);
        bindAssignments(statement.get(), assignments);
        sqlite3_bind_int64(statement.get(), static_cast<int>(assignments.size()) + 1, key);
        const std::int64_t position = RowLocks::position(table_.name, key);
        const auto conflict = [position](std::span<const RowLocks::Span> held) -> std::optional<std::int64_t> {
            const bool met = std::ranges::any_of(held, [&](const auto& span) { return span.contains(position); });
            return met ? std::optional{position} : std::nullopt;
        };
        // The change may be tried several times while the row is locked, hence the reset.
        engine.changeRows(table_, conflict, [&] {
            sqlite3_reset(statement.get());
            engine.database().step(statement.get());
            if (sqlite3_changes64(engine.database().handle()) == 0) {
                throw rowGoneFailure(table_.name);
            }
        });
    } catch (...) {
        rethrow();
    }
}

/// A held lock implies that the engine still exists: `abandon` releases it first.
void EditableCursor::releaseLock() noexcept
{
    if (held_) {
        engineOrNull()->unlockRow(held_->position);
        held_.reset();
    }
}

} // namespace tamarok::embedded
