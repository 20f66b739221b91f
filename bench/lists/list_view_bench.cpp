// Filling a list view with 100,000 rows of 12 columns against a plain loop over the same SQLite text that copies its
// texts into the same list; sorting it after a click against std::stable_sort of the same prepared texts.

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <random>
#include <sqlite3.h>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

#include "functions.h"
#include "sortable_cells.h"
#include "support/by_name.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_set.h"
#include "tamarok/form.h"
#include "tamarok/format.h"
#include "tamarok/list_view.h"
#include "tamarok/platform.h"

namespace tamarok {
namespace {

constexpr int rows = 100'000;
/// Of the hunting dogs: texts, dates, numbers with a format.
constexpr std::array<std::int16_t, 12> columns{1, 2, 3, 4, 5, 6, 8, 10, 11, 12, 13, 25};

double processorSeconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// A list view with a header for each column.
class ListOnForm {
public:
    ListOnForm()
    {
        view->Parent(form);
        for (const std::int16_t id : columns)
            view->headers()->Add({}, "COL_" + std::to_string(id), "Column");
    }

    std::shared_ptr<controls::Form> form = std::make_shared<controls::Form>();
    std::shared_ptr<controls::ListView> view = std::make_shared<controls::ListView>();
};

/// A reference database whose dogs are multiplied.
class Dogs {
public:
    Dogs() : scope_{platform()}
    {
        {
            embedded::NewDatabase building{path_};
            database::createReferenceDatabase(*building.connection(), {.logs = 0});
            building.connection()->Execute(
                "INSERT INTO BB_JAGDHUNDE (NUMMER, GEBURTSNAME, RUFNAME, GESCHLECHT, FARBE, WURFDATUM, CHIPNUMMER, "
                "SCHULTERHOHE, GEWICHT, PRUFUNG, PRUFUNG_DATUM, ABGANGSDATUM) SELECT TOP " +
                std::to_string(rows - 200) +
                " A.NUMMER + 'X' + B.NUMMER, A.GEBURTSNAME, B.RUFNAME, A.GESCHLECHT, B.FARBE, A.WURFDATUM, "
                "B.CHIPNUMMER, "
                "A.SCHULTERHOHE, A.GEWICHT + C.ID / 10.0, B.PRUFUNG, A.PRUFUNG_DATUM, B.ABGANGSDATUM FROM BB_JAGDHUNDE "
                "A "
                "CROSS JOIN BB_JAGDHUNDE B CROSS JOIN (SELECT TOP 3 ID FROM BB_JAGDHUNDE) C");
            building.complete();
        }
        session.db_ADO = embedded::connect(path_);
        session.strEmptyText = "(leer)";
        session.db_ADO->listen([this](std::string_view text) { statement = text; });
    }
    Dogs(const Dogs&) = delete;
    Dogs& operator=(const Dogs&) = delete;
    ~Dogs()
    {
        session.db_ADO.reset();
        for (const char* const ending : {"", "-wal", "-shm", "-locks"}) {
            std::error_code ignored;
            std::filesystem::remove(path_.string() + ending, ignored);
        }
    }

    void fill(ListOnForm& list) const { Comm_CSel{}.FillListview(session, "R", "BBHUNDE", *list.view, ""); }

    /// Steps the statement of the list and copies its texts into a list.
    double plainSeconds() const
    {
        sqlite3* handle = nullptr;
        sqlite3_stmt* prepared = nullptr;
        sqlite3_open_v2(path_.c_str(), &handle, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
        sqlite3_exec(handle, "PRAGMA cache_size=-16384", nullptr, nullptr, nullptr);
        // The grouping compares texts by the system's collation; the peer gets the same comparison.
        embedded::FunctionContext context;
        embedded::registerFunctions(handle, context);
        const std::string text = embedded::translate(*session.db_ADO, statement);
        if (sqlite3_prepare_v2(handle, text.c_str(), -1, &prepared, nullptr) != SQLITE_OK) std::abort();
        ListOnForm list;
        const double begin = processorSeconds();
        const int fields = sqlite3_column_count(prepared);
        const auto cell = [&](int field) {
            const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(prepared, field));
            return std::string{bytes == nullptr ? " " : bytes,
                               bytes == nullptr ? 1 : static_cast<std::size_t>(sqlite3_column_bytes(prepared, field))};
        };
        int count = 0;
        while (sqlite3_step(prepared) == SQLITE_ROW) {
            ++count;
            const controls::ListItemRef item =
                list.view->items()->Add({}, std::to_string(count).append("R").append(cell(fields - 1)), cell(0));
            for (int field = 1; field < fields - 2; ++field)
                item->SubItems(field, cell(field));
            item->Tag(Variant{cell(fields - 2)});
        }
        const double seconds = processorSeconds() - begin;
        if (count != rows) std::abort();
        sqlite3_finalize(prepared);
        sqlite3_close(handle);
        return seconds;
    }

