#include <algorithm>
#include <array>

#include "property_table.h"

#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::controls {
namespace {

constexpr std::int32_t invalidPropertyValue = 380;
constexpr std::int32_t invalidPropertyArrayIndex = 381;

std::int32_t indexArgument(std::span<const Variant> index, std::string_view property)
{
    if (index.size() != 1)
        throw Error{errors::wrongArgumentCount, std::string{property} + " needs one index.", "ComboBox"};
    return convert::toLong(index[0]);
}

constexpr std::array<Property<ComboBox>, 6> comboProperties = {{
    {"ListCount", [](const ComboBox& box, std::span<const Variant>) { return Variant{box.ListCount()}; }, nullptr},
    {"NewIndex", [](const ComboBox& box, std::span<const Variant>) { return Variant{box.NewIndex()}; }, nullptr},
    {"ListIndex", [](const ComboBox& box, std::span<const Variant>) { return Variant{box.ListIndex()}; },
     [](ComboBox& box, const Variant& value) { box.ListIndex(convert::toLong(value)); }},
    {"List",
     [](const ComboBox& box, std::span<const Variant> index) {
         return Variant{box.List(indexArgument(index, "List"))};
     },
     nullptr},
    {"ItemData",
     [](const ComboBox& box, std::span<const Variant> index) {
         return Variant{box.ItemData(indexArgument(index, "ItemData"))};
     },
     nullptr},
    {"Sorted", [](const ComboBox& box, std::span<const Variant>) { return Variant{box.Sorted}; },
     [](ComboBox& box, const Variant& value) { box.Sorted = convert::toBoolean(value); }},
}};

} // namespace

Variant ComboBox::get(std::string_view name, std::span<const Variant> args) const
{
    if (const auto* property = findProperty(std::span<const Property<ComboBox>>{comboProperties}, name))
        return property->read(*this, args);
    return TextEntry::get(name, args);
}

void ComboBox::put(std::string_view name, const Variant& value)
{
    const auto* property = findProperty(std::span<const Property<ComboBox>>{comboProperties}, name);
    if (property == nullptr)
        TextEntry::put(name, value);
    else if (property->write != nullptr)
        property->write(*this, value);
    else
        noSuchMember(name);
}

Variant ComboBox::call(std::string_view name, std::span<Variant> args)
{
    if (text::equalsNoCase(name, "Clear") && args.empty()) {
        Clear();
    } else if (text::equalsNoCase(name, "AddItem") && (args.size() == 1 || args.size() == 2)) {
        AddItem(convert::toText(args[0]), args.size() == 2 ? convert::toLong(args[1]) : -1);
    } else if (text::equalsNoCase(name, "RemoveItem") && args.size() == 1) {
        RemoveItem(convert::toLong(args[0]));
    } else if (text::equalsNoCase(name, "ItemData") && args.size() == 2) {
        ItemData(convert::toLong(args[0]), convert::toLong(args[1]));
    } else {
        return TextEntry::call(name, args);
    }
    return {};
}

void ComboBox::Clear()
{
    entries_.clear();
    newIndex_ = -1;
    listIndex_ = -1;
    text("");
}

void ComboBox::AddItem(std::string_view item, std::int32_t index)
{
    if (index < -1 || index > ListCount())
        throw Error{errors::invalidArgument, "No entry can be added at index " + std::to_string(index) + ".",
                    "ComboBox.AddItem"};
    auto place = index < 0 ? entries_.end() : entries_.begin() + index;
    if (Sorted) {
        const std::string wanted = text::toUpper(item);
        place = std::find_if(entries_.begin(), entries_.end(),
                             [&](const Entry& entry) { return text::toUpper(entry.text) > wanted; });
    }
    newIndex_ = static_cast<std::int32_t>(place - entries_.begin());
    entries_.insert(place, Entry{std::string{item}, 0});
    if (listIndex_ >= newIndex_) ++listIndex_;
}

void ComboBox::RemoveItem(std::int32_t index)
{
    const std::size_t place = checked(index);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(place));
    newIndex_ = -1;
    if (listIndex_ == index)
        listIndex_ = -1;
    else if (listIndex_ > index)
        --listIndex_;
}

void ComboBox::ListIndex(std::int32_t index)
{
    if (index < -1 || index >= ListCount())
        throw Error{invalidPropertyValue, "Invalid property value: there is no entry " + std::to_string(index) + ".",
                    "ComboBox.ListIndex"};
    listIndex_ = index;
    text(index < 0 ? std::string{} : entries_[static_cast<std::size_t>(index)].text);
}

const std::string& ComboBox::List(std::int32_t index) const
{
    return entries_[checked(index)].text;
}

std::int32_t ComboBox::ItemData(std::int32_t index) const
{
    return entries_[checked(index)].data;
}

void ComboBox::ItemData(std::int32_t index, std::int32_t value)
{
    entries_[checked(index)].data = value;
}

std::size_t ComboBox::checked(std::int32_t index) const
{
    if (index < 0 || index >= ListCount())
        throw Error{invalidPropertyArrayIndex, "There is no entry " + std::to_string(index) + ".", "ComboBox"};
    return static_cast<std::size_t>(index);
}

} // namespace tamarok::controls
