#include "row_locks.h"

#include <chrono>
#include <thread>
#include <utility>

#include "failures.h"
#include "system_files.h"
#include "tamarok_embedded/shown_text.h"

namespace tamarok::embedded {

namespace {

// A position has 63 bits: the table's number above, the row's number below.
constexpr unsigned rowBits = 39;
constexpr unsigned tableBits = 24;
constexpr std::uint64_t rowMask = (std::uint64_t{1} << rowBits) - 1;

/// FNV-1a of the name without regard to case, folded to `tableBits`.
std::uint64_t tableNumber(std::string_view table) noexcept
{
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char letter : table) {
        const auto byte = static_cast<unsigned char>(letter);
        hash ^= byte >= 'a' && byte <= 'z' ? byte - 32U : byte;
        hash *= 1099511628211ULL;
    }
    return (hash ^ hash >> tableBits ^ hash >> 2 * tableBits) & ((std::uint64_t{1} << tableBits) - 1);
}

} // namespace

RowLocks::RowLocks(std::string database) :
    database_{std::move(database)}, path_{database_.empty() ? std::string{} : database_ + "-locks"}
{}

std::int64_t RowLocks::position(std::string_view table, std::int64_t row) noexcept
{
    return static_cast<std::int64_t>(tableNumber(table) << rowBits | (static_cast<std::uint64_t>(row) & rowMask));
}

/// A lock of this connection is counted; the system would grant it again, but one unlock would then end it for all
/// cursors.
bool RowLocks::tryLock(std::int64_t position)
{
    if (path_.empty()) {
        return true;
    }
    if (const auto found = held_.find(position); found != held_.end()) {
        ++found->second;
        return true;
    }
    const ByteRange byte{position, position};
    try {
        for (;;) {
            open();
            if (!tryLockRange(file_, byte)) {
                return false;
            }
            // A file that has lost its name since it was opened is not the one that others see.
            if (hasName(file_, path_) || !held_.empty()) {
                break;
            }
            file_.close();
        }
    } catch (const std::system_error& failed) {
        fail(failed.code());
    }
    held_.emplace(position, 1);
    return true;
}

/// The lock ends with its last holder.
void RowLocks::unlock(std::int64_t position) noexcept
{
    const auto found = held_.find(position);
    if (found == held_.end() || --found->second > 0) {
        return;
    }
    held_.erase(found);
    unlockRange(file_, {position, position});
}

std::vector<RowLocks::Span> RowLocks::heldByOthers(std::string_view table)
{
    std::vector<Span> spans;
    const std::int64_t first = position(table, 0);
    collect({first, first + static_cast<std::int64_t>(rowMask)}, spans);
    return spans;
}

/// Asks the system whether a lock could be set. Without a lock file nobody has ever locked a row.
std::optional<RowLocks::Span> RowLocks::firstHeld(std::int64_t first, std::int64_t last)
{
    if (path_.empty() || !openExisting()) {
        return std::nullopt;
    }
    try {
        return lockedByOthers(file_, {first, last}, held_);
    } catch (const std::system_error& failed) {
        fail(failed.code());
    }
}

void RowLocks::collect(ByteRange range, std::vector<Span>& spans)
{
    // The system reports one lock of a range, in no order. The parts before and after it are queried again.
    std::vector<ByteRange> open{range};
    while (!open.empty()) {
        const ByteRange part = open.back();
        open.pop_back();
        const auto held = firstHeld(part.first, part.last);
        if (!held) {
            continue;
        }
        spans.push_back(*held);
        if (held->first > part.first) {
            open.push_back({part.first, held->first - 1});
        }
        if (held->last < part.last) {
            open.push_back({held->last + 1, part.last});
        }
    }
}

void RowLocks::open()
{
    if (path_.empty()) {
        return;
    }
    while (!openExisting()) {
        create();
    }
}

void RowLocks::checkUsable()
{
    if (!path_.empty() && !file_.isOpen()) {
        tryOpen();
    }
}

/// False if there is no lock file. The file may have been deleted while no connection used it; the open descriptor
/// would then refer to a file that other connections no longer see.
bool RowLocks::openExisting()
{
    if (file_.isOpen() && held_.empty() && !hasName(file_, path_)) {
        file_.close();
    }
    return file_.isOpen() || tryOpen();
}

/// A session of another account that has just created the file needs a moment to give it the database's mode.
bool RowLocks::tryOpen()
{
    constexpr int attempts = 50;
    for (int attempt = 0;; ++attempt) {
        std::error_code failed;
        file_ = openFile(path_, failed);
        if (file_.isOpen()) {
            checkFile();
            // The database's permissions may have changed since the file was created.
            followPermissions(file_, database_);
            return true;
        }
        if (failed == std::errc::no_such_file_or_directory) {
            return false;
        }
        if (failed != std::errc::permission_denied || attempt == attempts) {
            fail(failed);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
}

void RowLocks::checkFile() const
{
    std::error_code failed;
    const std::optional<FileStatus> status = statusOf(file_, failed);
    if (!status) {
        fail(failed);
    }
    if (status->kind != FileKind::Regular) {
        throw failure(native::readWriteFailed,
                      "Cannot use the lock file '" + shownText(path_) + "': it is not a regular file.");
    }
}

/// Whoever may write the database must be able to lock its rows, whatever account creates the file.
void RowLocks::create()
{
    std::error_code failed;
    const FileHandle created = createFileLike(path_, database_, failed);
    if (failed && failed != std::errc::file_exists) {
        fail(failed);
    }
}

void RowLocks::fail(std::error_code code) const
{
    const bool isLink = code == std::errc::too_many_symbolic_link_levels;
    throw failure(native::readWriteFailed, "Cannot use the lock file '" + shownText(path_) +
                                               "': " + (isLink ? "it is a symbolic link" : code.message()) + ".");
}

} // namespace tamarok::embedded
