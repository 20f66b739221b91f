#include "list_types.h"
#include "log_catalogue.h"
#include "row_text.h"

#include "tamarok/comm_csel.h"

namespace tamarok {

namespace {

using catalogue::Column;
using catalogue::RowText;

std::string textOf(const Column& column)
{
    return std::string{column.text};
}

} // namespace

std::string Comm_CSel::GetColumn(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    const Column* column = catalogue::logColumns.find(ID);
    if (column == nullptr) {
        return {};
    }
    if (!column->composed) {
        return textOf(*column);
    }
    return RowText{tmkVar, strVer_type, catalogue::logColumns}.fill(column->text);
}

std::string Comm_CSel::GetColumnTyp(std::string_view Typ, std::int16_t ID, bool Agregate, bool InGroupBy,
                                    const TmkVar& tmkVar) const
{
    const catalogue::ListType* type = catalogue::findListType(Typ);
    const Column* column = type != nullptr && type->columns != nullptr ? type->columns->find(ID) : nullptr;
    if (column == nullptr) {
        return {};
    }
    if (InGroupBy && !column->groupText.empty()) {
        return std::string{column->groupText};
    }
    const bool aggregated = Agregate && !column->word.empty();
    if (aggregated && InGroupBy) {
        return {};
    }
    std::string expression;
    if (aggregated) {
        expression.append(column->word).append("(");
    }
    RowText{tmkVar, {}, *type->columns}.append(expression, column->text);
    if (aggregated) {
        expression += ')';
    }
    return expression;
}

std::string Comm_CSel::GetColumnAbs(std::int16_t ID) const
{
    const Column* column = catalogue::absColumns.find(ID);
    return column == nullptr ? std::string{} : textOf(*column);
}

std::string Comm_CSel::GetGroupByClauseAbs(std::int16_t ID) const
{
    return GetColumnAbs(ID);
}

std::string Comm_CSel::GetGroupByClause2Abs(std::int16_t ID) const
{
    const Column* column = catalogue::absColumns.find(ID);
    return column == nullptr || !column->word.empty() ? std::string{} : textOf(*column);
}

std::string Comm_CSel::GetSelectClause2Abs(std::int16_t ID) const
{
    const Column* column = catalogue::absColumns.find(ID);
    if (column == nullptr || column->word.empty()) {
        return GetColumnAbs(ID);
    }
    return std::string{column->word}.append("(").append(column->text).append(")");
}

} // namespace tamarok
