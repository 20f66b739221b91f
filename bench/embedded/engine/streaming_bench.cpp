// Streaming a million rows through the cursor against a plain sqlite3_step loop over the same text, and
// what opening a statement costs that the connection knows already. Each figure stands beside its
// peer in the same run.

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <unistd.h>

#include "tamarok_embedded/connect.h"

#include "tamarok/ado_backend.h"

namespace {

namespace ado = tamarok::ado;
namespace embedded = tamarok::embedded;
/// Time that the processor spent in this thread: other programs of the machine do not count.
struct Clock {
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<Clock>;
    static constexpr bool is_steady = true;
    static time_point now() noexcept
    {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return time_point{std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec}};
    }
};

constexpr int rows = 1'000'000;
constexpr std::string_view list =
    "SELECT ID, SPECIES, LENGTH, VOLUME, GRADE, DELIVERED FROM LOGS WITH (NOLOCK) WHERE VOLUME >= 0";

/// A database of a million logs in the temporary folder, removed at the end.
class LogDatabase {
public:
    LogDatabase()
    {
        embedded::OpenOptions options;
        options.mode = embedded::OpenMode::Create;
        connection = embedded::connect(path, options);
        connection->Execute("CREATE TABLE LOGS (ID INT IDENTITY(1,1) PRIMARY KEY, SPECIES NVARCHAR(20), LENGTH FLOAT, "
                            "VOLUME FLOAT, GRADE INT, DELIVERED DATETIME)");
        connection->BeginTrans();
        for (int i = 0; i < rows; ++i) {
            connection->Execute("INSERT INTO LOGS (SPECIES,LENGTH,VOLUME,GRADE,DELIVERED) "
                                "VALUES ('Picea abies',4.1,0.537,3,'20240229 06:30:00')");
        }
        connection->CommitTrans();
    }
    LogDatabase(const LogDatabase&) = delete;
    LogDatabase& operator=(const LogDatabase&) = delete;
    ~LogDatabase()
    {
        connection.reset();
        for (const char* const suffix : {"", "-locks"}) {
            std::error_code ignored;
            std::filesystem::remove(path.string() + suffix, ignored);
        }
    }

    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("tamarok-bench-" + std::to_string(::getpid()) + ".db");
    ado::ConnectionRef connection;
};

LogDatabase& logs()
{
    static LogDatabase database;
    return database;
}

/// The same file and text through SQLite alone, with the same settings.
class PlainLoop {
public:
    PlainLoop()
    {
        sqlite3_open_v2(logs().path.c_str(), &handle_, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
        sqlite3_exec(handle_, "PRAGMA cache_size=-16384", nullptr, nullptr, nullptr);
        const std::string text = embedded::translate(*logs().connection, list);
        if (sqlite3_prepare_v2(handle_, text.c_str(), -1, &statement_, nullptr) != SQLITE_OK) {
            std::fprintf(stderr, "%s\n%s\n", sqlite3_errmsg(handle_), text.c_str());
            std::abort();
        }
    }
    PlainLoop(const PlainLoop&) = delete;
    PlainLoop& operator=(const PlainLoop&) = delete;
    ~PlainLoop()
    {
        sqlite3_finalize(statement_);
        sqlite3_close(handle_);
    }

    double seconds()
    {
        const auto begin = Clock::now();
        int count = 0;
        while (sqlite3_step(statement_) == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_int(statement_, 0));
            benchmark::DoNotOptimize(sqlite3_column_text(statement_, 1));
            benchmark::DoNotOptimize(sqlite3_column_bytes(statement_, 1));
            benchmark::DoNotOptimize(sqlite3_column_double(statement_, 2));
            benchmark::DoNotOptimize(sqlite3_column_double(statement_, 3));
            benchmark::DoNotOptimize(sqlite3_column_int(statement_, 4));
            benchmark::DoNotOptimize(sqlite3_column_text(statement_, 5));
            benchmark::DoNotOptimize(sqlite3_column_bytes(statement_, 5));
            ++count;
        }
        sqlite3_reset(statement_);
        if (count != rows) {
            std::abort();
        }
        return std::chrono::duration<double>(Clock::now() - begin).count();
    }

private:
    sqlite3* handle_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
};

ado::Statement statementOf(std::string_view text)
{
    ado::Statement statement;
    statement.text = text;
    return statement;
}

