#pragma once

#include <cstdint>
#include <string_view>

namespace tamarok::com {

/// The captions that the windows bring along.
enum class DesignText : std::uint8_t { Ok, Close, New, Save, Info };

/// Returns a caption in the language of the user's windows: German, French, otherwise English.
std::string_view designText(DesignText text) noexcept;

} // namespace tamarok::com
