#include <string>
#include <string_view>

#include "ado/first_row.h"
#include "dialect/sql_template.h"

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
    // On Oracle the row limit is a condition itself, and it stands before the caller's.
    return dialect::fill("{SELECTFIRST}{COLUMN} FROM {TABLE}{WHEREFIRST}{CONDITION?{ORACLE? AND : WHERE }{CONDITION}:}",
                         dialect::of(session), {{"COLUMN", column}, {"TABLE", table}, {"CONDITION", condition}});
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
    const std::string statement = dialect::fill("{SELECTNONE}{COLUMN} FROM {TABLE}{WHERENONE}", dialect::of(tmkVar),
                                                {{"COLUMN", column}, {"TABLE", table}});
    // The column's type needs no row: on SQL Server the result is empty.
    std::int32_t width = 0;
    ado::readExisting(tmkVar.db_ADO, statement,
                      [&](const ado::FieldCollection& fields) { width = inputWidth(fields.Item(0)); });
    return width;
}

} // namespace tamarok
