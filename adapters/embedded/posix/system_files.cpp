#include "system_files.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include "path_text.h"

namespace tamarok::embedded {

namespace {

std::error_code codeOf(int number) noexcept
{
    return {number, std::system_category()};
}

/// The code of a call's result: none for 0, else the system's last error.
std::error_code resultOf(int result) noexcept
{
    return result == 0 ? std::error_code{} : codeOf(errno);
}

[[noreturn]] void failSystem()
{
    throw std::system_error{errno, std::system_category()};
}

int descriptorOf(const FileHandle& file) noexcept
{
    return static_cast<int>(file.get());
}

FileHandle opened(const std::string& path, int flags, mode_t mode, std::error_code& failed) noexcept
{
    const int descriptor = ::open(path.c_str(), flags | O_NOFOLLOW | O_CLOEXEC, mode);
    failed = descriptor < 0 ? codeOf(errno) : std::error_code{};
    return FileHandle{descriptor};
}

FileKind kindOf(const struct stat& status) noexcept
{
    if (S_ISREG(status.st_mode)) return FileKind::Regular;
    if (S_ISDIR(status.st_mode)) return FileKind::Directory;
    return S_ISLNK(status.st_mode) ? FileKind::Link : FileKind::Other;
}

FileStatus statusFrom(const struct stat& status) noexcept
{
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    return {kindOf(status),
            status.st_nlink,
            status.st_size,
            status.st_mtim.tv_sec * nanoseconds + status.st_mtim.tv_nsec,
            {status.st_dev, status.st_ino}};
}

constexpr mode_t permissionBits = 0777;
constexpr mode_t readWriteBits = 0666;

} // namespace

std::filesystem::path pathOf(const std::string& text)
{
    return text;
}

std::string textOf(const std::filesystem::path& path)
{
    return path.string();
}

void FileHandle::closeNative(Native native) noexcept
{
    ::close(static_cast<int>(native));
}

std::optional<FileStatus> statusOf(const std::string& path, std::error_code& failed) noexcept
{
    struct stat status {};
    failed = resultOf(::stat(path.c_str(), &status));
    return failed ? std::nullopt : std::optional{statusFrom(status)};
}

std::optional<FileStatus> entryOf(const std::string& path) noexcept
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? std::optional{statusFrom(status)} : std::nullopt;
}

std::optional<FileStatus> statusOf(const FileHandle& file, std::error_code& failed) noexcept
{
    struct stat status {};
    failed = resultOf(::fstat(descriptorOf(file), &status));
    return failed ? std::nullopt : std::optional{statusFrom(status)};
}

bool hasName(const FileHandle& file, const std::string& path) noexcept
{
    struct stat mine {};
    struct stat there {};
    return ::fstat(descriptorOf(file), &mine) == 0 && ::lstat(path.c_str(), &there) == 0 &&
           mine.st_ino == there.st_ino && mine.st_dev == there.st_dev;
}

std::string realPath(const std::string& path, std::error_code& failed)
{
    return std::filesystem::canonical(path, failed).string();
}

std::error_code checkAccess(const std::string& path, bool writing) noexcept
{
    return resultOf(::access(path.c_str(), writing ? R_OK | W_OK : R_OK));
}

std::error_code checkFolderAccess(const std::string& folder) noexcept
{
    return resultOf(::access(folder.c_str(), W_OK | X_OK));
}

FileHandle openFile(const std::string& path, std::error_code& failed) noexcept
{
    return opened(path, O_RDWR | O_NONBLOCK, 0, failed);
}

FileHandle openForReading(const std::string& path, std::error_code& failed) noexcept
{
    return opened(path, O_RDONLY, 0, failed);
}

FileHandle createFile(const std::string& path, std::error_code& failed) noexcept
{
    return opened(path, O_RDWR | O_CREAT | O_EXCL, readWriteBits, failed);
}

