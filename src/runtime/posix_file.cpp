#include "posix_file.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

#include "file_failures.h"

// Open files of the machine. Files that are written are opened for appending, so that the lines of processes that
// write at the same time follow each other.

namespace tamarok {

Descriptor openDescriptor(const std::string& path, int flags, mode_t mode)
{
    // Without O_NONBLOCK the opening of a pipe would wait for its other end.
    return Descriptor{::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode)};
}

struct stat statusOf(const Descriptor& file, std::string_view path)
{
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) throw fileFailure(path, errno);
    return status;
}

std::string systemPath(std::string_view path)
{
    std::string name{path};
    if (name.empty()) throw pathFailure(name, "a file name is needed");
    if (const auto end = name.find('\0'); end != std::string::npos) {
        throw pathFailure(name.substr(0, end), "the file name goes on with a NUL byte");
    }
    std::ranges::replace(name, '\\', '/');
    return name;
}

void syncDescriptor(const Descriptor& file, std::string_view path)
{
    if (::fsync(file.get()) != 0 && errno != EINVAL && errno != EROFS) throw fileFailure(path, errno);
}

PosixFile::PosixFile(std::string path, Descriptor file) :
    path_{std::move(path)}, file_{std::move(file)}, isRegular_{S_ISREG(statusOf(file_, path_).st_mode)}
{}

std::uint64_t PosixFile::size() const
{
    return isRegular_ ? static_cast<std::uint64_t>(statusOf(file_, path_).st_size) : 0;
}

std::size_t PosixFile::readAt(std::uint64_t position, std::span<char> buffer) const
{
    if (!isRegular_) return 0; // some devices give bytes without end
    std::size_t count = 0;
    while (count < buffer.size()) {
        const ssize_t got =
            ::pread(file_.get(), buffer.data() + count, buffer.size() - count, static_cast<off_t>(position + count));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) throw fileFailure(path_, errno);
        if (got == 0) break;
        count += static_cast<std::size_t>(got);
    }
    return count;
}

void PosixFile::write(std::string_view bytes)
{
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(file_.get(), bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            const int code = errno;
            takeBack(written);
            throw fileFailure(path_, code);
        }
        written += static_cast<std::size_t>(count);
    }
}

// Files that are open for appending hold a shared lock. Who asks to be the only writer holds the file alone from then
// on, for the time of one write. A file system without locks counts as one without other writers.

/// Waits for one that holds the file alone, but not for long: a process that stands still must not hold up others.
void PosixFile::joinWriters() noexcept
{
    constexpr int attempts = 200;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (::flock(file_.get(), LOCK_SH | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
}

bool PosixFile::isOnlyWriter()
{
    if (::flock(file_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return true;
    joinWriters(); // a failed change of a lock may lose it
    return false;
}

/// Cuts off the bytes that an interrupted write has added, unless another process has added more behind them.
void PosixFile::takeBack(std::size_t written) const noexcept
{
    const off_t end = ::lseek(file_.get(), 0, SEEK_CUR);
    struct stat status {};
    if (written == 0 || end < 0 || ::fstat(file_.get(), &status) != 0 || status.st_size != end) return;
    // The error of the write is the one that is reported.
    [[maybe_unused]] const int ignored = ::ftruncate(file_.get(), end - static_cast<off_t>(written));
}

} // namespace tamarok