    TmkVar session;
    std::string statement;

private:
    static Platform platform()
    {
        Platform platform;
        platform.regional = Regional::named("de-AT");
        platform.makeLocService = loc::makeLocService;
        return platform;
    }

    PlatformScope scope_;
    std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("tamarok-dogs-" + std::to_string(::getpid()) + ".db");
};

const Dogs& dogs()
{
    static const Dogs all;
    return all;
}

double peakMegabytes()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void fillListView(benchmark::State& state)
{
    double own = 0.0;
    double peer = 0.0;
    const double before = (static_cast<void>(dogs()), peakMegabytes());
    for ([[maybe_unused]] const auto _ : state) {
        ListOnForm list;
        const double begin = processorSeconds();
        dogs().fill(list);
        const double seconds = processorSeconds() - begin;
        if (list.view->items()->Count() != rows) std::abort();
        own += seconds;
        state.SetIterationTime(seconds);
        peer += dogs().plainSeconds();
    }
    state.counters["bare_loop_ratio"] = own / peer;
    state.counters["peak_MB"] = peakMegabytes() - before;
}
BENCHMARK(fillListView)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

// Cells of a column in random order.

std::string randomText(std::mt19937& random)
{
    static constexpr std::array<std::string_view, 6> names{"Fichte",        "tanne", "Buche",
                                                           "L\xC3\xA4rche", "eiche", "Kiefer"};
    return std::string{names[random() % names.size()]}.append(" ").append(std::to_string(random() % 100'000));
}

std::string randomDate(std::mt19937& random)
{
    return format::value(Variant{Date{40'000.0 + static_cast<double>(random() % 5000)}}, "dd.mm.yyyy");
}

std::string randomNumber(std::mt19937& random)
{
    return format::value(Variant{static_cast<double>(random() % 10'000'000) / 1000.0}, "0.000");
}

/// The texts as the list is sorted by them.
std::vector<std::string> preparedTexts(std::vector<std::string> texts)
{
    lists::ColumnShape shape{"(leer)"};
    for (const std::string& text : texts)
        shape.add(text);
    for (std::string& text : texts) {
        if (shape.isDate()) text = lists::sortableDate(text, " ");
        if (shape.isNumber()) text = lists::paddedNumber(text, shape.width());
    }
    return texts;
}

void orderListView(benchmark::State& state, std::string (*randomCell)(std::mt19937&), bool byName)
{
    constexpr std::int32_t position = 3;
    const TmkVar session;
    ListOnForm list;
    std::mt19937 random{7};
    double own = 0.0;
    double peer = 0.0;
    for ([[maybe_unused]] const auto _ : state) {
        list.view->Sorted(false);
        list.view->items()->Clear();
        std::vector<std::string> cells;
        for (int row = 0; row < rows; ++row) {
            const controls::ListItemRef item = list.view->items()->Add({}, std::to_string(row) + "R", "item");
            for (std::int32_t column = 1; column < static_cast<std::int32_t>(columns.size()); ++column)
                item->SubItems(column, "cell");
            cells.push_back(randomCell(random));
            item->SubItems(position - 1, cells.back());
        }
        std::vector<std::string> texts = preparedTexts(std::move(cells));
        const double peerBegin = processorSeconds();
        std::ranges::stable_sort(texts);
        peer += processorSeconds() - peerBegin;
        benchmark::DoNotOptimize(texts);
        const double begin = processorSeconds();
        test::ByName viewByName{list.view};
        Object& view = byName ? static_cast<Object&>(viewByName) : *list.view;
        Comm_Set{}.OrderColumnListview(session, *list.view->headers()->Item(Variant{position}), view, true);
        benchmark::DoNotOptimize(list.view->text(1, 0));
        const double seconds = processorSeconds() - begin;
        own += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["stable_sort_ratio"] = own / peer;
    state.counters["stable_sort_ms"] = peer * 1000.0 / static_cast<double>(state.iterations());
}
/// A view that is reached by name alone is the control of another library.
void addOrderBenchmark(const char* name, std::string (*randomCell)(std::mt19937&), bool byName)
{
    benchmark::RegisterBenchmark(name, orderListView, randomCell, byName)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(5);
}

[[maybe_unused]] const bool added = [] {
    addOrderBenchmark("orderListView/texts", randomText, false);
    addOrderBenchmark("orderListView/dates", randomDate, false);
    addOrderBenchmark("orderListView/numbers", randomNumber, false);
    addOrderBenchmark("orderListViewByName/dates", randomDate, true);
    addOrderBenchmark("orderListViewByName/numbers", randomNumber, true);
    return true;
}();

} // namespace
} // namespace tamarok
