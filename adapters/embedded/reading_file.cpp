#include "reading_file.h"

#include <string_view>
#include <system_error>

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
    const std::optional<FileStatus> log = entryOf(logOf(path));
    return log && log->size > 0;
}

bool hasLogAndIndex(const DatabasePath& path)
{
    return entryOf(logOf(path)) && entryOf(path.real + "-shm");
}

/// The state is noted before the file is opened, so that a change in between is seen later.
ReadingFile::ReadingFile(DatabasePath path, Way way) :
    path_{std::move(path)}, way_{way}, database_{stampOf(path_.real)}, log_{stampOf(logOf(path_))}
{
    if (way_ == Way::Copy) {
        copy_ = std::make_unique<PrivateCopy>(path_);
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
        return now.identity != database_.identity;
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
    std::error_code failed;
    const std::optional<FileStatus> status = statusOf(file, failed);
    if (!status || status->size == 0) {
        return {};
    }
    return {status->identity, status->size, status->modified};
}

} // namespace tamarok::embedded
