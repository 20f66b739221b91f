#include <string>
#include <string_view>

#include "tamarok/comm_set.h"

namespace tamarok {
namespace {

/// The class of a mean piece volume KUBATUR/STK in m³, Null for any measure kind (DSART) but 1 and 5 and
/// without pieces. Of overlapping classes the one with the greatest lower bound counts.
constexpr std::string_view classOfMeanVolume =
    "(CASE WHEN DSART IN (1,5) AND ISNULL(STK,0) > 0 THEN (SELECT TOP 1 KUBATURKLASSE.KKLASSE FROM KUBATURKLASSE"
    " WHERE KUBATURKLASSE.VOLUME_FROM <= KUBATUR/STK AND KUBATURKLASSE.VOLUME_TO >= KUBATUR/STK"
    " ORDER BY KUBATURKLASSE.VOLUME_FROM DESC) ELSE NULL END)";

/// Which lines of a group count in its mean volume.
enum class CountedLines { Selected, WholeGroups };

/// Returns the statement for lines of kind (KLST) 2 and 3: all lines of one list, sheet and measure kind are a
/// group with one mean volume.
std::string groupStatement(std::string_view selected, CountedLines counted)
{
    std::string statement{"UPDATE LOGS SET KKLASSE = B.KKLASSE FROM (SELECT LISTE,BLNR,DSART,"};
    statement.append(classOfMeanVolume).append(" AS KKLASSE");
    if (counted == CountedLines::WholeGroups) {
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

/// Returns the statement for the selected lines of any other kind, each with its own volume.
std::string singleStatement(std::string_view selected)
{
    std::string statement{"UPDATE LOGS SET KKLASSE = "};
    return statement.append(classOfMeanVolume)
        .append(" WHERE KLST NOT IN (2,3) AND ID_LOG IN (")
        .append(selected)
        .append(")");
}

/// Runs a statement and returns "", or returns its text and runs nothing.
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
    // Required by the contract: the selected lines alone count if the statement runs, whole groups if it is
    // returned, so the same selection can give two different means. Do not correct.
    const CountedLines counted = OnlyReturnSQL ? CountedLines::WholeGroups : CountedLines::Selected;
    // In this order: the first statement writes to lines of every kind in a group, and the second one sets
    // those that are classed alone.
    return runOrReturn(groupStatement(selectID_LOG, counted) + "\r\n" + singleStatement(selectID_LOG), dbAdo,
                       OnlyReturnSQL);
}

std::string Comm_Set::Set_Logs_Archiv(std::string_view tmpWhere, const ado::ConnectionRef& dbAdo,
                                      bool OnlyReturnSQL) const
{
    return runOrReturn(std::string{"INSERT LOGS_HISTORY SELECT * FROM LOGS WHERE "}.append(tmpWhere), dbAdo,
                       OnlyReturnSQL);
}

} // namespace tamarok
