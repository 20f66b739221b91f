#include "support/terminal.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "support/child_process.h"

namespace tamarok::test {

namespace {

/// The near end of a pseudo-terminal.
class Terminal {
public:
    explicit Terminal(unsigned short columns) : descriptor_{::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)}
    {
        winsize size{};
        size.ws_row = 24;
        size.ws_col = columns;
        if (descriptor_ >= 0 && ::grantpt(descriptor_) == 0 && ::unlockpt(descriptor_) == 0 &&
            ::ioctl(descriptor_, TIOCSWINSZ, &size) == 0)
            return;
        const std::error_code error{errno, std::generic_category()};
        ::close(descriptor_);
        throw std::system_error{error, "terminal"};
    }
    ~Terminal() { ::close(descriptor_); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// Name of the far end, for the program.
    std::string name() const { return ::ptsname(descriptor_); }

    /// All that is written until the far end is closed.
    std::string readAll() const
    {
        std::string text;
        std::array<char, 4096> buffer{};
        for (ssize_t count = 0; (count = ::read(descriptor_, buffer.data(), buffer.size())) > 0;)
            text.append(buffer.data(), static_cast<std::size_t>(count));
        return text;
    }

private:
    int descriptor_;
};

} // namespace

Screen runOnTerminal(const std::string& program, const std::vector<std::string>& arguments,
                     const std::string& outputFile, unsigned short columns)
{
    const Terminal terminal{columns};
    SpawnActions actions;
    actions.open(outputFile, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    actions.open(terminal.name(), O_WRONLY | O_NOCTTY, STDERR_FILENO);
    pid_t child = -1;
    if (const int failure = actions.spawn(child, program, arguments); failure != 0)
        throw std::system_error{failure, std::generic_category(), program};

    Screen screen;
    screen.text = terminal.readAll();
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    screen.peakMemory = usage.ru_maxrss;
    screen.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return screen;
}

} // namespace tamarok::test
