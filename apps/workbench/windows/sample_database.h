#pragma once

#include <optional>
#include <string>

namespace tamarok::workbench {

/// Returns the file of the user's sample database, and makes it where it is missing, with a window that shows the
/// progress. Nothing if the user cancels. Errors: those of the making.
std::optional<std::string> sampleDatabase();

} // namespace tamarok::workbench
