#include <array>
#include <string>
#include <string_view>

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

/// "SELECT column FROM table" for one row, with the row limit of the dialect and the condition.
std::string singleValueStatement(const TmkVar& session, std::string_view column, std::string_view table,
                                 std::string_view condition, bool hasCondition)
{
    std::string statement{session.bolOracle ? "SELECT " : "SELECT TOP 1 "};
    statement.append(column).append(" FROM ").append(table);
    if (session.bolOracle) statement += " WHERE rownum = 1";
    if (hasCondition) statement.append(session.bolOracle ? " AND " : " WHERE ").append(condition);
    return statement;
}

/// Width that a form gives to an input box for a column of that type; 0 is no limit.
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
    ado::Recordset related;
    related.Open(std::string{strSQL} + convert::toText(key), db_ADO_dll);
    std::string text;
    if (!related.AtEOF() && !related.AtBOF()) text = Get_Val(related.Fields().Item(0).Value());
    related.Close();
    return text;
}

std::string Comm_Get::Get_FieldValue(const TmkVar& tmkVar, std::string_view column, std::string_view table,
                                     std::string_view sqlWhere) const
{
    ado::Recordset row;
    row.Open(singleValueStatement(tmkVar, column, table, sqlWhere, !sqlWhere.empty()), tmkVar.db_ADO);
    std::string text;
    if (!row.AtEOF()) text = Get_String(row.Fields().Item(0).Value());
    row.Close();
    return text;
}

double Comm_Get::Get_FieldValueN(const TmkVar& tmkVar, std::string_view column, std::string_view table,
                                 std::string_view sqlWhere) const
{
    ado::Recordset row;
    row.Open(singleValueStatement(tmkVar, column, table, sqlWhere, !text::trim(sqlWhere).empty()), tmkVar.db_ADO);
    double number = 0.0;
    if (!row.AtEOF()) number = Get_Number_N(row.Fields().Item(0).Value());
    row.Close();
    return number;
}

std::int32_t Comm_Get::Get_FieldSize(std::string_view table, std::string_view column, const TmkVar& tmkVar) const
{
    std::string statement{tmkVar.bolOracle ? "SELECT " : "SELECT TOP 0 "};
    statement.append(column).append(" FROM ").append(table);
    if (tmkVar.bolOracle) statement += " WHERE rownum=1";
    ado::Recordset row;
    row.Open(statement, tmkVar.db_ADO);
    const std::int32_t width = inputWidth(row.Fields().Item(0));
    row.Close();
    return width;
}

} // namespace tamarok
