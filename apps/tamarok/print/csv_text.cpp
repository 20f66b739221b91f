#include "print/csv_text.h"

namespace tamarok::cli {

std::string csvField(std::string_view text, char separator)
{
    const bool isPlain =
        text.find(separator) == std::string_view::npos && text.find_first_of("\"\r\n") == std::string_view::npos;
    if (isPlain) return std::string{text};
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"') quoted += '"';
        quoted += character;
    }
    return quoted += '"';
}

} // namespace tamarok::cli
