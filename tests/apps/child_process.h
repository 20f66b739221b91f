#pragma once

#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace tamarok::test {

struct Outcome {
    int status = -1; ///< exit status, or 128 plus the signal that ended it
    std::string output;
    std::string errors;
};

/// What the streams of the program are tied to when it starts.
class SpawnActions {
public:
    SpawnActions();
    ~SpawnActions();
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;

    void connect(int descriptor, int stream);
    void open(const std::string& file, int flags, int stream);
    /// Starts the program. @return 0, or the number of the system's error
    int spawn(pid_t& child, const std::vector<std::string>& arguments) const;

private:
    posix_spawn_file_actions_t actions_;
};

/// The real program as a child, its three streams tied to pipes.
class ChildProcess {
public:
    explicit ChildProcess(const std::vector<std::string>& arguments);
    ~ChildProcess(); ///< kills it if it still runs
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t id() const noexcept { return id_; }
    void send(int signal) const;
    /// One request and its answer, both a line.
    std::string ask(const std::string& line);
    /// Closes the pipe that takes its standard output.
    void closeOutput();
    /// Writes `input`, closes standard input, and reads both outputs to their ends.
    Outcome finish(std::string_view input = {});

private:
    int wait();

    pid_t id_ = -1;
    int input_ = -1;
    int output_ = -1;
    int errors_ = -1;
};

/// Runs the program to its end.
Outcome run(const std::vector<std::string>& arguments, std::string_view input = {});

} // namespace tamarok::test
