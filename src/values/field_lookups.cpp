#include <string>
#include <string_view>

#include "ado/first_row.h"

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

// Look-ups of one value by a composed statement.

namespace tamarok {
namespace {

/// Returns the query for `column` of one row of `table`. An empty condition means no condition.
std::string singleValueStatement(const TmkVar& session, std::string_view column, std::string_view table,
                                 std::string_view condition)
{
    std::string statement{session.bolOracle ? "SELECT " : "SELECT TOP 1 "};
    statement.append(column).append(" FROM ").append(table);
    if (session.bolOracle) statement += " WHERE rownum = 1";
    if (!condition.empty()) statement.append(session.bolOracle ? " AND " : " WHERE ").append(condition);
    return statement;
}

/// Returns the width of an input box for a column of that type; 0 means no limit.
std::int32_t inputWidth(const ado::Field& field)
{
    constexpr std::int32_t numberWidth = 11;
    switch (field.Type()) {
    case ado::DataType::Double: return numberWidth;
    case ado::DataType::Date:
    case ado::DataType::DBDate:
    case ado::DataType::DBTimeStamp:
    case ado::DataType::Char:
    case ado::DataType::WChar:
    case ado::DataType::VarChar:
    case ado::DataType::LongVarChar:
    case ado::DataType::VarWChar: return field.DefinedSize();
    default: return 0;
    }
}

} // namespace

std::string Comm_Get::Get_RelatedText(std::string_view column, std::string_view strSQL, ado::Recordset& primaryRS,
                                      const ado::ConnectionRef& db_ADO_dll) const
{
    const Variant key = primaryRS.Fields().Item(column).Value();
    if (key.isNull()) return {};
    const auto text = ado::readFirstValue(db_ADO_dll, std::string{strSQL} + convert::toText(key));
    return text ? Get_Val(*text) : std::string{};
}

std::string Comm_Get::Get_FieldValue(const TmkVar& tmkVar, std::string_view column, std::string_view table,
                                     std::string_view sqlWhere) const
{
    // Required by the contract: blanks count as a condition here, but not in Get_FieldValueN. Do not correct.
    auto value = ado::readFirstValue(tmkVar.db_ADO, singleValueStatement(tmkVar, column, table, sqlWhere));
    return value ? Get_String(*std::move(value)) : std::string{};
}

double Comm_Get::Get_FieldValueN(const TmkVar& tmkVar, std::string_view column, std::string_view table,
                                 std::string_view sqlWhere) const
{
    const std::string_view condition = text::trim(sqlWhere).empty() ? std::string_view{} : sqlWhere;
    const auto value = ado::readFirstValue(tmkVar.db_ADO, singleValueStatement(tmkVar, column, table, condition));
    return value ? Get_Number_N(*value) : 0.0;
}

std::int32_t Comm_Get::Get_FieldSize(std::string_view table, std::string_view column, const TmkVar& tmkVar) const
{
    std::string statement{tmkVar.bolOracle ? "SELECT " : "SELECT TOP 0 "};
    statement.append(column).append(" FROM ").append(table);
    if (tmkVar.bolOracle) statement += " WHERE rownum=1";
    ado::Recordset row; // on SQL Server without rows: the columns alone count
    row.Open(statement, tmkVar.db_ADO);
    const std::int32_t width = inputWidth(row.Fields().Item(0));
    row.Close();
    return width;
}

} // namespace tamarok
