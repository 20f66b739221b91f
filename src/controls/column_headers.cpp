#include <algorithm>
#include <utility>

#include "element_keys.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/list_view.h"

// The columns of a list view. A list has few, so they are searched one by one.

namespace tamarok::controls {
namespace {

constexpr std::string_view source = "ColumnHeaders";

using Index = std::span<const Variant>;
using CallArguments = std::span<Variant>;

ColumnAlignment toAlignment(const Variant& value)
{
    const std::int32_t alignment = convert::toLong(value);
    if (alignment < 0 || alignment > 2) throwInvalidValue("Alignment", std::to_string(alignment));
    return static_cast<ColumnAlignment>(alignment);
}

/// Add([index], [key], [text], [width], [alignment]).
Variant callAdd(ColumnHeaders& headers, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 5, "Add", source);
    // All values are converted before the header is inserted, so that a refused one leaves the list as it is.
    const Variant* width = optionalArgument(arguments, 3);
    const Variant* alignment = optionalArgument(arguments, 4);
    const float newWidth = width == nullptr ? ColumnHeader::defaultWidth : toSize(*width, "Width");
    const ColumnAlignment newAlignment = alignment == nullptr ? ColumnAlignment::Left : toAlignment(*alignment);
    ColumnHeaderRef header =
        headers.Add(optionalLong(arguments, 0), optionalText(arguments, 1), optionalText(arguments, 2));
    header->Width = newWidth;
    header->Alignment = newAlignment;
    return header;
}

Variant callRemove(ColumnHeaders& headers, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 1, "Remove", source);
    headers.Remove(arguments[0]);
    return {};
}

Variant callClear(ColumnHeaders& headers, CallArguments arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "Clear", source);
    headers.Clear();
    return {};
}

constexpr Member<ColumnHeaders> listMembers[]{
    {.name = "Item",
     .get = [](const ColumnHeaders& headers, Index index) -> Variant {
         return headers.Item(onlyIndex(index, "Item", source));
     }},
    {.name = "Count", .get = [](const ColumnHeaders& headers, Index) -> Variant { return headers.Count(); }},
    {.name = "Add", .call = callAdd},
    {.name = "Remove", .call = callRemove},
    {.name = "Clear", .call = callClear},
};

constexpr Member<ColumnHeader> headerMembers[]{
    {.name = "Key",
     .get = [](const ColumnHeader& header, Index) -> Variant { return header.Key(); },
     .put = [](ColumnHeader& header, const Variant& value) { header.Key(convert::toText(value)); }},
    {.name = "Text",
     .get = [](const ColumnHeader& header, Index) -> Variant { return header.text; },
     .put = [](ColumnHeader& header, const Variant& value) { header.text = convert::toText(value); }},
    {.name = "Index", .get = [](const ColumnHeader& header, Index) -> Variant { return header.Index(); }},
    {.name = "Alignment",
     .get = [](const ColumnHeader& header, Index) -> Variant { return static_cast<std::int32_t>(header.Alignment); },
     .put = [](ColumnHeader& header, const Variant& value) { header.Alignment = toAlignment(value); }},
    {.name = "Width",
     .get = [](const ColumnHeader& header, Index) -> Variant { return double{header.Width}; },
     .put = [](ColumnHeader& header, const Variant& value) { header.Width = toSize(value, "Width"); }},
    {.name = "SubItemIndex", .get = [](const ColumnHeader& header, Index) -> Variant { return header.Index() - 1; }},
    {.name = "Tag",
     .get = [](const ColumnHeader& header, Index) -> Variant { return header.Tag; },
     .put = [](ColumnHeader& header, const Variant& value) { header.Tag = value; }},
};

} // namespace

std::span<const Member<ColumnHeader>> ColumnHeader::members() noexcept
{
    return headerMembers;
}

ColumnHeaders& ColumnHeader::list() const
{
    if (list_ == nullptr)
        throw Error{errors::objectNotSet, "Object not set: the header was removed from its list.", "ColumnHeader"};
    return *list_;
}

void ColumnHeader::Key(std::string_view key)
{
    const ColumnHeaders& headers = list();
    if (key == key_) return;
    headers.requireFreeKey(key);
    key_ = key;
}

std::int32_t ColumnHeader::Index() const
{
    const std::vector<ColumnHeaderRef>& headers = list().all();
    const auto found = std::ranges::find(headers, this, &ColumnHeaderRef::get);
    return static_cast<std::int32_t>(found - headers.begin()) + 1;
}

std::span<const Member<ColumnHeaders>> ColumnHeaders::members() noexcept
{
    return listMembers;
}

ColumnHeaders::~ColumnHeaders()
{
    // A script may keep a header longer than its list.
    for (const ColumnHeaderRef& header : headers_)
        header->list_ = nullptr;
}

ColumnHeaderRef ColumnHeaders::Add(std::optional<std::int32_t> index, std::string_view key, std::string text)
{
    const std::size_t position = index ? checkedPosition(*index, headers_.size() + 1, source) : headers_.size();
    requireFreeKey(key);
    auto header = std::make_shared<ColumnHeader>(*this);
    header->key_ = key;
    header->text = std::move(text);
    // The rows first: their positions are those of the headers without the new one.
    rows_->insertColumn(position);
    headers_.insert(headers_.begin() + static_cast<std::ptrdiff_t>(position), header);
    return header;
}

const ColumnHeaderRef& ColumnHeaders::Item(const Variant& index) const
{
    return headers_[positionOf(index)];
}

void ColumnHeaders::Remove(const Variant& index)
{
    const std::size_t position = positionOf(index);
    rows_->removeColumn(position);
    headers_[position]->list_ = nullptr;
    headers_.erase(headers_.begin() + static_cast<std::ptrdiff_t>(position));
}

void ColumnHeaders::Clear()
{
    // From the right, so that the rows keep the text of the first column.
    while (!headers_.empty())
        Remove(Count());
}

/// Errors 35603 and 35602; "" is always free.
void ColumnHeaders::requireFreeKey(std::string_view key) const
{
    if (key.empty()) return;
    checkKey(key, source);
    const auto hasKey = [&](const ColumnHeaderRef& header) { return header->key_ == key; };
    if (std::ranges::any_of(headers_, hasKey)) throwKeyNotUnique(key, source);
}

std::size_t ColumnHeaders::positionOf(const Variant& index) const
{
    if (!index.isString()) return checkedPosition(convert::toLong(index), headers_.size(), source);
    const std::string& key = index.asString();
    const auto found = std::ranges::find_if(
        headers_, [&](const ColumnHeaderRef& header) { return !key.empty() && header->key_ == key; });
    if (found == headers_.end()) throwElementNotFound(key, source);
    return static_cast<std::size_t>(found - headers_.begin());
}

} // namespace tamarok::controls
