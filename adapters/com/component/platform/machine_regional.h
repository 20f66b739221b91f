#pragma once

#include "tamarok/regional.h"

namespace tamarok::com {

/// Returns the regional settings that the user has chosen in the system's control panel. The words for true and false
/// are those of the library's own settings for the locale, since the system has none.
Regional machineRegional();

} // namespace tamarok::com
