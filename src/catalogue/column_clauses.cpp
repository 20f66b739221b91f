#include "column_text.h"
#include "list_types.h"

#include "tamarok/comm_csel.h"
#include "tamarok/text.h"

namespace tamarok {

// The clauses of the log list by column id. Required by the contract: the texts for GROUP BY and ORDER BY are equal,
// and the first pair keeps columns that the second leaves out, the aggregated ones. Do not correct.
using catalogue::logList;

std::string Comm_CSel::GetGroupByClause(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    return catalogue::detailText(logList(), ID, text::toUpper(strVer_type), tmkVar);
}

std::string Comm_CSel::GetOrderByClause(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    return GetGroupByClause(ID, strVer_type, tmkVar);
}

std::string Comm_CSel::GetGroupByClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    return catalogue::groupText(logList(), ID, strVer_type, tmkVar);
}

std::string Comm_CSel::GetOrderByClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    return GetGroupByClause2(ID, strVer_type, tmkVar);
}

// The one clause that aggregates: SUM for a measure, the plain text for any other column.
std::string Comm_CSel::GetSelectClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    return catalogue::aggregateText(logList(), ID, strVer_type, tmkVar);
}

} // namespace tamarok
