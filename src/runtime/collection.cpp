#include "tamarok/collection.h"

#include <algorithm>
#include <utility>

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/members.h"
#include "tamarok/text.h"

namespace tamarok {
namespace {

constexpr std::string_view source = "Collection";

} // namespace

void Collection::Add(Variant value, std::string_view key)
{
    std::string upperKey = text::toUpper(key);
    if (!key.empty() && std::ranges::count(entries_, upperKey, &Entry::key) != 0)
        throw Error{errors::duplicateKey, "The collection has an entry with the key \"" + std::string{key} + "\".",
                    std::string{source}};
    entries_.push_back({std::move(value), std::move(upperKey)});
}

const Variant& Collection::Item(const Variant& index) const
{
    return entries_[position(index)].value;
}

void Collection::Remove(const Variant& index)
{
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(position(index)));
}

std::size_t Collection::position(const Variant& index) const
{
    if (index.isString()) {
        const std::string key = text::toUpper(index.asString());
        const auto found = std::ranges::find(entries_, key, &Entry::key);
        if (!key.empty() && found != entries_.end()) return static_cast<std::size_t>(found - entries_.begin());
        throw Error{errors::invalidArgument, "The collection has no entry with the key \"" + index.asString() + "\".",
                    std::string{source}};
    }
    const std::int32_t number = convert::toLong(index);
    if (number >= 1 && number <= Count()) return static_cast<std::size_t>(number) - 1;
    throw Error{errors::subscriptOutOfRange,
                "The collection has " + std::to_string(Count()) + " entries, none at position " +
                    std::to_string(number) + ".",
                std::string{source}};
}

Variant Collection::get(std::string_view name, std::span<const Variant> args) const
{
    if (text::equalsNoCase(name, "Count")) return Count();
    if (!text::equalsNoCase(name, "Item")) noSuchMember(name);
    checkArgumentCount(args.size(), 1, 1, "Item", source);
    return Item(args[0]);
}

Variant Collection::call(std::string_view name, std::span<Variant> args)
{
    if (text::equalsNoCase(name, "Add")) {
        checkArgumentCount(args.size(), 1, 2, "Add", source);
        const Variant* key = optionalArgument(args, 1);
        Add(args[0], key == nullptr ? std::string{} : convert::toText(*key));
        return {};
    }
    if (text::equalsNoCase(name, "Remove")) {
        checkArgumentCount(args.size(), 1, 1, "Remove", source);
        Remove(args[0]);
        return {};
    }
    return get(name, args);
}

} // namespace tamarok
