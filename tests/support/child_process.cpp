#include "support/child_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

extern char** environ;

namespace tamarok::test {

namespace {

struct Pipe {
    int read = -1;
    int write = -1;
};

Pipe makePipe()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error{errno, std::generic_category(), "pipe"};
    return {ends[0], ends[1]};
}

void closeOnce(int& descriptor)
{
    if (descriptor >= 0) ::close(std::exchange(descriptor, -1));
}

/// Reads what the pipe holds. Returns false at its end.
bool readSome(int descriptor, std::string& text)
{
    std::array<char, 65536> buffer{};
    const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
    if (count > 0) text.append(buffer.data(), static_cast<std::size_t>(count));
    return count > 0;
}

} // namespace

SpawnActions::SpawnActions()
{
    posix_spawn_file_actions_init(&actions_);
}

SpawnActions::~SpawnActions()
{
    posix_spawn_file_actions_destroy(&actions_);
}

void SpawnActions::connect(int descriptor, int stream)
{
    posix_spawn_file_actions_adddup2(&actions_, descriptor, stream);
}

void SpawnActions::open(const std::string& file, int flags, int stream)
{
    posix_spawn_file_actions_addopen(&actions_, stream, file.c_str(), flags, 0644);
}

int SpawnActions::spawn(pid_t& child, const std::string& program, const std::vector<std::string>& arguments) const
{
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return ::posix_spawn(&child, program.c_str(), &actions_, nullptr, pointers.data(), environ);
}

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                           StandardError standardError)
{
    std::signal(SIGPIPE, SIG_IGN);
    const bool isCaptured = standardError == StandardError::Captured;
    const Pipe in = makePipe();
    const Pipe out = makePipe();
    const Pipe err = isCaptured ? makePipe() : Pipe{};
    SpawnActions actions;
    actions.connect(in.read, STDIN_FILENO);
    actions.connect(out.write, STDOUT_FILENO);
    if (isCaptured) actions.connect(err.write, STDERR_FILENO);
    const int failure = actions.spawn(id_, program, arguments);
    for (int end : {in.read, out.write, err.write})
        closeOnce(end);
    input_ = in.write;
    output_ = out.read;
    errors_ = err.read;
    if (failure != 0) {
        id_ = -1;
        throw std::system_error{failure, std::generic_category(), program};
    }
}

ChildProcess::~ChildProcess()
{
    for (int* descriptor : {&input_, &output_, &errors_})
        closeOnce(*descriptor);
    if (id_ > 0) kill();
}

void ChildProcess::send(int signal) const
{
    ::kill(id_, signal);
}

void ChildProcess::closeOutput()
{
    closeOnce(output_);
}

void ChildProcess::stop() const
{
    send(SIGSTOP);
    ::waitpid(id_, nullptr, WUNTRACED);
}

void ChildProcess::kill()
{
    send(SIGKILL);
    wait();
}

void ChildProcess::tell(const std::string& line)
{
    const std::string sent = line + "\n";
    if (::write(input_, sent.data(), sent.size()) != static_cast<ssize_t>(sent.size()))
        throw std::runtime_error{"the child does not read its input"};
}

std::string ChildProcess::line()
{
    std::string text;
    char character = 0;
    while (::read(output_, &character, 1) == 1 && character != '\n')
        text += character;
    return text;
}

std::string ChildProcess::ask(const std::string& request)
{
    tell(request);
    return line();
}

Outcome ChildProcess::finish(std::string_view input)
{
    Outcome outcome;
    ::fcntl(input_, F_SETFL, O_NONBLOCK);
    if (input.empty()) closeOnce(input_);
    while (output_ >= 0 || errors_ >= 0) {
        std::array<pollfd, 3> watched{pollfd{output_, POLLIN, 0}, pollfd{errors_, POLLIN, 0},
                                      pollfd{input_, POLLOUT, 0}};
        ::poll(watched.data(), watched.size(), -1);
        if (watched[0].revents != 0 && !readSome(output_, outcome.output)) closeOnce(output_);
        if (watched[1].revents != 0 && !readSome(errors_, outcome.errors)) closeOnce(errors_);
        if (watched[2].revents != 0) {
            const ssize_t written = ::write(input_, input.data(), input.size());
            if (written > 0) input.remove_prefix(static_cast<std::size_t>(written));
            if (input.empty() || (written < 0 && errno != EAGAIN)) closeOnce(input_);
        }
    }
    outcome.status = wait();
    return outcome;
}

int ChildProcess::wait()
{
    int status = 0;
    ::waitpid(std::exchange(id_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

Outcome runProgram(const std::string& program, const std::vector<std::string>& arguments, std::string_view input)
{
    return ChildProcess{program, arguments}.finish(input);
}

} // namespace tamarok::test
