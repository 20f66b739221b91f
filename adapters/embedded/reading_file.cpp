#include "reading_file.h"

#include <string_view>
#include <sys/stat.h>

#include "failures.h"
#include "tamarok_embedded/shown_text.h"

namespace tamarok::embedded {

namespace {

/// A file name as the URI of a file that is not created.
std::string fileUri(const std::string& path)
{
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string name = "file:";
    for (const char letter : path) {
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == '%' || letter == '?' || letter == '#' || byte < 0x20 || byte > 0x7E) {
            name.append({'%', digits[byte >> 4U], digits[byte & 15U]});
        } else {
            name.push_back(letter);
        }
    }
    return name;
}

std::string logOf(const DatabasePath& path)
{
    return path.real + "-wal";
}

} // namespace

bool hasLog(const DatabasePath& path)
{
    struct stat status {};
    return ::lstat(logOf(path).c_str(), &status) == 0 && status.st_size > 0;
}

bool hasLogAndIndex(const DatabasePath& path)
{
    struct stat status {};
    return ::lstat(logOf(path).c_str(), &status) == 0 && ::lstat((path.real + "-shm").c_str(), &status) == 0;
}

/// The state is noted before the file is opened, so that a change in between is seen later.
ReadingFile::ReadingFile(DatabasePath path, Way way) :
    path_{std::move(path)}, way_{way}, database_{stampOf(path_.real)}, log_{stampOf(logOf(path_))}
{
    if (way_ == Way::Copy) {
        copy_.emplace(path_);
    }
}

std::string ReadingFile::uri() const
{
    if (way_ == Way::Shared) {
        return fileUri(path_.real);
    }
    return fileUri(copy_ ? copy_->file() : path_.real) + "?immutable=1";
}

bool ReadingFile::isOutdated() const
{
    const Stamp now = stampOf(path_.real);
    if (way_ == Way::Shared) {
        return now.device != database_.device || now.number != database_.number;
    }
    return now != database_ || stampOf(logOf(path_)) != log_;
}

void ReadingFile::compareUnchanged() const
{
    if (stampOf(path_.real) != database_) {
        throw failure(native::readWriteFailed, "The database '" + shownText(path_.shown) +
                                                   "' was changed by another session while it was read.");
    }
}

ReadingFile::Stamp ReadingFile::stampOf(const std::string& file)
{
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 || status.st_size == 0) {
        return {};
    }
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

} // namespace tamarok::embedded
