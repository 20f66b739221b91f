#include "windows/patience.h"

#include <QApplication>
#include <QProgressDialog>
#include <chrono>
#include <future>
#include <memory>

#include "host_platform.h"

#include "tamarok/platform.h"

namespace tamarok::workbench {

namespace {

constexpr std::chrono::milliseconds untilNote{400};
constexpr std::chrono::milliseconds turn{10};

} // namespace

void doPatiently(QWidget* parent, const QString& what, const std::function<void()>& work)
{
    Platform own = Platform::current();
    const auto messages = std::make_shared<cli::RecordingMessageBox>();
    own.messageBox = messages; // windows belong to this thread
    std::future<void> done = std::async(std::launch::async, [&own, &work] {
        const PlatformScope scope{own};
        work();
    });
    if (done.wait_for(untilNote) != std::future_status::ready) {
        QProgressDialog note{what, QString{}, 0, 0, parent};
        note.setWindowModality(Qt::ApplicationModal);
        note.show();
        while (done.wait_for(turn) != std::future_status::ready)
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    for (const auto& message : messages->take())
        Platform::current().messageBox->show(message.text, message.flags, message.title);
    done.get();
}

} // namespace tamarok::workbench
