#pragma once

#include <chrono>
#include <string>

#include "tamarok_database/reference_database.h"

namespace tamarok::cli {

/// A bar on standard error, drawn where that is a terminal and silent elsewhere.
class ProgressBar {
public:
    ProgressBar();
    ~ProgressBar(); ///< clears the line

    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Draws how far the present phase has come. A phase begins where the one before it was shown last, the
    /// first one with the bar.
    void show(const database::Progress& progress);

private:
    using Time = std::chrono::steady_clock;
    bool visible_;
    Time::time_point shown_ = Time::now(); ///< last time
    Time::time_point phaseStart_ = shown_;
    std::string phase_;
};

} // namespace tamarok::cli
