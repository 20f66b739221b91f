#pragma once

#include <array>
#include <string_view>

namespace tamarok::database {

/// The languages of the texts: suffixes of the columns of STRINGS and heads in the files of texts.
inline constexpr std::array<std::string_view, 3> languages{"GERMAN", "ENGLISH", "FRENCH"};

} // namespace tamarok::database
