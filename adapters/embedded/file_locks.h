#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

/// Locks on byte ranges of files. They belong to the open file description (F_OFD_SETLK): two descriptions of one
/// process exclude each other, and closing another descriptor of the file does not end them.
namespace tamarok::embedded {

/// A range of bytes, both ends included.
struct ByteRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
    bool contains(std::int64_t position) const noexcept { return position >= first && position <= last; }
};

inline constexpr ByteRange everyByte{0, std::numeric_limits<std::int64_t>::max()};

/// Locks a range for this description alone. False if somebody else has locked a part of it.
/// Throws std::system_error for any other failure.
bool tryLockRange(int file, ByteRange range);

/// Ends the locks of this description on a range.
void unlockRange(int file, ByteRange range) noexcept;

/// A locked part of a range that belongs to somebody else. Throws std::system_error if the system cannot tell.
std::optional<ByteRange> lockedByOthers(int file, ByteRange range);

/// True if the path leads to the open file, and is no symbolic link.
bool hasName(int file, const std::string& path) noexcept;

} // namespace tamarok::embedded
