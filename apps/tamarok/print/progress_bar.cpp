#include "print/progress_bar.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

#include "tamarok/text.h"

namespace tamarok::cli {

namespace {

constexpr std::size_t widestBar = 40;
constexpr std::size_t usualWidth = 80; // where the terminal does not tell its width

std::size_t terminalWidth()
{
    winsize size{};
    const bool known = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : usualWidth;
}

/// A rate such as ", 1200/s"; empty for a phase of one step and while the time is too short for a rate.
std::string rate(std::int64_t done, std::int64_t total, std::chrono::duration<double> time)
{
    constexpr std::chrono::milliseconds shortest{250};
    if (total <= 1 || time < shortest) return {};
    return ", " + std::to_string(static_cast<std::int64_t>(static_cast<double>(done) / time.count())) + "/s";
}

/// A line such as "[####....] 50 %  Logs, 1200/s" that is shorter than the terminal, so that it never wraps: a
/// narrow one gets a shorter bar, a very narrow one no bar, and the text is cut.
std::string drawn(std::int64_t done, std::int64_t total, const std::string& text, std::size_t width)
{
    std::string line = std::to_string(done * 100 / total) + " %  " + text;
    const std::size_t brackets = std::string_view{"[] "}.size();
    const std::size_t room = width > line.size() + brackets + 1 ? width - line.size() - brackets - 1 : 0;
    const std::size_t bar = std::min(room, widestBar);
    if (bar > 0) {
        const auto filled = static_cast<std::size_t>(done * static_cast<std::int64_t>(bar) / total);
        line.insert(0, "[" + std::string(filled, '#') + std::string(bar - filled, '.') + "] ");
    }
    return std::string{text::left(line, width - 1)};
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
    std::cerr << "\r" << drawn(done, total, phase_ + rate(done, total, now - phaseStart_), terminalWidth()) << "\x1b[K"
              << std::flush;
}

} // namespace tamarok::cli
