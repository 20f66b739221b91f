#pragma once

#include <string>
#include <string_view>

#pragma GCC visibility push(default)

namespace tamarok::embedded {

/// A text for a message: control characters are written as the code of each byte, such as `\x1B`, so that a file name
/// neither moves the cursor of a terminal nor breaks a line of a log.
std::string shownText(std::string_view text);

} // namespace tamarok::embedded

#pragma GCC visibility pop
