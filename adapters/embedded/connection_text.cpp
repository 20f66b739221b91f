#include "tamarok_embedded/connection_text.h"

#include <array>

#include "failures.h"

#include "tamarok/text.h"

namespace tamarok::embedded {

namespace {

constexpr std::string_view provider = "Tamarok.Embedded";

struct ModeName {
    std::string_view name;
    OpenMode mode;
};
constexpr std::array modeNames{
    ModeName{"Read", OpenMode::ReadOnly},
    ModeName{"Create", OpenMode::Create},
    ModeName{"ReadWrite", OpenMode::OpenExisting},
};

bool sameName(std::string_view a, std::string_view b) noexcept
{
    const CompareNames less;
    return !less(a, b) && !less(b, a);
}

[[noreturn]] void refuse(const std::string& why)
{
    throw Error{errors::invalidArgument, "Connection text: " + why + ".", std::string{sourceName}};
}

std::string_view trimmed(std::string_view text) noexcept
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

struct Pair {
    std::string_view name;
    std::string value;
};

/// Takes "name=value" off the front of `text`; a value in quotes may hold semicolons, and a doubled
/// quote stands for one.
Pair takePair(std::string_view& text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        refuse("'" + std::string{trimmed(text)} + "' is not of the form name=value");
    }
    Pair pair{trimmed(text.substr(0, equals)), {}};
    text = text.substr(equals + 1);
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.empty() || (text.front() != '"' && text.front() != '\'')) {
        const std::size_t end = std::min(text.find(';'), text.size());
        pair.value = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        return pair;
    }
    const char quote = text.front();
    std::size_t i = 1;
    for (; i < text.size() && (text[i] != quote || (i + 1 < text.size() && text[i + 1] == quote)); ++i) {
        pair.value.push_back(text[i]);
        i += text[i] == quote ? 1U : 0U;
    }
    if (i >= text.size()) {
        refuse("the quote of '" + std::string{pair.name} + "' does not end");
    }
    text.remove_prefix(i + 1);
    const std::size_t end = std::min(text.find(';'), text.size());
    if (!trimmed(text.substr(0, end)).empty()) {
        refuse("something stands behind the quoted value of '" + std::string{pair.name} + "'");
    }
    text.remove_prefix(std::min(end + 1, text.size()));
    return pair;
}

void takeOver(const Pair& pair, ConnectionWish& wish)
{
    if (sameName(pair.name, "Provider")) {
        if (!sameName(pair.value, provider)) {
            refuse("the provider is '" + pair.value + "', not " + std::string{provider});
        }
    } else if (sameName(pair.name, "Data Source")) {
        wish.file = pair.value;
    } else if (sameName(pair.name, "Date Order")) {
        if (const auto order = tsql::parseDateOrder(pair.value)) {
            wish.options.dateOrder = *order;
            return;
        }
        refuse("'" + pair.value + "' is no date order");
    } else if (sameName(pair.name, "Mode")) {
        for (const ModeName& candidate : modeNames) {
            if (sameName(candidate.name, pair.value)) {
                wish.options.mode = candidate.mode;
                return;
            }
        }
        refuse("'" + pair.value + "' is no mode (Read, Create, ReadWrite)");
    } else {
        refuse("there is no property '" + std::string{pair.name} + "'");
    }
}

std::string quotedIfNeeded(const std::string& value)
{
    if (value.find_first_of(";\"'") == std::string::npos && trimmed(value) == value) {
        return value;
    }
    std::string text = "\"";
    for (const char letter : value) {
        text.append(letter == '"' ? 2 : 1, letter);
    }
    return text + "\"";
}

} // namespace

ConnectionWish parseConnectionText(std::string_view text)
{
    ConnectionWish wish;
    while (!trimmed(text).empty()) {
        takeOver(takePair(text), wish);
    }
    if (wish.file.empty()) {
        refuse("no Data Source is given");
    }
    return wish;
}

std::string composeConnectionText(const std::string& file, const OpenOptions& options)
{
    std::string composed = "Provider=" + std::string{provider} + ";Data Source=" + quotedIfNeeded(file);
    if (options.dateOrder != tsql::DateOrder::Mdy) {
        composed += ";Date Order=" + text::toUpper(tsql::dateOrderName(options.dateOrder));
    }
    if (options.mode == OpenMode::ReadOnly) {
        composed += ";Mode=Read";
    }
    return composed;
}

} // namespace tamarok::embedded
