#pragma once

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace tamarok::test {

/// What a run with standard error on a terminal shows there.
struct Screen {
    int status = -1;
    std::string text;     ///< with the control characters
    long peakMemory = -1; ///< KiB
};

/// Runs the program with standard error on a terminal of its own and standard output into `outputFile`.
inline Screen runOnTerminal(const std::vector<std::string>& arguments, const std::string& outputFile)
{
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal < 0 || ::grantpt(terminal) != 0 || ::unlockpt(terminal) != 0)
        throw std::system_error{errno, std::generic_category(), "terminal"};
    const std::string name = ::ptsname(terminal);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, name.c_str(), O_WRONLY | O_NOCTTY, 0);
    std::vector<std::string> words{TAMAROK_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    pid_t child = -1;
    const int failure = ::posix_spawn(&child, TAMAROK_PROGRAM, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw std::system_error{failure, std::generic_category(), TAMAROK_PROGRAM};

    Screen screen;
    std::array<char, 4096> buffer{};
    // The read fails once the child has closed its end.
    for (ssize_t count = 0; (count = ::read(terminal, buffer.data(), buffer.size())) > 0;)
        screen.text.append(buffer.data(), static_cast<std::size_t>(count));
    ::close(terminal);
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    screen.peakMemory = usage.ru_maxrss;
    screen.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return screen;
}

} // namespace tamarok::test
