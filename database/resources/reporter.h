#pragma once

#include <chrono>
#include <string_view>

#include "tamarok_database/progress.h"

namespace tamarok::database {

/// Calls the listener, and drops reports that follow the last one within a tenth of a second.
class Reporter {
public:
    explicit Reporter(const ProgressListener& listener) : listener_{listener} {}

    void report(const Progress& progress)
    {
        last_ = Clock::now();
        if (listener_) listener_(progress);
    }

    void reportThrottled(const Progress& progress)
    {
        if (listener_ && Clock::now() - last_ >= std::chrono::milliseconds{100}) report(progress);
    }

private:
    using Clock = std::chrono::steady_clock;
    const ProgressListener& listener_;
    Clock::time_point last_ = Clock::now();
};

/// Runs a phase whose work is not counted.
template <class Work>
void runPhase(Reporter& reporter, std::string_view name, Work work)
{
    reporter.report({name, 0, 1});
    work();
    reporter.report({name, 1, 1});
}

} // namespace tamarok::database
