#include "windows/sample_database.h"

#include <QCoreApplication>
#include <QDir>
#include <QProgressDialog>
#include <QStandardPaths>
#include <atomic>
#include <exception>
#include <thread>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_qt/texts.h"
#include "windows/texts.h"

#include "tamarok/platform.h"

namespace tamarok::workbench {

namespace {

struct Cancelled {};

/// Makes the database on a thread, so that the window stays alive.
class Making {
public:
    Making(std::string file, Platform platform) :
        thread_{[this, file = std::move(file), own = std::move(platform)]() mutable {
            const PlatformScope scope{std::move(own)};
            make(file);
            done_ = true;
        }}
    {}

    void cancel() { cancelled_ = true; }
    bool isDone() const { return done_; }
    int percent() const { return percent_; }
    /// Returns whether the database was made. Errors: those of the making.
    bool wasMade() const
    {
        if (failure_) std::rethrow_exception(failure_);
        return !cancelled_;
    }

private:
    void make(const std::string& file)
    {
        try {
            embedded::NewDatabase made{file, embedded::NewDatabase::Existing::Refuse};
            database::createReferenceDatabase(*made.connection(), {.logs = 20000},
                                              [this](const database::Progress& progress) {
                                                  if (cancelled_) throw Cancelled{};
                                                  if (progress.total > 0)
                                                      percent_ = static_cast<int>(100 * progress.done / progress.total);
                                              });
            made.complete();
        } catch (const Cancelled&) {
            return;
        } catch (...) {
            failure_ = std::current_exception();
        }
    }

    std::atomic<bool> cancelled_ = false;
    std::atomic<bool> done_ = false;
    std::atomic<int> percent_ = 0;
    std::exception_ptr failure_;
    std::jthread thread_; ///< last: it uses all others
};

} // namespace

std::optional<std::string> sampleDatabase()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const QString file = folder + "/sample.db";
    if (QFile::exists(file)) return qt::fromQt(file);
    QDir{}.mkpath(folder);
    QProgressDialog window{textOf(Text::MakingSample), textOf(Text::Cancel), 0, 100};
    window.setWindowTitle(textOf(Text::Program));
    window.setMinimumDuration(0);
    window.setAutoReset(false);
    window.setAutoClose(false);
    Making making{qt::fromQt(file), Platform::current()};
    while (!making.isDone()) {
        window.setValue(making.percent());
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 50);
        if (window.wasCanceled()) making.cancel();
    }
    if (!making.wasMade()) return std::nullopt;
    return qt::fromQt(file);
}

} // namespace tamarok::workbench
