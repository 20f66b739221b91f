#include "tamarok/list_view.h"

#include "element_keys.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"

// The list view itself: rows and columns are in list_items.cpp and column_headers.cpp.

namespace tamarok::controls {
namespace {

using Index = std::span<const Variant>;

/// Returns a collection, or its element if an index is given: `ListItems(1)`.
template <class Collection>
Variant collectionOrElement(const std::shared_ptr<Collection>& collection, Index index)
{
    return index.empty() ? Variant{collection} : collection->get("Item", index);
}

Variant getSelected(const ListView& list, Index)
{
    return list.SelectedItem();
}

void putSelected(ListView& list, const Variant& value)
{
    const ObjectRef& object = value.asObject();
    const auto item = std::dynamic_pointer_cast<ListItem>(object);
    if (object && !item)
        throw Error{errors::typeMismatch,
                    "Type mismatch: an object of the type " + std::string{object->typeName()} + " is no ListItem.",
                    "ListView.SelectedItem"};
    list.SelectedItem(item);
}

constexpr Member<ListView> listViewMembers[]{
    {.name = "ListItems",
     .get = [](const ListView& list, Index index) { return collectionOrElement(list.items(), index); }},
    {.name = "ColumnHeaders",
     .get = [](const ListView& list, Index index) { return collectionOrElement(list.headers(), index); }},
    {.name = "Sorted",
     .get = [](const ListView& list, Index) -> Variant { return list.Sorted(); },
     .put = [](ListView& list, const Variant& value) { list.Sorted(convert::toBoolean(value)); }},
    {.name = "SortKey",
     .get = [](const ListView& list, Index) -> Variant { return list.SortKey(); },
     .put = [](ListView& list, const Variant& value) { list.SortKey(convert::toLong(value)); }},
    {.name = "SortOrder",
     .get = [](const ListView& list, Index) -> Variant { return list.SortOrder(); },
     .put = [](ListView& list, const Variant& value) { list.SortOrder(convert::toLong(value)); }},
    {.name = "SelectedItem", .get = getSelected, .put = putSelected},
};

} // namespace

std::span<const Member<ListView>> ListView::members() noexcept
{
    return listViewMembers;
}

const std::string& ListView::text(std::int32_t index, std::int32_t column) const
{
    const ListItemRef& item = items_->Item(index);
    return column == 0 ? item->text() : item->SubItems(column);
}

ListItemRef ListView::SelectedItem() const
{
    return items_->selected();
}

void ListView::SelectedItem(const ListItemRef& item)
{
    items_->select(item);
}

} // namespace tamarok::controls
