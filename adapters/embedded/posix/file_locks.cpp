#include "file_locks.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>

namespace tamarok::embedded {

namespace {

int descriptorOf(const FileHandle& file) noexcept
{
    return static_cast<int>(file.get());
}

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

bool tryLockRange(const FileHandle& file, ByteRange range)
{
    struct flock lock = description(F_WRLCK, range);
    if (::fcntl(descriptorOf(file), F_OFD_SETLK, &lock) == 0) {
        return true;
    }
    if (errno != EAGAIN && errno != EACCES) {
        throw std::system_error{errno, std::system_category()};
    }
    return false;
}

void unlockRange(const FileHandle& file, ByteRange range) noexcept
{
    struct flock lock = description(F_UNLCK, range);
    ::fcntl(descriptorOf(file), F_OFD_SETLK, &lock);
}

/// The system leaves out the locks of the description that asks.
std::optional<ByteRange> lockedByOthers(const FileHandle& file, ByteRange range, const HeldPositions&)
{
    struct flock lock = description(F_WRLCK, range);
    if (::fcntl(descriptorOf(file), F_OFD_GETLK, &lock) != 0) {
        throw std::system_error{errno, std::system_category()};
    }
    if (lock.l_type == F_UNLCK) {
        return std::nullopt;
    }
    return ByteRange{lock.l_start, lock.l_len == 0 ? range.last : lock.l_start + lock.l_len - 1};
}

} // namespace tamarok::embedded
