#pragma once

#include <string_view>

#include "tamarok/backend_registry.h"

#pragma GCC visibility push(default)

namespace tamarok::embedded {

/// The name of the embedded database in the property Provider of a connection text.
inline constexpr std::string_view provider = "Tamarok.Embedded";

/// Registers the embedded database; its connections are opened by `connectText`.
void registerBackend(ado::BackendRegistry& registry);

} // namespace tamarok::embedded

#pragma GCC visibility pop
