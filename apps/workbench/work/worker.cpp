#include "work/worker.h"

#include <chrono>
#include <exception>
#include <utility>

#include "lists/record_list.h"

#include "tamarok/error.h"

namespace tamarok::workbench {

Worker::Worker(Open open, Platform platform, Deliver deliver) :
    open_{std::move(open)}, deliver_{std::move(deliver)}, thread_{[this](const std::stop_token& ending, Platform own) {
                                                                      run(ending, std::move(own));
                                                                  },
                                                                  std::move(platform)}
{}

/// A cancellation is lost where it comes just before its statement, so that it is repeated.
Worker::~Worker()
{
    constexpr std::chrono::milliseconds pause{20};
    stop();
    thread_.request_stop();
    std::unique_lock lock{mutex_};
    while (!wake_.wait_for(lock, pause, [this] { return ended_; }))
        if (busy_ != nullptr) busy_->Cancel();
}

void Worker::post(Job job, Failed failed)
{
    const std::scoped_lock lock{mutex_};
    tasks_.push_back({std::move(job), std::move(failed), stop_.get_token()});
    wake_.notify_all();
}

void Worker::stop()
{
    const std::scoped_lock lock{mutex_};
    tasks_.clear();
    stop_.request_stop();
    stop_ = {};
    if (busy_ != nullptr) busy_->Cancel();
}

void Worker::run(const std::stop_token& ending, Platform platform)
{
    {
        const PlatformScope scope{std::move(platform)};
        for (Task task; next(ending, task);)
            carryOut(task);
        connection_.reset();
    }
    const std::scoped_lock lock{mutex_};
    ended_ = true;
    wake_.notify_all();
}

bool Worker::next(const std::stop_token& ending, Task& task)
{
    std::unique_lock lock{mutex_};
    if (!wake_.wait(lock, ending, [this] { return !tasks_.empty(); })) return false;
    task = std::move(tasks_.front());
    tasks_.pop_front();
    return true;
}

/// A failure of the provider may mean that the connection is lost: the next job gets a new one.
void Worker::carryOut(const Task& task)
{
    const auto tell = [&](const std::string& reason) {
        if (task.stop.stop_requested()) return;
        deliver_([failed = task.failed, reason] { failed(reason); });
    };
    try {
        if (!connection_) connection_ = open_();
        beBusy(connection_.get());
        task.job(connection_, task.stop);
        beBusy(nullptr);
    } catch (const Stopped&) {
        beBusy(nullptr);
    } catch (const Error& error) {
        beBusy(nullptr);
        if (error.number == errors::providerFailure) connection_.reset();
        tell(error.description);
    } catch (const std::exception& error) {
        beBusy(nullptr);
        tell(error.what());
    }
}

void Worker::beBusy(const ado::Connection* connection)
{
    const std::scoped_lock lock{mutex_};
    busy_ = connection;
}

} // namespace tamarok::workbench
