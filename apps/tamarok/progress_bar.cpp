#include "progress_bar.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <unistd.h>

namespace tamarok::cli {

namespace {

constexpr std::int64_t barWidth = 40;
constexpr std::chrono::milliseconds pause{100};

} // namespace

ProgressBar::ProgressBar() : visible_{::isatty(STDERR_FILENO) == 1} {}

ProgressBar::~ProgressBar()
{
    if (visible_) std::cerr << "\r\x1b[K" << std::flush;
}

void ProgressBar::show(std::int64_t done, std::int64_t total)
{
    const Time::time_point now = Time::now();
    if (!visible_ || total <= 0 || now - drawn_ < pause) return;
    drawn_ = now;
    const std::int64_t part = std::clamp<std::int64_t>(done, 0, total);
    const auto filled = static_cast<std::size_t>(part * barWidth / total);
    const double seconds = std::chrono::duration<double>(now - start_).count();
    const auto rate = static_cast<std::int64_t>(static_cast<double>(part) / std::max(seconds, 0.001));
    std::cerr << "\r[" << std::string(filled, '#') << std::string(static_cast<std::size_t>(barWidth) - filled, '.')
              << "] " << part * 100 / total << " %  " << rate << " logs/s\x1b[K" << std::flush;
}

} // namespace tamarok::cli
