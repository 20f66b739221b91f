#include <array>
#include <string>
#include <string_view>

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

constexpr std::string_view factorColumns =
    "ISNULL(ATO_UFA,0) AS ATO_UFA,ISNULL(LUT_UFA,0) AS LUT_UFA,ISNULL(RM_UFA,0) AS RM_UFA,ISNULL(STK100_UFA,0) AS"
    " STK100_UFA";

/// What a factor rule is asked about; each text is a key of master data.
struct MeasuredLine {
    std::int16_t measureKind;
    std::string_view species;
    std::string_view assortment;
    std::string_view unit;
    std::string_view quality;
    std::string_view strength;
    std::string_view bark;
    double length;
};

/// The rules whose every condition is Null or holds, in the order of their rank.
std::string ruleStatement(const MeasuredLine& line)
{
    const std::string length = convert::toSqlNumber(line.length, Platform::current().regional);
    std::string statement{"SELECT TOP 1 "};
    const auto condition = [&](std::string_view head, std::string_view value) {
        statement.append(head).append(value).append("')) AND ");
    };
    statement.append(factorColumns)
        .append(" FROM U_FAKT WHERE (ID_DSART IS NULL OR ID_DSART = ")
        .append(std::to_string(line.measureKind))
        .append(") AND ");
    condition("(ID_HA    IS NULL OR ID_HA    IN (SELECT TOP 1 ID        FROM HOLZART        WHERE HA = '",
              line.species);
    condition("(ID_HS    IS NULL OR ID_HS    IN (SELECT TOP 1 ID        FROM HOLZSORTE      WHERE HS = '",
              line.assortment);
    condition(
        "(ID_ME    IS NULL OR ID_ME    IN (SELECT TOP 1 ID_STRING FROM STAMM_TABELLEN WHERE LABEL_GROUP = 'MENGEN'"
        " AND SHORTNAME = '",
        line.unit);
    condition("(ID_GKL   IS NULL OR ID_GKL   IN (SELECT TOP 1 ID        FROM GUETEKLASSE    WHERE GKL = '",
              line.quality);
    condition("(ID_STKL  IS NULL OR ID_STKL  IN (SELECT TOP 1 ID        FROM STKL           WHERE STKL = '",
              line.strength);
    condition("(ID_RINDENKENNZ  IS NULL OR ID_RINDENKENNZ  IN (SELECT TOP 1 ID_RINDENKENNZ  FROM RINDENKENNZ  WHERE"
              " RINDENKENNZ = '",
              line.bark);
    return statement.append("(LANGE_VON IS NULL OR LANGE_VON <= ")
        .append(length)
        .append(" ) AND (LANGE_BIS IS NULL OR LANGE_BIS >= ")
        .append(length)
        .append(" )  ORDER BY ORDERBY");
}

struct FactorProperty {
    std::string_view property;
    std::string_view column;
};

constexpr std::array<FactorProperty, 4> factorForm = {{
    {"txtUFakt_Ato", "ATO_UFA"},
    {"txtUFakt_Lut", "LUT_UFA"},
    {"txtUFakt_Rm", "RM_UFA"},
    {"txtUFakt_Stk100", "STK100_UFA"},
}};

std::string_view typeOf(const ObjectRef& object)
{
    return object ? object->typeName() : std::string_view{};
}

/// The number that stands in the field already, 0 where there is none.
double presentValue(const ObjectRef& object)
{
    if (typeOf(object) != "TextBox") return 0;
    const Variant content = object->get("text", {});
    return convert::isNumeric(content) ? convert::toDouble(content) : 0;
}

/// Gives the row's factors to the form of factors, or the one asked for to `value`.
void takeFactors(const ado::FieldCollection& row, const ObjectRef& object, std::string_view field, double& value)
{
    if (typeOf(object) != "F_UFakt") {
        value = convert::toDouble(row.Item(field).Value());
        return;
    }
    for (const FactorProperty& factor : factorForm)
        object->put(factor.property, row.Item(factor.column).Value());
}

} // namespace

double Comm_Get::GetHolzTabValue(const TmkVar& tmkVar, const ObjectRef& strObject, std::string_view strField,
                                 std::int16_t intDsart, std::string_view strHa, std::string_view strHS,
                                 std::string_view strMenge, std::string_view strGkl, std::string_view strStkl,
                                 bool bolOnlyHS, std::string_view strRindenkennz, double dLange) const
{
    double value = presentValue(strObject);
    ado::Recordset rules;
    rules.Open(ruleStatement({intDsart, strHa, strHS, strMenge, strGkl, strStkl, strRindenkennz, dLange}),
               tmkVar.db_ADO);
    if (rules.AtEOF() && bolOnlyHS) {
        rules.Close();
        std::string defaults{"SELECT "};
        defaults.append(factorColumns).append(" FROM HOLZSORTE WHERE HS = '").append(strHS).append("'");
        rules.Open(defaults, tmkVar.db_ADO);
    }
    if (!rules.AtEOF()) takeFactors(rules.Fields(), strObject, strField, value);
    rules.Close();
    return value;
}

} // namespace tamarok
