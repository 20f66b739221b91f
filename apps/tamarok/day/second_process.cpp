#include "day/second_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "tamarok/error.h"

extern char** environ;

namespace tamarok::cli::day {

namespace {

constexpr const char* ownProgram = "/proc/self/exe";
constexpr std::int32_t deviceFailure = errors::deviceError;

[[noreturn]] void fail(const std::string& what)
{
    throw Error{deviceFailure, "The second process " + what + ".", "tamarok day"};
}

void closeOnce(int& descriptor) noexcept
{
    if (descriptor >= 0) ::close(std::exchange(descriptor, -1));
}

} // namespace

/// The process is complete before it connects: a failure of that ends it by the destructor.
SecondProcess::SecondProcess(const DatabaseChoice& database) : SecondProcess{}
{
    connect("db", database);
}

/// Starts the program with its standard input and output tied to two pipes. Both ends are closed on
/// execution, so that the child keeps only the two that become its streams.
SecondProcess::SecondProcess()
{
    std::array<int, 2> in{-1, -1};
    std::array<int, 2> out{-1, -1};
    if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0)
        fail("has no pipe: " + std::generic_category().message(errno));
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    std::array<std::string, 2> words{"tamarok", "call"};
    std::array<char*, 3> pointers{words[0].data(), words[1].data(), nullptr};
    const int failure = ::posix_spawn(&process_, ownProgram, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    closeOnce(in[0]);
    closeOnce(out[1]);
    input_ = in[1];
    output_ = out[0];
    if (failure == 0) return;
    process_ = -1;
    closeOnce(input_);
    closeOnce(output_);
    fail("does not start: " + std::generic_category().message(failure));
}

SecondProcess::~SecondProcess()
{
    crash();
    closeOnce(input_);
    closeOnce(output_);
}

/// The text of a server may hold a password: all users of the machine see the words of a command line, none the pipe.
void SecondProcess::connect(const std::string& name, const DatabaseChoice& database)
{
    nlohmann::json request{{"connect", name}};
    request[database.odbc ? "odbc" : "db"] = database.odbc ? *database.odbc : database.file;
    ask(request.dump());
}

bool SecondProcess::ask(const std::string& request)
{
    const std::string line = request + "\n";
    if (::write(input_, line.data(), line.size()) != static_cast<ssize_t>(line.size())) fail("does not listen");
    const auto reply = nlohmann::json::parse(answer(), nullptr, false);
    if (!reply.is_object()) fail("has ended");
    if (reply.contains("error")) fail("fails: " + reply["error"].dump());
    return reply.contains("result") && reply["result"] == true;
}

void SecondProcess::crash() noexcept
{
    if (process_ < 0) return;
    ::kill(process_, SIGKILL);
    while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {}
    process_ = -1;
}

std::string SecondProcess::answer()
{
    std::string line;
    char letter = 0;
    for (;;) {
        const ssize_t count = ::read(output_, &letter, 1);
        if (count < 0 && errno == EINTR) continue;
        if (count != 1 || letter == '\n') return line;
        line += letter;
    }
}

} // namespace tamarok::cli::day
