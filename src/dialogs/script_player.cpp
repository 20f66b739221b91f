#include "script_player.h"

#include <utility>

#include "tamarok/controls.h"
#include "tamarok/error.h"
#include "tamarok/object_path.h"
#include "tamarok/text.h"

namespace tamarok::dialogs {

namespace {

/// Adds the steps that were not reached to those left over, also where an error ends the dialog.
struct StepCounter {
    StepCounter(std::size_t steps, std::size_t& left) : all{steps}, leftOver{left} {}
    ~StepCounter() { leftOver += all - done; }
    StepCounter(const StepCounter&) = delete;
    StepCounter& operator=(const StepCounter&) = delete;

    std::size_t done = 0;
    std::size_t all;
    std::size_t& leftOver;
};

} // namespace

void ScriptPlayer::play(DialogEvents& events)
{
    DialogScript script;
    if (!scripts_->waiting_.empty()) {
        script = std::move(scripts_->waiting_.front());
        scripts_->waiting_.pop_front();
    }
    scripts_->report_.shown = true;
    StepCounter counter{script.size(), scripts_->report_.left};
    events.resized();
    appeared();
    while (open_ && counter.done < script.size())
        take(script[counter.done++], events);
    if (!open_) return;
    events.closeAsked();
    if (open_) {
        throw Error{errors::invalidArgument,
                    "The script ended while the dialog " + form_.Name + " was open, and the dialog refuses to close."};
    }
}

bool ScriptPlayer::takeStep(const DialogStep&)
{
    return false;
}

void ScriptPlayer::refuse(const DialogStep& step, std::string_view reason)
{
    throw Error{errors::invalidArgument, "Step " + step.written + " of the dialog's script: " + std::string{reason}};
}

void ScriptPlayer::take(const DialogStep& step, DialogEvents& events)
{
    if (takeStep(step)) return;
    switch (step.kind) {
    case StepKind::Click: return click(step, step.text, events);
    case StepKind::Ok: return click(step, "cmdOk", events);
    case StepKind::Cancel: return click(step, "cmdClose", events);
    case StepKind::Close: return events.closeAsked();
    case StepKind::Type:
    case StepKind::Key: return typeInto(step);
    case StepKind::Read: return scripts_->report_.read.push_back(read(step));
    case StepKind::Resize:
        form_.resize({static_cast<float>(step.numbers[0]), static_cast<float>(step.numbers[1])});
        return events.resized();
    case StepKind::Set: return setByName(step);
    case StepKind::Head:
    case StepKind::SelectRow:
    case StepKind::SelectRows:
    case StepKind::SelectNode:
    case StepKind::Navigate: break;
    }
    refuse(step, "the dialog " + form_.Name + " has nothing of this kind.");
}

void ScriptPlayer::click(const DialogStep& step, std::string_view button, DialogEvents& events) const
{
    const auto control = form_.find(button);
    if (!control || control->typeName() != "CommandButton")
        refuse(step, "the dialog " + form_.Name + " has no button \"" + std::string{button} + "\".");
    if (control->Visible && control->Enabled) events.clicked(control->Name);
}

void ScriptPlayer::setByName(const DialogStep& step) const
{
    try {
        putPath(form_.shared_from_this(), step.text, step.value);
    } catch (const Error& error) {
        refuse(step, error.description);
    }
}

void ScriptPlayer::typeInto(const DialogStep& step) const
{
    const auto box = std::dynamic_pointer_cast<controls::TextEntry>(form_.ActiveControl());
    if (!box) refuse(step, "no box of the dialog " + form_.Name + " has the focus.");
    if (step.kind == StepKind::Type)
        controls::typeText(*box, step.text);
    else
        controls::typeKey(*box, static_cast<char32_t>(step.numbers[0]));
}

Variant ScriptPlayer::read(const DialogStep& step) const
{
    try {
        Variant value = getPath(form_.shared_from_this(), step.text);
        // A control by its bare name stands for its text.
        const bool isText = value.isObject() && value.asObject() && value.asObject()->hasDefaultValue();
        return isText ? value.asObject()->defaultValue() : value;
    } catch (const Error& error) {
        refuse(step, error.description);
    }
}

} // namespace tamarok::dialogs
