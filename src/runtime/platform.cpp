#include "tamarok/platform.h"

#include <chrono>
#include <ctime>
#include <iostream>
#include <utility>

#include "system_files.h"

#include "tamarok/error.h"
#include "tamarok/loc_service.h"

// The default services of a platform, and the platform of each thread.

namespace tamarok {

namespace {

/// The local time of the system, to the millisecond.
class SystemClock final : public Clock {
public:
    Date now() const override
    {
        const auto now = std::chrono::system_clock::now();
        const auto wholeSeconds = std::chrono::floor<std::chrono::seconds>(now);
        const std::time_t seconds = std::chrono::system_clock::to_time_t(wholeSeconds);
        std::tm local{};
        if (!toLocal(seconds, local))
            throw Error{errors::invalidArgument, "Invalid argument: the system clock gives no local time."};
        const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(now - wholeSeconds).count();
        return fromCivil({.year = local.tm_year + 1900,
                          .month = local.tm_mon + 1,
                          .day = local.tm_mday,
                          .hour = local.tm_hour,
                          .minute = local.tm_min,
                          .second = local.tm_sec < 60 ? local.tm_sec : 59, // a leap second repeats second 59
                          .millisecond = static_cast<std::int32_t>(rest)});
    }

private:
    static bool toLocal(std::time_t seconds, std::tm& local)
    {
#ifdef _WIN32
        return localtime_s(&local, &seconds) == 0;
#else
        return localtime_r(&seconds, &local) != nullptr;
#endif
    }
};

/// Writes messages to standard error and answers 1, OK: programs without a user interface must not wait.
class StandardErrorBox final : public MessageBox {
public:
    std::int16_t show(std::string_view text, std::int32_t, std::string_view title) override
    {
        std::cerr << title << ": " << text << std::endl;
        return 1;
    }
};

/// Presses no key: without a window nobody receives it.
class SilentKeyboard final : public Keyboard {
public:
    void pressEnter() override {}
};

/// The files of the machine. On Windows a program sets its own.
std::shared_ptr<FileSystem> filesOfMachine()
{
#ifdef _WIN32
    return nullptr;
#else
    return makeSystemFiles();
#endif
}

/// The platform of the innermost PlatformScope of the thread, null outside every scope.
thread_local Platform* scoped = nullptr;

} // namespace

Platform::Platform() :
    regional{Regional::ofMachine()}, clock{std::make_shared<SystemClock>()},
    messageBox{std::make_shared<StandardErrorBox>()}, keyboard{std::make_shared<SilentKeyboard>()},
    files{filesOfMachine()}
{}

Platform& Platform::current() noexcept
{
    if (scoped != nullptr) return *scoped;
    // Made at the first use in each thread, so that threads never share services by accident.
    thread_local Platform platform;
    return platform;
}

std::unique_ptr<LocService> Platform::locService()
{
    const auto& make = current().makeLocService;
    std::unique_ptr<LocService> service = make ? make() : nullptr;
    if (!service) throw Error{errors::objectNotSet, "Object not set: no language service is installed."};
    return service;
}

std::shared_ptr<ado::Connection> Platform::connection(std::string_view connectionText)
{
    const auto& make = current().makeConnection;
    if (!make) throw Error{errors::objectNotSet, "Object not set: the platform opens no connections."};
    return make(connectionText);
}

void Platform::pressEnter()
{
    const auto& keyboard = current().keyboard;
    if (!keyboard) throw Error{errors::objectNotSet, "Object not set: the platform has no keyboard."};
    keyboard->pressEnter();
}

dialogs::DialogWindows& Platform::windows()
{
    const auto& windows = current().dialogWindows;
    if (!windows) throw Error{errors::objectNotSet, "Object not set: the platform has no dialog windows."};
    return *windows;
}

FileSystem& Platform::fileSystem()
{
    const auto& files = current().files;
    if (!files) throw Error{errors::objectNotSet, "Object not set: the platform has no file operations."};
    return *files;
}

Date Platform::now()
{
    const auto& clock = current().clock;
    if (!clock) throw Error{errors::objectNotSet, "Object not set: the platform has no clock."};
    return clock->now();
}

Date Platform::today()
{
    return dayOf(now());
}

PlatformScope::PlatformScope(Platform platform) : platform_{std::move(platform)}, previous_{scoped}
{
    scoped = &platform_;
}

PlatformScope::~PlatformScope()
{
    scoped = previous_;
}

} // namespace tamarok
