#include "element_keys.h"

#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/form.h"
#include "tamarok/grids.h"
#include "tamarok/list_view.h"
#include "tamarok/members.h"

// The common properties, the simple controls, and the making of controls by type name.

namespace tamarok::controls {
namespace {

using Index = std::span<const Variant>;
using CallArguments = std::span<Variant>;

/// The row of a size or position in twips.
template <float Control::*property, float (*convert)(const Variant&, std::string_view)>
constexpr Member<Control> twips(std::string_view name)
{
    // The handler cannot capture the name, so the message has a general one.
    return {.name = name,
            .get = [](const Control& control, Index) -> Variant { return double{control.*property}; },
            .put = [](Control& control, const Variant& value) { control.*property = convert(value, "A size"); }};
}

Variant callSetFocus(Control& control, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "SetFocus", control.typeName());
    control.SetFocus();
    return {};
}

/// Without a window there is nothing to draw.
Variant callRefresh(Control& control, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "Refresh", control.typeName());
    return {};
}

constexpr Member<Control> controlMembers[]{
    {.name = "Name",
     .get = [](const Control& control, Index) -> Variant { return control.Name; },
     .put = [](Control& control, const Variant& value) { control.Name = convert::toText(value); }},
    {.name = "Tag",
     .get = [](const Control& control, Index) -> Variant { return control.Tag; },
     .put = [](Control& control, const Variant& value) { control.Tag = convert::toText(value); }},
    {.name = "Enabled",
     .get = [](const Control& control, Index) -> Variant { return control.Enabled; },
     .put = [](Control& control, const Variant& value) { control.Enabled = convert::toBoolean(value); }},
    {.name = "Visible",
     .get = [](const Control& control, Index) -> Variant { return control.Visible; },
     .put = [](Control& control, const Variant& value) { control.Visible = convert::toBoolean(value); }},
    {.name = "Parent",
     .get = [](const Control& control, Index) -> Variant { return control.Parent(); },
     .put = [](Control& control, const Variant& value) { control.Parent(value.asObject()); }},
    {.name = "SetFocus", .call = callSetFocus},
    {.name = "Refresh", .call = callRefresh},
    twips<&Control::Width, toSize>("Width"),
    twips<&Control::Height, toSize>("Height"),
    twips<&Control::Left, toSingle>("Left"),
    twips<&Control::Top, toSingle>("Top"),
};

/// Error 380 for a state that a check box does not have.
void putState(CheckBox& box, const Variant& value)
{
    const std::int16_t state = convert::toInteger(value);
    // 0 is unchecked, 1 checked, 2 greyed.
    if (state < 0 || state > 2)
        throw Error{errors::invalidPropertyValue, "Invalid property value: a check box is 0, 1 or 2.",
                    "CheckBox.Value"};
    box.Value = state;
}

constexpr Member<CheckBox> checkBoxMembers[]{
    {.name = "Value", .get = [](const CheckBox& box, Index) -> Variant { return box.Value; }, .put = putState},
    {.name = "Caption",
     .get = [](const CheckBox& box, Index) -> Variant { return box.Caption; },
     .put = [](CheckBox& box, const Variant& value) { box.Caption = convert::toText(value); }},
};

Variant getCaption(const Label& label, Index)
{
    return label.Caption;
}

void putCaption(Label& label, const Variant& value)
{
    label.Caption = convert::toText(value);
}

constexpr Member<Label> labelMembers[]{
    {.name = "Caption", .get = getCaption, .put = putCaption},
    {.name = "Text", .get = getCaption, .put = putCaption},
};

/// A type of control and the function that makes one.
struct ControlType {
    std::string_view name;
    std::shared_ptr<Control> (*make)();
};

// One function for each type, so that the table below can name it.
template <class Type>
std::shared_ptr<Control> makeControl()
{
    return std::make_shared<Type>();
}

constexpr ControlType controlTypes[]{
    {"CheckBox", &makeControl<CheckBox>}, //
    {"ComboBox", &makeControl<ComboBox>},
    {"DataGrid", &makeControl<DataGrid>},
    {"F_UFakt", &makeControl<ConversionFactorForm>},
    {"Form", &makeControl<Form>},
    {"Label", &makeControl<Label>},
    {"ListBox", &makeControl<ListBox>},
    {"ListView", &makeControl<ListView>},
    {"MSFlexGrid", &makeControl<FlexGrid>},
    {"TextBox", &makeControl<TextBox>},
};

} // namespace

std::span<const Member<Control>> Control::members() noexcept
{
    return controlMembers;
}

Variant DataFormat::get(std::string_view name, std::span<const Variant> /*args*/) const
{
    // The one member needs no table.
    if (!text::equalsNoCase(name, "Format")) noSuchMember(name);
    return Format;
}

void DataFormat::put(std::string_view name, const Variant& value)
{
    if (!text::equalsNoCase(name, "Format")) noSuchMember(name);
    Format = convert::toText(value);
}

std::vector<std::string_view> DataFormat::memberNames() const
{
    return {"Format"};
}

std::span<const Member<CheckBox>> CheckBox::members() noexcept
{
    return checkBoxMembers;
}

std::span<const Member<Label>> Label::members() noexcept
{
    return labelMembers;
}

void Label::SetFocus()
{
    noSuchMember("SetFocus");
}

std::vector<std::string_view> Label::memberNames() const
{
    auto names = WithMembers::memberNames();
    std::erase(names, "SetFocus");
    return names;
}

std::shared_ptr<Control> make(std::string_view typeName)
{
    if (const ControlType* type = findByName(std::span<const ControlType>{controlTypes}, typeName)) return type->make();
    std::string known;
    for (const ControlType& type : controlTypes)
        known.append(known.empty() ? "" : ", ").append(type.name);
    throw Error{errors::cannotCreateObject,
                "There is no control of type \"" + std::string{typeName} + "\"; known are " + known + ".", "Controls"};
}

std::vector<std::string_view> knownTypes()
{
    std::vector<std::string_view> names;
    for (const ControlType& type : controlTypes)
        names.push_back(type.name);
    return names;
}

} // namespace tamarok::controls
