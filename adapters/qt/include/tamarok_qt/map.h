#pragma once

#include <memory>

#include "tamarok_qt/platform.h"

namespace tamarok::qt {

/// Makes the map window, to be given to `equip`. The program links Tamarok_Comm::QtMap, and the browser engine with it.
std::unique_ptr<dialogs::MapWindow> makeMapWindow(const std::shared_ptr<Desk>& desk);

} // namespace tamarok::qt
