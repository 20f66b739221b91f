#include <algorithm>
#include <string>
#include <string_view>

#include "fetch_rows.h"
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

using rights::fetchFirstColumn;
using rights::textOf;

/// The join that admits only users who lend their rights to their deputy.
constexpr std::string_view lendsRights =
    " INNER JOIN USERS_PROPERTY ON USERS_PROPERTY.ID_USERS = USERS.ID AND USERS_PROPERTY.B055 = 1";

void showUnknownKey()
{
    mComm::ShowMessage("CHYBA", 0);
}

/// Keys that neither the user nor anyone he stands in for may read.
std::string personalDenials(const TmkVar& tmkVar)
{
    const std::string user = std::to_string(tmkVar.ID_User);
    const std::string_view read = tmkVar.bolOracle ? "MAX(LESEN)" : "MAX(CASE WHEN LESEN = 1 THEN 1 ELSE 0 END)";
    std::string statement{"SELECT TREEVIEW,"};
    statement.append(read)
        .append(" AS LESEN FROM USERS_TREEVIEW WHERE ID_USERS IN (SELECT USERS.ID FROM USERS")
        .append(lendsRights)
        .append(" AND USERS.ID_USERS_VERTRETER = ")
        .append(user)
        .append(" UNION ALL SELECT ")
        .append(user)
        .append(" AS ID")
        .append(tmkVar.bolOracle ? " FROM DUAL" : "")
        .append(") GROUP BY TREEVIEW HAVING ")
        .append(tmkVar.bolOracle ? "NVL(MAX(LESEN),0)=0" : "MAX(CASE WHEN LESEN = 1 THEN 1 ELSE 0 END)=0");
    return statement;
}

/// Keys that the level's depth may not read.
std::string organisationalDenials(const TmkVar& tmkVar)
{
    std::string statement{"SELECT ANWENDUNGSOBJEKTE FROM BB_ORGANISATIONS_RECHTE WHERE 0="};
    statement.append(tmkVar.bolOracle ? "NVL" : "ISNULL")
        .append("((SELECT CASE WHEN RIGHT(ACCESS_LEVELS,6) = '000000' Then LESEN_3"
                " WHEN RIGHT(ACCESS_LEVELS,4) = '0000' Then LESEN_2"
                " WHEN RIGHT(ACCESS_LEVELS,2) = '00' Then LESEN_1"
                " ELSE LESEN_0 END FROM ACCESS_LEVELS WHERE ID = ")
        .append(std::to_string(tmkVar.ID_Access_Levels))
        .append("),0)");
    return statement;
}

/// Stores a key in the last element while that is still empty, behind it otherwise.
void addKey(std::vector<std::string>& keys, std::string key)
{
    if (keys.back().empty())
        keys.back() = std::move(key);
    else
        keys.push_back(std::move(key));
}

void fillHiddenKeys(const TmkVar& tmkVar, std::vector<std::string>& hidden)
{
    // Read first and stored last, so that a failure leaves the caller's array to be filled again.
    const std::vector<Variant> personal = fetchFirstColumn(tmkVar.db_ADO, personalDenials(tmkVar));
    const std::vector<Variant> organisational = fetchFirstColumn(tmkVar.db_ADO, organisationalDenials(tmkVar));
    hidden.assign(1, std::string{});
    for (const Variant& key : personal)
        addKey(hidden, textOf(key));
    for (const Variant& value : organisational) {
        std::string key = textOf(value);
        if (std::ranges::find(hidden, key) == hidden.end()) addKey(hidden, std::move(key));
    }
}

std::string writeGrant(const TmkVar& tmkVar, std::string_view key)
{
    const std::string user = std::to_string(tmkVar.ID_User);
    std::string statement{"SELECT B.A FROM (SELECT (CASE WHEN USERS_TREEVIEW.SCHREIBEN = 1"};
    if (!rights::isActionKey(key)) {
        statement
            .append(" AND (SELECT (SELECT (CASE WHEN RIGHT(ACCESS_LEVELS,6) = '000000' Then SCHREIBEN_3"
                    " WHEN RIGHT(ACCESS_LEVELS,4) = '0000' Then SCHREIBEN_2"
                    " WHEN RIGHT(ACCESS_LEVELS,2) = '00' Then SCHREIBEN_1 ELSE SCHREIBEN_0 END)"
                    " FROM ACCESS_LEVELS WHERE ID = ")
            .append(std::to_string(tmkVar.ID_Access_Levels))
            .append(") FROM BB_ORGANISATIONS_RECHTE WHERE ANWENDUNGSOBJEKTE = USERS_TREEVIEW.TREEVIEW)=1");
    }
    return statement.append(" THEN 1 ELSE 0 END) AS A FROM USERS_TREEVIEW WHERE (USERS_TREEVIEW.ID_USERS = ")
        .append(user)
        .append(" OR USERS_TREEVIEW.ID_USERS IN (SELECT USERS.ID FROM USERS")
        .append(lendsRights)
        .append(" WHERE USERS.ID_USERS_VERTRETER = ")
        .append(user)
        .append(")) AND USERS_TREEVIEW.TREEVIEW = '")
        .append(rights::rightKey(key))
        .append("') B ORDER BY A DESC");
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
    if (arr.empty()) fillHiddenKeys(tmkVar, arr);
    return std::ranges::find(arr, key) == arr.end();
}

bool Comm_Lock::NodeWrite(const TmkVar& tmkVar, std::string_view Key) const
{
    ado::Recordset grants;
    grants.Open(writeGrant(tmkVar, Key), tmkVar.db_ADO);
    bool granted = false;
    if (!grants.AtEOF()) {
        const Variant first = grants.Fields().Item(0).Value();
        granted = !first.isNull() && convert::toLong(first) == 1;
    }
    grants.Close();
    return granted;
}

bool Comm_Lock::Users_Property(const TmkVar& tmkVar, std::string_view column) const
{
    constexpr double lastOpenProperty = 20;
    if (tmkVar.ID_User == 0) return convert::toDouble(Variant{text::mid(column, 2)}) <= lastOpenProperty;

    const std::string user = std::to_string(tmkVar.ID_User);
    std::string statement{"SELECT "};
    statement.append(column).append(" FROM USERS_PROPERTY WHERE ID_USERS = ").append(user);
    if (column != "B054" && column != "B055") {
        statement.append(" OR ID_USERS IN (SELECT USERS.ID FROM USERS")
            .append(lendsRights)
            .append(" WHERE USERS.ID_USERS_VERTRETER = ")
            .append(user)
            .append(")");
    }
    statement += " ORDER BY 1 DESC";
    ado::Recordset properties;
    properties.Open(statement, tmkVar.db_ADO);
    bool holds = false;
    if (!properties.AtEOF()) {
        const Variant first = properties.Fields().Item(0).Value();
        holds = !first.isNull() && convert::toBoolean(first);
    }
    properties.Close();
    return holds;
}

} // namespace tamarok
