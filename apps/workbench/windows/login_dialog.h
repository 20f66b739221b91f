#pragma once

#include <optional>

#include "windows/texts.h"
#include "work/workplace.h"

class QWidget;

namespace tamarok::workbench {

/// Lets a user log in at a workplace, and choose the language. Returns false if the user gives up.
bool logIn(Workplace& place, QWidget* parent = nullptr);

} // namespace tamarok::workbench
