#include "fetch_rows.h"

#include "tamarok/convert.h"

namespace tamarok::rights {

std::vector<Variant> fetchFirstColumn(const ado::ConnectionRef& connection, std::string_view statement)
{
    ado::Recordset rows;
    rows.Open(statement, connection);
    std::vector<Variant> column;
    if (rows.AtEOF()) return column;
    const VariantArray all = rows.GetRows();
    rows.Close();
    const auto count = all.bounds(2).upper + 1;
    column.reserve(static_cast<std::size_t>(count));
    for (std::int32_t row = 0; row < count; ++row)
        column.push_back(all.at(0, row));
    return column;
}

std::string textOf(const Variant& value)
{
    return value.isNull() ? std::string{} : convert::toText(value);
}

CommandTimeoutScope::CommandTimeoutScope(const ado::ConnectionRef& connection, std::int32_t seconds) :
    connection_{connection}, remembered_{ado::require(connection).CommandTimeout()}
{
    connection_->CommandTimeout(seconds);
}

CommandTimeoutScope::~CommandTimeoutScope()
{
    connection_->CommandTimeout(remembered_);
}

} // namespace tamarok::rights
