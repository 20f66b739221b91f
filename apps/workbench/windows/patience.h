#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace tamarok::workbench {

/// Carries out work that may take seconds, such as finding out whether another session is alive. It runs on a thread
/// while the windows are drawn but take no keys and clicks; a note tells what is waited for. Messages of the work are
/// shown behind it. Errors: those of the work.
/// @param parent  over which the note is shown
/// @param what    the note
void doPatiently(QWidget* parent, const QString& what, const std::function<void()>& work);

} // namespace tamarok::workbench
