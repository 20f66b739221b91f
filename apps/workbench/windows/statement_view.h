#pragma once

#include <QString>

class QWidget;

namespace tamarok::workbench {

/// Shows a statement, ready to be copied.
void showStatement(QWidget* parent, const QString& title, const QString& statement);

} // namespace tamarok::workbench
