#pragma once

#include "tamarok/platform.h"

namespace tamarok::com {

/// Gives the calling thread the services of the machine on its first call: regional settings, clock, message box,
/// keyboard, files, language service, dialog windows. Later calls return at once.
void equipThread();

} // namespace tamarok::com
