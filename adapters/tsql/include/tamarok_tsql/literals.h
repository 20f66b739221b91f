#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tamarok_tsql/date_order.h"
#include "tamarok_tsql/types.h"

/// Constants of a statement, converted while it is translated.
namespace tamarok::tsql {

/// Characters of a text literal between its quotes.
std::int32_t textLength(std::string_view raw);

/// The text of a literal with quotes.
std::string textValue(std::string_view raw);

/// A date text as the server reads it where none of CONVERT's styles is named: with points the day
/// first, with hyphens the year first, with slashes by `order`, eight digits as year, month and day,
/// a time behind it. Result in storage form, rounded to `kind`; nothing where the server refuses.
std::optional<std::string> storedDate(std::string_view text, DateOrder order, TypeKind kind);

/// A whole number with blanks around it; '' is 0.
std::optional<std::int64_t> wholeOf(std::string_view text);

/// Whether the text is a decimal number with blanks around it, with an exponent where `floating`.
bool isNumberText(std::string_view text, bool floating);

} // namespace tamarok::tsql
