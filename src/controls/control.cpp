#include <array>

#include "property_table.h"

#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::controls {
namespace {

constexpr std::array<Property<Control>, 4> controlProperties = {{
    {"Name", [](const Control& control, std::span<const Variant>) { return Variant{control.Name}; }, nullptr},
    {"Tag", [](const Control& control, std::span<const Variant>) { return Variant{control.Tag}; },
     [](Control& control, const Variant& value) { control.Tag = convert::toText(value); }},
    {"Enabled", [](const Control& control, std::span<const Variant>) { return Variant{control.Enabled}; },
     [](Control& control, const Variant& value) { control.Enabled = convert::toBoolean(value); }},
    {"Visible", [](const Control& control, std::span<const Variant>) { return Variant{control.Visible}; },
     [](Control& control, const Variant& value) { control.Visible = convert::toBoolean(value); }},
}};

struct ControlType {
    std::string_view name;
    std::shared_ptr<Control> (*make)();
};

template <class Type>
std::shared_ptr<Control> makeControl()
{
    return std::make_shared<Type>();
}

constexpr std::array<ControlType, 3> controlTypes = {{
    {"CheckBox", &makeControl<CheckBox>},
    {"ComboBox", &makeControl<ComboBox>},
    {"TextBox", &makeControl<TextBox>},
}};

constexpr std::int32_t cannotCreateObject = 429;
constexpr std::int32_t invalidPropertyValue = 380;

} // namespace

Variant Control::get(std::string_view name, std::span<const Variant> args) const
{
    const auto* property = findProperty(std::span<const Property<Control>>{controlProperties}, name);
    if (property == nullptr) noSuchMember(name);
    return property->read(*this, args);
}

void Control::put(std::string_view name, const Variant& value)
{
    const auto* property = findProperty(std::span<const Property<Control>>{controlProperties}, name);
    if (property == nullptr || property->write == nullptr) noSuchMember(name);
    property->write(*this, value);
}

Variant DataFormat::get(std::string_view name, std::span<const Variant> /*args*/) const
{
    if (!text::equalsNoCase(name, "Format")) noSuchMember(name);
    return Format;
}

void DataFormat::put(std::string_view name, const Variant& value)
{
    if (!text::equalsNoCase(name, "Format")) noSuchMember(name);
    Format = convert::toText(value);
}

Variant CheckBox::get(std::string_view name, std::span<const Variant> args) const
{
    if (text::equalsNoCase(name, "Value")) return Value;
    if (text::equalsNoCase(name, "Caption")) return Caption;
    return Control::get(name, args);
}

void CheckBox::put(std::string_view name, const Variant& value)
{
    if (text::equalsNoCase(name, "Value")) {
        const std::int16_t state = convert::toInteger(value);
        if (state < 0 || state > 2)
            throw Error{invalidPropertyValue, "Invalid property value: a check box is 0, 1 or 2.", "CheckBox.Value"};
        Value = state;
    } else if (text::equalsNoCase(name, "Caption")) {
        Caption = convert::toText(value);
    } else {
        Control::put(name, value);
    }
}

std::shared_ptr<Control> make(std::string_view typeName)
{
    std::string known;
    for (const ControlType& type : controlTypes) {
        if (text::equalsNoCase(type.name, typeName)) return type.make();
        known.append(known.empty() ? "" : ", ").append(type.name);
    }
    throw Error{cannotCreateObject,
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
