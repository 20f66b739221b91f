#include "tamarok_tsql/literals.h"

#include <charconv>
#include <cstddef>

namespace tamarok::tsql {
namespace {

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

} // namespace

/// Counts code points, a doubled quote as one.
std::int32_t textLength(std::string_view raw)
{
    std::int32_t length = 0;
    for (std::size_t i = 1; i + 1 < raw.size(); ++i) {
        const auto c = static_cast<unsigned char>(raw[i]);
        if (c == '\'') ++i;
        if ((c & 0xC0U) != 0x80U) ++length;
    }
    return length;
}

/// Drops the outer quotes and makes doubled ones single.
std::string textValue(std::string_view raw)
{
    std::string value;
    value.reserve(raw.size());
    for (std::size_t i = 1; i + 1 < raw.size(); ++i) {
        value += raw[i];
        if (raw[i] == '\'') ++i;
    }
    return value;
}

/// A blank text is 0, as in the server's conversion to int.
std::optional<std::int64_t> wholeOf(std::string_view text)
{
    std::string_view digits = trimmed(text);
    if (digits.empty()) return 0;
    if (digits.front() == '+') digits.remove_prefix(1);
    std::int64_t value = 0;
    const char* end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return value;
}

/// An exponent and a blank text are allowed for floats only. The first character is checked before, since
/// std::from_chars also accepts "inf" and "nan".
bool isNumberText(std::string_view text, bool floating)
{
    std::string_view digits = trimmed(text);
    if (digits.empty()) return floating;
    if (digits.front() == '+' || digits.front() == '-') digits.remove_prefix(1);
    const bool begun = !digits.empty() && (digits.front() == '.' || (digits.front() >= '0' && digits.front() <= '9'));
    if (!begun) return false;
    double value = 0;
    const char* end = digits.data() + digits.size();
    const auto format = floating ? std::chars_format::general : std::chars_format::fixed;
    const auto read = std::from_chars(digits.data(), end, value, format);
    return read.ec == std::errc() && read.ptr == end;
}

} // namespace tamarok::tsql
