#include "tamarok_embedded/connection_text.h"

#include <array>

#include "failures.h"
#include "tamarok_tsql/names.h"

#include "tamarok/text.h"

namespace tamarok::embedded {

namespace {

using tsql::sameName;

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

/// Removes the value up to the next semicolon from the front of `text`, without the blanks around it.
std::string takePlainValue(std::string_view& text)
{
    const std::size_t end = std::min(text.find(';'), text.size());
    const std::string value{trimmed(text.substr(0, end))};
    text.remove_prefix(std::min(end + 1, text.size()));
    return value;
}

/// Removes a value in quotes from the front of `text`. It may hold semicolons, and a doubled quote stands for one.
std::string takeQuotedValue(std::string_view& text, std::string_view name)
{
    const char quote = text.front();
    std::string value;
    std::size_t i = 1;
    for (; i < text.size() && (text[i] != quote || (i + 1 < text.size() && text[i + 1] == quote)); ++i) {
        value.push_back(text[i]);
        i += text[i] == quote ? 1U : 0U;
    }
    if (i >= text.size()) {
        refuse("the quote of '" + std::string{name} + "' does not end");
    }
    text.remove_prefix(i + 1);
    if (!takePlainValue(text).empty()) {
        refuse("something stands behind the quoted value of '" + std::string{name} + "'");
    }
    return value;
}

/// Removes "name=value" and the semicolon after it from the front of `text`.
Pair takePair(std::string_view& text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        refuse("'" + std::string{trimmed(text)} + "' is not of the form name=value");
    }
    Pair pair{trimmed(text.substr(0, equals)), {}};
    text.remove_prefix(equals + 1);
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const bool isQuoted = !text.empty() && (text.front() == '"' || text.front() == '\'');
    pair.value = isQuoted ? takeQuotedValue(text, pair.name) : takePlainValue(text);
    return pair;
}

/// Names of properties and of their values are compared without regard to case.
void applyProperty(const Pair& pair, ConnectionTarget& target)
{
    if (sameName(pair.name, "Provider")) {
        if (!sameName(pair.value, provider)) {
            refuse("the provider is '" + pair.value + "', not " + std::string{provider});
        }
    } else if (sameName(pair.name, "Data Source")) {
        target.file = pair.value;
    } else if (sameName(pair.name, "Date Order")) {
        if (const auto order = tsql::parseDateOrder(pair.value)) {
            target.options.dateOrder = *order;
            return;
        }
        refuse("'" + pair.value + "' is no date order");
    } else if (sameName(pair.name, "Mode")) {
        for (const ModeName& candidate : modeNames) {
            if (sameName(candidate.name, pair.value)) {
                target.options.mode = candidate.mode;
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

ConnectionTarget parseConnectionText(std::string_view text)
{
    ConnectionTarget target;
    while (!trimmed(text).empty()) {
        applyProperty(takePair(text), target);
    }
    if (target.file.empty()) {
        refuse("no Data Source is given");
    }
    return target;
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
