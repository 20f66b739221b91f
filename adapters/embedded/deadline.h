#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace tamarok::embedded {

/// The end of a statement by time-out, or by another thread. The time begins with the first check, so that a statement
/// whose rows come quickly never reads the clock.
class Deadline {
public:
    using Clock = std::chrono::steady_clock;

    /// @param seconds  0 is without limit
    void arm(std::int32_t seconds) noexcept
    {
        seconds_ = seconds;
        running_ = false;
        cancelled_.store(false, std::memory_order_relaxed);
    }

    /// Lets the statement end at its next check. May be called by any thread.
    void cancel() noexcept { cancelled_.store(true, std::memory_order_relaxed); }
    bool cancelled() const noexcept { return cancelled_.load(std::memory_order_relaxed); }

    bool expired() noexcept
    {
        if (cancelled()) {
            return true;
        }
        if (seconds_ <= 0) {
            return false;
        }
        const Clock::time_point now = Clock::now();
        if (!running_) {
            running_ = true;
            end_ = now + std::chrono::seconds{seconds_};
            return false;
        }
        return now >= end_;
    }

    /// Counts a piece of work and reads the clock at each 1024th.
    bool expiredAtWork() noexcept
    {
        constexpr std::uint32_t often = 1023;
        return (++work_ & often) == 0 && expired();
    }

    std::int32_t seconds() const noexcept { return seconds_; }

private:
    std::int32_t seconds_ = 0;
    bool running_ = false;
    std::atomic<bool> cancelled_ = false;
    std::uint32_t work_ = 0;
    Clock::time_point end_;
};

} // namespace tamarok::embedded
