#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

#include "tamarok/ado.h"
#include "tamarok/platform.h"

namespace tamarok::workbench {

/// Carries out jobs one after another on a thread and a connection of its own, so that a window never waits for the
/// database. All members are called on the window's thread.
class Worker {
public:
    /// Opens the worker's connection, on its thread, before the first job and after a failure of the provider.
    using Open = std::function<ado::ConnectionRef()>;
    /// Carries a function out on the window's thread, later. May be called by any thread.
    using Deliver = std::function<void(std::function<void()>)>;
    /// A job delivers its result itself. It ends soon after the token asks for it, by throwing Stopped or otherwise.
    using Job = std::function<void(const ado::ConnectionRef&, const std::stop_token&)>;
    /// Told, on the window's thread, why a job has failed. Not called for one that was stopped.
    using Failed = std::function<void(const std::string& reason)>;

    /// @param platform  of the thread: regional settings, language service
    Worker(Open open, Platform platform, Deliver deliver);
    /// Stops everything and waits for the running job's end.
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Appends a job.
    void post(Job job, Failed failed);
    /// Ends the running job, as soon as it and the database allow, and drops the waiting ones.
    void stop();

private:
    struct Task {
        Job job;
        Failed failed;
        std::stop_token stop;
    };

    void run(const std::stop_token& ending, Platform platform);
    bool next(const std::stop_token& ending, Task& task);
    void carryOut(const Task& task);
    void beBusy(const ado::Connection* connection);

    Open open_;
    Deliver deliver_;
    ado::ConnectionRef connection_; ///< of the thread alone
    std::mutex mutex_;
    std::condition_variable_any wake_;
    // Guarded by the mutex.
    std::deque<Task> tasks_;
    std::stop_source stop_;                 ///< of all tasks since the last stop
    const ado::Connection* busy_ = nullptr; ///< the connection while a job uses it
    bool ended_ = false;                    ///< the thread
    std::jthread thread_;                   ///< last: it uses all others
};

} // namespace tamarok::workbench
