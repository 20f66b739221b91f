#include "first_column.h"

namespace tamarok::rights {

std::vector<Variant> readFirstColumn(const ado::ConnectionRef& connection, std::string_view statement)
{
    ado::Recordset rows;
    rows.Open(statement, connection);
    std::vector<Variant> column;
    // GetRows fails on an empty result.
    if (!rows.AtEOF()) {
        const VariantArray all = rows.GetRows();
        const std::int32_t count = all.bounds(2).upper + 1;
        column.reserve(static_cast<std::size_t>(count));
        for (std::int32_t row = 0; row < count; ++row)
            column.push_back(all.at(0, row));
    }
    rows.Close();
    return column;
}

} // namespace tamarok::rights
