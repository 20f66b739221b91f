#pragma once

#include <string>
#include <string_view>

#include "tamarok/variant.h"

namespace tamarok::lists {

/// Returns what a cell of a list view shows for a value.
/// @param nullText   text for Null
/// @param format     number or date pattern of the column, "" for none; "MMMM" prints the name of a month's number
/// @param emptyText  text that stands for an empty value and is not formatted, TmkVar::strEmptyText
/// Errors: 13 for a value without a text form and for a month that is no number, 5 for a month outside 1 to 12, 6.
std::string cellText(Variant&& value, std::string_view nullText, std::string_view format, std::string_view emptyText);

} // namespace tamarok::lists
