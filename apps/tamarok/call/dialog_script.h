#pragma once

#include <cstdint>
#include <vector>

#include "call/json.h"

#include "tamarok/platform.h"
#include "tamarok/scripted_windows.h"

namespace tamarok::cli {

class ObjectNames;

/// The script of a setting "dialog"; docs/call-host.md lists the steps. Error 5, which names the step, for a step of
/// another form. @param names  the objects that a value of a step "set" can name
dialogs::DialogScript readScript(const Json& given, const ObjectNames& names);

/// The present endpoints with those that a setting "map" gives. Error 5 for another form.
MapEndpoints readMapEndpoints(MapEndpoints present, const Json& given);

/// Adds to an answer what its dialogs gave: "dialog" the values read, "keys" the keys pressed for the caller,
/// "dialogLeft" the number of steps left over. Each stands only where there is something to tell.
/// Error 6 for a value that JSON cannot write.
void describeDialogs(Json& answer, const dialogs::DialogScripts::Report& report, const std::vector<std::int16_t>& keys,
                     ObjectNames& names);

} // namespace tamarok::cli
