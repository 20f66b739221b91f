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

/// A message box without a window: it records each message and answers with prepared buttons.
class RecordingMessageBox final : public MessageBox {
public:
    struct Shown {
        std::string text;
        std::int32_t flags = 0;
        std::string title;
    };

    /// The next prepared button, or 1 (OK) where none is left.
    std::int16_t show(std::string_view text, std::int32_t flags, std::string_view title) override;

    /// Sets the buttons for the next boxes; earlier ones that were not used are dropped.
    void prepare(std::deque<std::int16_t> buttons) { buttons_ = std::move(buttons); }

    /// The messages since the last call.
    std::vector<Shown> take() { return std::exchange(shown_, {}); }

private:
    std::deque<std::int16_t> buttons_;
    std::vector<Shown> shown_;
};

/// A keyboard that records what was pressed.
class RecordingKeyboard final : public Keyboard {
public:
    void pressEnter() override { pressed_.push_back(enter); }

    /// The codes of the keys since the last call.
    std::vector<std::int16_t> take() { return std::exchange(pressed_, {}); }

private:
    static constexpr std::int16_t enter = 13;
    std::vector<std::int16_t> pressed_;
};

/// The machine's platform with the language service. @param locale  name of regional settings; empty: the
/// machine's. Error 5 for an unknown name.
Platform commandPlatform(std::string_view locale);

} // namespace tamarok::cli
