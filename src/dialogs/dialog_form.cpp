#include "dialog_form.h"

#include <algorithm>

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::dialogs {

namespace {

constexpr Member<CaptionedControl> captionedMembers[]{
    {.name = "Caption",
     .get = [](const CaptionedControl& control, std::span<const Variant>) -> Variant { return control.Caption; },
     .put = [](CaptionedControl& control, const Variant& value) { control.Caption = convert::toText(value); }},
};

/// Name of the property that holds the text of a control.
std::string_view textProperty(const controls::Control& control)
{
    return dynamic_cast<const CaptionedControl*>(&control) != nullptr ? "Caption" : "Text";
}

} // namespace

std::span<const Member<CaptionedControl>> CaptionedControl::members() noexcept
{
    return captionedMembers;
}

Variant DialogForm::get(std::string_view name, std::span<const Variant> args) const
{
    if (const auto control = find(name); control && args.empty()) return ObjectRef{control};
    return Form::get(name, args);
}

void DialogForm::put(std::string_view name, const Variant& value)
{
    if (const auto control = find(name)) return control->put(textProperty(*control), value);
    Form::put(name, value);
}

std::vector<std::string_view> DialogForm::memberNames() const
{
    std::vector<std::string_view> names = Form::memberNames();
    for (const auto& control : controls()->all())
        names.emplace_back(control->Name);
    return names;
}

std::shared_ptr<controls::Control> DialogForm::find(std::string_view name) const
{
    const auto& all = controls()->all();
    const auto found =
        std::ranges::find_if(all, [name](const auto& control) { return text::equalsNoCase(control->Name, name); });
    return found == all.end() ? nullptr : *found;
}

controls::Control& DialogForm::control(std::string_view name) const
{
    const auto found = find(name);
    if (!found) throw Error{errors::invalidArgument, "The dialog has no control \"" + std::string{name} + "\".", Name};
    return *found; // the form keeps it alive
}

std::string DialogForm::text(std::string_view name) const
{
    const controls::Control& named = control(name);
    return convert::toText(named.get(textProperty(named), {}));
}

void DialogForm::text(std::string_view name, std::string_view text)
{
    controls::Control& named = control(name);
    named.put(textProperty(named), text);
}

Box DialogForm::place(std::string_view name) const
{
    const controls::Control& named = control(name);
    return {named.Left, named.Top, named.Width, named.Height};
}

void DialogForm::place(std::string_view name, const Box& box)
{
    controls::Control& named = control(name);
    named.Left = box.left;
    named.Top = box.top;
    named.Width = box.width;
    named.Height = box.height;
}

void DialogForm::addControl(const std::shared_ptr<controls::Control>& control, std::string_view name, const Box& box)
{
    control->Name = name;
    control->Parent(shared_from_this());
    place(name, box);
}

} // namespace tamarok::dialogs
