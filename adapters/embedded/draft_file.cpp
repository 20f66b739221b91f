#include "draft_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/random.h>
#include <system_error>
#include <unistd.h>

#include "failures.h"
#include "file_locks.h"
#include "tamarok_embedded/shown_text.h"

namespace tamarok::embedded {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view mark = ".draft-";
constexpr std::size_t randomDigits = 16;
constexpr std::string_view digits = "0123456789abcdef";

// The byte of a draft that its writer locks: beyond every page and the bytes that SQLite locks.
constexpr ByteRange writerByte{std::int64_t{1} << 62U, std::int64_t{1} << 62U};

std::string randomName(const std::string& target)
{
    std::array<unsigned char, randomDigits / 2> bytes{};
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        throw std::system_error{errno, std::system_category(), "getrandom"};
    }
    std::string name = target + std::string{mark};
    for (const unsigned char byte : bytes) {
        name += digits[byte >> 4U];
        name += digits[byte & 15U];
    }
    return name;
}

/// True for the mark with its digits after the name of the target, and nothing else.
bool isDraftName(std::string_view name, std::string_view target)
{
    if (!name.starts_with(target) || name.size() != target.size() + mark.size() + randomDigits) {
        return false;
    }
    name.remove_prefix(target.size());
    return name.starts_with(mark) && std::ranges::all_of(name.substr(mark.size()), [](char letter) {
               return digits.find(letter) != std::string_view::npos;
           });
}

/// Removes a draft if nobody holds a lock on it, of whatever kind and place: its writer's or SQLite's.
void removeIfAbandoned(const std::string& draft)
{
    const FileHandle file{::open(draft.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK)};
    struct stat status {};
    if (file.isOpen() && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
        tryLockRange(file.get(), everyByte) && hasName(file.get(), draft)) {
        ::unlink(draft.c_str());
    }
}

/// The folder is looked through in a way that reports no failure: what cannot be seen is left alone.
void removeAbandoned(const std::string& target)
{
    const std::string name = fs::path{target}.filename().string();
    std::error_code failed;
    for (fs::directory_iterator entry{folderOf(target), failed}; !failed && entry != fs::directory_iterator{};
         entry.increment(failed)) {
        if (isDraftName(entry->path().filename().string(), name)) {
            removeIfAbandoned(entry->path().string());
        }
    }
}

} // namespace

DraftFile::DraftFile(DatabasePath target) : target_{std::move(target)}
{
    try {
        removeAbandoned(target_.real);
        create();
    } catch (const std::system_error& failed) {
        fail(failed.code().value());
    }
}

DraftFile::~DraftFile()
{
    if (!published_) {
        ::unlink(name_.c_str());
    }
}

void DraftFile::create()
{
    constexpr int attempts = 10;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (tryName()) {
            return;
        }
    }
    fail(EEXIST);
}

/// False if the name is taken, or another process has taken the file for abandoned before it was locked.
bool DraftFile::tryName()
{
    name_ = randomName(target_.real);
    file_ = FileHandle{::open(name_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666)};
    if (!file_.isOpen()) {
        if (errno == EEXIST) {
            return false;
        }
        fail(errno);
    }
    return tryLockRange(file_.get(), writerByte) && hasName(file_.get(), name_);
}

void DraftFile::takeOwnerAndMode(const struct stat& file) const
{
    struct stat mine {};
    if (::fstat(file_.get(), &mine) != 0) {
        fail(errno);
    }
    // The system clears bits of the mode when the owner changes, so that the owner comes first.
    const bool sameOwner = mine.st_uid == file.st_uid && mine.st_gid == file.st_gid;
    if (!sameOwner && ::fchown(file_.get(), file.st_uid, file.st_gid) != 0) {
        throw createFailure(target_.shown, "its owner and group cannot be given to the new file: " +
                                               std::system_category().message(errno));
    }
    if (::fchmod(file_.get(), file.st_mode & 0777U) != 0) {
        fail(errno);
    }
}

void DraftFile::finish()
{
    if (::fsync(file_.get()) != 0) {
        fail(errno);
    }
    file_.close();
}

/// The folder's entry is forced to the disk as well; the renaming itself stands if that fails.
int DraftFile::publish(Existing existing)
{
    int failed = 0;
    if (existing == Existing::Replace) {
        failed = ::rename(name_.c_str(), target_.real.c_str());
    } else {
        failed = ::renameat2(AT_FDCWD, name_.c_str(), AT_FDCWD, target_.real.c_str(), RENAME_NOREPLACE);
        if (failed != 0 && (errno == EINVAL || errno == ENOSYS)) {
            // A file system without that kind of renaming: a link does not replace a file either.
            failed = ::link(name_.c_str(), target_.real.c_str());
            if (failed == 0) {
                ::unlink(name_.c_str());
            }
        }
    }
    if (failed != 0) {
        return errno;
    }
    published_ = true;
    const FileHandle folder{::open(folderOf(target_.real).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (folder.isOpen()) {
        ::fsync(folder.get());
    }
    return 0;
}

void DraftFile::fail(int code) const
{
    const std::string reason = std::system_category().message(code);
    const bool folderClosed = code == EACCES || code == EROFS || code == ENOENT || code == ENOTDIR;
    throw createFailure(target_.shown, folderClosed ? "its folder '" + shownText(folderOf(target_.real)) +
                                                          "' cannot be written: " + reason
                                                    : reason);
}

} // namespace tamarok::embedded
