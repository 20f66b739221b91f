#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/object.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// An ordered list of values, each with an optional key. Positions begin at 1; keys compare without regard to case.
/// By name it has `Count`, `Item(position or key)`, `Add(value, [key])` and `Remove(position or key)`.
class Collection final : public Object {
public:
    std::string_view typeName() const override { return "Collection"; }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    Variant call(std::string_view name, std::span<Variant> args) override;

    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(entries_.size()); }

    /// Appends a value. Error 457 for a key that an entry has already; "" is no key.
    void Add(Variant value, std::string_view key = {});

    /// Returns the value at a position, or of a key where `index` is a text.
    /// Errors: 9 for a position outside the list, 5 for an unknown key.
    const Variant& Item(const Variant& index) const;

    /// Removes an entry; the following ones move up. Errors as for Item.
    void Remove(const Variant& index);

private:
    struct Entry {
        Variant value;
        std::string key; ///< in upper case
    };
    std::size_t position(const Variant& index) const;

    std::vector<Entry> entries_;
};

} // namespace tamarok

#pragma GCC visibility pop
