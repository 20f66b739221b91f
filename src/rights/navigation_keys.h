#pragma once

#include <string_view>

namespace tamarok::rights {

/// The right key of a key of the navigation tree, "" for an unknown one.
std::string_view rightKey(std::string_view treeKey) noexcept;

/// Keys of actions, which need the personal write grant only.
bool isActionKey(std::string_view treeKey) noexcept;

} // namespace tamarok::rights
