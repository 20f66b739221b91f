#include "file_locks.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace tamarok::embedded {

namespace {

/// The lock of a range. A length of 0 reaches to the greatest position; the process id must be 0 for locks of an open
/// file description.
struct flock description(short type, ByteRange range) noexcept
{
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = range.first;
    lock.l_len = range.last == everyByte.last ? 0 : range.last - range.first + 1;
    lock.l_pid = 0;
    return lock;
}

} // namespace

bool tryLockRange(int file, ByteRange range)
{
    struct flock lock = description(F_WRLCK, range);
    if (::fcntl(file, F_OFD_SETLK, &lock) == 0) {
        return true;
    }
    if (errno != EAGAIN && errno != EACCES) {
        throw std::system_error{errno, std::system_category()};
    }
    return false;
}

void unlockRange(int file, ByteRange range) noexcept
{
    struct flock lock = description(F_UNLCK, range);
    ::fcntl(file, F_OFD_SETLK, &lock);
}

std::optional<ByteRange> lockedByOthers(int file, ByteRange range)
{
    struct flock lock = description(F_WRLCK, range);
    if (::fcntl(file, F_OFD_GETLK, &lock) != 0) {
        throw std::system_error{errno, std::system_category()};
    }
    if (lock.l_type == F_UNLCK) {
        return std::nullopt;
    }
    return ByteRange{lock.l_start, lock.l_len == 0 ? range.last : lock.l_start + lock.l_len - 1};
}

bool hasName(int file, const std::string& path) noexcept
{
    struct stat mine {};
    struct stat there {};
    return ::fstat(file, &mine) == 0 && ::lstat(path.c_str(), &there) == 0 && mine.st_ino == there.st_ino &&
           mine.st_dev == there.st_dev;
}

} // namespace tamarok::embedded
