#pragma once

#include <chrono>
#include <string>

#include "database/reference_database.h"

namespace tamarok::cli {

/// A bar on standard error, drawn where that is a terminal and silent elsewhere.
class ProgressBar {
public:
    ProgressBar();
    ~ProgressBar(); ///< clears the line

    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Draws how far the present phase has come.
    void show(const database::Progress& progress);

private:
    using Time = std::chrono::steady_clock;
    bool visible_;
    Time::time_point phaseStart_ = Time::now();
    std::string phase_;
};

} // namespace tamarok::cli
