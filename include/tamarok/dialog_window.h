#pragma once

#include <string>
#include <string_view>

#include "tamarok/object.h"

#pragma GCC visibility push(default)

/// Windows of the library's dialogs. A presenter of the core decides what a dialog shows and does; a window shows it
/// and tells the presenter what the user does. Controls go by their names, such as "cmdOk". Sizes and positions are in
/// twips.
namespace tamarok::dialogs {

struct Size {
    float width = 0;
    float height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

/// A place inside a window, from its upper left corner.
struct Box {
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
    friend bool operator==(const Box&, const Box&) = default;
};

/// What the user does with a window. Presenters implement it; a dialog with further events extends it. An error that a
/// presenter throws closes the window and reaches the caller of `ModalWindow::showModal`.
class DialogEvents {
public:
    virtual ~DialogEvents() = default;
    /// A visible and enabled button was pressed.
    virtual void clicked(std::string_view button) = 0;
    /// The window is about to appear, or the user has changed its size.
    virtual void resized() {}
    /// The user closes the window by its own means. The presenter calls `DialogWindow::close` unless it refuses.
    virtual void closeAsked() = 0;
};

/// What every window of a dialog can do. A dialog with further controls extends it. A window is shown once.
/// Error 5 for a control that the window does not have.
class DialogWindow {
public:
    virtual ~DialogWindow() = default;

    /// Sets the title.
    virtual void caption(std::string_view text) = 0;
    /// Returns the size with the borders, or without.
    virtual Size size() const = 0;
    virtual Size innerSize() const = 0;
    /// Sets the size with the borders.
    virtual void resize(Size size) = 0;

    /// Sets the caption of a button, label or frame, or the text of a box.
    virtual void text(std::string_view control, std::string_view text) = 0;
    /// Returns it, as the user left it.
    virtual std::string text(std::string_view control) const = 0;
    virtual void visible(std::string_view control, bool visible) = 0;
    virtual void enabled(std::string_view control, bool enabled) = 0;
    virtual Box place(std::string_view control) const = 0;
    virtual void place(std::string_view control, const Box& box) = 0;
    /// Shows a control above those that overlap it.
    virtual void bringToFront(std::string_view control) = 0;
    /// Gives a control the focus. Error 5 if it is hidden or disabled.
    virtual void focus(std::string_view control) = 0;

    /// Returns the window as a form with controls, for `LocService::TranslateForm`.
    virtual Object& form() = 0;

    /// Closes the window, without asking.
    virtual void close() = 0;
};

/// A window that asks the user. @tparam EventsOfKind  DialogEvents or what extends it
template <class EventsOfKind>
class ModalWindow : public DialogWindow {
public:
    using Events = EventsOfKind;
    /// Shows the window and returns when it is closed; if `close` was called in an event, when that event has ended.
    virtual void showModal(Events& events) = 0;
};

} // namespace tamarok::dialogs

#pragma GCC visibility pop
