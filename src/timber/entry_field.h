#pragma once

#include <string_view>

#include "tamarok/convert.h"
#include "tamarok/regional.h"

/// Numbers that a person types into entry fields.
namespace tamarok::timber {

/// Throws Error 13, which names the text and the field.
[[noreturn]] void refuseEntry(std::string_view text, std::string_view field);

/// Returns the number in an entry field under the regional settings. Error 13, which names the text and the
/// field, for a text that is no number, the empty text included.
inline double enteredNumber(std::string_view text, std::string_view field, const Regional& regional)
{
    if (const auto number = convert::parseNumber(text, regional)) [[likely]]
        return *number;
    refuseEntry(text, field);
}

} // namespace tamarok::timber
