#include "areas/hunting_keys.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

constexpr std::string_view districtQuery =
    "SELECT BB_JAGDBEZIRKE.ID, AL.ID AS LEVEL_ID, OBF.ID AS OFFICE_ID FROM BB_JAGDBEZIRKE "
    "INNER JOIN ACCESS_LEVELS AL ON AL.ID = BB_JAGDBEZIRKE.ID_ACCESS_LEVELS "
    "INNER JOIN ACCESS_LEVELS OBF ON OBF.ACCESS_LEVELS = LEFT(AL.ACCESS_LEVELS,LEN(AL.ACCESS_LEVELS)-2)+'00' "
    "WHERE ISNULL(BB_JAGDBEZIRKE.DISABLE,0) = 0 ORDER BY BB_JAGDBEZIRKE.ID";

} // namespace

HuntingKeys::HuntingKeys(ado::Connection& connection) :
    hunters{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE VORNAME IS NOT NULL ORDER BY ID_PERSONAL")},
    buyers{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE VORNAME IS NOT NULL OR GRUPPE = 'Handel' "
                             "ORDER BY ID_PERSONAL")}
{
    for (const auto& row : rowsOf(connection, districtQuery))
        districts.push_back({convert::toLong(row[0]), convert::toLong(row[1]), convert::toLong(row[2])});
    for (const auto& row : rowsOf(connection, "SELECT ID_WALDORT, ID_ACCESS_LEVELS FROM WALDORT "
                                              "WHERE ID_ACCESS_LEVELS IS NOT NULL ORDER BY ID_WALDORT"))
        places[convert::toLong(row[1])].push_back(convert::toLong(row[0]));
}

Variant HuntingKeys::pickPlace(Random& random, std::int32_t level) const
{
    const auto found = places.find(level);
    return found == places.end() ? Variant{Null{}} : pickId(random, found->second);
}

HuntingYear huntingYearOf(Date day)
{
    constexpr std::int32_t april = 4;
    const CivilTime parts = toCivil(day);
    const std::int32_t year = parts.month >= april ? parts.year : parts.year - 1;
    return {std::to_string(year) + "/" + paddedNumber((year + 1) % 100, 2), makeDate(year, april, 1),
            makeDate(year + 1, 3, 31)};
}

} // namespace tamarok::database
