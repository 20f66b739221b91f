// The log list with all its columns at once: 580 columns out of more tables than SQLite joins in one FROM clause, so
// that its first joins are nested in a derived table. Compared with the same columns in as few lists as need no
// nesting.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "functions.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_csel.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

namespace {

namespace ado = tamarok::ado;
namespace embedded = tamarok::embedded;

constexpr std::int64_t logs = 20'000;
constexpr std::int16_t lastColumn = 1041;
/// The expression of the first lacks an operand; the second is an aggregate, which a list of logs cannot have.
constexpr std::int16_t omitted[] = {980, 975};
constexpr std::size_t mostJoins = 63;

using Columns = std::vector<std::int16_t>;

std::size_t joinsIn(std::string_view from)
{
    std::size_t count = 0;
    for (std::size_t at = from.find(" JOIN "); at != from.npos; at = from.find(" JOIN ", at + 1))
        ++count;
    return count;
}

tamarok::Platform platform()
{
    tamarok::Platform result;
    result.makeLocService = tamarok::loc::makeLocService;
    return result;
}

/// The reference database, in a file that is removed at the end, and the texts of the lists.
class AllColumns {
public:
    AllColumns() : scope_{platform()}
    {
        embedded::NewDatabase building{path_};
        tamarok::database::ReferenceOptions options;
        options.logs = logs;
        tamarok::database::createReferenceDatabase(*building.connection(), options);
        building.complete();
        session_.db_ADO = embedded::connect(path_);
        session_.strLanguage = "GERMAN";
        for (std::int16_t id = 1; id <= lastColumn; ++id) {
            if (std::ranges::find(omitted, id) != std::end(omitted)) continue;
            if (!clauses_.GetColumn(id, "R", session_).empty()) ids_.push_back(id);
        }
    }
    AllColumns(const AllColumns&) = delete;
    AllColumns& operator=(const AllColumns&) = delete;
    ~AllColumns()
    {
        session_.db_ADO.reset();
        for (const char* const ending : {"", "-wal", "-shm", "-locks"}) {
            std::error_code ignored;
            std::filesystem::remove(path_.string() + ending, ignored);
        }
    }

    std::size_t columns() const { return ids_.size(); }
    const std::filesystem::path& path() const { return path_; }
    ado::Connection& connection() const { return *session_.db_ADO; }

    std::string list(const Columns& ids, std::string_view where = {}) const
    {
        const std::string from = fromOf(ids);
        std::string tabs;
        std::string text = "SELECT ";
        text += clauses_.CorrectStrSelect("LOG", ids, tabs, "", "R", session_, where, from, false);
        text += " FROM " + from;
        if (!where.empty()) text.append(" WHERE ").append(where);
        return text;
    }
    std::string list(std::string_view where = {}) const { return list(ids_, where); }

    /// The columns in their order, in lists whose FROM clauses need no nesting.
    std::vector<std::string> shortLists(std::string_view where = {}) const
    {
        std::vector<std::string> lists;
        Columns ids;
        for (const std::int16_t id : ids_) {
            Columns longer = ids;
            longer.push_back(id);
            if (joinsIn(fromOf(longer)) > mostJoins) {
                lists.push_back(list(ids, where));
                longer = {id};
            }
            ids = std::move(longer);
        }
        lists.push_back(list(ids, where));
        return lists;
    }

    std::int64_t read(const std::string& text) const
    {
        ado::Recordset rows;
        rows.Open(text, session_.db_ADO);
        const auto columns = static_cast<std::int32_t>(rows.Fields().Count());
        std::int64_t count = 0;
        for (; !rows.AtEOF(); rows.MoveNext(), ++count) {
            for (std::int32_t column = 0; column < columns; ++column)
                benchmark::DoNotOptimize(rows.Fields().Item(column).Value());
        }
        return count;
    }

private:
    std::string fromOf(const Columns& ids) const
    {
        std::string from;
        for (const std::int16_t id : ids)
            from = clauses_.GetFrom("LOG", id, from, "R", session_);
        return from;
    }

