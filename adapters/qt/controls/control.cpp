#include "tamarok_qt/control.h"

#include "tamarok_qt/form.h"
#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::qt {

namespace {

constexpr const char* tagProperty = "tag";

bool isShown(const QWidget& widget)
{
    // A child that nobody has hidden counts as visible before its window appears.
    return !(widget.testAttribute(Qt::WA_WState_ExplicitShowHide) && widget.testAttribute(Qt::WA_WState_Hidden));
}

bool isEnabledItself(const QWidget& widget)
{
    return !widget.testAttribute(Qt::WA_ForceDisabled);
}

/// Keeps what lies between two pixels until the widget moves.
void pullTwips(float& state, int shown)
{
    if (pixels(state) != shown) state = twips(shown);
}

QRect placeOf(const controls::Control& state)
{
    return {pixels(state.Left), pixels(state.Top), pixels(state.Width), pixels(state.Height)};
}

} // namespace

WidgetControl::WidgetControl(QWidget& widget, std::shared_ptr<controls::Control> state) :
    widget_{&widget}, state_{std::move(state)}
{
    Name = fromQt(widget.objectName());
}

QWidget& WidgetControl::widget() const
{
    if (!widget_)
        throw Error{errors::objectNotSet,
                    "Object not set: the widget of the control" + (Name.empty() ? "" : " " + Name) + " has gone.",
                    std::string{typeName()}};
    return *widget_;
}

// Each member works on the state, which is read from the widget before and shown after: so values are checked,
// converted and refused as those of the controls without windows are.

Variant WidgetControl::get(std::string_view name, std::span<const Variant> args) const
{
    widget();
    if (text::equalsNoCase(name, "Parent")) return Control::get(name, args);
    pull();
    return state_->get(name, args);
}

void WidgetControl::put(std::string_view name, const Variant& value)
{
    widget();
    if (text::equalsNoCase(name, "Parent")) return Control::put(name, value);
    pull();
    state_->put(name, value);
    Name = state_->Name;
    push();
}

void WidgetControl::putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value)
{
    widget();
    pull();
    state_->putIndexed(name, index, value);
    push();
}

Variant WidgetControl::call(std::string_view name, std::span<Variant> args)
{
    widget();
    if (text::equalsNoCase(name, "Parent")) return Control::call(name, args);
    if (text::equalsNoCase(name, "SetFocus")) {
        checkArgumentCount(args.size(), 0, 0, "SetFocus", typeName());
        SetFocus();
        return {};
    }
    pull();
    Variant result = state_->call(name, args);
    push();
    if (text::equalsNoCase(name, "Refresh")) widget().update();
    return result;
}

Variant WidgetControl::defaultValue() const
{
    widget();
    pull();
    return state_->defaultValue();
}

void WidgetControl::SetFocus()
{
    widget();
    pull();
    Enabled = state_->Enabled;
    Visible = state_->Visible;
    if (const auto form = std::dynamic_pointer_cast<Form>(Parent())) form->refresh();
    Control::SetFocus();
    widget().setFocus();
}

void WidgetControl::pull() const
{
    const QWidget& shown = widget();
    state_->Name = fromQt(shown.objectName());
    state_->Tag = fromQt(shown.property(tagProperty).toString());
    state_->Enabled = isEnabledItself(shown);
    state_->Visible = isShown(shown);
    pullTwips(state_->Left, shown.x());
    pullTwips(state_->Top, shown.y());
    pullTwips(state_->Width, shown.width());
    pullTwips(state_->Height, shown.height());
}

void WidgetControl::push()
{
    QWidget& shown = widget();
    if (fromQt(shown.objectName()) != state_->Name) shown.setObjectName(toQt(state_->Name));
    if (fromQt(shown.property(tagProperty).toString()) != state_->Tag)
        shown.setProperty(tagProperty, toQt(state_->Tag));
    if (isEnabledItself(shown) != state_->Enabled) shown.setEnabled(state_->Enabled);
    if (isShown(shown) != state_->Visible) shown.setVisible(state_->Visible);
    if (shown.geometry() != placeOf(*state_)) shown.setGeometry(placeOf(*state_));
}

} // namespace tamarok::qt
