#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ado/first_row.h"
#include "deputy_rule.h"
#include "dialect/sql_template.h"
#include "first_column.h"
#include "navigation_keys.h"

#include "tamarok/comm_lock.h"
#include "tamarok/convert.h"
#include "tamarok/loc_service.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

using rights::principalsOf;

// A tree key names a node of the navigation tree; a right key names the right in the tables. The personal
// grant (USERS_TREEVIEW) belongs to a user, the organisational grant (BB_ORGANISATIONS_RECHTE) to the depth
// of the user's access level: a code that ends in 000000 has depth 3, in 0000 2, in 00 1, any other 0.

void showUnknownKey()
{
    // Required by the contract: the word is shown in every language. Do not correct.
    mComm::ShowMessage("CHYBA", 0);
}

/// Returns the query of the right keys that neither the user nor any of his principals may read.
std::string personalDenials(const TmkVar& tmkVar)
{
    constexpr std::string_view sqlTemplate =
        "SELECT TREEVIEW,{ORACLE?MAX(LESEN):MAX(CASE WHEN LESEN = 1 THEN 1 ELSE 0 END)} AS LESEN FROM USERS_TREEVIEW"
        " WHERE ID_USERS IN (SELECT USERS.ID FROM USERS{LENDS} AND USERS.ID_USERS_VERTRETER = {USER}"
        " UNION ALL SELECT {USER} AS ID{ORACLE? FROM DUAL:}) GROUP BY TREEVIEW"
        " HAVING {ORACLE?NVL(MAX(LESEN),0):MAX(CASE WHEN LESEN = 1 THEN 1 ELSE 0 END)}=0";
    return dialect::fill(sqlTemplate, dialect::of(tmkVar),
                         {{"LENDS", rights::lendsRights}, {"USER", std::to_string(tmkVar.ID_User)}});
}

/// Returns the query of the right keys that the depth of the user's level may not read.
std::string organisationalDenials(const TmkVar& tmkVar)
{
    constexpr std::string_view sqlTemplate =
        "SELECT ANWENDUNGSOBJEKTE FROM BB_ORGANISATIONS_RECHTE WHERE 0={ISNULL}((SELECT CASE"
        " WHEN RIGHT(ACCESS_LEVELS,6) = '000000' Then LESEN_3 WHEN RIGHT(ACCESS_LEVELS,4) = '0000' Then LESEN_2"
        " WHEN RIGHT(ACCESS_LEVELS,2) = '00' Then LESEN_1 ELSE LESEN_0 END FROM ACCESS_LEVELS WHERE ID = {LEVEL}),0)";
    return dialect::fill(sqlTemplate, dialect::of(tmkVar), {{"LEVEL", std::to_string(tmkVar.ID_Access_Levels)}});
}

/// Fills the caller's cache of hidden right keys: one element for each personal denial, in the order of the rows, then
/// the organisational denials that are new. Without any denial it has one empty element, which says that it is filled.
/// Required by the contract: what is filled before a failure stays, and is not read again. Do not correct.
void fillHiddenKeys(const TmkVar& tmkVar, std::vector<std::string>& hidden)
{
    hidden.assign(1, std::string{});
    bool isFirst = true;
    rights::forEachFirstText(tmkVar.db_ADO, personalDenials(tmkVar), [&](std::string key) {
        if (!std::exchange(isFirst, false)) hidden.emplace_back();
        hidden.back() = std::move(key);
    });
    rights::forEachFirstText(tmkVar.db_ADO, organisationalDenials(tmkVar), [&](std::string key) {
        if (std::ranges::find(hidden, key) != hidden.end()) return;
        if (!hidden.back().empty()) hidden.emplace_back();
        hidden.back() = std::move(key);
    });
}

/// The part of the write query that also asks for the organisational grant; the level's id is appended.
constexpr std::string_view organisationalGrant =
    " AND (SELECT (SELECT (CASE WHEN RIGHT(ACCESS_LEVELS,6) = '000000' Then SCHREIBEN_3"
    " WHEN RIGHT(ACCESS_LEVELS,4) = '0000' Then SCHREIBEN_2"
    " WHEN RIGHT(ACCESS_LEVELS,2) = '00' Then SCHREIBEN_1 ELSE SCHREIBEN_0 END)"
    " FROM ACCESS_LEVELS WHERE ID = ";

