#include "engine.h"

#include <utility>

#include "editable_cursor.h"
#include "failures.h"
#include "parameters.h"

namespace tamarok::embedded {

namespace {

using Kind = Step::Kind;

/// Runs `work`; an error that leaves it carries the statement's text.
template <class Work>
auto withStatement(std::string_view text, const Work& work)
{
    try {
        return work();
    } catch (Error& error) {
        if (error.statement.empty()) {
            error.statement = text;
        }
        if (error.source.empty()) {
            error.source = sourceName;
        }
        throw;
    }
}

/// The SQLite text of a step, or a comment for a step without one.
std::string describeStep(const Step& step)
{
    switch (step.kind) {
    case Kind::Procedure: return "-- EXEC " + step.target;
    case Kind::Begin: return "-- BEGIN TRANSACTION";
    case Kind::Commit: return "-- COMMIT TRANSACTION";
    case Kind::Rollback: return "-- ROLLBACK TRANSACTION";
    case Kind::NoCount: return step.flag ? "-- SET NOCOUNT ON" : "-- SET NOCOUNT OFF";
    case Kind::IdentityInsert: return "-- SET IDENTITY_INSERT " + step.target + (step.flag ? " ON" : " OFF");
    case Kind::XactAbort: return step.flag ? "-- SET XACT_ABORT ON" : "-- SET XACT_ABORT OFF";
    case Kind::DateFormat: return "-- SET DATEFORMAT " + std::string{tsql::dateOrderName(step.dateOrder)};
    case Kind::Jump: return "-- to step " + std::to_string(step.jump + 1);
    case Kind::JumpUnless: return step.text + " -- 0: to step " + std::to_string(step.jump + 1);
    default: return step.text.empty() ? "-- nothing" : step.text;
    }
}

} // namespace

Engine::Engine(std::unique_ptr<Database> database, ProcedureRegistry procedures) :
    database_{std::move(database)}, procedures_{std::move(procedures)}, catalog_{*database_}, statements_{[this] {
        if (database_->deadline().expired()) throw timeoutFailure("the statement was still being translated");
    }},
    locks_{database_->sharedPath()}, begin_{database_->compile("BEGIN IMMEDIATE", nullptr, true)},
    commit_{database_->compile("COMMIT", nullptr, true)}
{}

/// Cursors may outlive the connection; from here on they answer with error 3709.
Engine::~Engine()
{
    for (StreamCursor* const cursor : cursors_) {
        cursor->abandon();
    }
}

/// Runs a statement of the caller; an error that leaves it has been settled.
template <class Work>
auto Engine::answer(std::string_view text, const Work& work)
{
    // A procedure may have caught the error that doomed the transaction before.
    doomed_ = false;
    return withStatement(text, [&] {
        try {
            return work();
        } catch (Error& error) {
            settle(error);
            throw;
        }
    });
}

std::unique_ptr<ado::Cursor> Engine::open(const ado::Statement& statement)
{
    return answer(statement.text, [&]() -> std::unique_ptr<ado::Cursor> {
        followFile();
        database_->deadline().arm(statement.timeoutSeconds);
        if (!statement.procedure) {
            return openText(statement);
        }
        callProcedure(statement);
        return std::make_unique<StreamCursor>(*this, nullptr, Lease{}, statement.timeoutSeconds);
    });
}

std::int64_t Engine::execute(const ado::Statement& statement)
{
    return answer(statement.text, [&]() -> std::int64_t {
        followFile();
        database_->deadline().arm(statement.timeoutSeconds);
        if (!statement.procedure) {
            return executeText(statement.text, statement.parameters);
        }
        callProcedure(statement);
        return -1;
    });
}

/// Translates without running. A batch that uses a table which it creates itself can therefore not be shown as a whole.
std::string Engine::translate(std::string_view text)
{
    return withStatement(text, [&] {
        database_->deadline().arm(0);
        const auto batch = statements_.batch(text);
        std::string translated;
        for (std::size_t index = 0; index < batch->size(); ++index) {
            translated += describeStep(stepOf(*batch, index)->step) + "\n";
        }
        return translated;
    });
}

std::vector<tsql::Table> Engine::tables()
{
    followFile();
    database_->deadline().arm(0);
    catalog_.refresh();
    std::vector<tsql::Table> all;
    for (const std::string& name : catalog_.names()) {
        const tsql::Table* const table = catalog_.table(name);
        if (table != nullptr) all.push_back(*table);
    }
    return all;
}

const std::shared_ptr<CachedStep>& Engine::stepOf(CachedBatch& batch, std::size_t index, bool withRowKey)
{
    return batch.step(index, withRowKey, catalog_, database_->functionContext().dateOrder);
}

/// Runs the batch up to its first query and opens that. The statements after it run at once, as on the server,
/// while the query still shows the rows from before them. A batch with a failed statement gives no rows: it runs to its
/// end, and the failure is the answer.
std::unique_ptr<StreamCursor> Engine::openText(const ado::Statement& statement)
{
    const auto batch = statements_.batch(statement.text);
    std::unique_ptr<StreamCursor> cursor;
    BatchRun run;
    std::size_t index = 0;
    while (index < batch->size() && cursor == nullptr) {
        if (run.failures != 0 || !batch->givesRows(index)) {
            index = runOrNote(*batch, index, statement.parameters, run);
            continue;
        }
        try {
            cursor = openQuery(batch, index, statement);
        } catch (const Error& error) {
            if (!noted(error, run)) {
                throw;
            }
        }
        ++index;
    }
    if (cursor == nullptr) {
        throwNoted(run);
        return std::make_unique<StreamCursor>(*this, batch, Lease{}, statement.timeoutSeconds);
    }
    // A batch of queries alone streams; rows are buffered only if a later statement may write.
    if (hasChangesFrom(*batch, index)) {
        cursor->bufferRows();
        runFrom(*batch, index, statement.parameters, run);
        throwNoted(run);
    }
    return cursor;
}

/// Translates and starts a query, again if another session changes the schema in between.
std::unique_ptr<StreamCursor> Engine::openQuery(const std::shared_ptr<CachedBatch>& batch, std::size_t index,
                                                const ado::Statement& statement)
{
    // Only a recordset that may be edited needs the row key, which costs a column.
    const bool editable = statement.lockType != ado::LockType::ReadOnly &&
                          statement.lockType != ado::LockType::Unspecified && !database_->readOnly();
    constexpr int attempts = 3;
    for (int attempt = 1;; ++attempt) {
        const std::shared_ptr<CachedStep> step = stepOf(*batch, index, editable);
        try {
            auto cursor = startQuery(batch, step, statement);
            if (!cursor->outdated() || attempt == attempts) {
                return cursor;
            }
            // Another session changed the schema since the translation: "*" may mean other columns.
            catalog_.forget();
        } catch (const Error& error) {
            if (attempt == attempts || !isOutdated(*step, error)) {
                throw;
            }
        }
    }
}

/// A query with a row key gets an editable cursor, any other a stream. The lease goes to the cursor, which resets the
/// statement when it ends.
std::unique_ptr<StreamCursor> Engine::startQuery(const std::shared_ptr<CachedBatch>& batch,
                                                 const std::shared_ptr<CachedStep>& step,
                                                 const ado::Statement& statement)
{
    Lease lease{step, *database_};
    bindParameters(lease.get(), step->step.parameters, statement.parameters);
    const std::string& keyTable = step->step.keyTable;
    const tsql::Table* const table = keyTable.empty() ? nullptr : catalog_.table(keyTable);
    std::unique_ptr<StreamCursor> cursor;
    if (table != nullptr) {
        cursor = std::make_unique<EditableCursor>(*this, batch, std::move(lease), statement, *table);
    } else {
        cursor = std::make_unique<StreamCursor>(*this, batch, std::move(lease), statement.timeoutSeconds);
    }
    cursor->start();
    return cursor;
}

std::int64_t Engine::executeText(std::string_view text, Parameters parameters)
{
    const auto batch = statements_.batch(text);
    BatchRun run;
    runFrom(*batch, 0, parameters, run);
    throwNoted(run);
    return run.counted;
}

void Engine::runFrom(CachedBatch& batch, std::size_t index, Parameters parameters, BatchRun& run)
{
    while (index < batch.size()) {
        index = runOrNote(batch, index, parameters, run);
    }
}

/// Runs one step. If it fails without ending the batch, the next one follows. @return the index of the next step
std::size_t Engine::runOrNote(CachedBatch& batch, std::size_t index, Parameters parameters, BatchRun& run)
{
    try {
        return runCurrent(batch, index, parameters, run);
    } catch (const Error& error) {
        // A condition that fails decides nothing: neither of its branches may run.
        if (batch.isCondition(index) || !noted(error, run)) {
            throw;
        }
    }
    return index + 1;
}

bool Engine::noted(const Error& error, BatchRun& run) const
{
    if (doomed_ || endsBatch(error, xactAbort_)) {
        return false;
    }
    if (run.failures++ == 0) {
        run.failure = error;
    }
    return true;
}

/// The server reports every failed statement; a caller here gets one error, which tells that there are more.
void Engine::throwNoted(const BatchRun& run)
{
    if (!run.failure) {
        return;
    }
    Error error = *run.failure;
    if (run.failures > 1) {
        error.addContext(std::to_string(run.failures) + " statements of the batch failed; the first one");
    }
    throw error;
}

/// Runs one step, again if its translation was outdated. @return the index of the next step
std::size_t Engine::runCurrent(CachedBatch& batch, std::size_t index, Parameters parameters, BatchRun& run)
{
    for (;;) {
        // A copy of the pointer: the step may change the schema, which clears the cache.
        const std::shared_ptr<CachedStep> step = stepOf(batch, index);
        try {
            return runStep(step, index, parameters, run);
        } catch (const Error& error) {
            if (!isOutdated(*step, error)) {
                throw;
            }
        }
    }
}

bool Engine::isOutdated(const CachedStep& step, const Error& error)
{
    // The translation has looked up every name. If SQLite does not find one afterwards, another session has
    // changed the schema in the meantime, and nothing of the statement has run.
    const bool missingName = error.nativeError == 207 || error.nativeError == 208;
    if (!missingName || step.step.kind == Kind::Procedure) {
        return false;
    }
    catalog_.refresh();
    return catalog_.generation() != step.generation;
}

/// Runs one step. @return the index of the next one: the following step, or the target of a jump
std::size_t Engine::runStep(const std::shared_ptr<CachedStep>& step, std::size_t index, Parameters parameters,
                            BatchRun& run)
{
    switch (step->step.kind) {
    case Kind::Query: drain(step, parameters); break;
    case Kind::Insert:
        runInsert(step, parameters);
        countChanges(run);
        break;
    case Kind::Update:
    case Kind::Delete:
        runChange(step, parameters);
        countChanges(run);
        break;
    case Kind::Define: try { runDefinition(step->step.text);
        } catch (const NestingFailure& failure) {
            refuseNesting(*step->batch, step->step, failure.position);
        }
        break;
    case Kind::Procedure: runProcedure(step->step.target, step->step.arguments, parameters); break;
    case Kind::Begin: begin(); break;
    case Kind::Commit: commit(); break;
    case Kind::Rollback: rollback(); break;
    case Kind::NoCount: noCount_ = step->step.flag; break;
    case Kind::XactAbort: xactAbort_ = step->step.flag; break;
    case Kind::IdentityInsert: catalog_.setIdentityInsert(step->step.target, step->step.flag); break;
    case Kind::DateFormat: database_->functionContext().dateOrder = step->step.dateOrder; break;
    case Kind::Nothing: break;
    case Kind::JumpUnless: return runCondition(step, parameters) ? index + 1 : step->step.jump;
    case Kind::Jump: return step->step.jump;
    }
    return index + 1;
}

/// Unconditional jumps are followed; a condition counts as a change, since what follows it is not known.
bool Engine::hasChangesFrom(CachedBatch& batch, std::size_t index)
{
    while (index < batch.size()) {
        const Step& step = stepOf(batch, index)->step;
        if (step.kind == Kind::Jump) {
            index = step.jump;
        } else if (step.kind == Kind::Nothing || step.kind == Kind::Query) {
            ++index;
        } else {
            return true;
        }
    }
    return false;
}

/// SET NOCOUNT ON keeps the counts from the caller; @@ROWCOUNT still works.
void Engine::countChanges(BatchRun& run) const
{
    if (!noCount_) {
        run.counted = sqlite3_changes64(database_->handle());
    }
}

/// Runs a query whose rows the caller does not read, for the errors that it may raise.
void Engine::drain(const std::shared_ptr<CachedStep>& step, Parameters parameters)
{
    const Lease lease{step, *database_};
    bindParameters(lease.get(), step->step.parameters, parameters);
    while (database_->step(lease.get())) {}
}

bool Engine::runCondition(const std::shared_ptr<CachedStep>& step, Parameters parameters)
{
    const Lease lease{step, *database_};
    bindParameters(lease.get(), step->step.parameters, parameters);
    return database_->step(lease.get()) && sqlite3_column_int(lease.get(), 0) != 0;
}

} // namespace tamarok::embedded
