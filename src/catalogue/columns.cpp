#include "column_text.h"
#include "list_types.h"

#include "tamarok/comm_csel.h"

namespace tamarok {

using catalogue::Aggregate;
using catalogue::Column;
using catalogue::deductionList;

std::string Comm_CSel::GetColumn(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    return catalogue::detailText(catalogue::logList(), ID, strVer_type, tmkVar);
}

std::string Comm_CSel::GetColumnTyp(std::string_view Typ, std::int16_t ID, bool Agregate, bool InGroupBy,
                                    const TmkVar& tmkVar) const
{
    const catalogue::ListType* type = catalogue::findListType(Typ);
    // Columns that take a version key are GetColumn's alone.
    if (type == nullptr || type->description().dependsOnVersion) {
        return {};
    }
    if (!Agregate && !InGroupBy) {
        if (const std::string_view plain = type->plainText(ID); !plain.empty()) return std::string{plain};
        return catalogue::detailText(*type, ID, {}, tmkVar);
    }
    const Column* column = type->column(ID);
    if (column == nullptr) {
        return {};
    }
    // Required by the contract: the group expression replaces the column's in detail lists too.
    if (const std::string_view group = column->groupText; InGroupBy && !group.empty()) {
        return std::string{group};
    }
    if (!Agregate) {
        return catalogue::detailText(*type, ID, {}, tmkVar);
    }
    return InGroupBy ? catalogue::groupText(*type, ID, {}, tmkVar) : catalogue::aggregateText(*type, ID, {}, tmkVar);
}

// The deduction list has neither a version nor texts that vary.

std::string Comm_CSel::GetColumnAbs(std::int16_t ID) const
{
    const Column* column = deductionList().column(ID);
    return column == nullptr ? std::string{} : std::string{column->text};
}

std::string Comm_CSel::GetGroupByClauseAbs(std::int16_t ID) const
{
    return GetColumnAbs(ID);
}

std::string Comm_CSel::GetGroupByClause2Abs(std::int16_t ID) const
{
    const Column* column = deductionList().column(ID);
    return column != nullptr && column->aggregate == Aggregate::sum ? std::string{} : GetColumnAbs(ID);
}

std::string Comm_CSel::GetSelectClause2Abs(std::int16_t ID) const
{
    const Column* column = deductionList().column(ID);
    return column != nullptr && column->aggregate == Aggregate::sum ? "SUM(" + GetColumnAbs(ID) + ")"
                                                                    : GetColumnAbs(ID);
}

} // namespace tamarok
