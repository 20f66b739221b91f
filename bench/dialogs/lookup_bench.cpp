// A lookup over 100,000 rows of the embedded database: opening it, against reading the same rows once by GetRows; a
// typed character that no row matches, against the same search through a clone of the recordset, and against reading
// all rows anew by GetRows.

#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

#include "dialogs/lookup_double.h"
#include "lookup_dialog.h"
#include "lookup_search.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/convert.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok {
namespace {

constexpr int rows = 100'000;
constexpr const char* select = "SELECT CODE,NAME,PRICE FROM SPECIES ORDER BY ID";

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// A database with the rows, the texts of the buttons and the table of widths.
class Grid {
public:
    Grid() : scope_{platform()}
    {
        embedded::OpenOptions options;
        options.mode = embedded::OpenMode::Create;
        session.db_ADO = embedded::connect(path_, options);
        session.strConnection = "Data Source=" + path_.string();
        session.strLanguage = "GERMAN";
        ado::Connection& connection = *session.db_ADO;
        connection.Execute("CREATE TABLE STRINGS (ID_STRING INT, CUSTOM_GERMAN NVARCHAR(20), GERMAN NVARCHAR(20))");
        for (const char* const number : {"91", "94", "268", "610"})
            connection.Execute(std::string{"INSERT INTO STRINGS VALUES ("} + number + ",NULL,'Text')");
        connection.Execute("CREATE TABLE MODELS (NAME NVARCHAR(20), RELATION NVARCHAR(60), MODEL NVARCHAR(1000))");
        connection.Execute("CREATE TABLE SPECIES (ID INT NOT NULL PRIMARY KEY, CODE NVARCHAR(20), NAME NVARCHAR(50), "
                           "PRICE FLOAT)");
        connection.BeginTrans();
        for (int row = 0; row < rows; ++row) {
            const std::string number = std::to_string(row);
            connection.Execute("INSERT INTO SPECIES VALUES (" + number + ",'FI" + number + "','Fichte Nummer " +
                               number + "'," + number + ".5)");
        }
        connection.CommitTrans();
    }
    Grid(const Grid&) = delete;
    Grid& operator=(const Grid&) = delete;
    ~Grid()
    {
        session.db_ADO.reset();
        for (const char* const ending : {"", "-wal", "-shm", "-locks"}) {
            std::error_code ignored;
            std::filesystem::remove(path_.string() + ending, ignored);
        }
    }

    /// Shows a lookup; the time until the user can act is left in `opened`.
    void show(const std::function<void(dialogs::LookupEvents&)>& user)
    {
        test::LookupRecord record;
        const double begin = now();
        record.user = [&](dialogs::LookupEvents& events) {
            opened = now() - begin;
            if (record.rows->count() != rows) std::abort();
            user(events);
        };
        test::LookupDouble window{record};
        dialogs::LookupDialog{session, window, ""}.run(select, "Species", "none");
    }

    std::shared_ptr<ado::Recordset> open() const
    {
        auto recordset = std::make_shared<ado::Recordset>();
        recordset->Open(select, embedded::connect(path_), ado::CursorType::OpenStatic, ado::LockType::Optimistic);
        return recordset;
    }

    TmkVar session;
    double opened = 0;

private:
    Platform platform() const
    {
        Platform platform;
        platform.regional = Regional::named("de-AT");
        platform.makeConnection = [this](std::string_view) { return embedded::connect(path_); };
        return platform;
    }

    std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("tamarok-lookup-" + std::to_string(::getpid()) + ".db");
    PlatformScope scope_;
};

Grid& grid()
{
    static Grid all;
    return all;
}

/// Physical limit: the rows themselves, read once.
void openLookup(benchmark::State& state)
{
    double own = 0;
    double bare = 0;
    for ([[maybe_unused]] const auto _ : state) {
        grid().show([](dialogs::LookupEvents&) {});
        own += grid().opened;
        state.SetIterationTime(grid().opened);
        const double begin = now();
        benchmark::DoNotOptimize(grid().open()->GetRows());
        bare += now() - begin;
    }
    state.counters["bare_rows_ratio"] = own / bare;
}
BENCHMARK(openLookup)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

/// A character that no row has there, so that all rows are compared.
void typeCharacter(benchmark::State& state)
{
    grid().show([&state](dialogs::LookupEvents& events) {
        events.keyPressed('F');
        events.keyPressed('I');
        for ([[maybe_unused]] const auto _ : state) {
            const double begin = now();
            events.keyPressed('x');
            state.SetIterationTime(now() - begin);
            events.keyPressed(8);
        }
    });
}
BENCHMARK(typeCharacter)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The plain ways: each row through a clone of the recordset, or all rows by GetRows, at each key press.
bool matches(const Variant& cell)
{
    return !cell.isNull() && text::toUpper(text::left(convert::toText(cell), 3)) == "FIX";
}
void searchClone(benchmark::State& state)
{
    const auto recordset = grid().open();
    recordset->RecordCount();
    for ([[maybe_unused]] const auto _ : state) {
        const auto all = recordset->Clone();
        while (!all->AtEOF() && !matches(all->Fields().Item(0).Value()))
            all->MoveNext();
        benchmark::DoNotOptimize(all->AtEOF());
    }
}
BENCHMARK(searchClone)->Unit(benchmark::kMillisecond);

void searchArray(benchmark::State& state)
{
    const auto recordset = grid().open();
    for ([[maybe_unused]] const auto _ : state) {
        const VariantArray all = recordset->Clone()->GetRows();
        bool found = false;
        for (std::int32_t row = 0; row <= all.bounds(2).upper && !found; ++row)
            found = matches(all.at(0, row));
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(searchArray)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tamarok
