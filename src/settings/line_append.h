#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tamarok::settings {

/// Whether a write waits until it is on the disk.
enum class Durability : bool { Buffered, OnDisk };

/// Adds lines to a text file with one write, after an end for a last line that has none. Errors: 5 for a character that
/// the encoding of the file does not have, and those of the file; none of the lines is there then.
void appendLines(std::string_view path, std::span<const std::string> lines, Durability durability);

} // namespace tamarok::settings
