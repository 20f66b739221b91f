#include "tamarok/form.h"

#include <algorithm>

#include "element_keys.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

// Forms and the controls on them.

namespace tamarok::controls {
namespace {

using Index = std::span<const Variant>;

constexpr Member<ControlList> listMembers[]{
    {.name = "Count", .get = [](const ControlList& list, Index) -> Variant { return list.Count(); }},
    {.name = "Item",
     .get = [](const ControlList& list, Index index) -> Variant {
         return list.Item(onlyIndex(index, "Item", "Controls"));
     }},
};

Variant getControls(const Form& form, Index index)
{
    return index.empty() ? Variant{form.controls()}
                         : Variant{form.controls()->Item(onlyIndex(index, "Controls", "Form"))};
}

void putMousePointer(Form& form, const Variant& value)
{
    constexpr std::int16_t lastShape = 15;
    constexpr std::int16_t customShape = 99;
    const std::int16_t shape = convert::toInteger(value);
    if ((shape < 0 || shape > lastShape) && shape != customShape)
        throwInvalidValue("MousePointer", std::to_string(shape));
    form.MousePointer = shape;
}

constexpr Member<Form> formMembers[]{
    {.name = "MousePointer",
     .get = [](const Form& form, Index) -> Variant { return form.MousePointer; },
     .put = putMousePointer},
    {.name = "Caption",
     .get = [](const Form& form, Index) -> Variant { return form.Caption; },
     .put = [](Form& form, const Variant& value) { form.Caption = convert::toText(value); }},
    {.name = "Controls", .get = getControls},
    {.name = "ActiveControl", .get = [](const Form& form, Index) -> Variant { return form.ActiveControl(); }},
};

/// The row of a property that holds a value as it was written.
template <Variant ConversionFactorForm::*property>
constexpr Member<ConversionFactorForm> factor(std::string_view name)
{
    return {.name = name,
            .get = [](const ConversionFactorForm& form, Index) { return form.*property; },
            .put = [](ConversionFactorForm& form, const Variant& value) { form.*property = value; }};
}

constexpr Member<ConversionFactorForm> factorMembers[]{
    factor<&ConversionFactorForm::txtUFakt_Ato>("txtUFakt_Ato"),
    factor<&ConversionFactorForm::txtUFakt_Lut>("txtUFakt_Lut"),
    factor<&ConversionFactorForm::txtUFakt_Rm>("txtUFakt_Rm"),
    factor<&ConversionFactorForm::txtUFakt_Stk100>("txtUFakt_Stk100"),
};

} // namespace

std::span<const Member<ControlList>> ControlList::members() noexcept
{
    return listMembers;
}

const std::shared_ptr<Control>& ControlList::Item(const Variant& index) const
{
    if (index.isString()) {
        const auto found = std::ranges::find_if(controls_, [&](const std::shared_ptr<Control>& control) {
            return text::equalsNoCase(control->Name, index.asString());
        });
        if (found != controls_.end()) return *found;
        throw Error{errors::controlNotFound, "The form has no control \"" + index.asString() + "\".", "Controls"};
    }
    const std::int32_t position = convert::toLong(index);
    if (position < 1 || position > Count())
        throw Error{errors::subscriptOutOfRange,
                    "Subscript out of range: the form has " + std::to_string(Count()) + " controls, none at position " +
                        std::to_string(position) + ".",
                    "Controls"};
    return controls_[static_cast<std::size_t>(position) - 1];
}

std::span<const Member<Form>> Form::members() noexcept
{
    return formMembers;
}

void Form::Parent(const ObjectRef& parent)
{
    if (!parent) return; // it has none as it is
    throw Error{errors::noSuchMember, "A form has no parent.", std::string{typeName()}};
}

std::span<const Member<ConversionFactorForm>> ConversionFactorForm::members() noexcept
{
    return factorMembers;
}

// ---- the bond between a control and its form ---------------------------------------------------

void Control::Parent(const ObjectRef& parent)
{
    // Owned here until the end: the old form may be the only owner.
    const std::shared_ptr<Control> self = weak_from_this().lock();
    if (const auto form = std::dynamic_pointer_cast<Form>(parent_.lock())) {
        std::erase(form->controls_->controls_, self);
        if (form->active_.lock() == self) form->active_.reset();
    }
    parent_ = parent;
    // A control that no shared pointer owns, such as one on the stack, cannot be kept and is not listed.
    if (const auto form = std::dynamic_pointer_cast<Form>(parent); form && self)
        form->controls_->controls_.push_back(self);
}

void Control::SetFocus()
{
    const auto form = std::dynamic_pointer_cast<Form>(parent_.lock());
    const bool isShown = Visible && Enabled && (!form || (form->Visible && form->Enabled));
    if (!isShown)
        throw Error{errors::invalidArgument,
                    "Invalid procedure call: the control" + (Name.empty() ? "" : " " + Name) +
                        " is hidden or disabled and cannot have the focus.",
                    std::string{typeName()} + ".SetFocus"};
    if (form) form->active_ = weak_from_this();
}

} // namespace tamarok::controls
