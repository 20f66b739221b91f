#pragma once

#include <QDialog>
#include <QEventLoop>
#include <QPointer>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "desk.h"

#include "tamarok/dialog_window.h"
#include "tamarok/form.h"

namespace tamarok::qt {

class DialogShell;

/// The window of a dialog as a form with controls, for operations that reach it by names.
class ShellForm final : public controls::Form {
public:
    explicit ShellForm(DialogShell& shell) : shell_{shell} {}
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;

private:
    DialogShell& shell_;
};

/// The Qt window of a dialog: its controls by their names, its sizes in twips, and the way of the user's events to the
/// presenter. An exception does not cross Qt's event loop: it closes the window and rises again in `runModal`.
class DialogShell final : public QDialog {
public:
    /// @param formName  name of the form's class, such as "F_TreeView"
    DialogShell(std::string_view formName, std::shared_ptr<Desk> desk);
    ~DialogShell() override;

    /// Names a control, which a content or a control of it owns.
    void addControl(std::string_view name, QWidget& widget);
    /// Adds a button, whose press is the event `clicked`.
    void addButton(std::string_view name, const QString& text);
    /// The widget in which the controls stand.
    QWidget& content() const noexcept { return *content_; }
    /// Returns the control of that name. Error 5.
    QWidget& control(std::string_view name) const;

    dialogs::Size outerSize() const;
    dialogs::Size innerSize() const;
    void outerSize(const dialogs::Size& size);
    std::string controlText(std::string_view name) const;
    void controlText(std::string_view name, std::string_view text);
    dialogs::Box place(std::string_view name) const;
    void place(std::string_view name, const dialogs::Box& box);
    void focusControl(std::string_view name);
    const std::shared_ptr<ShellForm>& form() const noexcept { return form_; }

    /// Shows the dialog until it is closed, and throws what an event threw.
    void runModal(dialogs::DialogEvents& events);
    /// Shows the window beside the others and draws it.
    void showBeside();
    /// Closes the window; in an event, when that has ended.
    void finish();

    /// Hands an event of the user to the presenter, unless the window is closing.
    void deliver(const std::function<void()>& event);
    /// The name of the button that Escape presses; the window's own close if it is hidden or there is none.
    void escapeButton(std::string_view name) { escapeButton_ = name; }

    /// The presenters put buttons side by side: so many pixels of a button's width are the gap behind it.
    void buttonGap(int pixels) { buttonGap_ = pixels; }

    /// Called after each event, when the presenter is done with the window.
    std::function<void()> afterEvent;
    /// Called when the window has become the active one.
    std::function<void()> activated;

    void reject() override; ///< Escape

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void clicked(std::string_view name);
    void becomeActive();
    void fitToScreen();
    int gapOf(const QWidget& widget) const;
    void appear();
    QSize clientSize(const dialogs::Size& outer) const;

    std::shared_ptr<Desk> desk_;
    std::shared_ptr<ShellForm> form_;
    QWidget* content_;
    std::map<std::string, QWidget*, std::less<>> controls_;
    std::map<const QWidget*, dialogs::Box> places_; ///< as the presenter gave them, finer than pixels
    std::optional<dialogs::Size> size_;             ///< likewise
    std::string escapeButton_;
    int buttonGap_ = 0;

    dialogs::DialogEvents* events_ = nullptr;
    QEventLoop* loop_ = nullptr;
    std::exception_ptr failure_;
    int depth_ = 0; ///< events at hand
    bool closing_ = false;
    bool resizing_ = false; ///< by the program
    bool wasActive_ = false;
};

/// The verbs that all windows of dialogs have. @tparam Kind  such as TreeWindow
template <class Kind>
class Shelled : public Kind {
public:
    void caption(std::string_view text) override;
    dialogs::Size size() const override { return shell_->outerSize(); }
    dialogs::Size innerSize() const override { return shell_->innerSize(); }
    void resize(dialogs::Size size) override { shell_->outerSize(size); }
    void text(std::string_view control, std::string_view text) override { shell_->controlText(control, text); }
    std::string text(std::string_view control) const override { return shell_->controlText(control); }
    void visible(std::string_view control, bool visible) override { shell_->control(control).setVisible(visible); }
    void enabled(std::string_view control, bool enabled) override { shell_->control(control).setEnabled(enabled); }
    dialogs::Box place(std::string_view control) const override { return shell_->place(control); }
    void place(std::string_view control, const dialogs::Box& box) override { shell_->place(control, box); }
    void bringToFront(std::string_view control) override { shell_->control(control).raise(); }
    void focus(std::string_view control) override { shell_->focusControl(control); }
    Object& form() override { return *shell_->form(); }
    void close() override { shell_->finish(); }

protected:
    Shelled(std::string_view formName, const std::shared_ptr<Desk>& desk) :
        shell_{std::make_unique<DialogShell>(formName, desk)}
    {}
    DialogShell& shell() const noexcept { return *shell_; }

private:
    std::unique_ptr<DialogShell> shell_;
};

/// A window that asks the user.
template <class Kind>
class Modal : public Shelled<Kind> {
public:
    void showModal(typename Kind::Events& events) override
    {
        events_ = &events;
        this->shell().runModal(events);
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

template <class Kind>
void Shelled<Kind>::caption(std::string_view text)
{
    shell_->setWindowTitle(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

} // namespace tamarok::qt
