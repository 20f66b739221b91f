#pragma once

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "windows_headers.h"
// The base header comes first.
#include <commctrl.h>

#include "tamarok/dialog_window.h"
#include "tamarok/form.h"

namespace tamarok::com {

class WindowShell;

/// The window of a dialog as a form with controls, for operations that reach it by names.
class ShellForm final : public controls::Form {
public:
    explicit ShellForm(WindowShell& shell) : shell_{shell} {}
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;

private:
    WindowShell& shell_;
};

/// How a control is made.
struct ControlKind {
    const wchar_t* windowClass;
    DWORD style;
    DWORD extendedStyle = 0;
};

/// The native window of a dialog: its controls by their names, its sizes in twips, and the way of the user's events to
/// the presenter. An exception does not cross the system's code: it closes the window and rises again in `runModal`.
class WindowShell final {
public:
    /// @param formName  name of the form's class, such as "F_TreeView"
    explicit WindowShell(std::string_view formName);
    ~WindowShell();
    WindowShell(const WindowShell&) = delete;
    WindowShell& operator=(const WindowShell&) = delete;

    /// Makes a control. @param frame  the control inside which its place counts; empty for the window
    HWND addControl(std::string_view name, const ControlKind& kind, std::string_view frame = {});
    /// Adds a button, whose press is the event `clicked`.
    void addButton(std::string_view name, std::string_view text);
    /// Returns the control of that name. Error 5.
    HWND control(std::string_view name) const { return find(name).window; }
    HWND window() const noexcept { return window_; }

    void caption(std::string_view text);
    std::string caption() const;
    dialogs::Size outerSize() const;
    dialogs::Size innerSize() const;
    void outerSize(const dialogs::Size& size);
    std::string controlText(std::string_view name) const;
    void controlText(std::string_view name, std::string_view text);
    dialogs::Box place(std::string_view name) const;
    void place(std::string_view name, const dialogs::Box& box);
    void visible(std::string_view name, bool visible);
    void enabled(std::string_view name, bool enabled);
    void bringToFront(std::string_view name);
    void focusControl(std::string_view name);
    const std::shared_ptr<ShellForm>& form() const noexcept { return form_; }

    /// Shows the dialog until it is closed, and throws what an event threw.
    void runModal(dialogs::DialogEvents& events);
    /// Shows the window beside the others and draws it.
    void showBeside();
    void drawNow() const noexcept;
    /// Closes the window; in an event, when that has ended.
    void finish();
    /// Handles the messages that wait.
    void handleWaiting();

    /// Hands an event of the user to the presenter, unless the window is closing.
    void deliver(const std::function<void()>& event);
    /// The button that Escape presses, and the one that Enter presses.
    void escapeButton(std::string_view name) { escapeButton_ = name; }
    void defaultButton(std::string_view name);
    /// The presenters put buttons side by side: so many twips of a button's width are the gap behind it.
    void buttonGap(float twips) { buttonGap_ = twips; }

    /// Called with a notification of a control; returns the answer. Empty if no control notifies.
    std::function<LRESULT(const NMHDR&)> notified;
    /// Called when a control receives the focus.
    std::function<void(std::string_view name)> entered;
    /// Called with a message before a control gets it; returns whether it is used up.
    std::function<bool(const MSG&)> filter;
    /// Called when the window has become the active one.
    std::function<void()> activated;
    /// Called when the message of the user that `tellLater` was called in has been handled.
    std::function<void()> later;
    void tellLater();
    /// Called after each event, when the presenter is done with the window.
    std::function<void()> afterEvent;

    int pixels(float twips) const noexcept;
    float twips(int pixels) const noexcept;

private:
    struct Part {
        HWND window = nullptr;
        std::string frame;
        dialogs::Box box; ///< as the presenter gave it, finer than pixels
        bool placed = false;
        bool isButton = false;
    };

    static INT_PTR CALLBACK handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
    INT_PTR answer(UINT message, WPARAM first, LPARAM second);
    void command(WORD id, WORD code);
    void press(std::string_view button);
    const Part& find(std::string_view name) const;
    Part& find(std::string_view name);
    POINT origin(const Part& part) const;
    void appear();
    void pump();
    void dispatch(MSG& message);
    std::string_view nameOf(int id) const noexcept;

    HWND window_ = nullptr;
    HWND owner_ = nullptr;
    HFONT font_ = nullptr;
    int dotsPerInch_ = 96;
    std::shared_ptr<ShellForm> form_;
    std::map<std::string, Part, std::less<>> parts_;
    std::map<int, std::string> names_; ///< of the controls, by their ids
    std::string escapeButton_;
    float buttonGap_ = 0;

    dialogs::DialogEvents* events_ = nullptr;
    std::exception_ptr failure_;
    int depth_ = 0; ///< events at hand
    bool closing_ = false;
    bool isModal_ = false;
    bool resizing_ = false; ///< by the program
    dialogs::Size size_;    ///< as the presenter gave it
};

/// The verbs that all windows of dialogs have. @tparam Kind  such as TreeWindow
template <class Kind>
class Shelled : public Kind {
public:
    void caption(std::string_view text) override { shell_->caption(text); }
    dialogs::Size size() const override { return shell_->outerSize(); }
    dialogs::Size innerSize() const override { return shell_->innerSize(); }
    void resize(dialogs::Size size) override { shell_->outerSize(size); }
    void text(std::string_view control, std::string_view text) override { shell_->controlText(control, text); }
    std::string text(std::string_view control) const override { return shell_->controlText(control); }
    void visible(std::string_view control, bool visible) override { shell_->visible(control, visible); }
    void enabled(std::string_view control, bool enabled) override { shell_->enabled(control, enabled); }
    dialogs::Box place(std::string_view control) const override { return shell_->place(control); }
    void place(std::string_view control, const dialogs::Box& box) override { shell_->place(control, box); }
    void bringToFront(std::string_view control) override { shell_->bringToFront(control); }
    void focus(std::string_view control) override { shell_->focusControl(control); }
    Object& form() override { return *shell_->form(); }
    void close() override { shell_->finish(); }

protected:
    explicit Shelled(std::string_view formName) : shell_{std::make_unique<WindowShell>(formName)} {}
    WindowShell& shell() const noexcept { return *shell_; }

private:
    std::unique_ptr<WindowShell> shell_;
};

/// A window that asks the user.
template <class Kind>
class Modal : public Shelled<Kind> {
public:
    void showModal(typename Kind::Events& events) override
    {
        events_ = &events;
        this->shell().runModal(events);
        events_ = nullptr;
    }

protected:
    using Shelled<Kind>::Shelled;

    /// Hands an event of this kind of dialog to the presenter.
    template <class Event>
    void tell(Event event)
    {
        if (events_ != nullptr) this->shell().deliver([&] { event(*events_); });
    }

private:
    typename Kind::Events* events_ = nullptr;
};

} // namespace tamarok::com
