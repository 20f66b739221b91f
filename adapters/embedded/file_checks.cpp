#include "file_checks.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "failures.h"
#include "tamarok_embedded/connect.h"

namespace tamarok::embedded {

namespace {

// The header of a SQLite file: 100 bytes with a text at the beginning; numbers are big-endian.
constexpr std::string_view magic{"SQLite format 3\0", 16};
constexpr std::size_t headerSize = 100;
constexpr std::size_t layoutOffset = 60;
constexpr std::size_t applicationOffset = 68;

std::string reasonOf(int code)
{
    return std::system_category().message(code);
}

std::string folderOf(const std::string& path)
{
    return std::filesystem::path{path}.parent_path().string();
}

std::uint32_t bigEndian(const std::array<unsigned char, headerSize>& header, std::size_t offset)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        number = number << 8U | header[offset + i];
    }
    return number;
}

/// Removes a file unless it was kept.
class Draft {
public:
    explicit Draft(std::string path) : path_{std::move(path)} {}
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft() { ::unlink(path_.c_str()); }
    const std::string& path() const noexcept { return path_; }

private:
    std::string path_;
};

struct CloseDatabase {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
};

/// Marks the file with the application id and the version of its layout. Turning on the write-ahead log makes SQLite
/// write the header, so that the file is not empty.
void writeEmptyDatabase(const std::string& draft, const std::string& path)
{
    sqlite3* opened = nullptr;
    int code = sqlite3_open_v2(draft.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    const std::unique_ptr<sqlite3, CloseDatabase> handle{opened};
    if (code == SQLITE_OK) {
        const std::string text = "PRAGMA application_id=" + std::to_string(applicationId) +
                                 "; PRAGMA user_version=" + std::to_string(layoutVersion) + "; PRAGMA journal_mode=WAL";
        code = sqlite3_exec(opened, text.c_str(), nullptr, nullptr, nullptr);
    }
    if (code != SQLITE_OK) {
        throw failure(opened, sqlite3_extended_errcode(opened), path).addContext("Cannot create the database");
    }
}

} // namespace

/// Checks by hand what SQLite would report as "unable to open" alone, or not at all: it takes an empty file for a new
/// database. The folder must be writable for the log and the lock file.
void checkDatabaseFile(const std::string& path, bool readOnly)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        throw openFailure(path, errno == ENOENT ? "the file does not exist" : reasonOf(errno));
    }
    if (S_ISDIR(status.st_mode)) {
        throw openFailure(path, "it is a directory");
    }
    if (!S_ISREG(status.st_mode)) {
        throw openFailure(path, "it is not a regular file");
    }
    if (::access(path.c_str(), readOnly ? R_OK : R_OK | W_OK) != 0) {
        throw openFailure(path, reasonOf(errno));
    }
    if (status.st_size == 0) {
        throw openFailure(path, "the file is empty");
    }
    if (!readOnly && ::access(folderOf(path).c_str(), W_OK | X_OK) != 0) {
        throw openFailure(path, "its folder cannot be written: " + reasonOf(errno));
    }
}

/// Reads the header through SQLite's own file, before any statement: opening the file a second time and closing it
/// would drop SQLite's locks in this process.
void checkHeader(sqlite3* database, const std::string& path, bool readOnly)
{
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    std::array<unsigned char, headerSize> header{};
    if (file == nullptr || file->pMethods == nullptr ||
        file->pMethods->xRead(file, header.data(), static_cast<int>(headerSize), 0) != SQLITE_OK ||
        !std::equal(magic.begin(), magic.end(), header.begin(),
                    [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; })) {
        throw openFailure(path, "the file is not a database");
    }
    checkLayout(bigEndian(header, applicationOffset), bigEndian(header, layoutOffset), path);
    if (!readOnly && sqlite3_db_readonly(database, "main") != 0) {
        throw openFailure(path, "it cannot be opened for writing");
    }
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

/// The database is written under another name in the same folder and linked to its own when it is complete, so that no
/// process opens a half-written file.
void createDatabaseFile(const std::string& path)
{
    struct stat status {};
    if (::lstat(path.c_str(), &status) == 0) {
        throw openFailure(path, S_ISDIR(status.st_mode) ? "it is a directory" : "the file exists already");
    }
    const std::string folder = folderOf(path);
    if (::access(folder.c_str(), W_OK | X_OK) != 0) {
        throw openFailure(path, "its folder '" + folder + "' cannot be written: " + reasonOf(errno));
    }
    const Draft draft{path + ".new-" + std::to_string(::getpid())};
    writeEmptyDatabase(draft.path(), path);
    // A link, unlike a renaming, never replaces a file that another process has created meanwhile.
    if (::link(draft.path().c_str(), path.c_str()) != 0) {
        throw openFailure(path, errno == EEXIST ? "the file exists already" : reasonOf(errno));
    }
}

/// A file name as URI. A file in a folder that cannot be written gets no shared-memory file for its log, so that SQLite
/// is told that it does not change.
std::string readOnlyName(const std::string& path)
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
    if (::access(folderOf(path).c_str(), W_OK) != 0 && ::access((path + "-shm").c_str(), F_OK) != 0) {
        name += "?immutable=1";
    }
    return name;
}

} // namespace tamarok::embedded
