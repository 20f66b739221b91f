#pragma once

#include <memory>
#include <optional>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <vector>

#include "database_path.h"
#include "deadline.h"
#include "functions.h"
#include "reading_file.h"

namespace tamarok::embedded {

enum class OpenMode : std::uint8_t;

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
/// A compiled SQLite statement.
using Compiled = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// One open SQLite database with the functions of the engine, and the clock that bounds what runs
/// on it. It neither moves nor copies, since SQLite keeps its address.
class Database {
public:
    /// Opens a file that `checkDatabaseFile` and `createDatabaseFile` know; see connect.h.
    Database(DatabasePath path, OpenMode mode, tsql::DateOrder dateOrder);
    /// A database in memory, private to this connection.
    explicit Database(tsql::DateOrder dateOrder);

    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    sqlite3* handle() const noexcept { return handle_.get(); }
    /// The path for messages; empty for a database in memory.
    const std::string& path() const noexcept { return path_.shown; }
    /// The real path of a file that several connections may change; empty for any other database, whose rows need no
    /// locks.
    std::string sharedPath() const;
    bool readOnly() const noexcept;
    Deadline& deadline() noexcept { return deadline_; }
    FunctionContext& functionContext() noexcept { return functions_; }

    /// True while a transaction of several statements is open.
    bool inTransaction() const noexcept { return sqlite3_get_autocommit(handle()) == 0; }

    /// True if a connection that only reads no longer sees the present state; `reopen` then makes it do so. Compiled
    /// statements stay those of the handle before.
    bool isOutdated() const { return reading_ && (!isOpen_ || reading_->isOutdated()); }
    void reopen() { open(); }

    /// Compiles one statement; `rest` becomes the text after it. Null for a text without a statement.
    Compiled compile(std::string_view text, std::string_view* rest = nullptr, bool keep = false) const;

    /// Steps; true where there is a row. Throws what SQLite reports.
    bool step(sqlite3_stmt* statement) const
    {
        const int code = sqlite3_step(statement);
        if (code == SQLITE_ROW) {
            return true;
        }
        if (reading_) {
            reading_->requireUnchanged();
        }
        if (code != SQLITE_DONE) [[unlikely]] {
            raise(code);
        }
        return false;
    }

    /// Runs a text of one or more statements to its end.
    void run(std::string_view text) const;
    /// First column of the first row of a statement, 0 where there is none.
    std::int64_t number(std::string_view text) const;

    [[noreturn]] void raise(int code) const;

private:
    struct CloseHandle {
        void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
    };

    void open();
    bool tryOpenForWriting();
    void openForReading();
    std::optional<ReadingFile::Way> tryReading(ReadingFile::Way way);
    void keepUnchanged();
    void openHandle(const std::string& name, int flags);
    bool hasMoved() const;
    void configure();
    void setUp();

    DatabasePath path_;
    OpenMode mode_;
    Deadline deadline_;
    FunctionContext functions_;
    std::optional<ReadingFile> reading_;               ///< of a connection that only reads
    bool isOpen_ = false;                              ///< false after a reopening that failed
    std::vector<std::unique_ptr<PrivateCopy>> copies_; ///< which the system does not remove before they are closed
    std::unique_ptr<sqlite3, CloseHandle> handle_;
};

} // namespace tamarok::embedded
