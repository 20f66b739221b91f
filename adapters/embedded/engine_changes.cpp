#include <algorithm>
#include <array>
#include <chrono>
#include <thread>
#include <utility>

#include "engine.h"
#include "failures.h"
#include "identity_numbers.h"
#include "key_moves.h"
#include "parameters.h"
#include "storage_forms.h"

namespace tamarok::embedded {

/// A write transaction around one change, unless the caller has a transaction open. Rolls back if it ends without
/// `commit`.
class Engine::WriteScope {
public:
    enum class Open : bool { IfNone, Already };

    /// @param open  Already: takes over the transaction that is open
    explicit WriteScope(Engine& engine, Open open = Open::IfNone) :
        engine_{engine}, isOutermost_{open == Open::Already || !engine.database_->inTransaction()}
    {
        if (open == Open::Already) {
            return;
        }
        if (isOutermost_) {
            runKept(engine_.begin_.get());
        }
    }
    WriteScope(const WriteScope&) = delete;
    WriteScope& operator=(const WriteScope&) = delete;
    ~WriteScope()
    {
        if (isOutermost_ && engine_.database_->inTransaction()) {
            sqlite3_exec(engine_.database_->handle(), "ROLLBACK", nullptr, nullptr, nullptr);
        }
    }

    void commit()
    {
        if (isOutermost_) {
            engine_.database_->requireInPlace();
            runKept(engine_.commit_.get());
        }
    }

private:
    void runKept(sqlite3_stmt* statement)
    {
        const int code = sqlite3_step(statement);
        if (code != SQLITE_DONE) {
            const Error error = failure(engine_.database_->handle(), code, engine_.database_->path());
            sqlite3_reset(statement);
            throw error;
        }
        sqlite3_reset(statement);
    }

