#include "print/progress_bar.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <unistd.h>

namespace tamarok::cli {

namespace {

constexpr std::int64_t barWidth = 40;

/// A rate such as ", 1200/s"; empty for a phase of one step and while the time is too short for a rate.
std::string rate(std::int64_t done, std::int64_t total, std::chrono::duration<double> time)
{
    constexpr std::chrono::milliseconds shortest{250};
    if (total <= 1 || time < shortest) return {};
    return ", " + std::to_string(static_cast<std::int64_t>(static_cast<double>(done) / time.count())) + "/s";
}

} // namespace

ProgressBar::ProgressBar() : visible_{::isatty(STDERR_FILENO) == 1} {}

ProgressBar::~ProgressBar()
{
    if (visible_) std::cerr << "\r\x1b[K" << std::flush;
}

void ProgressBar::show(const database::Progress& progress)
{
    if (!visible_) return;
    const Time::time_point now = Time::now();
    if (phase_ != progress.phase) {
        phase_ = progress.phase;
        phaseStart_ = shown_;
    }
    shown_ = now;
    const std::int64_t total = std::max<std::int64_t>(progress.total, 1);
    const std::int64_t done = std::clamp<std::int64_t>(progress.done, 0, total);
    const auto filled = static_cast<std::size_t>(done * barWidth / total);
    std::cerr << "\r[" << std::string(filled, '#') << std::string(static_cast<std::size_t>(barWidth) - filled, '.')
              << "] " << done * 100 / total << " %  " << phase_ << rate(done, total, now - phaseStart_) << "\x1b[K"
              << std::flush;
}

} // namespace tamarok::cli
