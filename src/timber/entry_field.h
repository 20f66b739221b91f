#pragma once

#include <string_view>

#include "tamarok/convert.h"
#include "tamarok/regional.h"

/// Numbers as they stand in entry fields.
namespace tamarok::timber {

/// Error 13 that names the text and the field.
[[noreturn]] void refuseEntry(std::string_view text, std::string_view field);

/// The number in an entry field under the regional settings. Error 13, naming the text and the field,
/// where the text is no number; so also where it is empty.
inline double enteredNumber(std::string_view text, std::string_view field, const Regional& regional)
{
    if (const auto number = convert::parseNumber(text, regional)) [[likely]]
        return *number;
    refuseEntry(text, field);
}

} // namespace tamarok::timber
