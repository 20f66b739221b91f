#pragma once

#include <memory>
#include <string>

#include "database_path.h"

struct sqlite3;

namespace tamarok::embedded {

/// Keeps every connection, of whatever process and account, out of a database file, by the lock of SQLite itself. A
/// database so held has no write-ahead log: what it held has been written into the file.
class ExclusiveHold {
public:
    /// Error 0x80004005 if a connection has the file open, if its log cannot be written into it, and if a log lies
    /// beside a file that is no database. A file that is no database, without a log, is held by nobody.
    explicit ExclusiveHold(const DatabasePath& path);
    ExclusiveHold(const ExclusiveHold&) = delete;
    ExclusiveHold& operator=(const ExclusiveHold&) = delete;
    ~ExclusiveHold();

private:
    bool tryHold();
    bool hasMoved() const;
    bool hasLogMode() const;
    int run(const char* statement) const;
    [[noreturn]] void fail(int code) const;

    struct CloseHandle {
        void operator()(sqlite3* handle) const noexcept;
    };
    DatabasePath path_;
    std::unique_ptr<sqlite3, CloseHandle> handle_;
};

} // namespace tamarok::embedded
