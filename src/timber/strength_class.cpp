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

/// The diameter without bark: by the area for a percentage, by the width for centimetres.
double lessBark(double diameter, double bark, BarkMode mode)
{
    switch (mode) {
    case BarkMode::Percent: return diameter * timber::checkedRoot(1 - bark / 100, "the share without bark");
    case BarkMode::Centimetres: return diameter - bark;
    case BarkMode::None: break;
    }
    return diameter;
}

/// A diameter as SQL number text, rounded to two decimals under the number pattern.
std::string sqlDiameter(double diameter)
{
    const Regional& regional = Platform::current().regional;
    const double rounded = convert::toDouble(
        Variant{format::number(timber::checkedResult(diameter, "the diameter without bark"), "0.00", regional)});
    return convert::toSqlNumber(rounded, regional);
}

std::string classStatement(const std::string& diameter, bool secondBounds, std::string_view allowedIds)
{
    const std::string_view suffix = secondBounds ? "_OR" : "";
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
    // Outside all classes the one with the greatest lower bound stands in, among all enabled classes.
    return "SELECT (CASE WHEN EXISTS(SELECT *" + where + ") THEN (SELECT TOP 1 STKL" + where +
           ") ELSE (SELECT TOP 1 STKL FROM STKL WHERE ISNULL(DISABLE,0)=0 AND DM_VON IN"
           " (SELECT MAX(DM_VON) FROM STKL WHERE ISNULL(DISABLE,0)=0)" +
           allowed + ") END)";
}

/// The first column of the first row; Null and no row are told apart.
std::optional<Variant> valueByKey(const ado::ConnectionRef& connection, std::string_view statement,
                                  std::string_view key)
{
    return ado::readFirstValue(connection, std::string{statement}.append(key).append("'"));
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
        diameter = lessBark(diameter, numberOrZero(txtRinde2Log), timber::barkMode(txtModus));
    const bool secondBounds = STKL_Berechnung_Rindenabzug && !bolCalculation;

    const std::optional<Variant> strengthClass =
        ado::readFirstValue(dbAdo, classStatement(sqlDiameter(diameter), secondBounds, Stkl_ID));
    return !strengthClass || strengthClass->isNull() ? std::string{} : convert::toText(*strengthClass);
}

bool Comm_Get::GetCalculationRinden(std::string_view rinden, const ado::ConnectionRef& dbAdo) const
{
    if (rinden.empty()) return false;
    const std::optional<Variant> calculation =
        valueByKey(dbAdo, "SELECT ISNULL(CALCULATION,0) AS CALCULATION FROM RINDENKENNZ WHERE RINDENKENNZ = '", rinden);
    return calculation && convert::toBoolean(*calculation);
}

bool Comm_Get::GetCalculationSTKL(std::string_view txtHS, const ado::ConnectionRef& dbAdo) const
{
    // Without an assortment no class is computed.
    if (txtHS.empty()) return true;
    const std::optional<Variant> notComputed = valueByKey(dbAdo,
                                                          "SELECT ISNULL(NOT_CALC_STKL,0) AS NOT_CALC_STKL FROM"
                                                          " HOLZSORTE WHERE ISNULL(DISABLE,0) = 0 AND HS = '",
                                                          txtHS);
    return notComputed && convert::toBoolean(*notComputed);
}

std::string Comm_Get::GetCalculationSTKL_ID(std::string_view txtHS, const ado::ConnectionRef& dbAdo) const
{
    if (txtHS.empty()) return {};
    const std::optional<Variant> allowed =
        valueByKey(dbAdo, "SELECT STKL FROM HOLZSORTE WHERE ISNULL(DISABLE,0)=0 AND HS = '", txtHS);
    return !allowed || allowed->isNull() ? std::string{} : convert::toText(*allowed);
}

} // namespace tamarok
