#include <algorithm>

#include "script_player.h"

#include "tamarok/text.h"

namespace tamarok::dialogs {

namespace {

/// Width of a character of a label without a window.
constexpr float characterWidth = 105;
constexpr float lineHeight = 240;

/// Returns the size of a text of one or more lines.
Size extentOf(std::string_view text)
{
    std::size_t longest = 0;
    std::size_t lines = 0;
    for (bool more = true; more; ++lines) {
        const std::size_t end = text.find('\n');
        longest = std::max(longest, text::length(text.substr(0, end)));
        more = end != std::string_view::npos;
        if (more) text.remove_prefix(end + 1);
    }
    return {characterWidth * static_cast<float>(longest), lineHeight * static_cast<float>(lines)};
}

class ScriptedQuestion final : public Scripted<QuestionWindow> {
public:
    explicit ScriptedQuestion(std::shared_ptr<DialogScripts> scripts) : Scripted{"F_MessageBox_All", std::move(scripts)}
    {
        struct Button {
            std::string_view name;
            std::string_view caption;
        };
        static constexpr Button buttons[]{{"cmdYes", "Yes$"},
                                          {"cmdYesAll", "YesAll$"},
                                          {"cmdNo", "No$"},
                                          {"cmdNoAll", "NoAll$"},
                                          {"cmdExit", "Exit$"}};
        controls().resize({6000, 2000});
        controls().add(std::make_shared<controls::Label>(), "lblText", {150, 150, 0, lineHeight});
        for (const Button& button : buttons) {
            controls().addButton(button.name, {0, 1000, buttonWidth, buttonHeight});
            controls().text(button.name, button.caption);
        }
    }

    using Scripted::text;
    /// The label is as large as its text.
    void text(std::string_view control, std::string_view text) override
    {
        Scripted::text(control, text);
        if (control != "lblText") return;
        const Size extent = extentOf(text);
        const Box box = place(control);
        place(control, {box.left, box.top, extent.width, extent.height});
    }
    using Scripted::place;
};

} // namespace

std::unique_ptr<QuestionWindow> ScriptedWindows::makeQuestion()
{
    return std::make_unique<ScriptedQuestion>(scripts_);
}

} // namespace tamarok::dialogs
