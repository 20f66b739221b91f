#include "desk.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <utility>

#include "tamarok/error.h"

namespace tamarok::qt {

void requireApplication()
{
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr ||
        QThread::currentThread() != QCoreApplication::instance()->thread())
        throw Error{errors::invalidArgument,
                    "Windows can be shown by the thread of a QApplication only, and there must be one."};
}

void putAboveActiveWindow(QWidget& window)
{
    const QWidget* const above = QApplication::activeWindow();
    window.winId(); // makes the window of the system
    if (above != nullptr && above->windowHandle() != nullptr && above != &window) {
        window.windowHandle()->setTransientParent(above->windowHandle());
        window.windowHandle()->setScreen(above->windowHandle()->screen());
        window.move(above->frameGeometry().center() - window.rect().center());
    } else if (window.screen() != nullptr) {
        window.move(window.screen()->availableGeometry().center() - window.rect().center());
    }
}

void Desk::pressEnter()
{
    enterWaits_ = true;
    if (open_ == 0) sendEnter(QApplication::activeWindow());
}

/// The key is pressed when the caller of the dialog has returned to the event loop, with the result in its field.
/// @param caller  the window that gets the key; after a dialog the system may not have made it active again
void Desk::sendEnter(const QPointer<QWidget>& caller)
{
    QTimer::singleShot(0, qApp, [desk = shared_from_this(), caller] {
        if (!std::exchange(desk->enterWaits_, false)) return;
        QWidget* const window = caller ? caller.data() : QApplication::activeWindow();
        if (window == nullptr) return;
        const QPointer<QWidget> target = window->focusWidget() != nullptr ? window->focusWidget() : window;
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent key{type, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r")};
            if (target) QCoreApplication::sendEvent(target, &key);
        }
    });
}

Desk::Opened::Opened(std::shared_ptr<Desk> desk) : desk_{std::move(desk)}, caller_{QApplication::activeWindow()}
{
    ++desk_->open_;
}

Desk::Opened::~Opened()
{
    if (--desk_->open_ == 0 && desk_->enterWaits_) desk_->sendEnter(caller_);
}

} // namespace tamarok::qt
