#pragma once

#include <memory>

#include "tamarok/files.h"

namespace tamarok {

/// Returns the file operations of the machine.
std::shared_ptr<FileSystem> makeSystemFiles();

} // namespace tamarok
