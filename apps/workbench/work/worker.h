#pragma once

#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <thread>

#include "work/yard.h"

#include "tamarok/ado.h"
#include "tamarok/platform.h"

namespace tamarok::workbench {

/// Carries out jobs one after another on a thread and a connection of its own, so that a window never waits for the
/// database. All members are called on the window's thread.
class Worker {
public:
    /// Opens the worker's connection, on its thread, before the first job and after a failure of the provider.
    using Open = std::function<ado::ConnectionRef()>;
    /// Carries a function out on the window's thread, later. Called by the worker's thread while the worker exists.
    using Deliver = std::function<void(std::function<void()>)>;
    /// What a job tells the window, as Deliver does; nothing once the worker has gone.
    using Tell = Deliver;
    /// A job ends soon after its token asks for it, by throwing Stopped or otherwise.
    using Job = std::function<void(const ado::ConnectionRef&, const std::stop_token&, const Tell&)>;
    /// Told, on the window's thread, why a job has failed. Not called for one that was stopped.
    using Failed = std::function<void(const std::string& reason)>;

    /// @param platform  of the thread: regional settings, language service
    /// @param yard      takes the thread of a worker that ends while the database still runs its statement; outlives it
    Worker(Open open, const Platform& platform, Deliver deliver, Yard& yard);
    /// Stops everything. Does not wait for a statement that the database goes on with.
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Appends a job.
    void post(Job job, Failed failed);
    /// Ends the running job, as soon as it and the database allow, and drops the waiting ones.
    void stop();

private:
    class State; ///< what the thread uses, which may outlive the worker

    std::shared_ptr<State> state_;
    Yard& yard_;
    std::thread thread_;
};

} // namespace tamarok::workbench
