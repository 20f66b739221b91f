#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tamarok/dialog_windows.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

/// Windows without pixels that act by a script in place of a user. They show the same as a real window: each has its
/// controls as headless ones, which a script reads by dotted names.
namespace tamarok::dialogs {

/// What a step of a script does.
enum class StepKind : std::uint8_t {
    Type,       ///< key presses in the grid or the focused box, one for each character of `text`
    Key,        ///< one key press, numbers[0]: 8 backspace, 13 Enter, 27 Escape
    Click,      ///< the button `text`; nothing happens if it is hidden or disabled
    Head,       ///< the head of grid column numbers[0], from 0
    SelectRow,  ///< row numbers[0], from 1, becomes the current one
    SelectRows, ///< the rows `numbers` are selected
    SelectNode, ///< the tree's node of the key `text`
    Set,        ///< `value` becomes the property `text`, such as "Text1" or "DataGrid1.Columns(0).Width"
    Read,       ///< reads the property `text`, such as "cmdOk.Visible"
    Navigate,   ///< the browser reports a finished page at the address `text`
    Resize,     ///< the window gets the width numbers[0] and the height numbers[1]
    Ok,         ///< the button cmdOk
    Cancel,     ///< the button cmdClose
    Close,      ///< the window's own close
};

struct DialogStep {
    StepKind kind = StepKind::Close;
    std::string text;
    std::vector<std::int32_t> numbers;
    Variant value;
    std::string written; ///< the step as its author wrote it, for messages
};

using DialogScript = std::vector<DialogStep>;

/// The scripts of the dialogs to come, and what the past ones gave.
class DialogScripts {
public:
    /// Appends a script; each dialog that is shown takes the oldest one.
    void add(DialogScript script) { waiting_.push_back(std::move(script)); }

    struct Report {
        bool shown = false;        ///< whether a dialog was shown
        std::vector<Variant> read; ///< the values of the steps `Read`, in order
        std::size_t left = 0;      ///< steps that were not carried out, since their dialog had gone
    };
    /// Returns what has happened since the last call.
    Report takeReport() { return std::exchange(report_, {}); }

private:
    friend class ScriptPlayer;
    std::deque<DialogScript> waiting_;
    Report report_;
};

/// Makes windows that act by scripts. A dialog without a script is closed at once. A script that ends before its dialog
/// does closes it; if the dialog refuses, `showModal` throws Error 5. A step that makes no sense for the dialog is
/// Error 5 and names the step.
class ScriptedWindows : public DialogWindows {
public:
    explicit ScriptedWindows(std::shared_ptr<DialogScripts> scripts = std::make_shared<DialogScripts>()) :
        scripts_{std::move(scripts)}
    {}
    std::unique_ptr<QuestionWindow> makeQuestion() override;
    std::unique_ptr<ProgressWindow> makeProgress() override;
    std::unique_ptr<TreeWindow> makeTree() override;
    std::unique_ptr<MapWindow> makeMap() override;
    std::unique_ptr<LookupWindow> makeLookup() override;

    DialogScripts& scripts() noexcept { return *scripts_; }

private:
    std::shared_ptr<DialogScripts> scripts_;
};

} // namespace tamarok::dialogs

#pragma GCC visibility pop
