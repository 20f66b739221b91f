#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tamarok/platform.h"

namespace tamarok::cli {

/// A message box that nobody sees: it records what it would show and presses prepared buttons.
class RecordingMessageBox final : public MessageBox {
public:
    struct Shown {
        std::string text;
        std::int32_t flags = 0;
        std::string title;
    };

    /// The next prepared button, or 1 (OK) where none is left.
    std::int16_t show(std::string_view text, std::int32_t flags, std::string_view title) override;

    /// Buttons for the boxes to come, in place of those that are left.
    void prepare(std::deque<std::int16_t> buttons) { buttons_ = std::move(buttons); }

    /// What was shown since the last call.
    std::vector<Shown> take() { return std::exchange(shown_, {}); }

private:
    std::deque<std::int16_t> buttons_;
    std::vector<Shown> shown_;
};

/// The machine's platform with the language service, under `locale` where one is named.
Platform commandPlatform(std::string_view locale);

} // namespace tamarok::cli
