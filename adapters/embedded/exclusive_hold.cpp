#include "exclusive_hold.h"

#include <sqlite3.h>
#include <string_view>

#include "failures.h"
#include "file_checks.h"

namespace tamarok::embedded {

void ExclusiveHold::CloseHandle::operator()(sqlite3* handle) const noexcept
{
    sqlite3_close_v2(handle);
}

/// SQLite may delete the log of a file that is no database, so that such a file is told first. A file that is replaced
/// meanwhile is opened again.
ExclusiveHold::ExclusiveHold(const DatabasePath& path) : path_{path}
{
    constexpr int attempts = 10;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        sqlite3* opened = nullptr;
        const int code = sqlite3_open_v2(
            path_.real.c_str(), &opened,
            SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_EXRESCODE, nullptr);
        handle_.reset(opened);
        if (code != SQLITE_OK) {
            fail(code);
        }
        if (!isDatabase(handle_.get())) {
            checkNoLogBeside(path_);
            handle_.reset();
            return;
        }
        if (tryHold()) {
            return;
        }
    }
    fail(SQLITE_BUSY);
}

ExclusiveHold::~ExclusiveHold() = default;

/// Leaving the mode with a log demands that nobody else has the database open; it writes the log into the file and
/// deletes it. Only then does an exclusive transaction keep all others out. False if somebody came in between.
bool ExclusiveHold::tryHold()
{
    int code = run("PRAGMA journal_mode=DELETE");
    if (code == SQLITE_OK) {
        code = run("BEGIN EXCLUSIVE");
    }
    if (hasMoved()) {
        return false;
    }
    if (code != SQLITE_OK) {
        fail(code);
    }
    return !hasLogMode();
}

bool ExclusiveHold::hasMoved() const
{
    int moved = 0;
    sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

/// True if another connection has turned the log on again before the exclusive transaction began.
bool ExclusiveHold::hasLogMode() const
{
    bool log = false;
    sqlite3_exec(
        handle_.get(), "PRAGMA journal_mode",
        [](void* found, int, char** values, char**) {
            *static_cast<bool*>(found) = values[0] != nullptr && std::string_view{values[0]} == "wal";
            return 0;
        },
        &log, nullptr);
    return log;
}

int ExclusiveHold::run(const char* statement) const
{
    return sqlite3_exec(handle_.get(), statement, nullptr, nullptr, nullptr);
}

void ExclusiveHold::fail(int code) const
{
    if ((code & 0xFF) == SQLITE_BUSY) {
        throw createFailure(path_.shown, "another session has it open");
    }
    throw failure(handle_.get(), code, path_.shown);
}

} // namespace tamarok::embedded
