#include "database.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <climits>
#include <span>
#include <thread>

#include "failures.h"
#include "file_checks.h"
#include "layout_update.h"
#include "tamarok_embedded/connect.h"

namespace tamarok::embedded {

namespace {

constexpr int instructionsPerLookAtTheClock = 1000;
constexpr std::int32_t openSeconds = 30;

Deadline& deadlineOf(void* context)
{
    return static_cast<Database*>(context)->deadline();
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

/// Opens without SQLite's mutexes, since a connection belongs to one thread. The header is checked before the first
/// statement, which might already write.
Database::Database(const std::string& path, OpenMode mode, tsql::DateOrder dateOrder) :
    path_{path}, readOnly_{mode == OpenMode::ReadOnly}, functions_{dateOrder}
{
    const std::string name = readOnly_ ? readOnlyName(path) : path;
    const int flags = (readOnly_ ? SQLITE_OPEN_READONLY | SQLITE_OPEN_URI : SQLITE_OPEN_READWRITE) |
                      SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_EXRESCODE;
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(name.c_str(), &opened, flags, nullptr);
    handle_.reset(opened);
    if (code != SQLITE_OK) {
        raise(code);
    }
    checkHeader(handle(), path_, readOnly_);
    configure();
    setUp(mode);
}

Database::Database(tsql::DateOrder dateOrder) : functions_{dateOrder}
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(":memory:", &opened,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX |
                                         SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_EXRESCODE,
                                     nullptr);
    handle_.reset(opened);
    if (code != SQLITE_OK) {
        raise(code);
    }
    configure();
    run("PRAGMA foreign_keys=ON");
}

Database::~Database() = default;

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
}

/// Settings that are statements. Errors name the file.
void Database::setUp(OpenMode mode)
{
    try {
        for (const std::string_view setting : settingsOf(mode)) {
            run(setting);
        }
        run("PRAGMA foreign_keys=ON");
        // Reads the schema, so that a damaged one is reported here.
        number("SELECT count(*) FROM sqlite_schema");
        checkLayout(number("PRAGMA application_id"), number("PRAGMA user_version"), path_);
        updateLayout(*this);
    } catch (Error& error) {
        error.addContext("Cannot open the database '" + path_ + "'");
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
            throw NestingFailure{failure(handle(), code, path_), static_cast<std::size_t>(tail - text.data())};
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
    throw failure(handle(), code, path_);
}

} // namespace tamarok::embedded
