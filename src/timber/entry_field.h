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
    double number = 0.0;
    if (!convert::readNumber(text, regional, number)) [[unlikely]]
        refuseEntry(text, field);
    return number;
}

} // namespace tamarok::timber
