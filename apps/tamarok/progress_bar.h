#pragma once

#include <chrono>
#include <cstdint>

namespace tamarok::cli {

/// A bar on standard error, drawn where that is a terminal and silent elsewhere.
class ProgressBar {
public:
    ProgressBar();
    ~ProgressBar(); ///< clears the line

    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// @param done,total  of the work; drawn at most ten times a second
    void show(std::int64_t done, std::int64_t total);

private:
    using Time = std::chrono::steady_clock;
    bool visible_;
    Time::time_point start_ = Time::now();
    Time::time_point drawn_{};
};

} // namespace tamarok::cli
