#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/members.h"
#include "tamarok/spelling.h"

// The common properties, the simple controls, and the making of controls by type name. A control looks a member up
// in its own table first and passes unknown names to its base class.

namespace tamarok::controls {
namespace {

using Index = std::span<const Variant>;

// A form sets the name of a control at design time: it has no setter.
constexpr Member<Control> members[]{
    {.name = "Name", .get = [](const Control& control, Index) -> Variant { return control.Name; }},
    {.name = "Tag",
     .get = [](const Control& control, Index) -> Variant { return control.Tag; },
     .put = [](Control& control, const Variant& value) { control.Tag = convert::toText(value); }},
    {.name = "Enabled",
     .get = [](const Control& control, Index) -> Variant { return control.Enabled; },
     .put = [](Control& control, const Variant& value) { control.Enabled = convert::toBoolean(value); }},
    {.name = "Visible",
     .get = [](const Control& control, Index) -> Variant { return control.Visible; },
     .put = [](Control& control, const Variant& value) { control.Visible = convert::toBoolean(value); }},
};

constexpr std::span<const Member<Control>> table{members};

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

constexpr std::span<const Member<CheckBox>> checkBoxTable{checkBoxMembers};

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
    {"CheckBox", &makeControl<CheckBox>},
    {"ComboBox", &makeControl<ComboBox>},
    {"TextBox", &makeControl<TextBox>},
};

} // namespace

Variant Control::get(std::string_view name, std::span<const Variant> args) const
{
    if (const auto getter = findGetter(table, name)) return getter(*this, args);
    noSuchMember(name);
}

void Control::put(std::string_view name, const Variant& value)
{
    if (const auto setter = findSetter(table, name)) return setter(*this, value);
    noSuchMember(name);
}

std::vector<std::string_view> Control::memberNames() const
{
    return spelling::namesOf(table);
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

Variant CheckBox::get(std::string_view name, std::span<const Variant> args) const
{
    if (const auto getter = findGetter(checkBoxTable, name)) return getter(*this, args);
    return Control::get(name, args);
}

void CheckBox::put(std::string_view name, const Variant& value)
{
    if (const auto setter = findSetter(checkBoxTable, name)) return setter(*this, value);
    Control::put(name, value);
}

std::vector<std::string_view> CheckBox::memberNames() const
{
    return spelling::namesOf(checkBoxTable, Control::memberNames());
}

Variant CheckBox::defaultValue() const
{
    // A check box stands for its state wherever a value is expected.
    return Value;
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
