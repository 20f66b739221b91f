#pragma once

#include <array>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace tamarok::embedded::test {

/// A process of the program lock_child, told what to do by its arguments and by lines.
class Child {
public:
    explicit Child(std::vector<std::string> arguments)
    {
        std::array<int, 2> toChild{};
        std::array<int, 2> fromChild{};
        if (::pipe2(toChild.data(), O_CLOEXEC) != 0 || ::pipe2(fromChild.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error{"no pipe"};
        }
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, toChild[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, fromChild[1], STDOUT_FILENO);
        std::string program{LOCK_CHILD};
        std::vector<char*> pointers{program.data()};
        for (std::string& argument : arguments) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        const int failed = ::posix_spawn(&process_, LOCK_CHILD, &actions, nullptr, pointers.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        ::close(toChild[0]);
        ::close(fromChild[1]);
        in_ = toChild[1];
        out_ = fromChild[0];
        if (failed != 0) {
            process_ = -1;
            throw std::runtime_error{"the child program did not start"};
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child()
    {
        ::close(in_);
        ::close(out_);
        if (process_ > 0) {
            ::kill(process_, SIGKILL);
            ::waitpid(process_, nullptr, 0);
        }
    }

    /// The next line that the child writes; empty at its end.
    std::string line()
    {
        std::string text;
        char letter = 0;
        while (::read(out_, &letter, 1) == 1 && letter != '\n') {
            text.push_back(letter);
        }
        return text;
    }

    void tell(const std::string& text)
    {
        const std::string sent = text + "\n";
        if (::write(in_, sent.data(), sent.size()) != static_cast<ssize_t>(sent.size())) {
            throw std::runtime_error{"the child does not listen"};
        }
    }

    /// Ends it at once, as a crash does, and waits until it has gone.
    void kill()
    {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
        process_ = -1;
    }

    /// Stops it and waits until it stands.
    void stop()
    {
        ::kill(process_, SIGSTOP);
        ::waitpid(process_, nullptr, WUNTRACED);
    }

    /// Exit status after its own end, -1 where a signal ended it.
    int wait()
    {
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t process_ = -1;
    int in_ = -1;
    int out_ = -1;
};

} // namespace tamarok::embedded::test
