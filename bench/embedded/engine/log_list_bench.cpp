// A log list of a million rows as the library composes it, streamed through the recordset against a
// plain loop of sqlite3_step over the same SQLite text that reads the same columns.

#include <array>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <sqlite3.h>
#include <string>
#include <unistd.h>

#include "functions.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_embedded/new_database.h"

#include "tamarok/comm_csel.h"
#include "tamarok/tmkvar.h"

namespace {

namespace ado = tamarok::ado;
namespace embedded = tamarok::embedded;

constexpr std::int64_t rows = 1'000'000;
/// List, date, species, assortment, strength class, length, diameter, pieces, volume.
constexpr std::array<std::int16_t, 9> columns{1, 2, 23, 26, 32, 33, 34, 35, 36};

double processorSeconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

std::string composedList(const tamarok::TmkVar& session)
{
    const tamarok::Comm_CSel clauses;
    std::string from;
    for (const std::int16_t id : columns)
        from = clauses.GetFrom("LOG", id, from, "R", session);
    std::string tabs;
    return "SELECT " + clauses.CorrectStrSelect("LOG", columns, tabs, "", "R", session, "", from, false) + " FROM " +
           from;
}

class ReferenceLogs {
public:
    ReferenceLogs()
    {
        embedded::NewDatabase building{path_};
        tamarok::database::ReferenceOptions options;
        options.logs = rows;
        tamarok::database::createReferenceDatabase(*building.connection(), options);
        building.complete();
        session.db_ADO = embedded::connect(path_);
        list = composedList(session);
    }
    ReferenceLogs(const ReferenceLogs&) = delete;
    ReferenceLogs& operator=(const ReferenceLogs&) = delete;
    ~ReferenceLogs()
    {
        session.db_ADO.reset();
        for (const char* const ending : {"", "-wal", "-shm", "-locks"}) {
            std::error_code ignored;
            std::filesystem::remove(path_.string() + ending, ignored);
        }
    }

    double recordsetSeconds() const
    {
        const double begin = processorSeconds();
        ado::Recordset recordset;
        recordset.Open(list, session.db_ADO);
        std::int64_t count = 0;
        for (; !recordset.AtEOF(); recordset.MoveNext(), ++count) {
            const ado::FieldCollection& fields = recordset.Fields();
            for (std::int32_t column = 0; column < static_cast<std::int32_t>(columns.size()); ++column)
                benchmark::DoNotOptimize(fields.Item(column).Value());
        }
        if (count != rows) std::abort();
        return processorSeconds() - begin;
    }

    double plainSeconds() const
    {
        sqlite3* handle = nullptr;
        sqlite3_stmt* statement = nullptr;
        sqlite3_open_v2(path_.c_str(), &handle, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
        sqlite3_exec(handle, "PRAGMA cache_size=-16384", nullptr, nullptr, nullptr);
        // The list's joins compare texts by the system's collation; the peer gets the same comparison.
        tamarok::embedded::FunctionContext context;
        tamarok::embedded::registerFunctions(handle, context);
        const std::string text = embedded::translate(*session.db_ADO, list);
        if (sqlite3_prepare_v2(handle, text.c_str(), -1, &statement, nullptr) != SQLITE_OK) std::abort();
        const double begin = processorSeconds();
        std::int64_t count = 0;
        for (; sqlite3_step(statement) == SQLITE_ROW; ++count) {
            for (const int column : {0, 1, 2, 3, 4}) {
                benchmark::DoNotOptimize(sqlite3_column_text(statement, column));
                benchmark::DoNotOptimize(sqlite3_column_bytes(statement, column));
            }
            for (const int column : {5, 6, 8})
                benchmark::DoNotOptimize(sqlite3_column_double(statement, column));
            benchmark::DoNotOptimize(sqlite3_column_int(statement, 7));
        }
        const double seconds = processorSeconds() - begin;
        if (count != rows) std::abort();
        sqlite3_finalize(statement);
        sqlite3_close(handle);
        return seconds;
    }

    tamarok::TmkVar session;
    std::string list;

private:
    std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("tamarok-list-" + std::to_string(::getpid()) + ".db");
};

void streamLogList(benchmark::State& state)
{
    const ReferenceLogs logs;
    double own = 0.0;
    double peer = 0.0;
    for ([[maybe_unused]] const auto _ : state) {
        peer += logs.plainSeconds();
        const double seconds = logs.recordsetSeconds();
        own += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["bare_loop_ratio"] = own / peer;
}
BENCHMARK(streamLogList)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
