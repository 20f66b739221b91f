#include "database_path.h"

#include <filesystem>
#include <system_error>

#include "failures.h"
#include "path_text.h"
#include "system_files.h"

namespace tamarok::embedded {

namespace {

namespace fs = std::filesystem;

bool isLink(const std::string& path)
{
    const std::optional<FileStatus> entry = entryOf(path);
    return entry && entry->kind == FileKind::Link;
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
    const fs::path absolute = fs::absolute(pathOf(file), failed);
    if (failed) {
        throw openFailure(file, "the current folder cannot be found: " + failed.message());
    }
    DatabasePath path{textOf(absolute), textOf(absolute)};
    const std::string whole = realPath(path.shown, failed);
    if (!failed) {
        path.real = whole;
        return path;
    }
    if (isLink(path.shown)) {
        throw openFailure(path.shown, "the symbolic link leads to no file: " + failed.message());
    }
    const std::string folder = realPath(textOf(absolute.parent_path()), failed);
    if (!failed && absolute.has_filename()) {
        path.real = textOf(pathOf(folder) / absolute.filename());
    }
    return path;
}

std::string folderOf(const std::string& path)
{
    return textOf(pathOf(path).parent_path());
}

} // namespace tamarok::embedded
