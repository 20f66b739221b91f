#pragma once

#include <cstdint>
#include <string_view>

namespace tamarok {

/// Text numbers of the column labels of the log list in table STRINGS: this number plus the column id.
inline constexpr std::int32_t firstColumnLabel = 20000;

/// Returns the label of a column of the log list.
/// @param id        column id of the log catalogue, 1 to 1041
/// @param language  language suffix GERMAN, ENGLISH or FRENCH in upper case; any other gives the German label
/// @return empty for an id that no column has; the view is valid until the program ends
std::string_view columnLabel(std::int16_t id, std::string_view language);

} // namespace tamarok
