#pragma once

#include <memory>
#include <string>

#include "dialog_form.h"

#include "tamarok/scripted_windows.h"

/// The window that acts by a script: what all dialogs have in common.
namespace tamarok::dialogs {

/// The size of a button without a window.
inline constexpr float buttonWidth = 1215;
inline constexpr float buttonHeight = 495;

/// Carries out the steps of a script on the controls of a form.
class ScriptPlayer {
public:
    ScriptPlayer(std::shared_ptr<DialogScripts> scripts, DialogForm& form) : scripts_{std::move(scripts)}, form_{form}
    {}
    virtual ~ScriptPlayer() = default;
    ScriptPlayer(const ScriptPlayer&) = delete;
    ScriptPlayer& operator=(const ScriptPlayer&) = delete;

    /// Takes the oldest script and carries it out until the window closes.
    void play(DialogEvents& events);
    /// Ends `play` behind the present step.
    void stop() noexcept { open_ = false; }

protected:
    /// Carries out a step that only this dialog has, or has in a way of its own; false for any other one.
    virtual bool takeStep(const DialogStep& step);
    /// Called when the window has appeared, before the first step.
    virtual void appeared() {}
    /// Throws Error 5, which names the step.
    [[noreturn]] static void refuse(const DialogStep& step, std::string_view reason);
    /// Carries out `Set`.
    void setByName(const DialogStep& step) const;

private:
    void take(const DialogStep& step, DialogEvents& events);
    void click(const DialogStep& step, std::string_view button, DialogEvents& events) const;
    void typeInto(const DialogStep& step) const;
    Variant read(const DialogStep& step) const;

    std::shared_ptr<DialogScripts> scripts_;
    DialogForm& form_;
    bool open_ = true;
};

/// A window whose controls are headless ones. @tparam Kind  such as TreeWindow
template <class Kind>
class Headless : public Kind {
public:
    void caption(std::string_view text) override { form_->Caption = text; }
    Size size() const override { return {form_->Width, form_->Height}; }
    Size innerSize() const override { return size(); } // without borders
    void resize(Size size) override { form_->resize(size); }
    void text(std::string_view control, std::string_view text) override { form_->text(control, text); }
    std::string text(std::string_view control) const override { return form_->text(control); }
    void visible(std::string_view control, bool visible) override { form_->control(control).Visible = visible; }
    void enabled(std::string_view control, bool enabled) override { form_->control(control).Enabled = enabled; }
    Box place(std::string_view control) const override { return form_->place(control); }
    void place(std::string_view control, const Box& box) override { form_->place(control, box); }
    void bringToFront(std::string_view control) override { form_->control(control); } // without pixels nothing overlaps
    void focus(std::string_view control) override { form_->control(control).SetFocus(); }
    Object& form() override { return *form_; }

protected:
    /// @param formName  name of the form's class, such as "F_TreeView"
    explicit Headless(std::string_view formName) : form_{std::make_shared<DialogForm>(formName)} {}
    DialogForm& controls() const noexcept { return *form_; }

private:
    std::shared_ptr<DialogForm> form_;
};

/// A window that acts by a script. A dialog derives from it, adds its controls in its constructor, implements the verbs
/// of its kind, and overrides `takeStep` for the steps of its own.
template <class Kind>
class Scripted : public Headless<Kind>, protected ScriptPlayer {
public:
    void showModal(typename Kind::Events& events) final
    {
        events_ = &events;
        play(events);
    }
    void close() final { stop(); }

protected:
    Scripted(std::string_view formName, std::shared_ptr<DialogScripts> scripts) :
        Headless<Kind>{formName}, ScriptPlayer{std::move(scripts), Headless<Kind>::controls()}
    {}
    /// The presenter, to be used in `takeStep`.
    typename Kind::Events& events() const noexcept { return *events_; }

private:
    typename Kind::Events* events_ = nullptr;
};

} // namespace tamarok::dialogs
