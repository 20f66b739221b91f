#include "row_locks.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

#include "failures.h"
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
            if (!tryLockRange(file_.get(), byte)) {
                return false;
            }
            // A file that has lost its name since it was opened is not the one that others see.
            if (hasName(file_.get(), path_) || !held_.empty()) {
                break;
            }
            file_.close();
        }
    } catch (const std::system_error& failed) {
        fail(failed.code().value());
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
    unlockRange(file_.get(), {position, position});
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
        return lockedByOthers(file_.get(), {first, last});
    } catch (const std::system_error& failed) {
        fail(failed.code().value());
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
    if (file_.isOpen() && held_.empty() && !hasName(file_.get(), path_)) {
        file_.close();
    }
    return file_.isOpen() || tryOpen();
}

/// A session of another account that has just created the file needs a moment to give it the database's mode.
bool RowLocks::tryOpen()
{
    constexpr int attempts = 50;
    for (int attempt = 0;; ++attempt) {
        file_ = FileHandle{::open(path_.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK)};
        if (file_.isOpen()) {
            checkFile();
            followMode();
            return true;
        }
        if (errno == ENOENT) {
            return false;
        }
        if (errno != EACCES || attempt == attempts) {
            fail(errno);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
}

void RowLocks::checkFile() const
{
    struct stat status {};
    if (::fstat(file_.get(), &status) != 0) {
        fail(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        throw failure(native::readWriteFailed,
                      "Cannot use the lock file '" + shownText(path_) + "': it is not a regular file.");
    }
}

/// Gives the file the present mode of the database, which may have changed since the file was created. Only the file's
/// owner does so, and only for an empty file of one name, which no foreign file is.
void RowLocks::followMode() const noexcept
{
    struct stat database {};
    struct stat mine {};
    if (::stat(database_.c_str(), &database) == 0 && ::fstat(file_.get(), &mine) == 0 && mine.st_uid == ::geteuid() &&
        mine.st_size == 0 && mine.st_nlink == 1 && (mine.st_mode & 0777U) != (database.st_mode & 0666U)) {
        static_cast<void>(::fchmod(file_.get(), database.st_mode & 0666U));
    }
}

/// Whoever may write the database must be able to lock its rows, whatever account creates the file. An account that
/// may not give the file away keeps it; the mode then decides who can open it.
void RowLocks::create()
{
    struct stat database {};
    if (::stat(database_.c_str(), &database) != 0) {
        fail(errno);
    }
    const FileHandle created{::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600)};
    if (!created.isOpen()) {
        if (errno == EEXIST) {
            return;
        }
        fail(errno);
    }
    if (::fchown(created.get(), database.st_uid, database.st_gid) != 0) {
        static_cast<void>(::fchown(created.get(), static_cast<uid_t>(-1), database.st_gid));
    }
    if (::fchmod(created.get(), database.st_mode & 0666U) != 0) {
        fail(errno);
    }
}

void RowLocks::fail(int code) const
{
    const std::string reason = code == ELOOP ? "it is a symbolic link" : std::system_category().message(code);
    throw failure(native::readWriteFailed, "Cannot use the lock file '" + shownText(path_) + "': " + reason + ".");
}

} // namespace tamarok::embedded
