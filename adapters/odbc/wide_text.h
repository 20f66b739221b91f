#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "odbc_api.h"

/// Texts between UTF-8 and the UTF-16 of the driver manager.
namespace tamarok::odbc {

/// A text in UTF-16. An invalid byte becomes U+FFFD.
std::vector<SQLWCHAR> toWide(std::string_view text);

/// Appends a text in UTF-8. A surrogate without its partner becomes U+FFFD.
void appendUtf8(std::string& text, std::span<const SQLWCHAR> wide);

std::string toUtf8(std::span<const SQLWCHAR> wide);

/// Whether a unit is the first half of a character of two units.
constexpr bool isHighSurrogate(SQLWCHAR unit) noexcept
{
    return unit >= 0xD800 && unit < 0xDC00;
}

} // namespace tamarok::odbc
