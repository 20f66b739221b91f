#include "check/rows.h"

#include "tamarok/convert.h"

namespace tamarok::cli::check {

std::vector<std::vector<std::string>> readTexts(const ado::ConnectionRef& connection, std::string_view statement)
{
    std::vector<std::vector<std::string>> all;
    ado::Recordset records;
    for (records.Open(statement, connection); !records.AtEOF(); records.MoveNext()) {
        std::vector<std::string>& row = all.emplace_back();
        const ado::FieldCollection& fields = records.Fields();
        for (std::int32_t column = 0; column < fields.Count(); ++column) {
            const Variant value = fields.Item(column).Value();
            row.push_back(value.isNull() ? std::string{} : convert::toText(value));
        }
    }
    return all;
}

std::string readText(const ado::ConnectionRef& connection, std::string_view statement)
{
    const auto rows = readTexts(connection, statement);
    return rows.empty() || rows.front().empty() ? std::string{} : rows.front().front();
}

std::int64_t countRows(const ado::ConnectionRef& connection, std::string_view statement)
{
    std::int64_t count = 0;
    ado::Recordset records;
    for (records.Open(statement, connection); !records.AtEOF(); records.MoveNext())
        ++count;
    return count;
}

} // namespace tamarok::cli::check
