#include <string>
#include <string_view>

#include "ado/first_row.h"
#include "fetch_rows.h"

#include "tamarok/comm_set.h"
#include "tamarok/comm_sql.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

using rights::textOf;

constexpr std::string_view levelsOfUsers =
    " FROM ACCESS_LEVELS INNER JOIN ONETOMANY ON ACCESS_LEVELS.ID = ONETOMANY.ID_SLAVE";
constexpr std::string_view lenders = "(SELECT USERS.ID FROM USERS INNER JOIN USERS_PROPERTY ON USERS_PROPERTY.ID_USERS "
                                     "= USERS.ID AND USERS_PROPERTY.B055 = 1"
                                     " WHERE USERS.ID_USERS_VERTRETER";

std::string idOfUser(std::string_view name)
{
    return std::string{"SELECT ID FROM USERS WHERE NAME = '"}.append(name).append("'");
}

/// The levels of a subject and of all users that lend him their rights.
std::string relationTail(std::string_view subject)
{
    std::string tail{levelsOfUsers};
    return tail.append(" WHERE ONETOMANY.RELATION = 'USERS.ACCESS_LEVELS' AND (ONETOMANY.ID_MASTER IN (")
        .append(subject)
        .append(") OR ID_MASTER IN ")
        .append(lenders)
        .append(" IN (")
        .append(subject)
        .append(")))");
}

constexpr std::string_view choiceColumns =
    "SELECT ACCESS_LEVELS AS NUMMER, NAME AS SHORT,NAME_LANG AS LONG FROM ACCESS_LEVELS";

} // namespace

std::string Comm_SQL::ACL(const TmkVar& tmkVar) const
{
    const std::string condition =
        tmkVar.ID_Access_Levels == 0 ? " IS NULL" : "= " + std::to_string(tmkVar.ID_Access_Levels);
    std::string code;
    ado::readFirst(tmkVar.db_ADO, "SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID " + condition,
                   [&](const ado::FieldCollection& fields) { code = textOf(fields.Item("ACCESS_LEVELS").Value()); });
    return code;
}

std::string Comm_SQL::ACL_str(const TmkVar& tmkVar, std::int16_t Typ, std::int16_t ID_ACL) const
{
    if (Typ == 1) {
        return std::string{"SELECT NAME FROM ACCESS_LEVELS WHERE ACCESS_LEVELS = "}.append(
            tmkVar.bolOracle ? "LPAD('0',LEN(ACCESS_LEVELS),'0')" : "REPLICATE(0,LEN(ACCESS_LEVELS))");
    }
    if (Typ == 2) return "SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = " + std::to_string(ID_ACL);
    return {};
}

std::string Comm_SQL::ACL_USERS_str(const TmkVar& tmkVar, std::int16_t Typ, std::string_view strName,
                                    std::int16_t intMode, std::string_view strAL) const
{
    const std::string subject = strName.empty() ? "0"
                                : intMode == 1  ? std::to_string(tmkVar.ID_User)
                                                : idOfUser(strName);
    switch (Typ) {
    case 1:
        return std::string{choiceColumns} + " WHERE ID IN (SELECT ACCESS_LEVELS.ID" + relationTail(subject) +
               ") ORDER BY 1";
    case 2:
        return "SELECT ACCESS_LEVELS.ID,ACCESS_LEVELS.NAME" + relationTail(subject) +
               std::string{" AND ACCESS_LEVELS.ACCESS_LEVELS = '"}.append(strAL).append("'");
    case 3: return "SELECT ACCESS_LEVELS.ACCESS_LEVELS" + relationTail(subject);
    case 4:
        return std::string{choiceColumns} +
               " WHERE  LEFT(ACCESS_LEVELS,6) IN (SELECT LEFT(ACCESS_LEVELS,6) FROM ACCESS_LEVELS WHERE ID = " +
               std::to_string(tmkVar.ID_Access_Levels) + ") ORDER BY 1";
    default: return {};
    }
}

