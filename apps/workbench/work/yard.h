#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace tamarok::workbench {

/// The threads of workers whose windows have gone while the database still runs their statements: not every driver can
/// end one. They end by themselves.
class Yard {
public:
    Yard() = default;
    ~Yard();
    Yard(const Yard&) = delete;
    Yard& operator=(const Yard&) = delete;

    /// Takes a thread over. May be called by the window's thread alone.
    void take(std::thread thread) { threads_.push_back(std::move(thread)); }
    /// A thread of the yard, or one that may come into it, tells that it begins or has ended.
    void begin();
    void end();

    /// Waits for all threads that were begun. Returns false if some still run.
    bool isEmptyWithin(std::chrono::milliseconds patience);

private:
    std::vector<std::thread> threads_;
    std::mutex mutex_;
    std::condition_variable ended_;
    int running_ = 0; ///< guarded by the mutex
};

} // namespace tamarok::workbench
