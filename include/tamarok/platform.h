#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tamarok/date.h"
#include "tamarok/regional.h"

namespace tamarok {

class LocService;

/// The time of day, in local time.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Date now() const = 0;
};

/// A plain message box.
class MessageBox {
public:
    virtual ~MessageBox() = default;
    /// Shows a box and waits. @param flags the platform's message-box flags (16 stop, 48 warning,
    /// 64 information, plus the buttons). @return number of the button pressed (1 OK, 2 Cancel,
    /// 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No).
    virtual std::int16_t show(std::string_view text, std::int32_t flags, std::string_view title) = 0;
};

/// The keyboard, as far as dialogs send keys.
class Keyboard {
public:
    virtual ~Keyboard() = default;
    virtual void pressEnter() = 0; ///< one press and release of Enter
};

/// What the machine gives to the library, one per thread. Everything in it can be replaced, which
/// is how tests fix the date, record messages and answer dialogs.
struct Platform {
    Platform(); ///< machine's regional settings, system clock, messages to standard error, no dialogs

    Regional regional;
    std::shared_ptr<Clock> clock;
    std::shared_ptr<MessageBox> messageBox;
    std::shared_ptr<Keyboard> keyboard;
    /// Makes the language service for one operation; Error 91 is raised by users where it is unset.
    std::function<std::unique_ptr<LocService>()> makeLocService;

    /// The calling thread's platform.
    static Platform& current() noexcept;

    /// The language service for one operation, or Error 91 where none is installed.
    static std::unique_ptr<LocService> locService();

    /// Today's date without time, by the thread's clock.
    static Date today();
};

/// Makes `platform` the thread's platform for its own lifetime, and then gives the previous one
/// back. Scopes nest; a scope must end on the thread that began it.
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

/// A clock that stands still at `now`.
class FixedClock final : public Clock {
public:
    explicit FixedClock(Date now) : now_{now} {}
    Date now() const override { return now_; }
    void set(Date now) noexcept { now_ = now; }

private:
    Date now_;
};

} // namespace tamarok