double streamSeconds()
{
    const auto begin = Clock::now();
    const auto cursor = logs().connection->session().open(statementOf(list));
    const std::size_t columns = cursor->columns().size();
    int count = 0;
    for (; cursor->next(); ++count) {
        for (std::size_t column = 0; column < columns; ++column) {
            benchmark::DoNotOptimize(cursor->value(column));
        }
    }
    if (count != rows) {
        std::abort();
    }
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

double recordsetSeconds()
{
    const auto begin = Clock::now();
    ado::Recordset recordset;
    recordset.Open(list, logs().connection);
    int count = 0;
    for (; !recordset.AtEOF(); recordset.MoveNext(), ++count) {
        const ado::FieldCollection& fields = recordset.Fields();
        for (std::int32_t column = 0; column < 6; ++column) {
            benchmark::DoNotOptimize(fields.Item(column).Value());
        }
    }
    if (count != rows) {
        std::abort();
    }
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

long memoryKilobytes()
{
    std::ifstream file{"/proc/self/statm"};
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

template <class Measured>
void compare(benchmark::State& state, const Measured& measured)
{
    PlainLoop plain;
    plain.seconds();
    double peer = 0.0;
    double own = 0.0;
    const long before = memoryKilobytes();
    for ([[maybe_unused]] const auto _ : state) {
        peer += plain.seconds();
        const double seconds = measured();
        own += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["bare_loop_ratio"] = own / peer;
    state.counters["memory_growth_kB"] = static_cast<double>(memoryKilobytes() - before);
}

void streamThroughCursor(benchmark::State& state)
{
    compare(state, streamSeconds);
}
BENCHMARK(streamThroughCursor)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void streamThroughRecordset(benchmark::State& state)
{
    compare(state, recordsetSeconds);
}
BENCHMARK(streamThroughRecordset)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

/// A cached statement of typical length, opened and closed, less the time that SQLite alone needs for it.
void openKnownStatement(benchmark::State& state)
{
    std::string text = "SELECT TOP 1 ID, SPECIES FROM LOGS WHERE ID = 500000";
    while (text.size() < 2000) {
        text += " AND ISNULL(GRADE,0) <> 99";
    }
    ado::Session& session = logs().connection->session();
    sqlite3* handle = nullptr;
    sqlite3_stmt* statement = nullptr;
    sqlite3_open_v2(logs().path.c_str(), &handle, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    const std::string translated = embedded::translate(*logs().connection, text);
    if (sqlite3_prepare_v2(handle, translated.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
        state.SkipWithError(sqlite3_errmsg(handle));
    }
    constexpr int repeats = 2000;
    double own = 0.0;
    double peer = 0.0;
    for ([[maybe_unused]] const auto _ : state) {
        auto begin = Clock::now();
        for (int i = 0; i < repeats; ++i) {
            sqlite3_step(statement);
            sqlite3_reset(statement);
        }
        const auto middle = Clock::now();
        for (int i = 0; i < repeats; ++i) {
            const auto cursor = session.open(statementOf(text));
            benchmark::DoNotOptimize(cursor->next());
        }
        const std::chrono::duration<double> seconds = Clock::now() - middle;
        peer += std::chrono::duration<double>(middle - begin).count();
        own += seconds.count();
        state.SetIterationTime(seconds.count());
    }
    const double opened = repeats * static_cast<double>(state.iterations());
    state.counters["own_work_ns"] = (own - peer) / opened * 1e9;
    state.counters["bare_step_ratio"] = own / peer;
    sqlite3_finalize(statement);
    sqlite3_close(handle);
}
BENCHMARK(openKnownStatement)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

/// Deleting a row that nobody has locked, against the same statement run by SQLite alone in the same file.
void changeUnlockedRow(benchmark::State& state)
{
    ado::Connection& connection = *logs().connection;
    constexpr std::string_view change = "UPDATE LOGS SET GRADE = 4 WHERE ID = 77";
    sqlite3* handle = nullptr;
    sqlite3_stmt* statement = nullptr;
    sqlite3_open_v2(logs().path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (sqlite3_prepare_v2(handle, "UPDATE LOGS SET GRADE = 4 WHERE ID = 77", -1, &statement, nullptr) != SQLITE_OK) {
        state.SkipWithError(sqlite3_errmsg(handle));
    }
    double own = 0.0;
    double peer = 0.0;
    for ([[maybe_unused]] const auto _ : state) {
        const auto begin = Clock::now();
        sqlite3_step(statement);
        sqlite3_reset(statement);
        const auto middle = Clock::now();
        connection.Execute(change);
        const std::chrono::duration<double> seconds = Clock::now() - middle;
        peer += std::chrono::duration<double>(middle - begin).count();
        own += seconds.count();
        state.SetIterationTime(seconds.count());
    }
    state.counters["bare_statement_ratio"] = own / peer;
    sqlite3_finalize(statement);
    sqlite3_close(handle);
}
BENCHMARK(changeUnlockedRow)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(300);

} // namespace
