#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "tamarok/dialog_windows.h"

namespace tamarok::dialogs {

/// The progress window from its making to its release: its label, its bar from 0 on, and its value.
class ProgressForm {
public:
    /// Returns the one of the calling thread's platform, which is made, hidden, if there is none. Error 91 if the
    /// platform has no dialog windows.
    static ProgressForm& current();
    /// Closes it, if there is one.
    static void release();

    explicit ProgressForm(std::unique_ptr<ProgressWindow> window) : window_{std::move(window)} {}
    ~ProgressForm() { window_->close(); }
    ProgressForm(const ProgressForm&) = delete;
    ProgressForm& operator=(const ProgressForm&) = delete;

    /// Sets the end of the range and shows the window. Error 380 for an end below the beginning.
    void start(std::int32_t maximum);

    const std::string& label() const noexcept { return label_; }
    void label(std::string_view text);

    /// Returns the value as a whole number. Error 6 beyond the range of a Long.
    std::int32_t value() const;
    /// Error 380 for a value outside the range.
    void value(std::int32_t value);

private:
    std::unique_ptr<ProgressWindow> window_;
    std::string label_;
    float value_ = 0;
    float maximum_ = 100;
};

} // namespace tamarok::dialogs
