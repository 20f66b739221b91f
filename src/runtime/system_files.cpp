#include "system_files.h"

#include <cerrno>
#include <fcntl.h>

#include "file_copy.h"
#include "file_failures.h"
#include "posix_file.h"

// The file operations of a machine with the system calls of POSIX.

namespace tamarok {

namespace {

constexpr mode_t ordinaryMode = 0666; // the system takes off what the account's mask says

/// What a path may lead to.
enum class Kind { RegularFile, FileOrDevice };

/// Looks before opening: opening a pipe would already wake the process at its other end.
void requireKind(const std::string& path, const struct stat& status, Kind kind)
{
    if (S_ISREG(status.st_mode)) return;
    if (kind == Kind::FileOrDevice && S_ISCHR(status.st_mode)) return;
    throw pathFailure(path, S_ISDIR(status.st_mode) ? "is a folder" : "is not a regular file");
}

std::shared_ptr<PosixFile> openExisting(std::string_view name, int flags, Kind kind)
{
    std::string path = systemPath(name);
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) throw fileFailure(path, errno);
    requireKind(path, status, kind);
    Descriptor file = openDescriptor(path, flags);
    if (!file.isOpen()) throw fileFailure(path, errno);
    requireKind(path, statusOf(file, path), kind);
    return std::make_shared<PosixFile>(std::move(path), std::move(file));
}

class SystemFiles final : public FileSystem {
public:
    bool exists(std::string_view path) const override
    {
        struct stat status {};
        return ::stat(systemPath(path).c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
    }

    void create(std::string_view name) override
    {
        const std::string path = systemPath(name);
        if (openDescriptor(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, ordinaryMode).isOpen()) return;
        if (errno != EEXIST) throw fileFailure(path, errno);
        struct stat status {};
        if (::stat(path.c_str(), &status) != 0) throw pathFailure(path, "is a symbolic link that leads nowhere");
        requireKind(path, status, Kind::FileOrDevice);
    }

    std::shared_ptr<File> openInput(std::string_view path) override
    {
        return openExisting(path, O_RDONLY, Kind::RegularFile);
    }

    std::shared_ptr<File> openAppend(std::string_view path) override
    {
        auto file = openExisting(path, O_RDWR | O_APPEND, Kind::FileOrDevice);
        file->joinWriters();
        return file;
    }

    std::shared_ptr<File> createBeside(std::string_view path, std::string_view model) override
    {
        const std::string modelPath = systemPath(model);
        const struct stat status = statusOf(openWritable(modelPath), modelPath);
        std::string name = systemPath(path);
        bool isExact = false; // what the account cannot give, the new file lacks
        Descriptor file = createReplacement(name, status, isExact);
        return std::make_shared<PosixFile>(std::move(name), std::move(file));
    }

    void copyOver(std::string_view from, std::string_view to) override { copyFile(systemPath(from), systemPath(to)); }

    void remove(std::string_view path) noexcept override
    {
        try {
            ::unlink(systemPath(path).c_str());
        } catch (...) {
            return; // the name is none, or there is no memory: nothing can be removed
        }
    }
};

} // namespace

std::shared_ptr<FileSystem> makeSystemFiles()
{
    return std::make_shared<SystemFiles>();
}

} // namespace tamarok
