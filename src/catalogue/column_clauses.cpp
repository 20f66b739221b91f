#include "log_catalogue.h"
#include "upper_case.h"

#include "tamarok/comm_csel.h"

namespace tamarok {

std::string Comm_CSel::GetGroupByClause(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    std::string buffer;
    return GetColumn(ID, catalogue::upperCase(strVer_type, buffer), tmkVar);
}

std::string Comm_CSel::GetOrderByClause(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    std::string buffer;
    return GetGroupByClause(ID, catalogue::upperCase(strVer_type, buffer), tmkVar);
}

std::string Comm_CSel::GetGroupByClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    if (catalogue::isLogMeasure(ID) || ID == catalogue::logGameOrigin) {
        return {};
    }
    std::string buffer;
    return GetColumn(ID, catalogue::upperCase(strVer_type, buffer), tmkVar);
}

std::string Comm_CSel::GetOrderByClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    return GetGroupByClause2(ID, strVer_type, tmkVar);
}

std::string Comm_CSel::GetSelectClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const
{
    std::string buffer;
    std::string column = GetColumn(ID, catalogue::upperCase(strVer_type, buffer), tmkVar);
    return catalogue::isLogMeasure(ID) ? "SUM(" + column + ")" : column;
}

} // namespace tamarok
