#include "private_copy.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <span>
#include <sqlite3.h>
#include <system_error>
#include <vector>

#include "failures.h"
#include "path_text.h"
#include "system_files.h"
#include "tamarok_embedded/shown_text.h"

namespace tamarok::embedded {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t blockSize = std::size_t{1} << 20U;

/// The header of a log; its salts differ from one generation of the log to the next.
using LogHeader = std::array<char, 32>;

struct CloseDatabase {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
};
using Handle = std::unique_ptr<sqlite3, CloseDatabase>;

[[noreturn]] void failReading()
{
    throw std::system_error{std::make_error_code(std::errc::io_error)};
}

/// The opened file, or the system's error.
FileHandle require(FileHandle file, std::error_code failed)
{
    if (!file.isOpen()) {
        throw std::system_error{failed};
    }
    return file;
}

Handle openHandle(const std::string& file, int flags)
{
    sqlite3* opened = nullptr;
    const int code =
        sqlite3_open_v2(file.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE, nullptr);
    Handle handle{opened};
    if (code != SQLITE_OK) {
        failReading();
    }
    return handle;
}

FileHandle create(const std::string& file)
{
    std::error_code failed;
    FileHandle handle = createPrivateFile(file, failed);
    return require(std::move(handle), failed);
}

/// Reads the database through SQLite's file: closing another descriptor of it would drop the locks of all connections
/// of this process.
void copyDatabase(const std::string& source, const std::string& target)
{
    const Handle handle = openHandle(source, SQLITE_OPEN_READONLY);
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    sqlite3_file_control(handle.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (file == nullptr || file->pMethods == nullptr || file->pMethods->xFileSize(file, &size) != SQLITE_OK) {
        failReading();
    }
    const FileHandle copy = create(target);
    std::vector<char> block(blockSize);
    for (sqlite3_int64 at = 0; at < size; at += static_cast<sqlite3_int64>(blockSize)) {
        const auto length = static_cast<std::size_t>(std::min<sqlite3_int64>(size - at, blockSize));
        if (file->pMethods->xRead(file, block.data(), static_cast<int>(length), at) != SQLITE_OK) {
            failReading();
        }
        writeNext(copy, std::span{block}.first(length));
    }
}

/// Nobody locks the log itself, so that it can be opened and closed freely.
FileHandle openLog(const std::string& log)
{
    std::error_code failed;
    FileHandle handle = openForReading(log, failed);
    return require(std::move(handle), failed);
}

LogHeader headerOf(const std::string& log)
{
    LogHeader header{};
    const FileHandle file = openLog(log);
    readBeginning(file, header);
    return header;
}

void copyLog(const std::string& source, const std::string& target)
{
    const FileHandle log = openLog(source);
    const FileHandle copy = create(target);
    std::vector<char> block(blockSize);
    while (const std::size_t count = readNext(log, block)) {
        writeNext(copy, std::span{block}.first(count));
    }
}

} // namespace

PrivateCopy::PrivateCopy(const DatabasePath& source) : source_{source}
{
    try {
        folder_ = makePrivateFolder();
        file_ = folder_ + "/database";
        constexpr int attempts = 10;
        for (int attempt = 0; !copyBoth(); ++attempt) {
            if (attempt == attempts) {
                fail("it is being written all the time");
            }
        }
        foldLog();
    } catch (const std::system_error& failed) {
        remove();
        fail(failed.code().message());
    } catch (...) {
        remove();
        throw;
    }
}

PrivateCopy::~PrivateCopy()
{
    remove();
}

void PrivateCopy::remove() const noexcept
{
    std::error_code ignored;
    if (!folder_.empty()) {
        fs::remove_all(pathOf(folder_), ignored);
    }
}

/// Within one generation of the log, whatever another process writes into the database meanwhile also is in the log,
/// which is copied after it. False if a new generation has begun.
bool PrivateCopy::copyBoth() const
{
    const std::string log = source_.real + "-wal";
    const LogHeader before = headerOf(log);
    copyDatabase(source_.real, file_);
    copyLog(log, file_ + "-wal");
    return headerOf(file_ + "-wal") == before && headerOf(log) == before;
}

void PrivateCopy::foldLog() const
{
    const Handle handle = openHandle(file_, SQLITE_OPEN_READWRITE);
    const int code = sqlite3_exec(handle.get(), "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        throw failure(handle.get(), sqlite3_extended_errcode(handle.get()), source_.shown);
    }
}

void PrivateCopy::fail(const std::string& reason) const
{
    throw openFailure(source_.shown,
                      "its log '" + shownText(source_.shown) +
                          "-wal' cannot be used where it lies, and no private copy can be made: " + reason);
}

} // namespace tamarok::embedded
