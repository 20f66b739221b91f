#pragma once

#include <functional>
#include <memory>

#include "tamarok/dialog_windows.h"
#include "tamarok/platform.h"

/// The services of a Qt program: message box, keyboard and the windows of the dialogs. A QApplication exists while they
/// are used, and all of them belong to its thread. Texts that no presenter sets follow QLocale(): German, French, or
/// English for any other language.
namespace tamarok::qt {

/// What the windows and the keyboard of one program share.
class Desk;

/// Makes the map window; tamarok_qt/map.h has it, in a library of its own, since only the map needs the browser engine.
using MapMaker = std::function<std::unique_ptr<dialogs::MapWindow>(const std::shared_ptr<Desk>& desk)>;

/// Puts the Qt services into a platform. Dialogs and messages belong to the window that is active when they appear.
/// @param makeMap  nothing in a program without the map: its dialog is then Error 429
void equip(Platform& platform, MapMaker makeMap = {});

/// Returns the machine's platform with the Qt services. See `equip`.
Platform platform(MapMaker makeMap = {});

} // namespace tamarok::qt
