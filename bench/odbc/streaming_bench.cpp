#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "handles.h"
#include "odbc/support/servers.h"
#include "tamarok_odbc/connect.h"
#include "turns.h"
#include "wide_text.h"

#include "tamarok/ado.h"

// 1,000,000 rows of 12 columns, read forward: the recordset against a bare loop over the driver manager with bound
// columns and the same block size, and against the same loop that reads each value by SQLGetData.

namespace tamarok::odbc {

namespace {

constexpr std::int64_t rowCount = 1'000'000;
constexpr std::size_t blockRows = 256;
constexpr const char* statement = "SELECT * FROM tmb_rows";

struct BoundColumn {
    SQLSMALLINT type;
    std::size_t width;
};

constexpr std::size_t textWidth = (2 * 20 + 1) * sizeof(SQLWCHAR);
constexpr std::array columns{BoundColumn{SQL_C_SLONG, 4},
                             BoundColumn{SQL_C_SLONG, 4},
                             BoundColumn{SQL_C_SBIGINT, 8},
                             BoundColumn{SQL_C_DOUBLE, 8},
                             BoundColumn{SQL_C_DOUBLE, 8},
                             BoundColumn{SQL_C_WCHAR, textWidth},
                             BoundColumn{SQL_C_WCHAR, textWidth},
                             BoundColumn{SQL_C_WCHAR, textWidth},
                             BoundColumn{SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)},
                             BoundColumn{SQL_C_SSHORT, 2},
                             BoundColumn{SQL_C_DOUBLE, 8},
                             BoundColumn{SQL_C_SLONG, 4}};

std::string tableText(bool tsql)
{
    const std::string types = tsql ? "A INT, B INT, C BIGINT, D FLOAT, E FLOAT, F NVARCHAR(20), G NVARCHAR(20), "
                                     "H NVARCHAR(20), I DATETIME, J SMALLINT, K FLOAT, L INT"
                                   : "A INT, B INT, C BIGINT, D FLOAT8, E FLOAT8, F VARCHAR(20), G VARCHAR(20), "
                                     "H VARCHAR(20), I TIMESTAMP(3), J SMALLINT, K FLOAT8, L INT";
    return "CREATE TABLE tmb_rows (" + types + ")";
}

std::string rowsText(bool tsql)
{
    const std::string values =
        tsql ? "N, N * 7 % 1000, N * 1000003, N * 0.25, N / 3.0, N'Fichte ' + CAST(N % 100 AS NVARCHAR(10)), "
               "N'Lärche', N'Lager 17', CAST('20240305' AS DATETIME), N % 1000, N * 1.5, NULL FROM (SELECT TOP " +
                   std::to_string(rowCount) +
                   " ROW_NUMBER() OVER (ORDER BY (SELECT NULL)) AS N FROM sys.all_columns a, sys.all_columns b) q"
             : "N, N * 7 % 1000, N * 1000003::bigint, N * 0.25, N / 3.0, 'Fichte ' || N % 100, 'Lärche', 'Lager 17', "
               "TIMESTAMP '2024-03-05', N % 1000, N * 1.5, NULL FROM generate_series(1, " +
                   std::to_string(rowCount) + ") AS q(N)";
    return "INSERT INTO tmb_rows SELECT " + values;
}

/// The connection text of a server with the rows; empty where there is no such server.
std::string preparedServer(bool tsql)
{
    static const std::unique_ptr<test::PostgresServer> postgres =
        test::PostgresServer::isInstalled() ? std::make_unique<test::PostgresServer>() : nullptr;
    std::string text;
    if (tsql && test::tsqlServer()) text = test::tsqlDatabase("tamarok_bench");
    if (!tsql && postgres) text = postgres->connectionText() + ";UseDeclareFetch=1;Fetch=256;BoolsAsChar=0";
    if (text.empty()) return text;
    const auto connection = connectText(text);
    connection->CommandTimeout(0);
    connection->Execute("DROP TABLE IF EXISTS tmb_rows");
    connection->Execute(tableText(tsql));
    connection->Execute(rowsText(tsql));
    return text;
}

/// A connection without anything of this system.
struct BareConnection {
    explicit BareConnection(const std::string& text) : environment{makeEnvironment()}, connection{environment.get()}
    {
        std::vector<SQLWCHAR> wide = toWide(text);
        if (!succeeded(SQLDriverConnectW(connection.get(), nullptr, wide.data(), static_cast<SQLSMALLINT>(wide.size()),
                                         nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)))
            throw std::runtime_error{"no connection"};
    }
    BareConnection(const BareConnection&) = delete;
    BareConnection& operator=(const BareConnection&) = delete;
    ~BareConnection() { SQLDisconnect(connection.get()); }

