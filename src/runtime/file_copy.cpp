#include "file_copy.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <optional>

#ifdef __linux__
#include <sys/xattr.h>
#endif

#include "file_failures.h"

// Replaces the content of a file so that a full disk or the end of the process loses nothing.
//
// 1. The new content is copied into a draft beside the file, which has its owner, group and mode and is forced to the
//    disk. Then the draft takes the file's name in one step. Readers see the old file or the new one.
// 2. A file with further hard links or an access list, or whose owner and group the account cannot give to a draft, or
//    in whose folder it cannot make one, is overwritten in place. The room is reserved before, so that a full disk
//    changes nothing; the source stays whole whatever happens.

namespace tamarok {

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 16U;

/// Calls `use(position, bytes)` for the content of a file, block by block.
template <class Use>
void forEachBlock(const PosixFile& file, const Use& use)
{
    const auto block = std::make_unique<std::array<char, blockSize>>();
    for (std::uint64_t position = 0;;) {
        const std::size_t count = file.readAt(position, *block);
        if (count == 0) return;
        use(position, std::string_view{block->data(), count});
        position += count;
    }
}

/// Tells whether a file has an access list beside its mode. A draft would have none.
bool hasAccessList([[maybe_unused]] const std::string& path)
{
#ifdef __linux__
    return ::getxattr(path.c_str(), "system.posix_acl_access", nullptr, 0) >= 0;
#else
    return false;
#endif
}

/// The file that a path leads to, through all symbolic links.
std::string realPath(const std::string& path)
{
    const std::unique_ptr<char, decltype(&std::free)> real{::realpath(path.c_str(), nullptr), &std::free};
    if (!real) throw fileFailure(path, errno);
    return real.get();
}

/// Tells whether a file that stands where a replacement is to be made may be removed.
bool isOurs(const std::string& path, const struct stat& found, const struct stat& model)
{
    if (found.st_uid == ::geteuid() || found.st_uid == model.st_uid) return true;
    const bool isShared = (found.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    return isShared && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

/// Removes the replacement that an earlier operation left. Anything else stays and is an error.
void makeRoom(const std::string& path, const struct stat& model)
{
    struct stat found {};
    if (::lstat(path.c_str(), &found) != 0) {
        if (errno == ENOENT) return;
        throw fileFailure(path, errno);
    }
    if (!S_ISREG(found.st_mode)) throw pathFailure(path, "is in the way: it is not a regular file");
    if (!isOurs(path, found, model)) throw ownershipFailure(path, "is in the way: it belongs to another user");
    if (::unlink(path.c_str()) != 0) throw fileFailure(path, errno);
}

/// Gives a new file owner, group and mode of another one. Where the group cannot be given, it gets no rights.
/// @return false if not all three could be given
bool takeOwnerAndMode(const Descriptor& file, const std::string& path, const struct stat& model)
{
    const struct stat mine = statusOf(file, path);
    // The system clears bits of the mode when the owner changes, so that the owner comes first.
    const bool sameOwner = mine.st_uid == model.st_uid || ::fchown(file.get(), model.st_uid, mine.st_gid) == 0;
    const bool sameGroup =
        mine.st_gid == model.st_gid || ::fchown(file.get(), static_cast<uid_t>(-1), model.st_gid) == 0;
    const mode_t mode = model.st_mode & (sameGroup ? 07777U : 07707U);
    return ::fchmod(file.get(), mode) == 0 && sameOwner && sameGroup;
}

/// Forces the entry of a file in its folder to the disk. The renaming itself stands if that fails.
void syncFolder(const std::string& path)
{
    const Descriptor folder = openDescriptor(std::filesystem::path{path}.parent_path(), O_RDONLY | O_DIRECTORY);
    if (folder.isOpen()) ::fsync(folder.get());
}

/// Makes the draft; nothing if it cannot be made exactly like the file that it is to replace.
std::optional<PosixFile> makeDraft(const std::string& draft, const struct stat& model)
{
    try {
        bool isExact = false;
        Descriptor file = createReplacement(draft, model, isExact);
        if (isExact) return PosixFile{draft, std::move(file)};
        ::unlink(draft.c_str());
    } catch (const Error& error) {
        // Overwriting in place needs no draft. Without room it would fail as well.
        if (error.number == errors::diskFull) throw;
    }
    return std::nullopt;
}

/// @return false, and nothing changed, if the file cannot be replaced by another one without loss
bool replaceByDraft(const PosixFile& source, const std::string& target, const struct stat& model)
{
    if (model.st_nlink != 1 || hasAccessList(target)) return false;
    const std::string draft = target + "~new";
    std::optional<PosixFile> file = makeDraft(draft, model);
    if (!file) return false;
    try {
        forEachBlock(source, [&](std::uint64_t, std::string_view bytes) { file->write(bytes); });
        file->sync();
    } catch (...) {
        ::unlink(draft.c_str());
        throw;
    }
    if (::rename(draft.c_str(), target.c_str()) != 0) {
        ::unlink(draft.c_str());
        return false;
    }
    syncFolder(target);
    return true;
}

/// Makes sure that a file can grow to a size. If it cannot, it stays as it is.
void reserveRoom(const Descriptor& file, const std::string& path, off_t oldSize, off_t newSize)
{
    if (newSize <= oldSize) return;
    const int code = ::posix_fallocate(file.get(), oldSize, newSize - oldSize);
    if (code == 0) return;
    [[maybe_unused]] const int ignored = ::ftruncate(file.get(), oldSize);
    throw fileFailure(path, code);
}

void writeAt(const Descriptor& file, const std::string& path, std::uint64_t position, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::pwrite(file.get(), bytes.data(), bytes.size(), static_cast<off_t>(position));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw fileFailure(path, errno);
        bytes.remove_prefix(static_cast<std::size_t>(count));
        position += static_cast<std::uint64_t>(count);
    }
}

void overwrite(const PosixFile& source, const std::string& sourcePath, const Descriptor& file, const std::string& path)
{
    const auto newSize = static_cast<off_t>(source.size());
    syncFolder(sourcePath); // the source must be found again, whatever happens from here on
    reserveRoom(file, path, statusOf(file, path).st_size, newSize);
    try {
        forEachBlock(source,
                     [&](std::uint64_t position, std::string_view bytes) { writeAt(file, path, position, bytes); });
        if (::ftruncate(file.get(), newSize) != 0) throw fileFailure(path, errno);
        syncDescriptor(file, path);
    } catch (Error& error) {
        error.description += "; its complete content is in '" + sourcePath + "'";
        throw;
    }
}

} // namespace

Descriptor openWritable(const std::string& path)
{
    Descriptor file = openDescriptor(path, O_RDWR);
    if (!file.isOpen()) throw fileFailure(path, errno);
    if (!S_ISREG(statusOf(file, path).st_mode)) throw pathFailure(path, "is not a regular file");
    return file;
}

Descriptor createReplacement(const std::string& path, const struct stat& model, bool& isExact)
{
    makeRoom(path, model);
    Descriptor file = openDescriptor(path, O_RDWR | O_APPEND | O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
    if (!file.isOpen()) throw fileFailure(path, errno);
    isExact = takeOwnerAndMode(file, path, model);
    return file;
}

void copyFile(const std::string& from, const std::string& to)
{
    Descriptor input = openDescriptor(from, O_RDONLY | O_NOFOLLOW);
    if (!input.isOpen()) throw fileFailure(from, errno);
    const PosixFile source{from, std::move(input)};
    const std::string target = realPath(to);
    // Opened before anything is written: a file that the account may not write is refused, not replaced.
    const Descriptor file = openWritable(target);
    if (!replaceByDraft(source, target, statusOf(file, target))) overwrite(source, from, file, target);
}

} // namespace tamarok
