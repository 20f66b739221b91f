#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tamarok/dialog_window.h"
#include "tamarok/lookup_window.h"

#pragma GCC visibility push(default)

/// The windows of the single dialogs, and their maker.
namespace tamarok::dialogs {

/// The question with up to five buttons: label `lblText`, as wide as its text; buttons `cmdYes`, `cmdYesAll`, `cmdNo`,
/// `cmdNoAll`, `cmdExit`.
class QuestionWindow : public ModalWindow<DialogEvents> {};

/// The progress window: label `LbInfo1`, bar `ProgressBar1` from 0 to 100 at first.
class ProgressWindow : public DialogWindow {
public:
    /// Shows the window and returns at once.
    virtual void show() = 0;
    /// Sets the end of the bar's range, and its value, which is inside the range.
    virtual void maximum(float maximum) = 0;
    virtual void value(float value) = 0;
    /// Draws the window at once: no events are handled while the caller works.
    virtual void repaint() = 0;
};

/// The tree dialog: tree `TreeView1`, buttons `cmdOk`, `cmdClose`. Nodes go by their keys.
class TreeWindow : public ModalWindow<DialogEvents> {
public:
    virtual void clearTree() = 0;
    virtual void indentation(float twips) = 0;
    /// Adds a node as the last child of its parent, the root for an empty `parent`. Error 35602 for a key that the
    /// tree has, 35601 for a parent that it has not.
    virtual void addNode(std::string_view parent, std::string_view key, std::string_view text) = 0;
    virtual void expandNode(std::string_view key) = 0;
    /// Selects a node and scrolls to it, its parents expanded.
    virtual void selectNode(std::string_view key) = 0;
    /// Returns the key of the node that the user or `selectNode` selected.
    virtual std::optional<std::string> selectedNode() const = 0;
};

/// What else the user does with the map.
class MapEvents : public DialogEvents {
public:
    /// The browser shows a page that it has loaded to its end.
    virtual void pageFinished() = 0;
};

/// The map dialog: browser `WebBrowser1`, button `btnClose`.
class MapWindow : public ModalWindow<MapEvents> {
public:
    /// Begins to load a page.
    virtual void navigate(std::string_view address) = 0;
    /// Returns the address of the page that the browser shows.
    virtual std::string address() const = 0;
};

/// Makes the windows of dialogs. Adapters implement it; see `Platform::dialogWindows`.
class DialogWindows {
public:
    virtual ~DialogWindows() = default;
    virtual std::unique_ptr<QuestionWindow> makeQuestion() = 0;
    virtual std::unique_ptr<ProgressWindow> makeProgress() = 0;
    virtual std::unique_ptr<TreeWindow> makeTree() = 0;
    virtual std::unique_ptr<MapWindow> makeMap() = 0;
    virtual std::unique_ptr<LookupWindow> makeLookup() = 0;
};

} // namespace tamarok::dialogs

#pragma GCC visibility pop
