#include "row_fields.h"

namespace tamarok::database {
namespace {

std::vector<RowField> joined(std::initializer_list<TableInsert::Fields> groups)
{
    std::vector<RowField> fields;
    for (const TableInsert::Fields group : groups)
        fields.insert(fields.end(), group.begin(), group.end());
    return fields;
}

std::vector<BulkInsert::Column> columnsOf(std::span<const RowField> fields)
{
    std::vector<BulkInsert::Column> columns;
    for (const RowField& field : fields)
        columns.push_back({field.name, field.type});
    return columns;
}

} // namespace

TableInsert::TableInsert(ado::Connection& connection, std::string_view table, std::initializer_list<Fields> groups) :
    fields_{joined(groups)}, statement_{connection, table, columnsOf(fields_)}
{}

void TableInsert::insert(const RowSource& source)
{
    for (std::size_t column = 0; column < fields_.size(); ++column)
        statement_[column] = fields_[column].value(source);
    statement_.insert();
}

Variant textOrNull(std::string_view text)
{
    return text.empty() ? Variant{Null{}} : Variant{text};
}

} // namespace tamarok::database
