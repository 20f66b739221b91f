#include "init/new_file.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <fcntl.h>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

namespace fs = std::filesystem;

using errors::fileExists;
using errors::pathAccess;
constexpr std::string_view mark = ".tmp-";

/// Name endings of a database and of the files that stand beside it while it is open.
constexpr std::array<std::string_view, 5> endings{"", "-wal", "-shm", "-locks", "-journal"};

void removeDatabase(const fs::path& file) noexcept
{
    for (const std::string_view ending : endings) {
        std::error_code ignored;
        fs::remove(fs::path{file}.concat(ending), ignored);
    }
}

bool isRunning(pid_t process)
{
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

/// The process id in a name like "target.tmp-123" or "target.tmp-123-wal", or 0 for any other name.
pid_t makerOf(const std::string& name, const std::string& target)
{
    const std::string prefix = target + std::string{mark};
    if (!name.starts_with(prefix)) return 0;
    pid_t process = 0;
    std::from_chars(name.data() + prefix.size(), name.data() + name.size(), process);
    return process;
}

fs::path folderOf(const fs::path& file)
{
    return file.has_parent_path() ? file.parent_path() : fs::path{"."};
}

/// Removes the temporary files of processes that have ended.
void removeLeftovers(const fs::path& target)
{
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator{folderOf(target), ignored}) {
        const pid_t process = makerOf(entry.path().filename().string(), target.filename().string());
        if (process > 0 && !isRunning(process)) fs::remove(entry.path(), ignored);
    }
}

/// Waits until the file is on the disk. It was filled without waiting for that, and must be safe before
/// it takes its name.
void forceToDisk(const fs::path& file)
{
    const int handle = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    const bool forced = handle >= 0 && ::fsync(handle) == 0;
    const int code = errno;
    if (handle >= 0) ::close(handle);
    if (!forced)
        throw Error{pathAccess, "cannot write '" + file.string() + "': " + std::system_category().message(code)};
}

} // namespace

NewFile::NewFile(fs::path target, bool replace) :
    target_{std::move(target)}, growing_{fs::path{target_}.concat(mark).concat(std::to_string(::getpid()))},
    replace_{replace}
{
    if (!target_.has_filename()) throw Error{pathAccess, "'" + target_.string() + "' names no file"};
    if (fs::is_directory(target_)) throw Error{pathAccess, "'" + target_.string() + "' is a directory"};
    refuseExisting();
    removeLeftovers(target_);
    removeDatabase(growing_);
}

NewFile::~NewFile()
{
    removeDatabase(growing_);
}

void NewFile::refuseExisting() const
{
    if (!replace_ && fs::exists(target_)) {
        throw Error{fileExists, "'" + target_.string() + "' exists already; --force replaces it"};
    }
}

void NewFile::complete()
{
    refuseExisting();
    forceToDisk(growing_);
    // SQLite would take files left beside the old database for parts of the new one.
    for (const std::string_view ending : endings) {
        std::error_code ignored;
        if (!ending.empty()) fs::remove(fs::path{target_}.concat(ending), ignored);
    }
    std::error_code failure;
    fs::rename(growing_, target_, failure);
    if (failure) throw Error{pathAccess, "cannot write '" + target_.string() + "': " + failure.message()};
}

} // namespace tamarok::cli
