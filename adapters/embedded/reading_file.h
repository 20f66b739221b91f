#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "database_path.h"
#include "private_copy.h"
#include "system_files.h"

namespace tamarok::embedded {

/// True if a log lies beside the database that may hold something.
bool hasLog(const DatabasePath& path);

/// True if the log and its index lie beside the database, as they do while a session is open and after its crash.
bool hasLogAndIndex(const DatabasePath& path);

/// How a connection that only reads gets at a database. It creates nothing beside it.
///
///  - Shared: with SQLite's own locks, beside writers. A file in log mode needs the files of its log for it.
///  - Unchanging: as a file that nobody changes, for one without a log beside it. The connection locks it against
///    closing sessions and replacement; only a session that writes so much that SQLite empties its log changes it.
///  - Copy: a private copy of the database and its log, where the log's files cannot be used.
class ReadingFile {
public:
    enum class Way : std::uint8_t { Shared, Unchanging, Copy };

    /// Notes the state of the file, and copies it where that is the way.
    ReadingFile(DatabasePath path, Way way);

    /// The URI under which SQLite opens the file for reading.
    std::string uri() const;
    Way way() const noexcept { return way_; }

    /// True if the connection must be opened again to see the present state: another file has the name, or one that is
    /// not read with SQLite's locks has changed or got a log.
    bool isOutdated() const;

    /// Fails if the file has changed while it was read as one that nobody changes.
    void requireUnchanged() const
    {
        if (way_ == Way::Unchanging) [[unlikely]] {
            compareUnchanged();
        }
    }

    /// Hands the copy over, if there is one. Its name is not needed any more once SQLite has opened it; on a system
    /// that does not remove open files it lives until SQLite has closed it.
    std::unique_ptr<PrivateCopy> takeCopy() noexcept { return std::move(copy_); }

private:
    /// What the system tells of a file; all zero for a missing or empty one.
    struct Stamp {
        FileIdentity identity;
        std::int64_t size = 0;
        std::int64_t modified = 0;
        bool operator==(const Stamp&) const = default;
    };
    static Stamp stampOf(const std::string& file);
    void compareUnchanged() const;

    DatabasePath path_;
    Way way_;
    Stamp database_;
    Stamp log_;
    std::unique_ptr<PrivateCopy> copy_;
};

} // namespace tamarok::embedded
