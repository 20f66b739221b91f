#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <optional>

#include "file_handle.h"

/// Locks on byte ranges of files. They belong to the open file: two handles of one process exclude each other, closing
/// another handle of the file does not end them, and the system ends them with the process. Each system has its own
/// source: `posix` (F_OFD_SETLK) and `windows` (LockFileEx).
namespace tamarok::embedded {

/// A range of bytes, both ends included.
struct ByteRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
    bool contains(std::int64_t position) const noexcept { return position >= first && position <= last; }
};

inline constexpr ByteRange everyByte{0, std::numeric_limits<std::int64_t>::max()};

/// Positions that a handle has locked, and how often.
using HeldPositions = std::map<std::int64_t, int>;

/// Locks a range for this handle alone. False if somebody else has locked a part of it.
/// Throws std::system_error for any other failure.
bool tryLockRange(const FileHandle& file, ByteRange range);

/// Ends the lock of this handle on exactly this range.
void unlockRange(const FileHandle& file, ByteRange range) noexcept;

/// A locked part of a range that belongs to somebody else. Throws std::system_error if the system cannot tell.
/// @param mine  the positions that this handle has locked
std::optional<ByteRange> lockedByOthers(const FileHandle& file, ByteRange range, const HeldPositions& mine);

} // namespace tamarok::embedded
