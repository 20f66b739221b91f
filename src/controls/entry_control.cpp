#include <algorithm>
#include <utility>

#include "element_keys.h"
#include "text_order.h"

#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/members.h"
#include "tamarok/text.h"

// List boxes and combo boxes.

namespace tamarok::controls {
namespace {

using Index = std::span<const Variant>;
using CallArguments = std::span<Variant>;

std::int32_t indexArgument(Index index, std::string_view property, std::string_view source)
{
    return convert::toLong(onlyIndex(index, property, source));
}

/// The table of the members that both have.
template <class Base>
struct EntryMembers {
    using Box = EntryControl<Base>;

    static Variant callClear(Box& box, CallArguments arguments)
    {
        checkArgumentCount(arguments.size(), 0, 0, "Clear", box.typeName());
        box.Clear();
        return {};
    }

    /// AddItem(text, [index]).
    static Variant callAddItem(Box& box, CallArguments arguments)
    {
        checkArgumentCount(arguments.size(), 1, 2, "AddItem", box.typeName());
        box.AddItem(convert::toText(arguments[0]), optionalLong(arguments, 1).value_or(-1));
        return {};
    }

    static Variant callRemoveItem(Box& box, CallArguments arguments)
    {
        checkArgumentCount(arguments.size(), 1, 1, "RemoveItem", box.typeName());
        box.RemoveItem(convert::toLong(arguments[0]));
        return {};
    }

    static constexpr Member<Box> rows[]{
        {.name = "AddItem", .call = callAddItem},
        {.name = "NewIndex", .get = [](const Box& box, Index) -> Variant { return box.NewIndex(); }},
        {.name = "ItemData",
         .get = [](const Box& box, Index index) -> Variant {
             return box.ItemData(indexArgument(index, "ItemData", box.typeName()));
         },
         .putIndexed =
             [](Box& box, Index index, const Variant& value) {
                 box.ItemData(indexArgument(index, "ItemData", box.typeName()), convert::toLong(value));
             }},
        {.name = "ListCount", .get = [](const Box& box, Index) -> Variant { return box.ListCount(); }},
        {.name = "ListIndex",
         .get = [](const Box& box, Index) -> Variant { return box.ListIndex(); },
         .put = [](Box& box, const Variant& value) { box.ListIndex(convert::toLong(value)); }},
        {.name = "List",
         .get = [](const Box& box, Index index) -> Variant {
             return box.List(indexArgument(index, "List", box.typeName()));
         },
         .putIndexed =
             [](Box& box, Index index, const Variant& value) {
                 box.List(indexArgument(index, "List", box.typeName()), convert::toText(value));
             }},
        {.name = "Sorted",
         .get = [](const Box& box, Index) -> Variant { return box.Sorted; },
         .put = [](Box& box, const Variant& value) { box.Sorted = convert::toBoolean(value); }},
        {.name = "Clear", .call = callClear},
        {.name = "RemoveItem", .call = callRemoveItem},
    };
};

constexpr Member<ListBox> listBoxMembers[]{
    {.name = "Text",
     .get = [](const ListBox& box, Index) -> Variant { return box.text(); },
     .put = [](ListBox& box, const Variant& value) { box.text(convert::toText(value)); }},
};

} // namespace

// ---- the entries -------------------------------------------------------------------------------

void EntryList::clear() noexcept
{
    entries_.clear();
    newIndex_ = -1;
    selected_ = -1;
}

void EntryList::add(std::string_view item, std::int32_t index, bool sorted)
{
    if (index < -1 || index > count())
        throw Error{errors::invalidArgument, "No entry can be added at index " + std::to_string(index) + ".",
                    "AddItem"};
    // -1 appends. In a sorted box the order decides, and a given index is checked but not used.
    auto place = index < 0 ? entries_.end() : entries_.begin() + index;
    if (sorted) { // after all entries that are not greater
        const std::string wanted = text_order::keyOf(item);
        place = std::find_if(entries_.begin(), entries_.end(),
                             [&](const Entry& entry) { return text_order::keyOf(entry.text) > wanted; });
    }
    newIndex_ = static_cast<std::int32_t>(place - entries_.begin());
    entries_.insert(place, Entry{std::string{item}, 0});
    if (selected_ >= newIndex_) ++selected_; // the selected entry moved down
}

void EntryList::remove(std::int32_t index)
{
    const std::size_t place = checked(index);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(place));
    // The selection stays with its entry; if that is the one removed, nothing is selected.
    newIndex_ = -1;
    if (selected_ == index)
        selected_ = -1;
    else if (selected_ > index)
        --selected_;
}

// Unlike the reading of entries, a wrong ListIndex is an invalid value (380), not an invalid index (381).
void EntryList::select(std::int32_t index)
{
    if (index < -1 || index >= count())
        throw Error{errors::invalidPropertyValue,
                    "Invalid property value: there is no entry " + std::to_string(index) + ".", "ListIndex"};
    selected_ = index;
}

std::string EntryList::selectedText() const
{
    return selected_ < 0 ? std::string{} : entries_[static_cast<std::size_t>(selected_)].text;
}

std::size_t EntryList::checked(std::int32_t index) const
{
    if (index < 0 || index >= count())
        throw Error{errors::invalidPropertyArrayIndex, "There is no entry " + std::to_string(index) + ".", "List"};
    return static_cast<std::size_t>(index);
}

// ---- the controls ------------------------------------------------------------------------------

template <class Base>
std::span<const Member<EntryControl<Base>>> EntryControl<Base>::members() noexcept
{
    return EntryMembers<Base>::rows;
}

template <class Base>
void EntryControl<Base>::Clear()
{
    // Clear empties the text box too; a removed entry leaves its text there.
    entries_.clear();
    showSelected({});
}

template <class Base>
void EntryControl<Base>::AddItem(std::string_view item, std::int32_t index)
{
    // Only the index of the selected entry changes: text and cursor of the box stay.
    entries_.add(item, index, Sorted);
}

template <class Base>
void EntryControl<Base>::RemoveItem(std::int32_t index)
{
    entries_.remove(index);
}

template <class Base>
void EntryControl<Base>::ListIndex(std::int32_t index)
{
    // Unlike AddItem and RemoveItem, a selection changes the text.
    entries_.select(index);
    showSelected(entries_.selectedText());
}

template class EntryControl<Control>;
template class EntryControl<TextEntry>;

std::span<const Member<ListBox>> ListBox::members() noexcept
{
    return listBoxMembers;
}

void ListBox::text(std::string_view wanted)
{
    std::int32_t index = 0;
    while (index < ListCount() && !text::equalsNoCase(List(index), wanted))
        ++index;
    ListIndex(index < ListCount() ? index : -1);
}

} // namespace tamarok::controls
