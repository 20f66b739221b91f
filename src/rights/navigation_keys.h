#pragma once

#include <string_view>

namespace tamarok::rights {

/// Returns the right key of a key of the navigation tree; "" for an unknown key. Exact keys come first, then the
/// families of keys that end in a node number.
std::string_view rightKey(std::string_view treeKey) noexcept;

/// Tells whether a tree key names an action, for which the personal write grant suffices.
bool isActionKey(std::string_view treeKey) noexcept;

} // namespace tamarok::rights
