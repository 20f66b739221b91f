#include "support/tsql_server.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include "support/child_process.h"

#include "tamarok/text.h"

namespace tamarok::test {

namespace {

std::string environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string{} : std::string{value};
}

std::string lastLine(std::string text)
{
    while (text.ends_with('\n'))
        text.pop_back();
    const std::size_t start = text.rfind('\n');
    return start == std::string::npos ? text : text.substr(start + 1);
}

/// Takes the part up to the next semicolon that stands outside of braces off the front of a text. A closing brace is
/// doubled within braces.
std::string_view takePart(std::string_view& text)
{
    bool inBraces = false;
    std::size_t end = 0;
    for (; end < text.size() && (inBraces || text[end] != ';'); ++end)
        if (text[end] == '}' || (text[end] == '{' && !inBraces)) inBraces = !inBraces;
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

/// DATABASE is added anew for each database.
std::string withoutDatabase(std::string_view text)
{
    std::string kept;
    while (!text.empty()) {
        const std::string_view part = takePart(text);
        const std::string_view name = text::trim(part.substr(0, part.find('=')));
        if (!part.empty() && !text::equalsNoCase(name, "DATABASE")) kept.append(part).append(";");
    }
    return kept;
}

std::optional<std::string> findTsqlServer()
{
    const std::string text = environment("TAMAROK_TSQL_SERVER");
    if (!text.empty()) return withoutDatabase(text);
    const std::string command = environment("TAMAROK_TSQL_START");
    if (!command.empty()) {
        const Outcome outcome = runProgram("/bin/sh", {"-c", command});
        if (outcome.status != 0) throw std::runtime_error{"TAMAROK_TSQL_START failed: " + outcome.errors};
        return withoutDatabase(lastLine(outcome.output));
    }
    tellSkipped("the T-SQL server: neither TAMAROK_TSQL_SERVER nor TAMAROK_TSQL_START is set");
    return std::nullopt;
}

} // namespace

void tellSkipped(std::string_view what)
{
    std::cerr << "**** SKIPPED: tests on " << what << " ****\n";
}

const std::optional<std::string>& tsqlServer()
{
    static const std::optional<std::string> text = findTsqlServer();
    return text;
}

} // namespace tamarok::test
