#include <algorithm>

#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/members.h"
#include "tamarok/spelling.h"
#include "tamarok/text.h"

// The combo box. Inserting or removing an entry keeps the selected entry selected.

namespace tamarok::controls {
namespace {

using Index = std::span<const Variant>;
using CallArguments = std::span<Variant>;

/// Returns the index of an indexed property, such as List(3). Error 450 without exactly one.
std::int32_t indexArgument(Index index, std::string_view property)
{
    if (index.size() != 1)
        throw Error{errors::wrongArgumentCount, std::string{property} + " needs one index.", "ComboBox"};
    return convert::toLong(index[0]);
}

constexpr std::string_view source = "ComboBox";

Variant callClear(ComboBox& box, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "Clear", source);
    box.Clear();
    return {};
}

/// AddItem(text, [index]).
Variant callAddItem(ComboBox& box, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 2, "AddItem", source);
    box.AddItem(convert::toText(arguments[0]), arguments.size() == 2 ? convert::toLong(arguments[1]) : -1);
    return {};
}

Variant callRemoveItem(ComboBox& box, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 1, "RemoveItem", source);
    box.RemoveItem(convert::toLong(arguments[0]));
    return {};
}

constexpr Member<ComboBox> members[]{
    {.name = "ListCount", .get = [](const ComboBox& box, Index) -> Variant { return box.ListCount(); }},
    {.name = "NewIndex", .get = [](const ComboBox& box, Index) -> Variant { return box.NewIndex(); }},
    {.name = "ListIndex",
     .get = [](const ComboBox& box, Index) -> Variant { return box.ListIndex(); },
     .put = [](ComboBox& box, const Variant& value) { box.ListIndex(convert::toLong(value)); }},
    {.name = "List",
     .get = [](const ComboBox& box, Index index) -> Variant { return box.List(indexArgument(index, "List")); }},
    {.name = "ItemData",
     .get = [](const ComboBox& box, Index index) -> Variant { return box.ItemData(indexArgument(index, "ItemData")); },
     .putIndexed =
         [](ComboBox& box, Index index, const Variant& value) {
             box.ItemData(indexArgument(index, "ItemData"), convert::toLong(value));
         }},
    {.name = "Sorted",
     .get = [](const ComboBox& box, Index) -> Variant { return box.Sorted; },
     .put = [](ComboBox& box, const Variant& value) { box.Sorted = convert::toBoolean(value); }},
    {.name = "Clear", .call = callClear},
    {.name = "AddItem", .call = callAddItem},
    {.name = "RemoveItem", .call = callRemoveItem},
};

constexpr std::span<const Member<ComboBox>> table{members};

} // namespace

Variant ComboBox::get(std::string_view name, std::span<const Variant> args) const
{
    if (const auto getter = findGetter(table, name)) return getter(*this, args);
    return TextEntry::get(name, args);
}

void ComboBox::put(std::string_view name, const Variant& value)
{
    if (const auto setter = findSetter(table, name)) return setter(*this, value);
    TextEntry::put(name, value);
}

void ComboBox::putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value)
{
    if (const auto setter = findIndexedSetter(table, name)) return setter(*this, index, value);
    TextEntry::putIndexed(name, index, value);
}

Variant ComboBox::call(std::string_view name, std::span<Variant> args)
{
    if (const auto found = findMethod(table, name)) return found(*this, args);
    return TextEntry::call(name, args);
}

std::vector<std::string_view> ComboBox::memberNames() const
{
    return spelling::namesOf(table, TextEntry::memberNames());
}

void ComboBox::Clear()
{
    // Clear empties the text box too; a removed entry leaves its text there.
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
    // -1 appends. In a sorted box the order decides, and a given index is checked but not used.
    auto place = index < 0 ? entries_.end() : entries_.begin() + index;
    if (Sorted) { // after all entries that are not greater
        const std::string wanted = text::toUpper(item);
        place = std::find_if(entries_.begin(), entries_.end(),
                             [&](const Entry& entry) { return text::toUpper(entry.text) > wanted; });
    }
    newIndex_ = static_cast<std::int32_t>(place - entries_.begin());
    entries_.insert(place, Entry{std::string{item}, 0});
    // Only the index changes: text and cursor of the box stay.
    if (listIndex_ >= newIndex_) ++listIndex_; // the selected entry moved down
}

void ComboBox::RemoveItem(std::int32_t index)
{
    const std::size_t place = checked(index);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(place));
    // The selection stays with its entry; if that is the one removed, nothing is selected.
    newIndex_ = -1;
    if (listIndex_ == index)
        listIndex_ = -1;
    else if (listIndex_ > index)
        --listIndex_;
}

// Unlike the reading of entries, a wrong ListIndex is an invalid value (380), not an invalid index (381).
void ComboBox::ListIndex(std::int32_t index)
{
    if (index < -1 || index >= ListCount())
        throw Error{errors::invalidPropertyValue,
                    "Invalid property value: there is no entry " + std::to_string(index) + ".", "ComboBox.ListIndex"};
    listIndex_ = index;
    // Unlike AddItem and RemoveItem, a selection changes the text.
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
        throw Error{errors::invalidPropertyArrayIndex, "There is no entry " + std::to_string(index) + ".", "ComboBox"};
    return static_cast<std::size_t>(index);
}

} // namespace tamarok::controls