    Engine& engine_;
    bool isOutermost_;
};

void Engine::bufferOpenCursors() noexcept
{
    for (StreamCursor* const cursor : cursors_) {
        cursor->bufferRows();
    }
}

/// The row locks are checked under SQLite's write lock, so that no session can lock a row between the check and the
/// change. Temporary tables and databases in memory have no other user. A held row ends the transaction before the
/// wait, or the holder could not write.
void Engine::changeRows(const tsql::Table& table, const Conflict& conflict, const std::function<void()>& change)
{
    bufferOpenCursors();
    if (isTemporary(table.name) || database_->path().empty()) {
        change();
        return;
    }
    for (;;) {
        std::optional<std::int64_t> busy;
        {
            WriteScope scope{*this};
            const std::vector<RowLocks::Span> held = locks_.heldByOthers(table.name);
            if (!held.empty()) {
                busy = conflict(held);
            }
            if (!busy) {
                change();
                scope.commit();
                return;
            }
        }
        if (repeatable_) {
            // The procedure holds the write lock. It is rolled back, waits and runs again.
            throw RowBusy{*busy, table.name};
        }
        waitUntilFree(*busy, table.name);
    }
}

std::int64_t Engine::lockRow(const tsql::Table& table, std::int64_t key)
{
    const std::int64_t position = RowLocks::position(table.name, key);
    bufferOpenCursors();
    for (;;) {
        {
            // Under the write lock: otherwise a change that has looked at the locks already could follow.
            WriteScope scope{*this};
            if (locks_.tryLock(position)) {
                try {
                    if (rowExists(table, key)) {
                        scope.commit();
                        return position;
                    }
                } catch (...) {
                    locks_.unlock(position);
                    throw;
                }
                locks_.unlock(position);
                throw rowGoneFailure(table.name);
            }
        }
        waitUntilFree(position, table.name);
    }
}

/// The lock probe and the change run in the same transaction and so see the same rows.
void Engine::runChange(const std::shared_ptr<CachedStep>& step, Parameters parameters)
{
    const Lease lease{step, *database_};
    bindParameters(lease.get(), step->step.parameters, parameters);
    const tsql::Table* const table = catalog_.table(step->step.target);
    if (table == nullptr) {
        throw failure(208, "Invalid object name '" + step->step.target + "'.");
    }
    changeRows(
        *table, [&](std::span<const RowLocks::Span> held) { return probe(step, parameters, *table, held); },
        [&] { updateRows(lease, step, parameters); });
}

/// SQLite checks keys row by row, the server at the end of the statement. A statement that fails at a key and may move
/// keys is therefore tried again in a way in which only the final keys can collide.
void Engine::updateRows(const Lease& lease, const std::shared_ptr<CachedStep>& step, Parameters parameters)
{
    try {
        while (database_->step(lease.get())) {}
    } catch (const Error& error) {
        const bool atKey = error.nativeError == native::duplicateKey || error.nativeError == native::duplicateInIndex;
        if (!atKey || step->step.newRows.empty()) {
            throw;
        }
        sqlite3_reset(lease.get());
        runAtomically([&] { moveKeys(*database_, step->step, parameters); });
    }
}

/// A row of parameters that need no conversion goes through a statement without conversions.
void Engine::runInsert(const std::shared_ptr<CachedStep>& step, Parameters parameters)
{
    bufferOpenCursors();
    const Step& insert = step->step;
    // A session that cannot use the lock file could not delete its row again: a lock that is kept as a row would stay.
    if (!isTemporary(insert.target)) {
        locks_.checkUsable();
    }
    const bool storedUnchanged =
        !insert.unconvertedText.empty() && areStoredUnchanged(insert.unconvertedTypes, insert.parameters, parameters);
    const Lease lease{step, *database_, storedUnchanged ? StepText::Unconverted : StepText::Statement};
    bindParameters(lease.get(), insert.parameters, parameters);
    if (insert.flag) {
        insertNumbered(lease.get(), insert.target);
    } else {
        while (database_->step(lease.get())) {}
    }
}

void Engine::insertRow(sqlite3_stmt* insert, const std::string& table, bool givesIdentity)
{
    const tsql::Table* const known = catalog_.table(table);
    const bool hasIdentity = known != nullptr && std::ranges::any_of(known->columns, &tsql::TableColumn::identity);
    if (hasIdentity && givesIdentity != known->identityInsert) {
        throw failure(givesIdentity ? native::identityGiven : native::identityMissing,
                      identityRefusal(givesIdentity, table));
    }
    if (hasIdentity && !givesIdentity) {
        insertNumbered(insert, table);
    } else {
        while (database_->step(insert)) {}
    }
}

/// A row that violates a constraint uses up its number, as on the server. The counter is raised under the write lock of
/// the failed statement, so that no other session can be given the number in between.
void Engine::insertNumbered(sqlite3_stmt* insert, const std::string& table)
{
    std::optional<WriteScope> scope;
    if (!isTemporary(table)) {
        scope.emplace(*this);
    }
    const sqlite3_int64 lastRow = sqlite3_last_insert_rowid(database_->handle());
    try {
        while (database_->step(insert)) {}
    } catch (const Error& error) {
        const bool locked = isTemporary(table) || database_->inTransaction();
        if (error.number == errors::constraintViolated && locked) {
            sqlite3_reset(insert);
            // Rows of this statement before the failed one: SQLite keeps the number of the last of them.
            const std::int64_t row = sqlite3_last_insert_rowid(database_->handle());
            const std::int64_t last = lastIdentity(*database_, table);
            raiseIdentity(*database_, table, (row != lastRow ? std::max(row, last) : last) + 1);
            if (scope) {
                scope->commit();
            }
        }
        throw;
    }
    if (scope) {
        scope->commit();
    }
}

/// A definition of several statements is run as one. The catalogue is read anew at its next use.
void Engine::runDefinition(const std::string& text)
{
    bufferOpenCursors();
    std::string_view rest;
    const Compiled first = database_->compile(text, &rest);
    if (rest.find_first_not_of(" \t\r\n;") == std::string_view::npos) {
        while (database_->step(first.get())) {}
    } else {
        runAtomically([&] { database_->run(text); });
    }
    catalog_.forget();
}

/// A transaction of its own, or a savepoint inside the caller's, so that a failure leaves the caller's transaction
/// open.
void Engine::runAtomically(const std::function<void()>& work)
{
    if (!database_->inTransaction()) {
        WriteScope scope{*this};
        work();
        scope.commit();
        return;
    }
    database_->run("SAVEPOINT together");
    try {
        work();
    } catch (...) {
        sqlite3_exec(database_->handle(), "ROLLBACK TO together; RELEASE together", nullptr, nullptr, nullptr);
        throw;
    }
    database_->run("RELEASE together");
}

/// Runs the lock probe of a change: the first row it would touch that is held by another session.
std::optional<std::int64_t> Engine::probe(const std::shared_ptr<CachedStep>& step, Parameters parameters,
                                          const tsql::Table& table, std::span<const RowLocks::Span> held)
{
    const Lease lease{step, *database_, StepText::Probe};
    bindParameters(lease.get(), step->step.probeParameters, parameters);
    while (database_->step(lease.get())) {
        const std::int64_t position = RowLocks::position(table.name, sqlite3_column_int64(lease.get(), 0));
        if (std::ranges::any_of(held, [position](const auto& span) { return span.contains(position); })) {
            return position;
        }
    }
    return std::nullopt;
}

void Engine::waitUntilFree(std::int64_t position, std::string_view table)
{
    // Short waits first: most locks are held for one update only.
    static constexpr std::array milliseconds{1, 2, 3, 5, 8, 12, 20};
    for (std::size_t look = 0; locks_.firstHeld(position, position).has_value(); ++look) {
        if (database_->deadline().expired()) {
            throw timeoutFailure("another session holds a row of table '" + std::string{table} + "'");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds{milliseconds[std::min(look, milliseconds.size() - 1)]});
    }
}

/// The row may have been deleted since the cursor read it.
bool Engine::rowExists(const tsql::Table& table, std::int64_t key)
{
    const Compiled statement = database_->compile("SELECT 1 FROM " + quoted(table.name) + " WHERE rowid=?");
    sqlite3_bind_int64(statement.get(), 1, key);
    return database_->step(statement.get());
}

/// Nested transactions only count, as on the server: the outermost COMMIT writes.
void Engine::begin()
{
    bufferOpenCursors();
    if (!database_->inTransaction()) {
        depth_ = 0;
        database_->run("BEGIN IMMEDIATE");
    }
    if (depth_ == 0) {
        database_->run("SAVEPOINT beginning");
    }
    ++depth_;
}

void Engine::commit()
{
    if (depth_ == 0 || !database_->inTransaction()) {
        depth_ = 0;
        throw failure(native::commitWithoutBegin, "COMMIT TRANSACTION without a transaction: none was begun, or a "
                                                  "failure has rolled it back.");
    }
    if (depth_ == 1) {
        database_->requireInPlace();
        database_->run("COMMIT");
    }
    --depth_;
}

/// Rolls back all levels at once, as the server does.
void Engine::rollback()
{
    if (depth_ == 0 || !database_->inTransaction()) {
        depth_ = 0;
        throw failure(native::rollbackWithoutBegin, "ROLLBACK TRANSACTION without a transaction: none was begun, or "
                                                    "a failure has rolled it back.");
    }
    rollBackAll();
}

/// Numbers of identity columns stay used. Their counters are raised again before the write lock goes: the work is
/// rolled back to the savepoint at the beginning, and what remains to be committed is the counters.
void Engine::rollBackAll()
{
    bufferOpenCursors();
    depth_ = 0;
    catalog_.forget();
    const IdentityNumbers used{*database_};
    database_->run("ROLLBACK TO beginning");
    if (!used.isAheadOf(*database_)) {
        database_->run("ROLLBACK");
        return;
    }
    WriteScope scope{*this, WriteScope::Open::Already};
    used.restore(*database_);
    scope.commit();
}

/// A transaction inside a procedure that the caller did not begin (`depth_` is 0) ends where the procedure does.
void Engine::settle(Error& error) noexcept
{
    const bool fatal = std::exchange(doomed_, false) || rollsBack(error, xactAbort_);
    if (error.number == errors::timeout && database_->deadline().cancelled()) nameCancelled(error);
    if (depth_ == 0 || (!fatal && database_->inTransaction())) {
        return;
    }
    try {
        if (database_->inTransaction()) {
            rollBackAll();
        }
        depth_ = 0;
        catalog_.forget();
        error.addContext("The transaction was rolled back");
    } catch (...) {
        // Without memory or disk for the counters and the note: the rollback itself needs neither.
        depth_ = 0;
        sqlite3_exec(database_->handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

} // namespace tamarok::embedded
