#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tamarok/date.h"
#include "tamarok/files.h"
#include "tamarok/regional.h"

#pragma GCC visibility push(default)

namespace tamarok {

class LocService;
namespace ado {
class Connection;
}
namespace dialogs {
class DialogWindows;
class ProgressForm;
} // namespace dialogs

/// The clock of the machine.
class Clock {
public:
    virtual ~Clock() = default;
    /// Returns the present date and time in local time.
    virtual Date now() const = 0;
};

/// A plain message box.
class MessageBox {
public:
    virtual ~MessageBox() = default;
    /// Shows a message and waits for a button.
    /// @param flags  sum of the icon (16 stop, 48 warning, 64 information) and the buttons of the box
    /// @return the button pressed: 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No
    virtual std::int16_t show(std::string_view text, std::int32_t flags, std::string_view title) = 0;
};

/// Sends key presses to the active window.
class Keyboard {
public:
    virtual ~Keyboard() = default;
    /// Presses and releases Enter once.
    virtual void pressEnter() = 0;
};

/// The addresses of the map service, which belong to the installation. The map dialog finds them in the addresses of
/// pages as plain substrings.
struct MapEndpoints {
    std::string home;    ///< host of the vendor's home page
    std::string service; ///< address of the service, such as "https://maps.example"; a "/" at its end does not count
};

/// The services of the machine that the library uses. Each thread has one. Every part can be replaced: tests
/// fix the date, record messages and answer dialogs this way.
struct Platform {
    /// The machine's regional settings, clock and files, messages to standard error, no dialogs.
    Platform();

    Regional regional;
    std::shared_ptr<Clock> clock;
    std::shared_ptr<MessageBox> messageBox;
    std::shared_ptr<Keyboard> keyboard;
    std::shared_ptr<FileSystem> files;
    /// The files that are open under a number. They stay open until an operation or `closeAll` closes them, or the
    /// platform ends: that of a PlatformScope with the scope, that of a thread with the thread.
    FileNumbers fileNumbers;
    /// Makes the language service for one operation; may be unset.
    std::function<std::unique_ptr<LocService>()> makeLocService;
    /// Opens a connection by its text, for rows that the session's connection does not read; may be unset. A program
    /// sets it to `ado::BackendRegistry::open` of its back ends.
    std::function<std::shared_ptr<ado::Connection>(std::string_view connectionText)> makeConnection;
    /// Makes the windows of dialogs; may be unset.
    std::shared_ptr<dialogs::DialogWindows> dialogWindows;
    /// The progress window that `Comm_Forms::Info_Init` shows and later calls go on with; mostly empty.
    std::shared_ptr<dialogs::ProgressForm> progressForm;
    MapEndpoints mapEndpoints; ///< empty where the installation has no map service

    /// Returns the platform of the calling thread.
    static Platform& current() noexcept;

    /// Makes the language service of the calling thread's platform. Error 91 if none is set.
    static std::unique_ptr<LocService> locService();

    /// Opens a connection by the calling thread's platform. Error 91 if it opens none; whatever the back end raises.
    static std::shared_ptr<ado::Connection> connection(std::string_view connectionText);

    /// Presses Enter once on the keyboard of the calling thread's platform. Error 91 if none is set.
    static void pressEnter();

    /// Returns the maker of dialog windows of the calling thread's platform. Error 91 if none is set.
    static dialogs::DialogWindows& windows();

    /// Returns the file operations of the calling thread's platform. Error 91 if none are set.
    static FileSystem& fileSystem();

    /// Returns the present date and time by the calling thread's clock. Error 91 if no clock is set.
    static Date now();

    /// Returns today's date without time by the calling thread's clock. Error 91 if no clock is set.
    static Date today();
};

/// Makes a platform that of the calling thread; the destructor restores the previous one. Scopes may nest. A
/// scope must end on the thread that began it.
class PlatformScope {
public:
    explicit PlatformScope(Platform platform);
    ~PlatformScope();
    PlatformScope(const PlatformScope&) = delete;
    PlatformScope& operator=(const PlatformScope&) = delete;

    Platform& platform() noexcept { return platform_; }

private:
    Platform platform_;
    Platform* previous_;
};

/// A clock that always shows the same time.
class FixedClock final : public Clock {
public:
    explicit FixedClock(Date now) : now_{now} {}
    Date now() const override { return now_; }
    void set(Date now) noexcept { now_ = now; }

private:
    Date now_;
};

} // namespace tamarok

#pragma GCC visibility pop
