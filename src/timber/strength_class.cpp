#include <optional>
#include <string>
#include <string_view>

#include "ado/first_row.h"
#include "volume_formulas.h"

#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/platform.h"

namespace tamarok {
namespace {

using timber::BarkMode;

double numberOrZero(std::string_view text)
{
    return convert::parseNumber(text, Platform::current().regional).value_or(0.0);
}

/// Returns the diameter in cm without bark: d · √(1 − r/100), the circle with r percent less area, or d − r cm.
/// Error 5 above 100 percent.
double withoutBark(double diameter, double bark, BarkMode mode)
{
    switch (mode) {
    case BarkMode::Percent: return diameter * timber::checkedRoot(1 - bark / 100, "the share without bark");
    case BarkMode::Centimetres: return diameter - bark;
    case BarkMode::None: break;
    }
    return diameter;
}

/// Returns a diameter as SQL number text, rounded to two decimals with halves away from zero.
std::string sqlDiameter(double diameter)
{
    const Regional& regional = Platform::current().regional;
    const double rounded = convert::toDouble(
        Variant{format::number(timber::checkedResult(diameter, "the diameter without bark"), "0.00", regional)});
    return convert::toSqlNumber(rounded, regional);
}

/// The columns of STKL that bound a class.
enum class ClassBounds { Usual, OverBark };

/// Returns the query of the class of a diameter, in SQL Server text.
/// @param diameter    cm, as SQL number text
/// @param allowedIds  comma list of STKL.ID, "" for all
std::string classStatement(const std::string& diameter, ClassBounds bounds, std::string_view allowedIds)
{
    const std::string_view suffix = bounds == ClassBounds::OverBark ? "_OR" : "";
    const std::string allowed =
        allowedIds.empty() ? std::string{} : std::string{" AND ID IN ("}.append(allowedIds).append(")");
    std::string where{" FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON"};
    where.append(suffix)
        .append(" <= ")
        .append(diameter)
        .append(" AND DM_BIS")
        .append(suffix)
        .append(" >= ")
        .append(diameter)
        .append(allowed);
    // Required by the contract: any diameter outside all classes, also one below the lowest, takes the class
    // with the greatest DM_VON. MAX looks at all enabled classes and only the outer select at the allowed
    // ones, so the result may be empty. Do not correct.
    return "SELECT (CASE WHEN EXISTS(SELECT *" + where + ") THEN (SELECT TOP 1 STKL" + where +
           ") ELSE (SELECT TOP 1 STKL FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON IN"
           " (SELECT MAX(DM_VON) FROM STKL WHERE ISNULL(DISABLE,0)=0)" +
           allowed + ") END)";
}

std::string queryByKey(std::string_view statement, std::string_view key)
{
    return std::string{statement}.append(key).append("'");
}

} // namespace

std::string Comm_Set::MakeStkl(std::string_view txtStkl, std::string_view txtDM, std::string_view txtModus,
                               std::string_view txtRinde2Log, const ado::ConnectionRef& dbAdo,
                               bool STKL_Berechnung_Rindenabzug, bool bolCalculation, bool bolNot_Calc_STKL,
                               std::string_view Stkl_ID) const
{
    if (bolNot_Calc_STKL) return std::string{txtStkl};
    double diameter = numberOrZero(txtDM);
    if (!STKL_Berechnung_Rindenabzug && bolCalculation)
        diameter = withoutBark(diameter, numberOrZero(txtRinde2Log), timber::barkMode(txtModus));
    const ClassBounds bounds =
        STKL_Berechnung_Rindenabzug && !bolCalculation ? ClassBounds::OverBark : ClassBounds::Usual;
    return ado::readFirstText(dbAdo, classStatement(sqlDiameter(diameter), bounds, Stkl_ID));
}

bool Comm_Get::GetCalculationRinden(std::string_view rinden, const ado::ConnectionRef& dbAdo) const
{
    if (rinden.empty()) return false;
    const std::optional<Variant> calculation = ado::readFirstValue(
        dbAdo,
        queryByKey("SELECT ISNULL(CALCULATION,0) AS CALCULATION FROM RINDENKENNZ WHERE RINDENKENNZ = '", rinden));
    return calculation && convert::toBoolean(*calculation);
}

bool Comm_Get::GetCalculationSTKL(std::string_view txtHS, const ado::ConnectionRef& dbAdo) const
{
    // Required by the contract: without an assortment no class is computed, for an unknown one it is. Do not
    // correct.
    if (txtHS.empty()) return true;
    const std::optional<Variant> notComputed =
        ado::readFirstValue(dbAdo, queryByKey("SELECT ISNULL(NOT_CALC_STKL,0) AS NOT_CALC_STKL FROM HOLZSORTE WHERE"
                                              " ISNULL(DISABLE,0) = 0 AND HS = '",
                                              txtHS));
    return notComputed && convert::toBoolean(*notComputed);
}

std::string Comm_Get::GetCalculationSTKL_ID(std::string_view txtHS, const ado::ConnectionRef& dbAdo) const
{
    if (txtHS.empty()) return {};
    return ado::readFirstText(dbAdo,
                              queryByKey("SELECT STKL FROM HOLZSORTE WHERE ISNULL(DISABLE,0)=0 AND HS = '", txtHS));
}

} // namespace tamarok
