#pragma once

#include <memory>

#include "tamarok/files.h"

namespace tamarok::com {

/// Makes the file operations of the machine.
std::shared_ptr<FileSystem> makeWindowsFiles();

} // namespace tamarok::com
