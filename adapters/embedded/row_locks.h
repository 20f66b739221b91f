#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "file_handle.h"
#include "file_locks.h"

/// Row locks that hold between processes and die with their holder.
namespace tamarok::embedded {

/// Locks single rows of a database between processes; the engine uses it for editable cursors and for every change. One
/// byte of the lock file represents one row. It is locked with an open-file-description lock, which belongs to the
/// connection's file description: two connections of one process exclude each other, and the kernel releases the lock
/// when the holder ends, even by a crash. A child process made by fork shares the file description and keeps the locks
/// until it ends or runs another program.
class RowLocks {
public:
    /// A span of rows that another connection holds, as positions in the lock file.
    using Span = ByteRange;

    /// @param database  real path of the database file, so that all links to it share its locks; empty for a database
    ///                  that no other connection changes, where no lock is needed
    explicit RowLocks(std::string database);
    RowLocks(const RowLocks&) = delete;
    RowLocks& operator=(const RowLocks&) = delete;
    ~RowLocks() = default;

    /// Position of a row: a number made of the table's name above the row's number. Numbers beyond
    /// 2^39 and, once in some ten thousand databases, two tables may share positions; a lock then
    /// hinders more than it should, never less.
    static std::int64_t position(std::string_view table, std::int64_t row) noexcept;

    /// Opens the lock file, or creates it with the mode and the owner of the database file.
    /// Error 0x80004005 with its path where that fails; so do the other operations.
    void open();

    /// Makes sure that a lock file, where there is one, can be used. Free once the file is open.
    void checkUsable();

    /// Takes a row's lock if nobody else has it. Cursors of one connection share it.
    bool tryLock(std::int64_t position);
    void unlock(std::int64_t position) noexcept;

    /// Spans of a table's rows that others hold; empty, after one look, where there is none.
    std::vector<Span> heldByOthers(std::string_view table);
    /// A part of [first, last] that somebody else holds.
    std::optional<Span> firstHeld(std::int64_t first, std::int64_t last);

private:
    bool openExisting();
    bool tryOpen();
    void create();
    void checkFile() const;
    void collect(ByteRange range, std::vector<Span>& spans);
    [[noreturn]] void fail(std::error_code code) const;

    std::string database_;
    std::string path_; ///< of the lock file
    FileHandle file_;
    HeldPositions held_; ///< position and number of cursors that hold it
};

} // namespace tamarok::embedded
