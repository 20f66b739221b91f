#include "row_locks.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "failures.h"

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

/// The lock of a range of positions. The process id must be 0 for locks that belong to an open file.
struct flock description(short type, std::int64_t first, std::int64_t last) noexcept
{
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = first;
    lock.l_len = last - first + 1;
    lock.l_pid = 0;
    return lock;
}

[[noreturn]] void raiseFileFailure(const std::string& path, int code)
{
    throw failure(native::readWriteFailed,
                  "Cannot use the lock file '" + path + "': " + std::system_category().message(code) + ".");
}

} // namespace

RowLocks::RowLocks(const std::string& database) : path_{database.empty() ? std::string{} : database + "-locks"} {}

RowLocks::~RowLocks()
{
    closeFile();
}

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
    openFile(true);
    struct flock lock = description(F_WRLCK, position, position);
    if (::fcntl(file_, F_OFD_SETLK, &lock) != 0) {
        if (errno == EAGAIN || errno == EACCES) {
            return false;
        }
        raiseFileFailure(path_, errno);
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
    struct flock lock = description(F_UNLCK, position, position);
    ::fcntl(file_, F_OFD_SETLK, &lock);
}

std::vector<RowLocks::Span> RowLocks::heldByOthers(std::string_view table)
{
    std::vector<Span> spans;
    const std::int64_t first = position(table, 0);
    collect(first, first + static_cast<std::int64_t>(rowMask), spans);
    return spans;
}

/// Asks the system whether a lock could be set. Without a lock file nobody has ever locked a row. A length of 0 means
/// up to the end of the file.
std::optional<RowLocks::Span> RowLocks::firstHeld(std::int64_t first, std::int64_t last)
{
    if (path_.empty() || !openFile(false)) {
        return std::nullopt;
    }
    struct flock lock = description(F_WRLCK, first, last);
    if (::fcntl(file_, F_OFD_GETLK, &lock) != 0) {
        raiseFileFailure(path_, errno);
    }
    if (lock.l_type == F_UNLCK) {
        return std::nullopt;
    }
    return Span{lock.l_start, lock.l_len == 0 ? last : lock.l_start + lock.l_len - 1};
}

void RowLocks::collect(std::int64_t first, std::int64_t last, std::vector<Span>& spans)
{
    // The system reports one lock of a range, in no order. The parts before and after it are queried again.
    std::vector<Span> open{Span{first, last}};
    while (!open.empty()) {
        const Span range = open.back();
        open.pop_back();
        const auto held = firstHeld(range.first, range.last);
        if (!held) {
            continue;
        }
        spans.push_back(*held);
        if (held->first > range.first) {
            open.push_back({range.first, held->first - 1});
        }
        if (held->last < range.last) {
            open.push_back({held->last + 1, range.last});
        }
    }
}

bool RowLocks::openFile(bool create)
{
    // The file may have been deleted while no connection used it. The open descriptor would then refer to a file that
    // other connections no longer see.
    if (file_ >= 0 && held_.empty() && !isCurrentFile()) {
        closeFile();
    }
    if (file_ < 0) {
        file_ = ::open(path_.c_str(), O_RDWR | O_CLOEXEC | (create ? O_CREAT : 0), 0666);
        if (file_ < 0 && (create || errno != ENOENT)) {
            raiseFileFailure(path_, errno);
        }
    }
    return file_ >= 0;
}

void RowLocks::closeFile() noexcept
{
    if (file_ >= 0) {
        ::close(file_);
        file_ = -1;
    }
}

/// Compares the opened file with the one that has the name now.
bool RowLocks::isCurrentFile() const noexcept
{
    struct stat mine {};
    struct stat there {};
    return ::fstat(file_, &mine) == 0 && ::stat(path_.c_str(), &there) == 0 && mine.st_ino == there.st_ino &&
           mine.st_dev == there.st_dev;
}

} // namespace tamarok::embedded
