#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cursor.h"
#include "database.h"
#include "row_locks.h"
#include "schema_catalog.h"
#include "statement_cache.h"
#include "tamarok_embedded/procedures.h"

#include "tamarok/ado_backend.h"
#include "tamarok/error.h"

namespace tamarok::embedded {

/// A connection: its database, catalog of tables, statement cache, row locks and transaction. The cursors of the
/// connection use it until it closes.
class Engine {
public:
    Engine(std::unique_ptr<Database> database, ProcedureRegistry procedures);
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    ~Engine();

    std::unique_ptr<ado::Cursor> open(const ado::Statement& statement);
    std::int64_t execute(const ado::Statement& statement);
    std::string translate(std::string_view text);
    std::vector<tsql::Table> tables();

    void begin();
    void commit();
    void rollback();
    /// Gives up what an error takes with it: rolls the open transaction back if the error is of that kind, and forgets
    /// a transaction that SQLite has rolled back itself. The error then says that the transaction is gone.
    void settle(Error& error) noexcept;

    Database& database() noexcept { return *database_; }
    const SchemaCatalog& catalog() const noexcept { return catalog_; }

    void enter(StreamCursor& cursor) { cursors_.push_back(&cursor); }
    void leave(StreamCursor& cursor) noexcept { std::erase(cursors_, &cursor); }

    /// Finds a row that a change touches and another session holds. @return its position in the lock file
    using Conflict = std::function<std::optional<std::int64_t>(std::span<const RowLocks::Span> held)>;
    /// Looks at the row locks and changes rows of a table in one transaction. While another session holds a touched
    /// row, waits without an open transaction. Error 0x80040E31 at the deadline.
    void changeRows(const tsql::Table& table, const Conflict& conflict, const std::function<void()>& change);

    /// Inserts a cursor's row. @param givesIdentity  the statement gives the value of the identity column
    /// Errors 544 and 545 if that disagrees with SET IDENTITY_INSERT.
    void insertRow(sqlite3_stmt* insert, const std::string& table, bool givesIdentity);

    /// Locks a row for a cursor. @return its position, for `unlockRow`
    /// Error 0x80040E31 if another session holds it until the deadline, 0x80040E23 if the row is deleted.
    std::int64_t lockRow(const tsql::Table& table, std::int64_t key);
    void unlockRow(std::int64_t position) noexcept { locks_.unlock(position); }
    /// Opens the file of the row locks, so that a failure is reported before the first lock is needed.
    void openRowLocks() { locks_.open(); }

    /// Buffers the remaining rows of open cursors so that their statements can be reset.
    void bufferOpenCursors() noexcept;

    static bool isTemporary(std::string_view table) noexcept { return table.starts_with('#'); }

private:
    class WriteScope;
    class ProcedureRun;
    struct RowBusy { ///< thrown by a change inside a procedure, which is then run again
        std::int64_t position;
        std::string table;
    };
    using Parameters = std::span<const ado::Parameter>;
    /// What a batch has come to so far.
    struct BatchRun {
        std::int64_t counted = -1;    ///< rows that the last counted change touched; -1 without one
        std::optional<Error> failure; ///< of the first statement that failed without ending the batch
        std::size_t failures = 0;     ///< number of such statements
    };

    template <class Work>
    auto answer(std::string_view text, const Work& work);
    void followFile();
    const std::shared_ptr<CachedStep>& stepOf(CachedBatch& batch, std::size_t index, bool withRowKey = false);
    std::unique_ptr<StreamCursor> openText(const ado::Statement& statement);
    std::unique_ptr<StreamCursor> openQuery(const std::shared_ptr<CachedBatch>& batch, std::size_t index,
                                            const ado::Statement& statement);
    std::unique_ptr<StreamCursor> startQuery(const std::shared_ptr<CachedBatch>& batch,
                                             const std::shared_ptr<CachedStep>& step, const ado::Statement& statement);
    std::int64_t executeText(std::string_view text, Parameters parameters);
    void runFrom(CachedBatch& batch, std::size_t index, Parameters parameters, BatchRun& run);
    std::size_t runOrNote(CachedBatch& batch, std::size_t index, Parameters parameters, BatchRun& run);
    std::size_t runCurrent(CachedBatch& batch, std::size_t index, Parameters parameters, BatchRun& run);
    /// Keeps the error of a statement for the end of the batch. @return false for an error that ends the batch
    bool noted(const Error& error, BatchRun& run) const;
    static void throwNoted(const BatchRun& run);
    /// True if `step` failed because another session changed the schema after its translation.
    bool isOutdated(const CachedStep& step, const Error& error);
    std::size_t runStep(const std::shared_ptr<CachedStep>& step, std::size_t index, Parameters parameters,
                        BatchRun& run);
    /// True if the batch has anything but queries from `index` on.
    bool hasChangesFrom(CachedBatch& batch, std::size_t index);
    void runChange(const std::shared_ptr<CachedStep>& step, Parameters parameters);
    void runInsert(const std::shared_ptr<CachedStep>& step, Parameters parameters);
    void insertNumbered(sqlite3_stmt* insert, const std::string& table);
    void updateRows(const Lease& lease, const std::shared_ptr<CachedStep>& step, Parameters parameters);
    void countChanges(BatchRun& run) const;
    void runDefinition(const std::string& text);
    /// Runs `work` so that either everything it writes is written or nothing.
    void runAtomically(const std::function<void()>& work);
    bool runCondition(const std::shared_ptr<CachedStep>& step, Parameters parameters);
    void drain(const std::shared_ptr<CachedStep>& step, Parameters parameters);
    void callProcedure(const ado::Statement& statement);
    std::optional<std::int64_t> probe(const std::shared_ptr<CachedStep>& step, Parameters parameters,
                                      const tsql::Table& table, std::span<const RowLocks::Span> held);
    void runProcedure(std::string_view name, std::span<const tsql::Argument> arguments, Parameters parameters);
    void waitUntilFree(std::int64_t position, std::string_view table);
    void rollBackAll();
    bool rowExists(const tsql::Table& table, std::int64_t key);

    std::unique_ptr<Database> database_;
    ProcedureRegistry procedures_;
    SchemaCatalog catalog_;
    StatementCache statements_;
    RowLocks locks_;
    std::vector<StreamCursor*> cursors_;
    std::int32_t depth_ = 0;  ///< of BEGIN TRANSACTION
    bool noCount_ = false;    ///< SET NOCOUNT ON
    bool xactAbort_ = false;  ///< SET XACT_ABORT ON
    bool doomed_ = false;     ///< the error under way rolls the transaction back, whatever its number
    bool repeatable_ = false; ///< the open transaction is a procedure's own, which can be run again
    Compiled begin_;
    Compiled commit_;
};

} // namespace tamarok::embedded
