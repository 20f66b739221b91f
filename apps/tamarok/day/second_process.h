#pragma once

#include <string>
#include <sys/types.h>

#include "connections.h"

namespace tamarok::cli::day {

/// A workstation in a process of its own: this program as `tamarok call` on a database. The
/// destructor kills it, as a crash would.
class SecondProcess {
public:
    explicit SecondProcess(const DatabaseChoice& database);
    ~SecondProcess();
    SecondProcess(const SecondProcess&) = delete;
    SecondProcess& operator=(const SecondProcess&) = delete;

    /// Opens a connection there under a name. Errors as `ask`.
    void connect(const std::string& name, const DatabaseChoice& database);

    /// Sends one request of the call host. @return whether the result is true
    /// Error 57 where the process does not answer or answers with an error.
    bool ask(const std::string& request);

    /// Kills it and waits until it has gone.
    void crash() noexcept;

private:
    SecondProcess();
    std::string answer();

    pid_t process_ = -1;
    int input_ = -1;
    int output_ = -1;
};

} // namespace tamarok::cli::day
