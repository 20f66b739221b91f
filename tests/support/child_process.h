#pragma once

#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace tamarok::test {

/// What a program that has ended left behind.
struct Outcome {
    int status = -1; ///< exit status, or 128 plus the signal that ended it
    std::string output;
    std::string errors;
};

/// What the standard streams of a program are connected to when it starts.
class SpawnActions {
public:
    SpawnActions();
    ~SpawnActions();
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;

    /// Connects an open descriptor to a stream of the child.
    void connect(int descriptor, int stream);
    /// Opens a file as a stream of the child.
    void open(const std::string& file, int flags, int stream);
    /// Starts the program. @return 0, or the number of the system's error
    int spawn(pid_t& child, const std::string& program, const std::vector<std::string>& arguments) const;

private:
    posix_spawn_file_actions_t actions_;
};

/// Where a child writes its standard error.
enum class StandardError { Captured, Inherited };

/// A program as a child process, its standard streams connected to pipes.
class ChildProcess {
public:
    ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                 StandardError standardError = StandardError::Captured);
    ~ChildProcess(); ///< kills the child if it still runs
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t id() const noexcept { return id_; }

    /// Writes a line to the child. Throws if the child does not read it.
    void tell(const std::string& line);
    /// Returns the next line that the child writes, without its end; "" at the end of the output.
    std::string line();
    /// Writes a request of one line and returns the answer of one line.
    std::string ask(const std::string& request);
    /// Closes the pipe that takes the child's standard output.
    void closeOutput();
    /// Writes `input`, closes standard input, reads both outputs to their ends, and waits for the child.
    Outcome finish(std::string_view input = {});

    void send(int signal) const;
    /// Stops the child and waits until it stands still.
    void stop() const;
    /// Kills the child, as a crash does, and waits until it has gone.
    void kill();
    /// Waits for the child's end. @return exit status, or 128 plus the signal that ended it
    int wait();

private:
    pid_t id_ = -1;
    int input_ = -1;
    int output_ = -1;
    int errors_ = -1; ///< -1 if standard error is inherited
};

/// Runs a program to its end.
Outcome runProgram(const std::string& program, const std::vector<std::string>& arguments, std::string_view input = {});

} // namespace tamarok::test
