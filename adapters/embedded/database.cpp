#include "database.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <climits>
#include <span>
#include <thread>
#include <utility>

#include "failures.h"
#include "file_checks.h"
#include "layout_update.h"
#include "system_files.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_embedded/shown_text.h"
#include "text_joins.h"

namespace tamarok::embedded {

namespace {

constexpr int instructionsPerLookAtTheClock = 1000;
constexpr std::int32_t openSeconds = 30;
constexpr int openAttempts = 10;

Deadline& deadlineOf(void* context)
{
    return static_cast<Database*>(context)->deadline();
}

/// True for a failure of the file or its folder, not of what the file holds.
bool isFileFailure(const Error& error)
{
    static constexpr std::array numbers{native::readWriteFailed, native::diskFull, native::readOnlyDatabase,
                                        native::cannotOpen};
    return std::ranges::find(numbers, error.nativeError) != numbers.end();
}

/// SQLite calls this for each SELECT and each column of a statement that it compiles, and for nothing else while it
/// compiles. Functions are left out: their refusal would be reported as another error.
int onCompile(void* context, int action, const char*, const char*, const char*, const char*)
{
    return action != SQLITE_FUNCTION && deadlineOf(context).expiredAtWork() ? SQLITE_DENY : SQLITE_OK;
}

/// SQLite calls this every thousand instructions; 1 interrupts the statement at its deadline.
int onProgress(void* context)
{
    return deadlineOf(context).expired() ? 1 : 0;
}

/// Waits for another session's write, a little longer each time.
int onBusy(void* context, int attempt)
{
    if (deadlineOf(context).expired()) {
        return 0;
    }
    static constexpr std::array milliseconds{1, 1, 2, 3, 5, 8, 12, 18, 25};
    const auto index = std::min(static_cast<std::size_t>(attempt), milliseconds.size() - 1);
    std::this_thread::sleep_for(std::chrono::milliseconds{milliseconds[index]});
    return 1;
}

/// A shared file has a write-ahead log, so that readers and one writer do not block each other. A file being built
/// has one writer, who throws it away after a failure: it needs neither log nor synchronisation.
std::span<const std::string_view> settingsOf(OpenMode mode)
{
    static constexpr std::array<std::string_view, 3> shared{
        "PRAGMA journal_mode=WAL", "PRAGMA journal_size_limit=67108864", "PRAGMA cache_size=-16384"};
    static constexpr std::array<std::string_view, 1> reading{"PRAGMA cache_size=-16384"};
    static constexpr std::array<std::string_view, 4> building{"PRAGMA journal_mode=MEMORY", "PRAGMA synchronous=OFF",
                                                              "PRAGMA locking_mode=EXCLUSIVE",
                                                              "PRAGMA cache_size=-262144"};
    switch (mode) {
    case OpenMode::ReadOnly: return reading;
    case OpenMode::Build: return building;
    default: return shared;
    }
}

} // namespace

Database::Database(DatabasePath path, OpenMode mode, tsql::DateOrder dateOrder) :
    path_{std::move(path)}, mode_{mode}, functions_{dateOrder}
{
    open();
}

Database::Database(tsql::DateOrder dateOrder) : mode_{OpenMode::Create}, functions_{dateOrder}
{
    openHandle(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    configure();
    run("PRAGMA foreign_keys=ON");
}

Database::~Database() = default;

std::string Database::sharedPath() const
{
    return mode_ == OpenMode::OpenExisting || mode_ == OpenMode::Create ? path_.real : std::string{};
}

bool Database::readOnly() const noexcept
{
    return mode_ == OpenMode::ReadOnly;
}

/// A file may be replaced between its opening and the first lock on it. It is then opened again.
void Database::open()
{
    isOpen_ = false;
    if (readOnly()) {
        return openForReading();
    }
    for (int attempt = 0; attempt < openAttempts; ++attempt) {
        if (tryOpenForWriting()) {
            isOpen_ = true;
            return;
        }
    }
    throw openFailure(path_.shown, "it is replaced again and again");
}

/// The header is checked before the first statement, which might already write. SQLite refuses to turn on the log of a
/// file that has lost its name. From then on the connection has a lock on the file that keeps it from being replaced.
bool Database::tryOpenForWriting()
{
    openHandle(path_.real, SQLITE_OPEN_READWRITE);
    checkHeader(handle(), path_.shown, false);
    configure();
    try {
        setUp();
    } catch (const Error&) {
        if (hasMoved()) {
            return false;
        }
        throw;
    }
    return !hasMoved();
}

void Database::openForReading()
{
    std::optional<ReadingFile::Way> way = ReadingFile::Way::Shared;
    for (int attempt = 0; attempt < openAttempts; ++attempt) {
        way = tryReading(*way);
        if (!way) {
            isOpen_ = true;
            return;
        }
    }
    throw openFailure(path_.shown, "it is being changed again and again");
}

/// Opens the file for reading in one way. @return the way to try next; none if the file is open
std::optional<ReadingFile::Way> Database::tryReading(ReadingFile::Way way)
{
    using Way = ReadingFile::Way;
    try {
        reading_.emplace(path_, way);
    } catch (const Error&) {
        if (way == Way::Copy && !hasLog(path_)) {
            return Way::Shared; // the last session has just closed
        }
        throw;
    }
    openHandle(reading_->uri(), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    if (way == Way::Unchanging) {
        keepUnchanged();
    }
    const bool needsLog = checkHeader(handle(), path_.shown, true) && way == Way::Shared;
    const Way withoutLocks = hasLog(path_) ? Way::Copy : Way::Unchanging;
    if (needsLog && !hasLogAndIndex(path_)) {
        return withoutLocks; // SQLite would create what is missing
    }
    configure();
    try {
        setUp();
    } catch (const Error& error) {
        if (reading_->isOutdated()) {
            return Way::Shared;
        }
        if (needsLog && isFileFailure(error)) {
            return withoutLocks;
        }
        throw;
    }
    std::unique_ptr<PrivateCopy> copy = reading_->takeCopy();
    if (copy && !openFilesCanLoseNames()) {
        copies_.push_back(std::move(copy));
    }
    return reading_->isOutdated() ? std::optional{Way::Shared} : std::nullopt;
}

/// SQLite takes no lock on a file that it believes to be unchanging. This lock, which ends with the handle, keeps a
/// closing session from writing its log into the file, and the file from being replaced.
void Database::keepUnchanged()
{
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    deadline_.arm(openSeconds);
    for (int attempt = 0; file->pMethods->xLock(file, SQLITE_LOCK_SHARED) == SQLITE_BUSY; ++attempt) {
        if (onBusy(this, attempt) == 0) {
            raise(SQLITE_BUSY);
        }
    }
}

/// Opens without SQLite's mutexes, since a connection belongs to one thread.
void Database::openHandle(const std::string& name, int flags)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(
        name.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_EXRESCODE, nullptr);
    handle_.reset(opened);
    if (code != SQLITE_OK) {
        raise(code);
    }
}

bool Database::hasMoved() const
{
    int moved = 0;
    sqlite3_file_control(handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

void Database::configure()
{
    // DQS: a name in double quotes is a name; SQLite would take an unknown one for a text.
    sqlite3_busy_handler(handle(), &onBusy, this);
    sqlite3_set_authorizer(handle(), &onCompile, this);
    sqlite3_progress_handler(handle(), instructionsPerLookAtTheClock, &onProgress, this);
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    registerFunctions(handle(), functions_);
    deadline_.arm(openSeconds);
    switchOffJoinFilters(handle());
    requireCompleteTextJoins(handle());
}

/// Settings that are statements. Errors name the file.
void Database::setUp()
{
    try {
        for (const std::string_view setting : settingsOf(mode_)) {
            run(setting);
        }
        run("PRAGMA foreign_keys=ON");
        // Reads the schema, so that a damaged one is reported here.
        number("SELECT count(*) FROM sqlite_schema");
        checkLayout(number("PRAGMA application_id"), number("PRAGMA user_version"), path_.shown);
        updateLayout(*this);
    } catch (Error& error) {
        error.addContext("Cannot open the database '" + shownText(path_.shown) + "'");
        throw;
    }
}

/// `keep` marks a long-lived statement (SQLITE_PREPARE_PERSISTENT), which SQLite then keeps out of its lookaside
/// memory.
Compiled Database::compile(std::string_view text, std::string_view* rest, bool keep) const
{
    if (text.size() > static_cast<std::size_t>(INT_MAX)) {
        raise(SQLITE_TOOBIG);
    }
    sqlite3_stmt* statement = nullptr;
    const char* tail = nullptr;
    const int code = sqlite3_prepare_v3(handle(), text.data(), static_cast<int>(text.size()),
                                        keep ? SQLITE_PREPARE_PERSISTENT : 0U, &statement, &tail);
    Compiled compiled{statement};
    if (code != SQLITE_OK) {
        if (isNestingFailure(handle()) && tail != nullptr) {
            throw NestingFailure{failure(handle(), code, path_.shown), static_cast<std::size_t>(tail - text.data())};
        }
        raise(code);
    }
    if (rest != nullptr) {
        *rest = text.substr(static_cast<std::size_t>(tail - text.data()));
    }
    return compiled;
}

/// Compiles and runs one statement after the other, since a later one may need what an earlier one creates.
void Database::run(std::string_view text) const
{
    const char* const begin = text.data();
    try {
        while (!text.empty()) {
            const Compiled statement = compile(text, &text);
            while (statement != nullptr && step(statement.get())) {}
        }
    } catch (NestingFailure& failure) {
        failure.position += static_cast<std::size_t>(text.data() - begin);
        throw;
    }
}

std::int64_t Database::number(std::string_view text) const
{
    const Compiled statement = compile(text);
    return step(statement.get()) ? sqlite3_column_int64(statement.get(), 0) : 0;
}

void Database::raise(int code) const
{
    throw failure(handle(), code, path_.shown);
}

} // namespace tamarok::embedded
