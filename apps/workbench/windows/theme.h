#pragma once

#include <QString>
#include <cstdint>

class QApplication;
class QIcon;

namespace tamarok::workbench {

enum class Colours : std::uint8_t { System, Light, Dark };

/// Gives all windows their colours and spacing.
void useColours(QApplication& application, Colours colours);

/// Returns the colours that the user chose last, and keeps a choice.
Colours keptColours();
void keepColours(Colours colours);

/// Returns the program's icon: a stack of logs, drawn at each size.
QIcon programIcon();

} // namespace tamarok::workbench
