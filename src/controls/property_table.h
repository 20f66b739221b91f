#pragma once

#include <span>
#include <string_view>

#include "tamarok/text.h"
#include "tamarok/variant.h"

namespace tamarok::controls {

/// One named property of a control. `index` arguments come to the reader alone; a property without
/// a writer cannot be set.
template <class Type>
struct Property {
    std::string_view name;
    Variant (*read)(const Type&, std::span<const Variant> index);
    void (*write)(Type&, const Variant&);
};

/// The property of that name, or nullptr. Tables have a dozen rows, so a walk is as fast as a map.
template <class Type>
const Property<Type>* findProperty(std::span<const Property<Type>> table, std::string_view name)
{
    for (const Property<Type>& property : table)
        if (text::equalsNoCase(property.name, name)) return &property;
    return nullptr;
}

} // namespace tamarok::controls
