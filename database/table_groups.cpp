#include "database/table_groups.h"

#include <algorithm>
#include <string>

#include "database/resources.h"
#include "database/table_loader.h"
#include "database/tsv.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

constexpr std::string_view heading = "# ";

std::string_view withoutEnd(std::string_view text)
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
    while (!text.empty()) {
        const std::size_t lineEnd = std::min(text.find('\n'), text.size());
        const std::string_view table = withoutEnd(text.substr(heading.size(), lineEnd - heading.size()));
        const std::size_t next = std::min(text.find("\n# ", lineEnd), text.size());
        parts.push_back({table, withoutEnd(text.substr(lineEnd, next - lineEnd))});
        if (!parts.back().text.empty()) parts.back().text.remove_prefix(1);
        text.remove_prefix(std::min(next + 1, text.size()));
    }
    return parts;
}

void loadSelectionKeys(ado::Connection& connection)
{
    for (const Resource& file : resources("selections")) {
        for (const TablePart& part : tableParts(file.name, file.text)) {
            try {
                loadTable(connection, part.table, TsvTable{part.table, part.text});
            } catch (Error& error) {
                throw error.addContext(std::string{file.name} + ", table " + std::string{part.table});
            }
        }
    }
}

} // namespace tamarok::database
