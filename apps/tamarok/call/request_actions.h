#pragma once

#include <array>
#include <span>
#include <string_view>

#include "call/json.h"

namespace tamarok::cli {

struct HostState;

/// What a request can ask for, one per request.
struct Action {
    std::string_view key;                       ///< the member that asks for it
    std::array<std::string_view, 3> companions; ///< further members that belong to it
    /// Carries it out and returns its result, null for none. @param args  receives the arguments of an
    /// operation as they stand afterwards, also where it failed
    Json (*run)(HostState& state, const Json& request, Json& args);
};

/// All actions.
std::span<const Action> actions() noexcept;

} // namespace tamarok::cli
