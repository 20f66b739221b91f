#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

namespace tamarok::qt {

/// Error 5 unless the calling thread is that of a QApplication, which alone may show windows.
void requireApplication();

/// Shows a window above the active one and on its screen, though not owned by it: either may end first. To be called
/// before the window is shown.
void putAboveActiveWindow(QWidget& window);

/// Which dialogs of a program are open, and the Enter that waits until they are gone.
class Desk : public std::enable_shared_from_this<Desk> {
public:
    /// Presses Enter in the active window, as soon as the event at hand has ended and no dialog is open.
    void pressEnter();

    /// A dialog that is open while the object lives.
    class Opened {
    public:
        explicit Opened(std::shared_ptr<Desk> desk);
        ~Opened();
        Opened(const Opened&) = delete;
        Opened& operator=(const Opened&) = delete;

    private:
        std::shared_ptr<Desk> desk_;
        QPointer<QWidget> caller_; ///< the window that was active before
    };

private:
    void sendEnter(const QPointer<QWidget>& caller);

    int open_ = 0;
    bool enterWaits_ = false;
};

} // namespace tamarok::qt
