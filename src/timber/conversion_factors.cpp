#include <array>
#include <string>
#include <string_view>

#include "ado/first_row.h"

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

constexpr std::string_view factorColumns =
    "ISNULL(ATO_UFA,0) AS ATO_UFA,ISNULL(LUT_UFA,0) AS LUT_UFA,ISNULL(RM_UFA,0) AS RM_UFA,ISNULL(STK100_UFA,0) AS"
    " STK100_UFA";

/// What the conditions of a factor rule are compared with; each text is a code of master data.
struct MeasuredLine {
    std::int16_t measureKind;    ///< DSART
    std::string_view species;    ///< HA
    std::string_view assortment; ///< HS
    std::string_view unit;       ///< short name of a string of the group MENGEN
    std::string_view quality;    ///< GKL
    std::string_view strength;   ///< STKL
    std::string_view bark;       ///< RINDENKENNZ
    double length;               ///< m
};

/// Returns the query of the factors of the first rule by ORDERBY whose conditions are all Null or hold. A
/// more specific rule does not win by being specific: the authors of the rules put it first.
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

/// A property of the form F_UFakt and the factor that it takes.
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

/// Returns the number that a text box holds; 0 for any other object, and if the text is no number.
double presentNumber(const ObjectRef& object)
{
    if (typeOf(object) != "TextBox") return 0;
    const Variant content = object->get("text", {});
    return convert::isNumeric(content) ? convert::toDouble(content) : 0;
}

/// Writes the row's factors to the properties of the form F_UFakt, or the wanted one to `value` for any
/// other object.
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
    double value = presentNumber(strObject);
    const auto take = [&](const ado::FieldCollection& row) { takeFactors(row, strObject, strField, value); };
    const MeasuredLine line{intDsart, strHa, strHS, strMenge, strGkl, strStkl, strRindenkennz, dLange};
    // The assortment's own factors are tried only if no rule fits.
    if (!ado::readFirst(tmkVar.db_ADO, ruleStatement(line), take) && bolOnlyHS) {
        std::string defaults{"SELECT "};
        defaults.append(factorColumns).append(" FROM HOLZSORTE WHERE HS = '").append(strHS).append("'");
        ado::readFirst(tmkVar.db_ADO, defaults, take);
    }
    return value;
}

} // namespace tamarok
