#pragma once

#include <filesystem>
#include <string>

namespace tamarok::embedded {

/// A path of the standard library for one in UTF-8, and back. The library itself takes narrow texts for ones in the
/// user's character set on some systems.
std::filesystem::path pathOf(const std::string& text);
std::string textOf(const std::filesystem::path& path);

} // namespace tamarok::embedded
