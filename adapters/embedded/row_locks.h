#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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
    struct Span {
        std::int64_t first = 0;
        std::int64_t last = 0;
        bool contains(std::int64_t position) const noexcept { return position >= first && position <= last; }
    };

    /// @param database  path of the database file; empty for one in memory, where no lock is needed
    explicit RowLocks(const std::string& database);
    RowLocks(const RowLocks&) = delete;
    RowLocks& operator=(const RowLocks&) = delete;
    ~RowLocks();

    /// Position of a row: a number made of the table's name above the row's number. Numbers beyond
    /// 2^39 and, once in some ten thousand databases, two tables may share positions; a lock then
    /// hinders more than it should, never less.
    static std::int64_t position(std::string_view table, std::int64_t row) noexcept;

    /// Takes a row's lock if nobody else has it. Cursors of one connection share it.
    bool tryLock(std::int64_t position);
    void unlock(std::int64_t position) noexcept;

    /// Spans of a table's rows that others hold; empty, after one look, where there is none.
    std::vector<Span> heldByOthers(std::string_view table);
    /// A part of [first, last] that somebody else holds.
    std::optional<Span> firstHeld(std::int64_t first, std::int64_t last);

private:
    bool openFile(bool create);
    void closeFile() noexcept;
    bool isCurrentFile() const noexcept;
    void collect(std::int64_t first, std::int64_t last, std::vector<Span>& spans);

    std::string path_;
    int file_ = -1;
    std::map<std::int64_t, int> held_; ///< position and number of cursors that hold it
};

} // namespace tamarok::embedded