bool Comm_SQL::ACL_USERS(const TmkVar& tmkVar, std::string_view strName, std::string& AL) const
{
    const std::string user = idOfUser(strName);
    std::string statement{tmkVar.bolOracle ? "SELECT ACCESS_LEVELS.ACCESS_LEVELS"
                                           : "SELECT TOP 1 ACCESS_LEVELS.ACCESS_LEVELS"};
    statement.append(levelsOfUsers)
        .append(tmkVar.bolOracle ? " WHERE ROWNUM =1 AND " : " WHERE ")
        .append("ONETOMANY.RELATION = 'USERS.ACCESS_LEVELS' AND (ONETOMANY.ID_MASTER IN (")
        .append(user)
        .append(") OR ID_MASTER IN ")
        .append(lenders)
        .append(" = (")
        .append(user)
        .append(")))");
    return ado::readFirst(tmkVar.db_ADO, statement,
                          [&](const ado::FieldCollection& fields) { AL = textOf(fields.Item(0).Value()); });
}

bool Comm_SQL::USERS(const TmkVar& tmkVar, std::string_view strName) const
{
    const std::string statement =
        idOfUser(strName) + (tmkVar.bolOracle ? " AND PASSWORD IS NULL" : " AND ISNULL(PASSWORD,'') = ''");
    return ado::readFirst(tmkVar.db_ADO, statement, [](const ado::FieldCollection&) {});
}

std::string Comm_SQL::USERS_NAME(const TmkVar& tmkVar) const
{
    std::string name;
    ado::readFirst(tmkVar.db_ADO, "SELECT NAME FROM USERS WHERE ID = " + std::to_string(tmkVar.ID_User),
                   [&](const ado::FieldCollection& fields) { name = textOf(fields.Item("NAME").Value()); });
    return name;
}

std::int16_t Comm_SQL::ONETOMANY_USERS_ACL_cnt(const TmkVar& tmkVar) const
{
    const std::string user = std::to_string(tmkVar.ID_User);
    std::string statement{tmkVar.bolOracle ? "SELECT NVL(COUNT(*),0) AS CNT FROM ONETOMANY"
                                           : "SELECT ISNULL(COUNT(*),0) AS CNT FROM ONETOMANY"};
    statement.append(" WHERE ONETOMANY.RELATION = 'USERS.ACCESS_LEVELS' AND (ONETOMANY.ID_MASTER = ")
        .append(user)
        .append(" OR ONETOMANY.ID_MASTER IN ")
        .append(lenders)
        .append(" = ")
        .append(user)
        .append("))");
    std::int16_t count = 0;
    ado::readFirst(tmkVar.db_ADO, statement,
                   [&](const ado::FieldCollection& fields) { count = convert::toInteger(fields.Item("CNT").Value()); });
    return count;
}

std::string Comm_Set::CreateSQL_ACCESS_LEVELS(const TmkVar& tmkVar, std::string_view ID_Access_Levels,
                                              std::uint8_t Level, std::string_view Exactly) const
{
    const bool isSelect = ID_Access_Levels.find("SELECT") != std::string_view::npos;
    const bool isParameter = text::toUpper(ID_Access_Levels) == "@ID_ACCESS_LEVELS";
    if (!isSelect && !isParameter && convert::toDouble(Variant{ID_Access_Levels}) == 0) return "IS NULL";

    const std::int32_t cut = 2 * Level;
    const char filler = convert::toBoolean(Variant{Exactly}) ? '0' : '_';
    std::string predicate{"IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS "};
    return predicate.append(isSelect ? "IN" : "LIKE")
        .append(" (SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-")
        .append(std::to_string(cut))
        .append(")")
        .append(tmkVar.bolOracle ? " || " : "+ ")
        .append("'")
        .append(static_cast<std::size_t>(cut), filler)
        .append("' FROM ACCESS_LEVELS WHERE ID IN (")
        .append(ID_Access_Levels)
        .append(")))");
}

} // namespace tamarok
