#include "tamarok/connection_text.h"

#include <algorithm>

#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::ado {

// A text is read from the front, property by property; each reader removes what it has read.
namespace {

constexpr std::string_view blanks = " \t\r\n";

/// Names the part by its number: its text may be the rest of a password.
[[noreturn]] void refuse(std::size_t part, std::string_view why)
{
    throw Error{errors::invalidArgument,
                "Connection text: part " + std::to_string(part) + " " + std::string{why} + "."};
}

std::string_view trimmed(std::string_view text) noexcept
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool isQuote(char letter) noexcept
{
    return letter == '"' || letter == '\'';
}

/// Takes the text up to the next semicolon off the front of `text`, and the semicolon with it.
std::string_view takePart(std::string_view& text) noexcept
{
    const std::size_t end = std::min(text.find(';'), text.size());
    const std::string_view part = trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

/// Takes a quoted value off the front of `text`, which begins with its quote.
std::string takeQuoted(std::string_view& text, std::size_t part)
{
    const char quote = text.front();
    std::string value;
    std::size_t at = 1;
    for (;; ++at) {
        if (at >= text.size()) refuse(part, "has a quote that does not end");
        if (text[at] == quote) {
            // A doubled quote within the value stands for one.
            const bool doubled = at + 1 < text.size() && text[at + 1] == quote;
            if (!doubled) break;
            ++at;
        }
        value.push_back(text[at]);
    }
    text.remove_prefix(at + 1);
    // Only blanks may stand between the closing quote and the semicolon.
    if (!takePart(text).empty()) refuse(part, "has text behind its quoted value");
    return value;
}

/// Takes "name=value" and its semicolon off the front of `text`. @param part  its number, from 1
ConnectionProperty takeProperty(std::string_view& text, std::size_t part)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) refuse(part, "is not of the form name=value");
    ConnectionProperty property{std::string{trimmed(text.substr(0, equals))}, {}};
    text.remove_prefix(equals + 1);
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    property.value = !text.empty() && isQuote(text.front()) ? takeQuoted(text, part) : std::string{takePart(text)};
    return property;
}

} // namespace

std::vector<ConnectionProperty> splitConnectionText(std::string_view text)
{
    std::vector<ConnectionProperty> properties;
    while (!trimmed(text).empty())
        properties.push_back(takeProperty(text, properties.size() + 1));
    return properties;
}

std::optional<std::string> connectionProperty(std::string_view text, std::string_view name)
{
    // Of a property given twice the last value counts.
    std::optional<std::string> value;
    for (ConnectionProperty& property : splitConnectionText(text)) {
        if (text::equalsNoCase(property.name, name)) value = std::move(property.value);
    }
    return value;
}

std::string connectionValue(std::string_view value)
{
    if (value.find_first_of(";\"'") == std::string_view::npos && trimmed(value) == value) return std::string{value};
    return "\"" + text::replaceAll(value, "\"", "\"\"") + "\"";
}

} // namespace tamarok::ado
