#include "table_parts.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

constexpr std::string_view heading = "# ";

std::string_view trimLineEnds(std::string_view text)
{
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

} // namespace

std::vector<TablePart> tableParts(std::string_view file, std::string_view text)
{
    if (!text.starts_with(heading))
        throw Error{errors::invalidArgument,
                    std::string{file} + ": the first line is not \"# \" and the name of a table.", "database"};
    std::vector<TablePart> parts;
    // Each round takes one heading line and the text up to the next heading.
    while (!text.empty()) {
        const std::size_t lineEnd = std::min(text.find('\n'), text.size());
        const std::string_view table = trimLineEnds(text.substr(heading.size(), lineEnd - heading.size()));
        const std::size_t next = std::min(text.find("\n# ", lineEnd), text.size());
        std::string_view rows = trimLineEnds(text.substr(lineEnd, next - lineEnd));
        if (!rows.empty()) rows.remove_prefix(1); // the end of the heading line
        parts.push_back({table, rows});
        text.remove_prefix(std::min(next + 1, text.size()));
    }
    return parts;
}

} // namespace tamarok::database
