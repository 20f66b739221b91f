#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "tamarok/text.h"

namespace tamarok::catalogue {

/// `text` in upper case. List texts are as a rule in upper case already: such a text comes back as
/// it is, any other one is written to `buffer`, which must outlive the result.
inline std::string_view upperCase(std::string_view text, std::string& buffer)
{
    const auto mayChange = [](char c) { return (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80U; };
    if (std::ranges::none_of(text, mayChange)) {
        return text;
    }
    buffer = text::toUpper(text);
    return buffer;
}

} // namespace tamarok::catalogue
