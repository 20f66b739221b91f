#include <optional>
#include <string>
#include <string_view>

#include "ado/first_row.h"
#include "deputy_rule.h"
#include "dialect/sql_template.h"
#include "user_name.h"

#include "tamarok/comm_set.h"
#include "tamarok/comm_sql.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

using rights::principalsOf;

constexpr std::string_view levelsOfUsers =
    " FROM ACCESS_LEVELS INNER JOIN ONETOMANY ON ACCESS_LEVELS.ID = ONETOMANY.ID_SLAVE";
constexpr std::string_view isUserLevel = "ONETOMANY.RELATION = 'USERS.ACCESS_LEVELS'";

std::string idOfUser(std::string_view name)
{
    return std::string{"SELECT ID FROM USERS WHERE NAME = '"}.append(name).append("'");
}

/// Returns the condition that a row of the relation belongs to a user or to one of his principals.
/// @param user        query of the user's id, or the id itself
/// @param comparesTo   how the deputy is compared with it: " IN " or " = "
std::string ownOrLentBy(std::string_view user, std::string_view comparesTo)
{
    const std::string bracketed = std::string{"("}.append(user).append(")");
    return " AND (ONETOMANY.ID_MASTER IN " + bracketed + " OR ID_MASTER IN " +
           principalsOf(std::string{comparesTo} + bracketed) + ")";
}

/// Returns FROM and WHERE of the levels of a user and of his principals.
std::string userLevels(std::string_view user)
{
    return std::string{levelsOfUsers}.append(" WHERE ").append(isUserLevel) + ownOrLentBy(user, " IN ");
}

/// The columns that a choice list shows.
constexpr std::string_view choiceColumns =
    "SELECT ACCESS_LEVELS AS NUMMER, NAME AS SHORT,NAME_LANG AS LONG FROM ACCESS_LEVELS";

} // namespace

std::string Comm_SQL::ACL(const TmkVar& tmkVar) const
{
    const std::string level =
        tmkVar.ID_Access_Levels == 0 ? " IS NULL" : "= " + std::to_string(tmkVar.ID_Access_Levels);
    return ado::readFirstText(tmkVar.db_ADO, "SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID " + level);
}

std::string Comm_SQL::ACL_str(const TmkVar& tmkVar, std::int16_t Typ, std::int16_t ID_ACL) const
{
    if (Typ == 1) {
        return dialect::fill("SELECT NAME FROM ACCESS_LEVELS WHERE ACCESS_LEVELS = {ZEROS}", dialect::of(tmkVar));
    }
    if (Typ == 2) return "SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = " + std::to_string(ID_ACL);
    return {};
}

std::string Comm_SQL::ACL_USERS_str(const TmkVar& tmkVar, std::int16_t Typ, std::string_view strName,
                                    std::int16_t intMode, std::string_view strAL) const
{
    // Required by the contract: without a name the user is 0, also where intMode asks for the session's user.
    // Do not correct.
    const std::string user = strName.empty() ? "0" : intMode == 1 ? std::to_string(tmkVar.ID_User) : idOfUser(strName);
    switch (Typ) {
    case 1:
        return std::string{choiceColumns} + " WHERE ID IN (SELECT ACCESS_LEVELS.ID" + userLevels(user) + ") ORDER BY 1";
    case 2:
        return "SELECT ACCESS_LEVELS.ID,ACCESS_LEVELS.NAME" + userLevels(user) +
               std::string{" AND ACCESS_LEVELS.ACCESS_LEVELS = '"}.append(strAL).append("'");
    case 3: return "SELECT ACCESS_LEVELS.ACCESS_LEVELS" + userLevels(user);
    case 4:
        return std::string{choiceColumns} +
               " WHERE  LEFT(ACCESS_LEVELS,6) IN (SELECT LEFT(ACCESS_LEVELS,6) FROM ACCESS_LEVELS WHERE ID = " +
               std::to_string(tmkVar.ID_Access_Levels) + ") ORDER BY 1";
    default: return {};
    }
}

bool Comm_SQL::ACL_USERS(const TmkVar& tmkVar, std::string_view strName, std::string& AL) const
{
    // No order is given: which level comes first is up to the database.
    const std::string statement = dialect::fill(
        "{SELECTFIRST}ACCESS_LEVELS.ACCESS_LEVELS{LEVELS} WHERE {ORACLE?ROWNUM =1 AND :}{RELATION}{MASTER}",
        dialect::of(tmkVar),
        {{"LEVELS", levelsOfUsers}, {"RELATION", isUserLevel}, {"MASTER", ownOrLentBy(idOfUser(strName), " = ")}});
    return ado::readFirst(tmkVar.db_ADO, statement,
                          [&](const ado::FieldCollection& fields) { AL = ado::fieldText(fields.Item(0).Value()); });
}

bool Comm_SQL::USERS(const TmkVar& tmkVar, std::string_view strName) const
{
    const std::string statement = dialect::fill("{USER} AND {ORACLE?PASSWORD IS NULL:ISNULL(PASSWORD,'') = ''}",
                                                dialect::of(tmkVar), {{"USER", idOfUser(strName)}});
    return ado::hasRow(tmkVar.db_ADO, statement);
}

std::string Comm_SQL::USERS_NAME(const TmkVar& tmkVar) const
{
    return rights::userName(tmkVar.db_ADO, std::to_string(tmkVar.ID_User));
}

std::int16_t Comm_SQL::ONETOMANY_USERS_ACL_cnt(const TmkVar& tmkVar) const
{
    const std::string user = std::to_string(tmkVar.ID_User);
    const std::string statement = dialect::fill(
        "SELECT {ISNULL}(COUNT(*),0) AS CNT FROM ONETOMANY WHERE {RELATION} AND (ONETOMANY.ID_MASTER = "
        "{USER} OR ONETOMANY.ID_MASTER IN {PRINCIPALS})",
        dialect::of(tmkVar), {{"RELATION", isUserLevel}, {"USER", user}, {"PRINCIPALS", principalsOf(" = " + user)}});
    const std::optional<Variant> count = ado::readFirstValue(tmkVar.db_ADO, statement);
    return count ? convert::toInteger(*count) : std::int16_t{0};
}

std::string Comm_Set::CreateSQL_ACCESS_LEVELS(const TmkVar& tmkVar, std::string_view ID_Access_Levels,
                                              std::uint8_t Level, std::string_view Exactly) const
{
    const bool isQuery = ID_Access_Levels.find("SELECT") != std::string_view::npos;
    const bool isParameter = text::toUpper(ID_Access_Levels) == "@ID_ACCESS_LEVELS";
    if (!isQuery && !isParameter && convert::toDouble(Variant{ID_Access_Levels}) == 0) return "IS NULL";

    // The last `Level` groups of the code become zeros, which names the node, or "_", which matches any group.
    const std::int32_t cutLength = 2 * Level;
    const char filler = convert::toBoolean(Variant{Exactly}) ? '0' : '_';
    return dialect::fill(
        "IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS {COMPARISON} (SELECT LEFT(ACCESS_LEVELS,"
        "LEN(ACCESS_LEVELS)-{LENGTH}){ORACLE? || :+ }'{FILLER}' FROM ACCESS_LEVELS WHERE ID IN ({IDS})))",
        dialect::of(tmkVar),
        {{"COMPARISON", isQuery ? "IN" : "LIKE"},
         {"LENGTH", std::to_string(cutLength)},
         {"FILLER", std::string(static_cast<std::size_t>(cutLength), filler)},
         {"IDS", ID_Access_Levels}});
}

} // namespace tamarok
