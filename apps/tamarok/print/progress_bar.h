#pragma once

#include <chrono>
#include <string>

#include "tamarok_database/reference_database.h"

namespace tamarok::cli {

/// A progress bar on standard error; nothing is drawn where that is no terminal.
class ProgressBar {
public:
    ProgressBar();
    ~ProgressBar(); ///< clears the line

    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Draws the progress of the current phase. The time of a phase counts from the last drawing of the
    /// phase before it, that of the first phase from the bar's construction.
    void show(const database::Progress& progress);

private:
    using Time = std::chrono::steady_clock;
    bool visible_;
    Time::time_point shown_ = Time::now(); ///< last time
    Time::time_point phaseStart_ = shown_;
    std::string phase_;
};

} // namespace tamarok::cli
