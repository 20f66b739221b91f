#include "row_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>

#include "failures.h"

namespace tamarok::odbc {

namespace {

[[noreturn]] void fail(const std::string& what)
{
    const std::string reason = std::generic_category().message(errno);
    throw Error{errors::deviceError, "The temporary file for rows cannot be " + what + ": " + reason + ".",
                std::string{sourceName}};
}

} // namespace

/// The name is unlinked at once: it exists only between the two calls, and is made exclusively for this user alone.
void RowFile::open()
{
    std::error_code problem;
    std::string name = (std::filesystem::temp_directory_path(problem) / "tamarok-rows-XXXXXX").string();
    native_ = ::mkostemp(name.data(), O_CLOEXEC);
    if (!isOpen()) fail("made");
    ::unlink(name.c_str());
}

void RowFile::close() noexcept
{
    if (isOpen()) ::close(static_cast<int>(native_));
    native_ = none;
}

std::size_t RowFile::readAt(std::size_t position, std::span<char> bytes) const
{
    const ssize_t got = ::pread(static_cast<int>(native_), bytes.data(), bytes.size(), static_cast<off_t>(position));
    if (got <= 0) fail("read");
    return static_cast<std::size_t>(got);
}

void RowFile::writeAt(std::size_t position, std::span<const char> bytes)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = ::pwrite(static_cast<int>(native_), bytes.data() + done, bytes.size() - done,
                                     static_cast<off_t>(position + done));
        if (put < 0 && errno != EINTR) fail("written");
        done += static_cast<std::size_t>(std::max<ssize_t>(put, 0));
    }
}

} // namespace tamarok::odbc
