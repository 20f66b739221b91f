// Two operations of the rights, each beside its lower limit: whether a node is visible (the hidden keys are cached)
// beside the bare comparisons of the keys; a lock taken and released without conflict beside the same statements
// sent through the connection, and beside the same statements prepared in SQLite.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "tamarok_database/schema.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/comm_lock.h"
#include "tamarok/tmkvar.h"

namespace {

using namespace tamarok;

std::vector<std::string> hiddenKeys()
{
    std::vector<std::string> keys;
    for (int i = 0; i < 120; ++i)
        keys.push_back(std::string{"FI_HIDDENKEY-"}.append(std::to_string(i)));
    return keys;
}

void nodeVisibleCheck(benchmark::State& state)
{
    TmkVar session;
    session.ID_User = 1;
    std::vector<std::string> hidden = hiddenKeys();
    for (auto _ : state)
        benchmark::DoNotOptimize(Comm_Lock{}.NodeVisibleCheck(session, hidden, "PLAN_VORBEREITUNG_BB"));
}
BENCHMARK(nodeVisibleCheck)->Unit(benchmark::kNanosecond);

void bareComparisons(benchmark::State& state)
{
    const std::vector<std::string> hidden = hiddenKeys();
    std::string key = "PL_VORBEREITUNG";
    for (auto _ : state) {
        benchmark::DoNotOptimize(key);
        benchmark::DoNotOptimize(std::ranges::find(hidden, key));
    }
}
BENCHMARK(bareComparisons)->Unit(benchmark::kNanosecond);

/// A database file with the reference schema in a new folder.
class LockTable {
public:
    explicit LockTable(const std::filesystem::path& place)
    {
        std::string name = (place / "tamarok-rights-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error{"no temporary folder"};
        folder_ = name;
        embedded::OpenOptions options;
        options.mode = embedded::OpenMode::Create;
        connection = embedded::connect(file(), options);
        database::createTables(*connection);
        database::createIndexes(*connection);
        connection->Execute("INSERT INTO LOCK (ID_USERS,LOGIN) VALUES (7,'2024-05-17 08:00:00.000')");
    }
    LockTable(const LockTable&) = delete;
    LockTable& operator=(const LockTable&) = delete;
    ~LockTable()
    {
        connection.reset();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    std::string file() const { return (folder_ / "locks.db").string(); }
    std::string bareFile() const { return (folder_ / "bare.db").string(); }

    ado::ConnectionRef connection;

private:
    std::filesystem::path folder_;
};

// What LockOn and LockOff send for one list without conflict.
constexpr const char* ownRow = "SELECT ID FROM LOCK WHERE ID_USERS = 7 AND LISTE = 'L24-000001'";
constexpr const char* insertion = "INSERT INTO LOCK (ID_USERS,LISTE) VALUES (7,'L24-000001')";
constexpr const char* others =
    "SELECT ID_USERS FROM LOCK WHERE ID_USERS <> 7 AND LISTE = 'L24-000001' GROUP BY ID_USERS";
constexpr const char* releasable = "SELECT ID FROM LOCK WHERE ID_USERS = 7 AND LOGIN IS NULL ";

void throughTheLibrary(LockTable& table)
{
    TmkVar session;
    session.db_ADO = table.connection;
    session.ID_User = 7;
    session.bolLan = true;
    Comm_Lock{}.LockOn("LISTE", "'L24-000001'", session);
    Comm_Lock{}.LockOff("LISTE", "'L24-000001'", session);
}

void throughTheConnection(LockTable& table)
{
    ado::Recordset rows;
    for (const char* const statement : {ownRow, others}) {
        rows.Open(statement, table.connection);
        rows.Close();
        if (statement == ownRow) table.connection->Execute(insertion);
    }
    rows.Open(releasable, table.connection);
    const VariantArray ids = rows.GetRows();
    rows.Close();
    for (std::int32_t row = 0; row <= ids.bounds(2).upper; ++row) {
        table.connection->Execute(
            std::string{"DELETE FROM LOCK WHERE ID = "}.append(std::to_string(ids.at(0, row).asLong())));
    }
}

/// SQLite alone, with statements compiled beforehand, on a table of the same columns and indexes in a
/// file of the same kind.
class BareSqlite {
public:
    explicit BareSqlite(const std::string& file)
    {
        if (sqlite3_open(file.c_str(), &database_) != SQLITE_OK) throw std::runtime_error{"no database"};
        makeTable();
        for (const char* const text :
             {"SELECT ID FROM LOCK WHERE ID_USERS=7 AND LISTE='L24-000001'",
              "INSERT INTO LOCK(ID_USERS,LISTE) VALUES(7,'L24-000001')",
              "SELECT ID_USERS FROM LOCK WHERE ID_USERS<>7 AND LISTE='L24-000001' GROUP BY 1",
              "SELECT ID FROM LOCK WHERE ID_USERS=7 AND LOGIN IS NULL", "DELETE FROM LOCK WHERE ID=?"}) {
            sqlite3_stmt* statement = nullptr;
            if (sqlite3_prepare_v2(database_, text, -1, &statement, nullptr) != SQLITE_OK)
                throw std::runtime_error{std::string{sqlite3_errmsg(database_)}};
            statements_.push_back(statement);
        }
    }
    BareSqlite(const BareSqlite&) = delete;
    BareSqlite& operator=(const BareSqlite&) = delete;
    ~BareSqlite()
    {
        for (sqlite3_stmt* const statement : statements_)
            sqlite3_finalize(statement);
        sqlite3_close(database_);
    }

    void lockAndRelease()
    {
        for (const std::size_t statement : {0U, 1U, 2U})
            run(statement);
        const std::int64_t id = run(3);
        sqlite3_bind_int64(statements_[4], 1, id);
        run(4);
    }

private:
    void makeTable()
    {
        std::string columns;
        for (const char* const kind :
             {"BELEGE", "HAB", "FAKTURA", "LOHNERFASSUNG", "BELEGBUCHUNG", "MASCHINEN", "PLANN", "PLAN_BB", "ZV_BB",
              "BB_MAP", "JAGD_BB", "WILD_BB", "HUNDE_BB", "STRK_BB", "WAL_BB", "STEH"})
            columns.append(",").append(kind).append(" INT");
        const std::string text =
            "PRAGMA journal_mode=WAL; CREATE TABLE LOCK(ID INTEGER PRIMARY KEY AUTOINCREMENT,ID_USERS INT,"
            "LOGIN TEXT COLLATE NOCASE,LISTE TEXT COLLATE NOCASE,RECHNUNG TEXT COLLATE NOCASE" +
            columns +
            "); CREATE INDEX IX_USERS ON LOCK(ID_USERS,LOGIN); CREATE INDEX IX_LISTE ON LOCK(LISTE); "
            "CREATE INDEX IX_RECHNUNG ON LOCK(RECHNUNG); INSERT INTO LOCK(ID_USERS,LOGIN) VALUES(7,'2024-05-17')";
        if (sqlite3_exec(database_, text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error{sqlite3_errmsg(database_)};
    }

    std::int64_t run(std::size_t number)
    {
        sqlite3_stmt* const statement = statements_[number];
        std::int64_t value = 0;
        int code = sqlite3_step(statement);
        for (; code == SQLITE_ROW; code = sqlite3_step(statement))
            value = sqlite3_column_int64(statement, 0);
        sqlite3_reset(statement);
        if (code != SQLITE_DONE) throw std::runtime_error{sqlite3_errmsg(database_)};
        return value;
    }

    sqlite3* database_ = nullptr;
    std::vector<sqlite3_stmt*> statements_;
};

/// Runs the three ways in turn in one loop, so that other work of the machine slows all of them equally.
void lockOnAndOff(benchmark::State& state, const std::filesystem::path& place)
{
    using Clock = std::chrono::steady_clock;
    if (!std::filesystem::is_directory(place)) {
        state.SkipWithError("no such folder");
        return;
    }
    LockTable table{place};
    BareSqlite bare{table.bareFile()};
    Clock::duration library{};
    Clock::duration connection{};
    Clock::duration sqlite{};
    const auto timed = [](Clock::duration& sum, const auto& work) {
        const auto start = Clock::now();
        work();
        sum += Clock::now() - start;
    };
    for (auto _ : state) {
        timed(library, [&] { throughTheLibrary(table); });
        timed(connection, [&] { throughTheConnection(table); });
        timed(sqlite, [&] { bare.lockAndRelease(); });
    }
    const auto microseconds = [&](Clock::duration sum) {
        return std::chrono::duration<double, std::micro>{sum}.count() / static_cast<double>(state.iterations());
    };
    state.counters["library_us"] = microseconds(library);
    state.counters["statements_us"] = microseconds(connection);
    state.counters["sqlite_us"] = microseconds(sqlite);
    state.counters["library/statements"] = microseconds(library) / microseconds(connection);
    state.counters["library/sqlite"] = microseconds(library) / microseconds(sqlite);
}
/// On a disk the two commits take nearly all of the time; the run in memory shows the processor time.
BENCHMARK_CAPTURE(lockOnAndOff, disk, std::filesystem::temp_directory_path())
    ->Iterations(500)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(lockOnAndOff, memory, "/dev/shm")->Iterations(5000)->Unit(benchmark::kMicrosecond);

} // namespace