    tamarok::PlatformScope scope_;
    tamarok::Comm_CSel clauses_;
    tamarok::TmkVar session_;
    Columns ids_;
    std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("tamarok-columns-" + std::to_string(::getpid()) + ".db");
};

const AllColumns& allColumns()
{
    static const AllColumns columns;
    return columns;
}

void translateAllColumns(benchmark::State& state)
{
    const AllColumns& all = allColumns();
    const std::string text = all.list();
    std::size_t length = 0;
    for ([[maybe_unused]] const auto _ : state)
        length = embedded::translate(all.connection(), text).size();
    state.counters["columns"] = static_cast<double>(all.columns());
    state.counters["joins"] = static_cast<double>(joinsIn(text));
    state.counters["bytes"] = static_cast<double>(length);
}
BENCHMARK(translateAllColumns)->Unit(benchmark::kMillisecond);

/// SQLite's part of the preparation: its parser and planner.
void prepare(benchmark::State& state, const std::string& list)
{
    const AllColumns& all = allColumns();
    const std::string text = embedded::translate(all.connection(), list);
    sqlite3* handle = nullptr;
    sqlite3_open_v2(all.path().c_str(), &handle, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    embedded::FunctionContext context;
    embedded::registerFunctions(handle, context);
    for ([[maybe_unused]] const auto _ : state) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(handle, text.c_str(), -1, &statement, nullptr) != SQLITE_OK) std::abort();
        sqlite3_finalize(statement);
    }
    sqlite3_close(handle);
}

void prepareAllColumns(benchmark::State& state)
{
    prepare(state, allColumns().list());
}
BENCHMARK(prepareAllColumns)->Unit(benchmark::kMillisecond);

/// A FROM clause of as many joins as the benchmark's argument.
std::string joins(std::string_view kind, std::int64_t count)
{
    std::string text = "SELECT LOGS.ID_LOG FROM LOGS";
    for (std::int64_t i = 1; i <= count; ++i) {
        const std::string number = std::to_string(i);
        text.append(" ").append(kind).append(" JOIN LOGS_RECH R").append(number);
        text.append(" ON R").append(number).append(".ID_LOG = LOGS.ID_LOG");
    }
    return text;
}

void prepareLeftJoins(benchmark::State& state)
{
    prepare(state, joins("LEFT", state.range(0)));
}
BENCHMARK(prepareLeftJoins)->Arg(63)->Arg(64)->Arg(127)->Arg(255)->Unit(benchmark::kMillisecond);

void prepareInnerJoins(benchmark::State& state)
{
    prepare(state, joins("INNER", state.range(0)));
}
BENCHMARK(prepareInnerJoins)->Arg(63)->Arg(64)->Arg(127)->Arg(255)->Unit(benchmark::kMillisecond);

void readAllColumns(benchmark::State& state)
{
    const AllColumns& all = allColumns();
    const std::string text = all.list();
    for ([[maybe_unused]] const auto _ : state) {
        if (all.read(text) != logs) std::abort();
    }
}
BENCHMARK(readAllColumns)->Unit(benchmark::kMillisecond);

/// The same columns without nesting, in several lists.
void readShortLists(benchmark::State& state)
{
    const AllColumns& all = allColumns();
    const std::vector<std::string> lists = all.shortLists();
    for ([[maybe_unused]] const auto _ : state) {
        for (const std::string& list : lists) {
            if (all.read(list) != logs) std::abort();
        }
    }
    state.counters["lists"] = static_cast<double>(lists.size());
}
BENCHMARK(readShortLists)->Unit(benchmark::kMillisecond);

/// The condition is on the innermost table, and its index finds the row. The list's sums over all logs take the time.
constexpr std::string_view oneLog = "LOGS.ID_LOG = 10000";

void readOneLog(benchmark::State& state)
{
    const AllColumns& all = allColumns();
    const std::string text = all.list(oneLog);
    for ([[maybe_unused]] const auto _ : state) {
        if (all.read(text) != 1) std::abort();
    }
}
BENCHMARK(readOneLog)->Unit(benchmark::kMillisecond);

void readOneLogInShortLists(benchmark::State& state)
{
    const AllColumns& all = allColumns();
    const std::vector<std::string> lists = all.shortLists(oneLog);
    for ([[maybe_unused]] const auto _ : state) {
        for (const std::string& list : lists) {
            if (all.read(list) != 1) std::abort();
        }
    }
}
BENCHMARK(readOneLogInShortLists)->Unit(benchmark::kMillisecond);

} // namespace
