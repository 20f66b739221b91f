#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "tamarok/dialog_windows.h"
#include "tamarok/tmkvar.h"

namespace tamarok::dialogs {

/// The question with up to five buttons.
class QuestionForm final : public DialogEvents {
public:
    static constexpr std::size_t buttonCount = 5;

    explicit QuestionForm(QuestionWindow& window) : window_{window} {}

    /// Shows the question. See Comm_Forms::MessageBox_All.
    /// @param captions  numbers of the buttons' texts in the order yes, yes to all, no, no to all, stop
    std::int16_t run(const TmkVar& session, std::string_view text, std::int32_t caption,
                     const std::array<std::int32_t, buttonCount>& captions);

    void clicked(std::string_view button) override;
    void closeAsked() override { window_.close(); }

private:
    void placeButtons(const std::array<std::int32_t, buttonCount>& captions);

    QuestionWindow& window_;
    std::int16_t result_ = 0;
};

} // namespace tamarok::dialogs
