#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Constants of a statement, converted while it is translated.
namespace tamarok::tsql {

/// Characters of a text literal between its quotes.
std::int32_t textLength(std::string_view raw);

/// The text of a literal with quotes.
std::string textValue(std::string_view raw);

/// Reads a whole number with blanks around it; a blank text is 0. No value for any other text.
std::optional<std::int64_t> wholeOf(std::string_view text);

/// Whether the text is a decimal number with blanks around it, with an exponent where `floating`.
bool isNumberText(std::string_view text, bool floating);

} // namespace tamarok::tsql
