#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "bulk_insert.h"
#include "odbc/support/servers.h"
#include "row_reader.h"
#include "row_writer.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_database/transfer.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_odbc/connect.h"
#include "turns.h"

#include "tamarok/ado.h"

// Loads rows of 12 columns into a T-SQL server in three ways by turns: as a move writes them, by an INSERT of its own
// for each row, and by an INSERT with parameters for each row in one transaction. The counters are rows a second and
// the gain of the move, medians of the turns, since other work on the machine hits neighbouring turns alike. All turns
// together move 100,000 rows. PostgreSQL is no target of a move.

namespace tamarok::database {

namespace {

constexpr std::int64_t manyRows = 10'000;
constexpr std::int64_t fewRows = 1'000;
constexpr int turns = 10;
constexpr const char* databaseName = "tamarok_bench_loading";

const tsql::TableDefinition& table()
{
    static const tsql::TableDefinition definition{.name = "tmb_load",
                                                  .columns = {{.name = "A", .type = "INT"},
                                                              {.name = "B", .type = "INT"},
                                                              {.name = "C", .type = "BIGINT"},
                                                              {.name = "D", .type = "FLOAT"},
                                                              {.name = "E", .type = "FLOAT"},
                                                              {.name = "F", .type = "NVARCHAR(20)"},
                                                              {.name = "G", .type = "NVARCHAR(20)"},
                                                              {.name = "H", .type = "NVARCHAR(20)"},
                                                              {.name = "I", .type = "DATETIME"},
                                                              {.name = "J", .type = "SMALLINT"},
                                                              {.name = "K", .type = "FLOAT"},
                                                              {.name = "L", .type = "INT"}}};
    return definition;
}

/// The rows to load, in memory.
const std::unique_ptr<Store>& sample()
{
    static const std::unique_ptr<Store> store = [] {
        auto made = embeddedStore(embedded::connectInMemory());
        made->connection()->Execute(tsql::createTableText(table()));
        made->connection()->BeginTrans();
        const std::vector<RowColumn> columns = RowReader{*made, table()}.columns();
        RowWriter writer{*made, table(), columns};
        for (std::int32_t n = 0; n < manyRows; ++n) {
            writer.write(std::vector<Variant>{
                n, n * 7 % 1000, std::int64_t{n} * 1'000'003, n * 0.25, n / 3.0, "Fichte " + std::to_string(n % 100),
                "Lärche", "Lager 17", Date{45356.5 + n % 700}, static_cast<std::int16_t>(n % 1000), n * 1.5, Null{}});
        }
        writer.finish();
        made->connection()->CommitTrans();
        return made;
    }();
    return store;
}

/// An empty table on the server; nothing without one.
std::unique_ptr<Store> server()
{
    if (!test::tsqlServer()) return nullptr;
    auto store = serverStore(odbc::connectText(test::tsqlDatabase(databaseName)));
    store->connection()->CommandTimeout(0);
    store->connection()->Execute("IF OBJECT_ID(N'dbo.tmb_load', N'U') IS NOT NULL DROP TABLE dbo.tmb_load");
    store->connection()->Execute(tsql::createTableText(table()));
    return store;
}

double secondsOf(const std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Rows a second as a move writes them.
double moveRate(Store& target)
{
    const auto start = std::chrono::steady_clock::now();
    target.connection()->BeginTrans();
    RowReader reader{*sample(), table()};
    RowWriter writer{target, table(), reader.columns()};
    std::vector<Variant> row;
    while (reader.read(row))
        writer.write(row);
    writer.finish();
    target.connection()->CommitTrans();
    return static_cast<double>(manyRows) / secondsOf(start);
}

/// Rows a second by a statement with the literals of one row, each committed by itself.
double insertRate(Store& target)
{
    const auto start = std::chrono::steady_clock::now();
    RowReader reader{*sample(), table()};
    const std::vector<RowColumn> columns = reader.columns();
    const std::vector<bool> omittable(columns.size(), false);
    std::vector<std::vector<Variant>> rows(1);
    for (std::int64_t n = 0; n < fewRows && reader.read(rows[0]); ++n)
        target.connection()->Execute(RowWriter::statementOf("tmb_load", rows, columns, omittable));
    return static_cast<double>(fewRows) / secondsOf(start);
}

/// Rows a second by one statement with parameters, in one transaction.
double parameterRate(Store& target)
{
    std::vector<BulkInsert::Column> columns;
    RowReader reader{*sample(), table()};
    const std::vector<RowColumn> described = reader.columns();
    for (const RowColumn& column : described)
        columns.push_back({column.name, column.type});
    BulkInsert insert{*target.connection(), "tmb_load", columns};
    const auto start = std::chrono::steady_clock::now();
    target.connection()->BeginTrans();
    std::vector<Variant> row;
    for (std::int64_t n = 0; n < fewRows && reader.read(row); ++n) {
        for (std::size_t i = 0; i < row.size(); ++i)
            insert[i] = row[i];
        insert.insert();
    }
    target.connection()->CommitTrans();
    return static_cast<double>(fewRows) / secondsOf(start);
}

void loading(benchmark::State& state)
{
    const std::unique_ptr<Store> target = server();
    if (target == nullptr) {
        state.SkipWithError("no T-SQL server: set TAMAROK_TSQL_SERVER or TAMAROK_TSQL_START");
        return;
    }
    sample();
    std::vector<double> moves;
    std::vector<double> overInserts;
    std::vector<double> overParameters;
    for ([[maybe_unused]] const auto _ : state) {
        const double inserts = insertRate(*target);
        const double parameters = parameterRate(*target);
        moves.push_back(moveRate(*target));
        overInserts.push_back(moves.back() / inserts);
        overParameters.push_back(moves.back() / parameters);
    }
    state.counters["move_rows_s"] = bench::median(moves);
    state.counters["over_inserts"] = bench::median(overInserts);
    state.counters["over_parameters"] = bench::median(overParameters);
}

BENCHMARK(loading)->Unit(benchmark::kMillisecond)->Iterations(turns);

} // namespace

} // namespace tamarok::database
