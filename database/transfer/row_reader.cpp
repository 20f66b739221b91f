#include "row_reader.h"

namespace tamarok::database {

RowReader::RowReader(Store& store, const tsql::TableDefinition& table)
{
    std::string names;
    for (const tsql::DefinedColumn& column : table.columns)
        names.append(names.empty() ? "" : ", ").append(tsql::bracketed(column.name));
    records_.Open("SELECT " + names + " FROM " + tsql::bracketed(table.name), store.connection());
}

std::vector<RowColumn> RowReader::columns() const
{
    std::vector<RowColumn> columns;
    for (std::int32_t i = 0; i < records_.Fields().Count(); ++i) {
        const ado::Field& field = records_.Fields().Item(i);
        columns.push_back({field.Name(), field.Type()});
    }
    return columns;
}

bool RowReader::read(std::vector<Variant>& row)
{
    if (!isFirst_ && !records_.AtEOF()) records_.MoveNext();
    isFirst_ = false;
    if (records_.AtEOF()) return false;
    row.clear();
    for (std::int32_t i = 0; i < records_.Fields().Count(); ++i)
        row.push_back(records_.Fields().Item(i).Value());
    return true;
}

} // namespace tamarok::database
