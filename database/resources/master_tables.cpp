#include "master_tables.h"

#include <string>

#include "resources.h"

#include "tamarok/error.h"

namespace tamarok::database {

std::string_view masterTableName(std::string_view file) noexcept
{
    const std::string_view table = file.substr(file.find('_') + 1);
    return table.substr(0, table.find('.'));
}

TsvTable masterTable(std::string_view table)
{
    for (const Resource& file : resources("master"))
        if (masterTableName(file.name) == table) return TsvTable{file.name, file.text};
    throw Error{errors::fileNotFound, "The master data has no table " + std::string{table} + ".", "MasterKeys"};
}

} // namespace tamarok::database
