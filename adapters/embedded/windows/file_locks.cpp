#include "file_locks.h"

#include <system_error>
#include <windows.h>

#include "native_file.h"
#include "tamarok_windows/system_error.h"

namespace tamarok::embedded {

namespace {

constexpr unsigned halfBits = 32;

struct NativeRange {
    explicit NativeRange(ByteRange range) noexcept
    {
        const auto first = static_cast<std::uint64_t>(range.first);
        const std::uint64_t length = static_cast<std::uint64_t>(range.last) - first + 1;
        start.Offset = static_cast<DWORD>(first);
        start.OffsetHigh = static_cast<DWORD>(first >> halfBits);
        low = static_cast<DWORD>(length);
        high = static_cast<DWORD>(length >> halfBits);
    }
    OVERLAPPED start{};
    DWORD low = 0;
    DWORD high = 0;
};

/// Locks without waiting. False if somebody else has locked a part of the range.
bool tryLock(const FileHandle& file, ByteRange range, DWORD kind)
{
    NativeRange native{range};
    if (LockFileEx(handleOf(file), kind | LOCKFILE_FAIL_IMMEDIATELY, 0, native.low, native.high, &native.start) != 0)
        return true;
    const DWORD number = GetLastError();
    if (number != ERROR_LOCK_VIOLATION && number != ERROR_IO_PENDING)
        throw std::system_error{windows::systemError(number)};
    return false;
}

/// Tries a shared lock for a moment. Such trials of several sessions do not hinder each other.
bool isFree(const FileHandle& file, ByteRange range)
{
    constexpr DWORD shared = 0;
    if (!tryLock(file, range, shared)) return false;
    unlockRange(file, range);
    return true;
}

/// A byte of a range of which somebody else has locked a part, by halving the range.
ByteRange lockedByte(const FileHandle& file, ByteRange range)
{
    while (range.first < range.last) {
        const std::int64_t middle = range.first + (range.last - range.first) / 2;
        if (isFree(file, {range.first, middle}))
            range.first = middle + 1;
        else
            range.last = middle;
    }
    return range;
}

} // namespace

/// Another session that looks for locked bytes holds a lock for a moment; a second trial gets past it.
bool tryLockRange(const FileHandle& file, ByteRange range)
{
    constexpr int attempts = 5;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (tryLock(file, range, LOCKFILE_EXCLUSIVE_LOCK)) return true;
        SwitchToThread();
    }
    return false;
}

void unlockRange(const FileHandle& file, ByteRange range) noexcept
{
    NativeRange native{range};
    UnlockFileEx(handleOf(file), 0, native.low, native.high, &native.start);
}

/// The system does not tell locks; a lock that cannot be had is somebody's. The handle's own positions are left out: a
/// second lock on them would end with the first one.
std::optional<ByteRange> lockedByOthers(const FileHandle& file, ByteRange range, const HeldPositions& mine)
{
    auto held = mine.lower_bound(range.first);
    for (std::int64_t first = range.first; first <= range.last; ++held) {
        const bool isLast = held == mine.end() || held->first > range.last;
        const ByteRange part{first, isLast ? range.last : held->first - 1};
        if (part.first <= part.last && !isFree(file, part)) return lockedByte(file, part);
        if (isLast) break;
        first = held->first + 1;
    }
    return std::nullopt;
}

} // namespace tamarok::embedded
