#include "file_checks.h"

#include <array>
#include <memory>
#include <optional>
#include <sqlite3.h>
#include <string_view>
#include <system_error>

#include "draft_file.h"
#include "failures.h"
#include "system_files.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_embedded/shown_text.h"

namespace tamarok::embedded {

namespace {

// The header of a SQLite file: 100 bytes with a text at the beginning; numbers are big-endian.
constexpr std::string_view magic{"SQLite format 3\0", 16};
constexpr std::size_t headerSize = 100;
constexpr std::size_t readVersionOffset = 19;
constexpr unsigned char logVersion = 2; // of the read version: the file has a write-ahead log
constexpr std::size_t layoutOffset = 60;
constexpr std::size_t applicationOffset = 68;

using Header = std::array<unsigned char, headerSize>;

std::uint32_t bigEndian(const Header& header, std::size_t offset)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        number = number << 8U | header[offset + i];
    }
    return number;
}

/// Reads the header through SQLite's own file, before any statement: opening the file a second time and closing it
/// would drop SQLite's locks in this process. None if the file does not begin as a database.
std::optional<Header> readHeader(sqlite3* database)
{
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    Header header{};
    if (file == nullptr || file->pMethods == nullptr ||
        file->pMethods->xRead(file, header.data(), static_cast<int>(headerSize), 0) != SQLITE_OK ||
        !std::equal(magic.begin(), magic.end(), header.begin(),
                    [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; })) {
        return std::nullopt;
    }
    return header;
}

struct CloseDatabase {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
};

/// The status of a regular file with one name. SQLite's log follows the name, so that two names of one file would
/// have two logs, and would damage it.
void requireOneName(const DatabasePath& path, const FileStatus& status)
{
    if (status.kind == FileKind::Directory) {
        throw openFailure(path.shown, "it is a directory");
    }
    if (status.kind != FileKind::Regular) {
        throw openFailure(path.shown, "it is not a regular file");
    }
    if (status.names > 1) {
        throw openFailure(path.shown,
                          "the file has further names (hard links); its log and its row locks belong to one");
    }
}

bool isThere(const std::string& file)
{
    const std::optional<FileStatus> entry = entryOf(file);
    return entry && entry->size > 0;
}

} // namespace

/// Checks by hand what SQLite would report as "unable to open" alone, or not at all: it takes an empty file for a new
/// database. The folder must be writable for the log and the lock file.
void checkDatabaseFile(const DatabasePath& path, bool readOnly)
{
    std::error_code failed;
    const std::optional<FileStatus> status = statusOf(path.real, failed);
    if (!status) {
        const bool missing = failed == std::errc::no_such_file_or_directory;
        throw openFailure(path.shown, missing ? "the file does not exist" : failed.message());
    }
    requireOneName(path, *status);
    if (const std::error_code refused = checkAccess(path.real, !readOnly)) {
        throw openFailure(path.shown, refused.message());
    }
    if (status->size == 0) {
        throw openFailure(path.shown, "the file is empty");
    }
    if (readOnly) {
        return;
    }
    if (const std::error_code refused = checkFolderAccess(folderOf(path.real))) {
        throw openFailure(path.shown, "its folder cannot be written: " + refused.message());
    }
}

void checkReplaceable(const DatabasePath& path)
{
    std::error_code failed;
    if (const std::optional<FileStatus> status = statusOf(path.real, failed)) {
        requireOneName(path, *status);
    }
}

void checkNoLogBeside(const DatabasePath& path)
{
    for (const std::string_view ending : {"-wal", "-journal"}) {
        if (isThere(path.real + std::string{ending})) {
            throw createFailure(path.shown, "'" + shownText(path.real) + std::string{ending} +
                                                "' may hold changes of a lost database; move it away first");
        }
    }
}

/// True for a file that begins as every SQLite database does.
bool isDatabase(sqlite3* database)
{
    return readHeader(database).has_value();
}

bool checkHeader(sqlite3* database, const std::string& path, bool readOnly)
{
    const std::optional<Header> header = readHeader(database);
    if (!header) {
        throw openFailure(path, "the file is not a database");
    }
    checkLayout(bigEndian(*header, applicationOffset), bigEndian(*header, layoutOffset), path);
    if (!readOnly && sqlite3_db_readonly(database, "main") != 0) {
        throw openFailure(path, "it cannot be opened for writing");
    }
    return header->at(readVersionOffset) == logVersion;
}

/// A newer layout is refused, an older one is not: later versions read it.
void checkLayout(std::int64_t application, std::int64_t layout, const std::string& path)
{
    if (application != applicationId) {
        throw openFailure(path, "it is a database of another program");
    }
    if (layout > layoutVersion) {
        throw openFailure(path, "it has the newer layout " + std::to_string(layout) + "; this program knows layout " +
                                    std::to_string(layoutVersion));
    }
}

/// The database is written under another name in the same folder and renamed when it is complete, so that no process
/// opens a half-written file. A file that another process has created meanwhile is not replaced.
void createDatabaseFile(const DatabasePath& path)
{
    if (const std::optional<FileStatus> entry = entryOf(path.real)) {
        const bool isFolder = entry->kind == FileKind::Directory;
        throw createFailure(path.shown, isFolder ? "it is a directory" : "the file exists already");
    }
    checkNoLogBeside(path);
    DraftFile draft{path};
    writeEmptyDatabase(draft.path());
    draft.finish();
    if (const std::error_code failed = draft.publish(DraftFile::Existing::Refuse)) {
        throw createFailure(path.shown,
                            failed == std::errc::file_exists ? "the file exists already" : failed.message());
    }
}

/// Marks the file with the application id and the version of its layout. No journal is left beside it if the process
/// is killed.
void writeEmptyDatabase(const DatabasePath& path)
{
    sqlite3* opened = nullptr;
    int code = sqlite3_open_v2(path.real.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_EXRESCODE, nullptr);
    const std::unique_ptr<sqlite3, CloseDatabase> handle{opened};
    if (code == SQLITE_OK) {
        const std::string text = "PRAGMA journal_mode=MEMORY; PRAGMA application_id=" + std::to_string(applicationId) +
                                 "; PRAGMA user_version=" + std::to_string(layoutVersion);
        code = sqlite3_exec(opened, text.c_str(), nullptr, nullptr, nullptr);
    }
    if (code != SQLITE_OK) {
        throw failure(opened, code, path.shown).addContext("Cannot create the database");
    }
}

} // namespace tamarok::embedded
