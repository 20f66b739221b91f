#pragma once

#include <cstdint>
#include <string_view>

namespace tamarok {

/// Text numbers of the labels of the log columns in table STRINGS: this number plus the column id.
inline constexpr std::int32_t firstColumnLabel = 20000;

/// The short head of a column of the log list.
/// @param id        column id of the log catalogue, 1 to 1041
/// @param language  suffix of the language: GERMAN, ENGLISH or FRENCH, upper case; any other gives the German text
/// @return empty for an id that is no column
std::string_view columnLabel(std::int16_t id, std::string_view language);

} // namespace tamarok
