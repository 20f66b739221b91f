#include <string>
#include <string_view>

#include "tamarok/comm_set.h"

namespace tamarok {
namespace {

/// The class of a mean piece volume; of overlapping classes the one with the greatest lower bound.
constexpr std::string_view classOfMeanVolume =
    "(CASE WHEN DSART IN (1,5) AND ISNULL(STK,0) > 0 THEN (SELECT TOP 1 KUBATURKLASSE.KKLASSE FROM KUBATURKLASSE"
    " WHERE KUBATURKLASSE.VOLUME_FROM <= KUBATUR/STK AND KUBATURKLASSE.VOLUME_TO >= KUBATUR/STK"
    " ORDER BY KUBATURKLASSE.VOLUME_FROM DESC) ELSE NULL END)";

/// Lines of kind 2 and 3: one mean volume for all lines of a list, sheet and measure kind.
/// @param wholeGroups  the selected lines only pick the groups, and all lines of those count
std::string groupStatement(std::string_view selected, bool wholeGroups)
{
    std::string statement{"UPDATE LOGS SET KKLASSE = B.KKLASSE FROM (SELECT LISTE,BLNR,DSART,"};
    statement.append(classOfMeanVolume).append(" AS KKLASSE");
    if (wholeGroups) {
        statement
            .append(" FROM (SELECT LOGS.LISTE,LOGS.BLNR,LOGS.DSART,SUM(LOGS.KUBATUR) AS KUBATUR,SUM(LOGS.STK) AS STK"
                    " FROM LOGS INNER JOIN (SELECT DISTINCT LISTE,BLNR,DSART FROM LOGS"
                    " WHERE KLST IN (2,3) AND ID_LOG IN (")
            .append(selected)
            .append(")) R ON R.LISTE = LOGS.LISTE AND R.BLNR = LOGS.BLNR AND R.DSART = LOGS.DSART"
                    " GROUP BY LOGS.LISTE,LOGS.BLNR,LOGS.DSART) A) B");
    } else {
        statement
            .append(" FROM (SELECT LISTE,BLNR,DSART,SUM(KUBATUR) AS KUBATUR,SUM(STK) AS STK FROM LOGS"
                    " WHERE KLST IN (2,3) AND ID_LOG IN (")
            .append(selected)
            .append(") GROUP BY LISTE,BLNR,DSART) A) B");
    }
    return statement.append(" WHERE LOGS.LISTE = B.LISTE AND LOGS.BLNR = B.BLNR AND LOGS.DSART = B.DSART");
}

/// Every other line is classed alone.
std::string singleStatement(std::string_view selected)
{
    std::string statement{"UPDATE LOGS SET KKLASSE = "};
    return statement.append(classOfMeanVolume)
        .append(" WHERE KLST NOT IN (2,3) AND ID_LOG IN (")
        .append(selected)
        .append(")");
}

/// Runs a statement and gives "", or gives its text and runs nothing.
std::string runOrReturn(std::string statement, const ado::ConnectionRef& connection, bool onlyReturn)
{
    if (onlyReturn) return statement;
    ado::require(connection).Execute(statement, -1);
    return {};
}

} // namespace

std::string Comm_Set::CalculateKubaturKlasse(const ado::ConnectionRef& dbAdo, std::string_view selectID_LOG,
                                             bool OnlyReturnSQL) const
{
    // The group statement touches every line of a group; the single one then sets the rest right.
    return runOrReturn(groupStatement(selectID_LOG, OnlyReturnSQL) + "\r\n" + singleStatement(selectID_LOG), dbAdo,
                       OnlyReturnSQL);
}

std::string Comm_Set::Set_Logs_Archiv(std::string_view tmpWhere, const ado::ConnectionRef& dbAdo,
                                      bool OnlyReturnSQL) const
{
    return runOrReturn(std::string{"INSERT LOGS_HISTORY SELECT * FROM LOGS WHERE "}.append(tmpWhere), dbAdo,
                       OnlyReturnSQL);
}

} // namespace tamarok
