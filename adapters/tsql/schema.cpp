#include "tamarok_tsql/schema.h"

#include "tamarok_tsql/names.h"

namespace tamarok::tsql {

std::int32_t Table::column(std::string_view wanted) const
{
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (sameName(columns[i].name, wanted)) return static_cast<std::int32_t>(i);
    }
    return -1;
}

} // namespace tamarok::tsql
