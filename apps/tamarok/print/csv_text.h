#pragma once

#include <string>
#include <string_view>

namespace tamarok::cli {

/// Returns a text as one field of a line of separated values: in quotes where it contains the separator, a quote or a
/// line end.
std::string csvField(std::string_view text, char separator);

} // namespace tamarok::cli
