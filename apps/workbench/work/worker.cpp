#include "work/worker.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <utility>

#include "lists/record_list.h"

#include "tamarok/error.h"

namespace tamarok::workbench {

class Worker::State {
public:
    State(Open open, Deliver deliver) : open_{std::move(open)}, deliver_{std::move(deliver)} {}

    void post(Job job, Failed failed)
    {
        const std::scoped_lock lock{mutex_};
        tasks_.push_back({std::move(job), std::move(failed), stop_.get_token()});
        wake_.notify_all();
    }

    void stop()
    {
        const std::scoped_lock lock{mutex_};
        tasks_.clear();
        stop_.request_stop();
        stop_ = {};
        if (busy_ != nullptr) busy_->Cancel();
    }

    /// Lets the thread end after its job, and nothing more be told.
    void end()
    {
        const std::scoped_lock lock{mutex_};
        ending_ = true;
        deliver_ = {};
        wake_.notify_all();
    }

    /// Waits for the thread's end. A cancellation is lost where it comes just before its statement, so that it is
    /// repeated.
    bool endsWithin(std::chrono::milliseconds patience)
    {
        constexpr std::chrono::milliseconds pause{20};
        std::unique_lock lock{mutex_};
        for (std::chrono::milliseconds waited{0}; waited < patience; waited += pause) {
            if (wake_.wait_for(lock, pause, [this] { return ended_; })) return true;
            if (busy_ != nullptr) busy_->Cancel();
        }
        return ended_;
    }

    void run()
    {
        for (Task task; next(task);)
            carryOut(task);
        connection_.reset();
        const std::scoped_lock lock{mutex_};
        ended_ = true;
        wake_.notify_all();
    }

private:
    struct Task {
        Job job;
        Failed failed;
        std::stop_token stop;
    };

    bool next(Task& task)
    {
        std::unique_lock lock{mutex_};
        wake_.wait(lock, [this] { return ending_ || !tasks_.empty(); });
        if (ending_) return false;
        task = std::move(tasks_.front());
        tasks_.pop_front();
        return true;
    }

    /// A failure of the provider may mean that the connection is lost: the next job gets a new one.
    void carryOut(const Task& task)
    {
        const Tell tell = [this](std::function<void()> action) {
            const std::scoped_lock lock{mutex_};
            if (deliver_) deliver_(std::move(action));
        };
        const auto fail = [&](const std::string& reason) {
            if (!task.stop.stop_requested()) tell([failed = task.failed, reason] { failed(reason); });
        };
        try {
            if (!connection_) connection_ = open_();
            beBusy(connection_.get());
            task.job(connection_, task.stop, tell);
            beBusy(nullptr);
        } catch (const Stopped&) {
            beBusy(nullptr);
        } catch (const Error& error) {
            beBusy(nullptr);
            if (error.number == errors::providerFailure) connection_.reset();
            fail(error.description);
        } catch (const std::exception& error) {
            beBusy(nullptr);
            fail(error.what());
        }
    }

    void beBusy(const ado::Connection* connection)
    {
        const std::scoped_lock lock{mutex_};
        busy_ = connection;
    }

    Open open_;
    ado::ConnectionRef connection_; ///< of the thread alone
    std::mutex mutex_;
    std::condition_variable wake_;
    // Guarded by the mutex.
    Deliver deliver_; ///< empty once the worker has gone
    std::deque<Task> tasks_;
    std::stop_source stop_;                 ///< of all tasks since the last stop
    const ado::Connection* busy_ = nullptr; ///< the connection while a job uses it
    bool ending_ = false;
    bool ended_ = false;
};

Worker::Worker(Open open, const Platform& platform, Deliver deliver, Yard& yard) :
    state_{std::make_shared<State>(std::move(open), std::move(deliver))}, yard_{yard}, thread_{[state = state_,
                                                                                                platform, &yard] {
        yard.begin();
        {
            const PlatformScope scope{platform};
            state->run();
        }
        yard.end();
    }}
{}

Worker::~Worker()
{
    constexpr std::chrono::milliseconds patience{300};
    state_->stop();
    state_->end();
    if (state_->endsWithin(patience))
        thread_.join();
    else
        yard_.take(std::move(thread_));
}

void Worker::post(Job job, Failed failed)
{
    state_->post(std::move(job), std::move(failed));
}

void Worker::stop()
{
    state_->stop();
}

} // namespace tamarok::workbench
