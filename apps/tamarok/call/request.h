#pragma once

#include "call/json.h"

namespace tamarok::cli {

struct HostState;

/// Carries out one request. Settings (session, regional, now, answers, dialog, map) come first, all or none of them;
/// then at most one action.
/// @param args  receives the arguments of an operation as they stand afterwards, also where it failed
/// @return the action's result, null for none
/// Errors: 5 for a request of another form; whatever the action raises.
Json carryOut(HostState& state, const Json& request, Json& args);

} // namespace tamarok::cli
