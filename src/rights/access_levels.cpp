#include <string>
#include <string_view>

#include "ado/first_row.h"
#include "level_rules.h"

#include "tamarok/comm_conv.h"
#include "tamarok/comm_csel.h"
#include "tamarok/comm_lock.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

/// Returns `where` narrowed to the session's working period, for the three tables that have a date.
///
/// Required by the contract: only the timber lists (LISTENKOPF) treat the default period as no limit, they
/// compare the date of the logs, and the conditions of the other two begin with a blank. Do not correct.
std::string withinPeriod(std::string_view table, std::string where, const TmkVar& session)
{
    const auto add = [&](std::string_view comparison, Date date) {
        const Variant day = Comm_Conv{}.TransDate(Variant{date}, session.strDateFormat);
        where = Comm_CSel{}.InsertToWhere(where, std::string{comparison} + " '" + ado::fieldText(day) + "'");
    };
    if (table == "HEADERRECH") {
        add(" HEADERRECH.INVDATE >=", session.DateFrom);
        add(" HEADERRECH.INVDATE <=", session.DateTo);
    } else if (table == "RECHNUNGSJOURNAL") {
        add(" RECHNUNGSJOURNAL.INVDATE >=", session.DateFrom);
        add(" RECHNUNGSJOURNAL.INVDATE <=", session.DateTo);
    } else if (table == "LISTENKOPF") {
        const Date defaultEnd{Platform::today().days + session.intDateToDays};
        if (session.DateFrom != session.DateFromDefault) add("LOGS.LISTDATUM >=", session.DateFrom);
        if (session.DateTo != defaultEnd) add("LOGS.LISTDATUM <=", session.DateTo);
    }
    return where;
}

} // namespace

std::string Comm_Lock::Access_Levels(std::string_view table, std::string& strWhere, const TmkVar& tmkVar,
                                     std::int32_t ID_Access_Levels) const
{
    // strWhere changes only after everything that can fail.
    const std::string period = withinPeriod(table, strWhere, tmkVar);
    const std::string level = rights::levelCondition({table, tmkVar, ID_Access_Levels});
    strWhere = Comm_CSel{}.InsertToWhere(period, "(" + level + ")");
    return strWhere;
}

} // namespace tamarok
