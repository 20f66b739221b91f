#pragma once

#include <memory>
#include <string>

#include "work/worker.h"
#include "work/workplace.h"

class QObject;

namespace tamarok::workbench {

/// Makes the worker of a list: a connection of its own, with what the type's lists need on it, under the regional
/// settings of this thread and without windows.
/// @param window  on whose thread the results arrive; outlives the worker
std::unique_ptr<Worker> makeListWorker(const Workplace& place, const std::string& type, QObject& window);

} // namespace tamarok::workbench
