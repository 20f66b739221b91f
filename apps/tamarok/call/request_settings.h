#pragma once

#include <span>
#include <string_view>

#include "call/json.h"

namespace tamarok::cli {

struct HostState;

/// The members of a request that are settings.
std::span<const std::string_view> settingKeys() noexcept;

/// Whether `key` names a setting: session, regional, now, answers, dialog, map.
bool isSetting(std::string_view key) noexcept;

/// Whether a request contains a setting.
bool hasSetting(const Json& request);

/// Applies the settings of a request: all of them, or none where one is refused.
/// Errors: 5 for a setting of another form or an unknown name in it; 6, 13 and 94 for a session field
/// whose value does not convert.
void applySettings(HostState& state, const Json& request);

} // namespace tamarok::cli
