#include "draft_file.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

#include "failures.h"
#include "file_locks.h"
#include "path_text.h"
#include "system_files.h"
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
    fillRandom(bytes);
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
    std::error_code failed;
    FileHandle file = openFile(draft, failed);
    if (!file.isOpen()) {
        return;
    }
    const std::optional<FileStatus> status = statusOf(file, failed);
    if (!status || status->kind != FileKind::Regular || !tryLockRange(file, everyByte) || !hasName(file, draft)) {
        return;
    }
    if (!openFilesCanLoseNames()) {
        file.close();
    }
    removeFile(draft);
}

/// The folder is looked through in a way that reports no failure: what cannot be seen is left alone.
void removeAbandoned(const std::string& target)
{
    const std::string name = textOf(pathOf(target).filename());
    std::error_code failed;
    for (fs::directory_iterator entry{pathOf(folderOf(target)), failed}; !failed && entry != fs::directory_iterator{};
         entry.increment(failed)) {
        if (isDraftName(textOf(entry->path().filename()), name)) {
            removeIfAbandoned(textOf(entry->path()));
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
        fail(failed.code());
    }
}

DraftFile::~DraftFile()
{
    if (!published_) {
        file_.close();
        removeFile(name_);
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
    fail(std::make_error_code(std::errc::file_exists));
}

/// False if the name is taken, or another process has taken the file for abandoned before it was locked.
bool DraftFile::tryName()
{
    name_ = randomName(target_.real);
    std::error_code failed;
    file_ = createFile(name_, failed);
    if (!file_.isOpen()) {
        if (failed == std::errc::file_exists) {
            return false;
        }
        fail(failed);
    }
    return tryLockRange(file_, writerByte) && hasName(file_, name_);
}

/// The system clears bits of the mode when the owner changes, so that the owner comes first.
void DraftFile::takeOwnerAndPermissions() const
{
    if (const std::error_code failed = giveOwner(file_, target_.real)) {
        throw createFailure(target_.shown, "its owner and group cannot be given to the new file: " + failed.message());
    }
    if (const std::error_code failed = givePermissions(file_, target_.real)) {
        fail(failed);
    }
}

void DraftFile::finish()
{
    if (const std::error_code failed = syncFile(file_)) {
        fail(failed);
    }
    file_.close();
}

/// The folder's entry is forced to the disk as well; the renaming itself stands if that fails.
std::error_code DraftFile::publish(Existing existing)
{
    const std::error_code failed =
        existing == Existing::Replace ? renameOver(name_, target_.real) : renameToNew(name_, target_.real);
    if (!failed) {
        published_ = true;
        syncFolder(folderOf(target_.real));
    }
    return failed;
}

void DraftFile::fail(std::error_code code) const
{
    const bool folderClosed = code == std::errc::permission_denied || code == std::errc::read_only_file_system ||
                              code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory;
    throw createFailure(target_.shown, folderClosed ? "its folder '" + shownText(folderOf(target_.real)) +
                                                          "' cannot be written: " + code.message()
                                                    : code.message());
}

} // namespace tamarok::embedded
