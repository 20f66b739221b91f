#pragma once

#include <string>

#include "database_path.h"
#include "tamarok_embedded/connect.h"

namespace tamarok::embedded {

/// Opens an existing file. @param text  the connection text that the connection shows
ado::ConnectionRef openConnection(const DatabasePath& path, const OpenOptions& options, std::string text);

} // namespace tamarok::embedded