    EnvironmentHandle environment;
    ConnectionHandle connection;
};

StatementHandle executed(const BareConnection& bare)
{
    StatementHandle handle{bare.connection.get()};
    std::vector<SQLWCHAR> wide = toWide(statement);
    if (!succeeded(SQLExecDirectW(handle.get(), wide.data(), static_cast<SQLINTEGER>(wide.size()))))
        throw std::runtime_error{"the statement failed"};
    return handle;
}

/// Blocks of bound columns; every length is looked at.
std::int64_t readBound(const BareConnection& bare)
{
    const StatementHandle handle = executed(bare);
    SQLULEN fetched = 0;
    SQLSetStmtAttrW(handle.get(), SQL_ATTR_ROW_ARRAY_SIZE, asPointer(blockRows), 0);
    SQLSetStmtAttrW(handle.get(), SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
    std::vector<std::vector<std::byte>> values(columns.size());
    std::vector<std::vector<SQLLEN>> lengths(columns.size(), std::vector<SQLLEN>(blockRows));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        values[i].resize(columns[i].width * blockRows);
        SQLBindCol(handle.get(), static_cast<SQLUSMALLINT>(i + 1), columns[i].type, values[i].data(),
                   static_cast<SQLLEN>(columns[i].width), lengths[i].data());
    }
    std::int64_t sum = 0;
    while (succeeded(SQLFetch(handle.get())))
        for (SQLULEN row = 0; row < fetched; ++row)
            for (std::size_t i = 0; i < columns.size(); ++i)
                sum += lengths[i][row];
    return sum;
}

/// Row by row, value by value.
std::int64_t readSingly(const BareConnection& bare)
{
    const StatementHandle handle = executed(bare);
    std::array<std::byte, textWidth> value{};
    std::int64_t sum = 0;
    while (succeeded(SQLFetch(handle.get())))
        for (std::size_t i = 0; i < columns.size(); ++i) {
            SQLLEN length = 0;
            SQLGetData(handle.get(), static_cast<SQLUSMALLINT>(i + 1), columns[i].type, value.data(),
                       static_cast<SQLLEN>(columns[i].width), &length);
            sum += length;
        }
    return sum;
}

std::int64_t readRecordset(const ado::ConnectionRef& connection)
{
    ado::Recordset rows;
    rows.Open(statement, connection);
    const ado::FieldCollection& fields = rows.Fields();
    std::int64_t sum = 0;
    for (; !rows.AtEOF(); rows.MoveNext())
        for (std::int32_t i = 0; i < fields.Count(); ++i)
            sum += static_cast<std::int64_t>(fields.Item(i).Value().kind());
    return sum;
}

/// Seconds of the clock, waits for the server included.
template <class Action>
double clockSeconds(Action action)
{
    const auto begin = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// Turn by turn: `ratio` is that of the clock, what a user waits; `cpu_ratio` that of this process alone.
template <class Peer, class Own>
void compareBoth(benchmark::State& state, Peer peer, Own own)
{
    std::vector<double> ratios;
    std::vector<double> processorRatios;
    for ([[maybe_unused]] const auto _ : state) {
        double peerProcessor = 0;
        double ownProcessor = 0;
        const double peerClock = clockSeconds([&] { peerProcessor = bench::secondsOf(peer); });
        const double ownClock = clockSeconds([&] { ownProcessor = bench::secondsOf(own); });
        ratios.push_back(ownClock / peerClock);
        processorRatios.push_back(ownProcessor / peerProcessor);
        state.SetIterationTime(ownClock);
    }
    state.counters["ratio"] = bench::median(ratios);
    state.counters["cpu_ratio"] = bench::median(processorRatios);
}

void compareWith(benchmark::State& state, bool tsql, std::int64_t (*peer)(const BareConnection&))
{
    const std::string text = preparedServer(tsql);
    if (text.empty()) {
        state.SkipWithError("no server");
        return;
    }
    const BareConnection bare{text};
    const ado::ConnectionRef connection = connectText(text);
    compareBoth(
        state, [&] { benchmark::DoNotOptimize(peer(bare)); },
        [&] { benchmark::DoNotOptimize(readRecordset(connection)); });
}

void BM_TsqlAgainstBoundBlocks(benchmark::State& state)
{
    compareWith(state, true, readBound);
}
void BM_TsqlAgainstGetData(benchmark::State& state)
{
    compareWith(state, true, readSingly);
}
void BM_PostgresAgainstBoundBlocks(benchmark::State& state)
{
    compareWith(state, false, readBound);
}
void BM_PostgresAgainstGetData(benchmark::State& state)
{
    compareWith(state, false, readSingly);
}

BENCHMARK(BM_TsqlAgainstBoundBlocks)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TsqlAgainstGetData)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PostgresAgainstBoundBlocks)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PostgresAgainstGetData)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace tamarok::odbc
