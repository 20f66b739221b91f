#pragma once

#include <string>

#include "posix_file.h"

namespace tamarok {

/// Makes a new file that is to replace another one, with the owner, group and mode of that.
/// @param isExact  receives whether it could be given all three
Descriptor createReplacement(const std::string& path, const struct stat& model, bool& isExact);

/// Opens the regular file `path` for reading and for writing. Error 75 for anything else.
Descriptor openWritable(const std::string& path);

/// The copying of FileSystem::copyOver. @param from, to  paths as the system has them
void copyFile(const std::string& from, const std::string& to);

} // namespace tamarok
