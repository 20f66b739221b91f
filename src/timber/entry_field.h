#pragma once

#include <string_view>

#include "tamarok/regional.h"

/// Numbers as they stand in entry fields.
namespace tamarok::timber {

/// The number in an entry field under the regional settings. Error 13, naming the text and the field,
/// where the text is no number; so also where it is empty.
double enteredNumber(std::string_view text, std::string_view field, const Regional& regional);

} // namespace tamarok::timber
