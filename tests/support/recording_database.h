#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"
#include "tamarok/ado_backend.h"
#include "tamarok/error.h"

namespace tamarok::test {

using Row = std::vector<Variant>;

/// The rows that a statement opens, by key. A recordset can edit them; a test can make that fail.
struct Table {
    std::vector<ado::ColumnInfo> columns;
    std::map<std::int64_t, Row> rows;
    bool updatable = true;
    std::set<std::int64_t> lockedByOthers;        ///< locking these rows times out
    std::set<std::int64_t> goneForLocks;          ///< locking these rows finds them deleted
    std::function<void(std::int64_t)> beforeLock; ///< what others do while a lock is waited for
    std::optional<std::int64_t> unreadable;       ///< the step to this row fails
    std::optional<Error> refusal;                 ///< failure of the next write
};

/// What was asked of the database. `what` is the connection's name, if it has one, and "open STATEMENT",
/// "execute STATEMENT", "execute procedure NAME", "restart", "lock KEY", "unlock", "insert COLUMNS",
/// "update KEY COLUMNS", "delete KEY", "close cursor" (of a cursor that locks), "begin", "commit", "rollback"
/// or "end session".
struct Call {
    std::string what;
    std::int32_t timeoutSeconds = 0;
    ado::CursorType cursorType = ado::CursorType::OpenForwardOnly;
    ado::LockType lockType = ado::LockType::ReadOnly;
};

struct OpenedStatement {
    std::string text;
    ado::CursorType cursorType;
    ado::LockType lockType;
};

/// What a statement without a prepared answer does.
enum class Unanswered { IsRefused, HasNoRows, HasNoResult };

/// The double of a database: gives the answers and failures that a test prepares, and keeps one record, in
/// order, of what all its connections were asked. It must outlive its connections.
class RecordingDatabase {
public:
    explicit RecordingDatabase(Unanswered unanswered = Unanswered::HasNoRows) : unanswered_{unanswered} {}

    /// Opens a connection. A name begins each of its calls in the record and is its connection text.
    ado::ConnectionRef connect(const std::string& name = {});

    // Answers. Those of the first group replace what was prepared for the statement; those of the second
    // follow the answers that are prepared already, and the last one stays.

    void answer(const std::string& statement, Variant value, std::string column = "VALUE");
    void answerNoRow(const std::string& statement, std::string column = "VALUE");
    void answerTable(const std::string& statement, std::shared_ptr<Table> table);

    void addAnswer(const std::string& statement, const std::vector<std::string>& columns, std::vector<Row> rows);
    void addValue(const std::string& statement, std::string column, Variant value);

    /// Lets a call fail from now on, by default as a wait that times out. @param call  as Call::what has it
    void fail(const std::string& call, Error failure = {errors::timeout, "Timeout expired", "recording database"});
    /// Lets a call time out after it has succeeded `successes` times from now on.
    void failLater(int successes, const std::string& call);

    /// The record of all calls, and of the last statement.
    std::vector<Call> calls;
    std::vector<std::string> log; ///< Call::what of each call
    std::vector<OpenedStatement> opened;
    std::vector<std::string> executed; ///< texts without the connection's name
    std::vector<ado::Parameter> parameters;
    std::int32_t timeoutSeconds = -1;
    int openCursors = 0;

    std::int64_t affectedRows = -1; ///< what an execution returns

    std::vector<std::string> openedTexts() const;
    /// Returns the first call with that text; fails if there is none.
    const Call& find(std::string_view what) const;
    /// Returns the log and empties it.
    std::vector<std::string> takeLog();
    /// Empties the whole record.
    void clearRecord();

private:
    friend class RecordingCursor;
    friend class RecordingSession;

    void record(Call call);
    std::shared_ptr<Table> take(std::string_view statement);

    std::map<std::string, std::deque<std::shared_ptr<Table>>, std::less<>> answers_;
    std::map<std::string, Error, std::less<>> failures_;
    std::map<std::string, int, std::less<>> successes_; ///< that calls in failures_ still have
    Unanswered unanswered_;
};

} // namespace tamarok::test