/// Returns the query whose first row is 1 if the user or one of his principals may write. An action key
/// needs the personal grant only. The text is the same on Oracle.
std::string writeGrants(const TmkVar& tmkVar, std::string_view treeKey)
{
    const std::string user = std::to_string(tmkVar.ID_User);
    std::string statement{"SELECT B.A FROM (SELECT (CASE WHEN USERS_TREEVIEW.SCHREIBEN = 1"};
    if (!rights::isActionKey(treeKey)) {
        statement.append(organisationalGrant)
            .append(std::to_string(tmkVar.ID_Access_Levels))
            .append(") FROM BB_ORGANISATIONS_RECHTE WHERE ANWENDUNGSOBJEKTE = USERS_TREEVIEW.TREEVIEW)=1");
    }
    return statement.append(" THEN 1 ELSE 0 END) AS A FROM USERS_TREEVIEW WHERE (USERS_TREEVIEW.ID_USERS = ")
        .append(user)
        .append(" OR USERS_TREEVIEW.ID_USERS IN ")
        .append(principalsOf(" = " + user))
        .append(") AND USERS_TREEVIEW.TREEVIEW = '")
        .append(rights::rightKey(treeKey))
        .append("') B ORDER BY A DESC");
}

/// Returns the query of a property of the user, or of one of his principals unless the property is personal.
std::string propertyStatement(const TmkVar& tmkVar, std::string_view column)
{
    const std::string user = std::to_string(tmkVar.ID_User);
    const bool isPersonal = column == "B054" || column == "B055";
    std::string statement{"SELECT "};
    statement.append(column).append(" FROM USERS_PROPERTY WHERE ID_USERS = ").append(user);
    if (!isPersonal) statement.append(" OR ID_USERS IN ").append(principalsOf(" = " + user));
    return statement.append(" ORDER BY 1 DESC");
}

} // namespace

std::string Comm_Lock::konvUSERS_TREEVIEW_KEY(std::string_view Key) const
{
    return std::string{rights::rightKey(Key)};
}

void Comm_Lock::NodeVisible(const TmkVar& tmkVar, std::string_view Key) const
{
    const std::string_view key = rights::rightKey(Key);
    if (key.empty()) return showUnknownKey();
    if (tmkVar.ID_User == 0) return;
    constexpr std::int32_t keyWidth = 200;
    ado::Command command;
    command.Parameters().push_back(command.CreateParameter("strKey", ado::DataType::VarChar,
                                                           ado::ParameterDirection::Input, keyWidth, Variant{key}));
    Platform::locService()->RunProcedure(tmkVar, "tmk_NodeVisible", command);
}

Variant Comm_Lock::NodeVisibleCheck(const TmkVar& tmkVar, std::vector<std::string>& arr, std::string_view Key) const
{
    const std::string_view key = rights::rightKey(Key);
    if (key.empty()) {
        showUnknownKey();
        return {};
    }
    if (tmkVar.ID_User == 0) return true;
    // The cache is read once: a change of rights shows when the caller empties the array.
    if (arr.empty()) fillHiddenKeys(tmkVar, arr);
    return std::ranges::find(arr, key) == arr.end();
}

bool Comm_Lock::NodeWrite(const TmkVar& tmkVar, std::string_view Key) const
{
    // Required by the contract: an unknown key shows no message, and user 0 is asked for as well. Do not
    // correct.
    const std::optional<Variant> grant = ado::readFirstValue(tmkVar.db_ADO, writeGrants(tmkVar, Key));
    return grant && !grant->isNull() && convert::toLong(*grant) == 1;
}

bool Comm_Lock::Users_Property(const TmkVar& tmkVar, std::string_view column) const
{
    constexpr double lastPropertyWithoutUser = 20;
    if (tmkVar.ID_User == 0) return convert::toDouble(Variant{text::mid(column, 2)}) <= lastPropertyWithoutUser;

    const std::optional<Variant> property = ado::readFirstValue(tmkVar.db_ADO, propertyStatement(tmkVar, column));
    return property && !property->isNull() && convert::toBoolean(*property);
}

} // namespace tamarok
