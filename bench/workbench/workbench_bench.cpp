// The workbench on a million logs: its start, the first rows of a list, scrolling, and the end of a long reading. Times
// are those of the clock, as a person waits for them.

#include <QApplication>
#include <QProcess>
#include <QScrollBar>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QThread>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>
#include <string>

#include "host_platform.h"
#include "qt/support/x_display.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_qt/platform.h"
#include "windows/list_window.h"
#include "windows/main_window.h"
#include "windows/theme.h"

namespace {

using namespace tamarok;
using namespace tamarok::workbench;

constexpr std::int64_t logs = 1'000'000;
constexpr std::int16_t volume = 36;

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

/// Handles events until a condition holds. @return the longest time in which no event could be handled, in milliseconds
double handleUntil(const std::function<bool()>& condition)
{
    double longest = 0;
    while (!condition()) {
        const Clock::time_point begin = Clock::now();
        QCoreApplication::processEvents();
        longest = std::max(longest, millisecondsSince(begin));
        QThread::usleep(200);
    }
    return longest;
}

/// The database and the main window of one user, for all benchmarks.
class Desk {
public:
    static Desk& get()
    {
        static Desk desk;
        return desk;
    }

    std::string file() const { return folder_.filePath("logs.db").toStdString(); }
    MainWindow& window() { return *window_; }
    void close()
    {
        window_.reset();
        place_.reset();
        scope_.reset();
    }

private:
    Desk()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.path());
        embedded::NewDatabase made{file(), embedded::NewDatabase::Existing::Refuse};
        database::createReferenceDatabase(*made.connection(), {.logs = logs});
        made.complete();
        Platform platform = cli::commandPlatform("de-AT");
        qt::equip(platform);
        scope_ = std::make_unique<PlatformScope>(platform);
        cli::DatabaseChoice database;
        database.file = file();
        place_ = std::make_unique<Workplace>(database, yard_);
        if (!place_->logIn(place_->accounts().front())) std::abort();
        window_ = std::make_unique<MainWindow>(*place_);
        window_->resize(1240, 780);
        window_->show();
    }

    QTemporaryDir folder_;
    std::unique_ptr<PlatformScope> scope_;
    Yard yard_;
    std::unique_ptr<Workplace> place_;
    std::unique_ptr<MainWindow> window_;
};

bool isShown(ListWindow& list, int row)
{
    return !list.table().model()->index(row, 0).data().toString().isEmpty();
}

ListWindow& openLogs(std::vector<std::int16_t> order = {})
{
    ListSetup setup;
    setup.order = std::move(order);
    return Desk::get().window().openList(setup);
}

void closeList(ListWindow& list)
{
    const std::unique_ptr<ListWindow> closed{&list};
}

/// From the wish for the list to the picture of its first rows; `all_ms` until all rows can be scrolled to and the
/// totals are there; `blocked_ms` the longest time in which the window could not handle an event.
void firstRows(benchmark::State& state)
{
    Desk::get();
    double all = 0;
    double blocked = 0;
    for ([[maybe_unused]] const auto _ : state) {
        const Clock::time_point begin = Clock::now();
        ListWindow& list = openLogs();
        handleUntil([&] { return isShown(list, 0); });
        list.table().viewport()->grab();
        state.SetIterationTime(millisecondsSince(begin) / 1000);
        blocked = std::max(blocked, handleUntil([&] { return !list.isLoading(); }));
        all = std::max(all, millisecondsSince(begin));
        closeList(list);
    }
    state.counters["all_ms"] = all;
    state.counters["blocked_ms"] = blocked;
}
BENCHMARK(firstRows)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

/// Jumps to any place of the list: the time until the rows there are shown; `blocked_ms` as above.
void scrolling(benchmark::State& state)
{
    ListWindow& list = openLogs();
    handleUntil([&] { return !list.isLoading(); });
    QScrollBar& bar = *list.table().verticalScrollBar();
    std::mt19937 any{7};
    double blocked = 0;
    double slowest = 0;
    for ([[maybe_unused]] const auto _ : state) {
        const auto place = static_cast<int>(any() % static_cast<unsigned>(bar.maximum()));
        const Clock::time_point begin = Clock::now();
        bar.setValue(place);
        list.table().viewport()->grab();
        blocked = std::max(blocked, millisecondsSince(begin));
        blocked = std::max(blocked, handleUntil([&] { return isShown(list, place); }));
        slowest = std::max(slowest, millisecondsSince(begin));
        state.SetIterationTime(millisecondsSince(begin) / 1000);
    }
    state.counters["blocked_ms"] = blocked;
    state.counters["slowest_ms"] = slowest;
    closeList(list);
}
BENCHMARK(scrolling)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);

/// A list that must be sorted first is closed in the middle of it: the time until it has gone.
void endOfALongReading(benchmark::State& state)
{
    double blocked = 0;
    for ([[maybe_unused]] const auto _ : state) {
        ListWindow& list = openLogs({volume});
        const Clock::time_point opened = Clock::now();
        blocked = std::max(blocked, handleUntil([&] { return millisecondsSince(opened) > 150; }));
        if (!list.isLoading()) std::abort();
        const Clock::time_point begin = Clock::now();
        closeList(list);
        state.SetIterationTime(millisecondsSince(begin) / 1000);
    }
    state.counters["blocked_ms"] = blocked;
}
BENCHMARK(endOfALongReading)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

/// Waits for the window of a name on a display. @return whether it came
bool waitForWindow(const qt::acting::Display& display, const char* name)
{
    QProcess tool;
    tool.setProcessEnvironment(display.environment());
    tool.start("xdotool", {"search", "--sync", "--onlyvisible", "--name", name});
    return tool.waitForFinished() && tool.exitCode() == 0;
}

/// From the start of the process to its window for the login.
void start(benchmark::State& state)
{
    if (!qt::acting::isInstalled("Xvfb") || !qt::acting::isInstalled("xdotool")) {
        state.SkipWithError("Xvfb or xdotool is missing");
        return;
    }
    const qt::acting::Display display;
    const QTemporaryDir home;
    QProcessEnvironment environment = display.environment();
    environment.insert("XDG_CONFIG_HOME", home.path());
    for ([[maybe_unused]] const auto _ : state) {
        QProcess program;
        program.setProcessEnvironment(environment);
        program.setStandardOutputFile(QProcess::nullDevice());
        program.setStandardErrorFile(QProcess::nullDevice());
        const Clock::time_point begin = Clock::now();
        program.start(TAMAROK_WORKBENCH, {"--db", QString::fromStdString(Desk::get().file())});
        if (!waitForWindow(display, "Tamarok")) std::abort();
        state.SetIterationTime(millisecondsSince(begin) / 1000);
        program.kill();
        program.waitForFinished();
    }
}
BENCHMARK(start)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application{argc, argv};
    QApplication::setOrganizationName("bench");
    QApplication::setApplicationName("workbench");
    useColours(application, Colours::Light);
    useLanguage(Language::German);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    Desk::get().close();
    return 0;
}