/// Whoever may write the model must be able to open the file, whatever account creates it. An account that may not give
/// the file away keeps it; the mode then decides who can open it.
FileHandle createFileLike(const std::string& path, const std::string& model, std::error_code& failed) noexcept
{
    struct stat status {};
    failed = resultOf(::stat(model.c_str(), &status));
    if (failed) return FileHandle{};
    FileHandle file = opened(path, O_RDWR | O_CREAT | O_EXCL, 0600, failed);
    if (!file.isOpen()) return file;
    if (::fchown(descriptorOf(file), status.st_uid, status.st_gid) != 0) {
        static_cast<void>(::fchown(descriptorOf(file), static_cast<uid_t>(-1), status.st_gid));
    }
    failed = resultOf(::fchmod(descriptorOf(file), status.st_mode & readWriteBits));
    return failed ? FileHandle{} : std::move(file);
}

FileHandle createPrivateFile(const std::string& path, std::error_code& failed) noexcept
{
    return opened(path, O_WRONLY | O_CREAT | O_TRUNC, 0600, failed);
}

std::string makePrivateFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "tamarok-copy-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) failSystem();
    return pattern;
}

std::error_code giveOwner(const FileHandle& file, const std::string& model) noexcept
{
    struct stat mine {};
    struct stat wanted {};
    if (::fstat(descriptorOf(file), &mine) != 0 || ::stat(model.c_str(), &wanted) != 0) return codeOf(errno);
    if (mine.st_uid == wanted.st_uid && mine.st_gid == wanted.st_gid) return {};
    return resultOf(::fchown(descriptorOf(file), wanted.st_uid, wanted.st_gid));
}

std::error_code givePermissions(const FileHandle& file, const std::string& model) noexcept
{
    struct stat wanted {};
    if (::stat(model.c_str(), &wanted) != 0) return codeOf(errno);
    return resultOf(::fchmod(descriptorOf(file), wanted.st_mode & permissionBits));
}

void followPermissions(const FileHandle& file, const std::string& model) noexcept
{
    struct stat wanted {};
    struct stat mine {};
    if (::stat(model.c_str(), &wanted) == 0 && ::fstat(descriptorOf(file), &mine) == 0 && mine.st_uid == ::geteuid() &&
        mine.st_size == 0 && mine.st_nlink == 1 &&
        (mine.st_mode & permissionBits) != (wanted.st_mode & readWriteBits)) {
        static_cast<void>(::fchmod(descriptorOf(file), wanted.st_mode & readWriteBits));
    }
}

std::size_t readBeginning(const FileHandle& file, std::span<char> bytes)
{
    const ssize_t count = ::pread(descriptorOf(file), bytes.data(), bytes.size(), 0);
    if (count < 0) failSystem();
    return static_cast<std::size_t>(count);
}

std::size_t readNext(const FileHandle& file, std::span<char> bytes)
{
    const ssize_t count = ::read(descriptorOf(file), bytes.data(), bytes.size());
    if (count < 0) failSystem();
    return static_cast<std::size_t>(count);
}

void writeNext(const FileHandle& file, std::span<const char> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptorOf(file), bytes.data(), bytes.size());
        if (written < 0) failSystem();
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
}

std::error_code syncFile(const FileHandle& file) noexcept
{
    return resultOf(::fsync(descriptorOf(file)));
}

void removeFile(const std::string& path) noexcept
{
    ::unlink(path.c_str());
}

std::error_code renameToNew(const std::string& from, const std::string& to) noexcept
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
    if (errno != EINVAL && errno != ENOSYS) return codeOf(errno);
    // A file system without that kind of renaming: a link does not replace a file either.
    if (::link(from.c_str(), to.c_str()) != 0) return codeOf(errno);
    ::unlink(from.c_str());
    return {};
}

std::error_code renameOver(const std::string& from, const std::string& to) noexcept
{
    return resultOf(::rename(from.c_str(), to.c_str()));
}

void syncFolder(const std::string& folder) noexcept
{
    const FileHandle entries{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (entries.isOpen()) {
        ::fsync(descriptorOf(entries));
    }
}

bool openFilesCanLoseNames() noexcept
{
    return true;
}

std::error_code systemErrorOf(int number) noexcept
{
    return codeOf(number);
}

bool tellsFullDisk(std::error_code code) noexcept
{
    return code.value() == ENOSPC || code.value() == EFBIG || code.value() == EDQUOT;
}

void fillRandom(std::span<unsigned char> bytes)
{
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) failSystem();
}

} // namespace tamarok::embedded
