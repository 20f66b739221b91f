#include "database_path.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>

#include "failures.h"

namespace tamarok::embedded {

namespace {

namespace fs = std::filesystem;

bool isLink(const std::string& path)
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

} // namespace

/// Where the file is missing, its folder is resolved alone; without a folder the path stays, and the checks of the file
/// report it.
DatabasePath resolvePath(const std::string& file)
{
    if (file.find('\0') != std::string::npos) {
        throw openFailure(file, "the path contains a NUL character");
    }
    if (file.empty()) {
        throw openFailure("", "the path is empty");
    }
    std::error_code failed;
    const fs::path absolute = fs::absolute(file, failed);
    if (failed) {
        throw openFailure(file, "the current folder cannot be found: " + failed.message());
    }
    DatabasePath path{absolute.string(), absolute.string()};
    const fs::path whole = fs::canonical(absolute, failed);
    if (!failed) {
        path.real = whole.string();
        return path;
    }
    if (isLink(path.shown)) {
        throw openFailure(path.shown, "the symbolic link leads to no file: " + failed.message());
    }
    const fs::path folder = fs::canonical(absolute.parent_path(), failed);
    if (!failed && absolute.has_filename()) {
        path.real = (folder / absolute.filename()).string();
    }
    return path;
}

std::string folderOf(const std::string& path)
{
    return fs::path{path}.parent_path().string();
}

} // namespace tamarok::embedded
