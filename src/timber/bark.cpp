#include <string>
#include <string_view>

#include "entry_field.h"
#include "volume_formulas.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/format.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

constexpr int supportPoints = 20;

/// The name of a support point as a literal, padded to two digits: "'SW1' ", "'SW10'".
std::string pointName(int point)
{
    std::string name = "'SW" + std::to_string(point) + "'";
    if (point < 10) name += " ";
    return name;
}

/// " ISNULL((CASE A.KOD WHEN 'SW1'  THEN ... END),0) AS name,": for each interval the column `prefix`
/// of its lower or upper point. Below the first point the first interval goes on.
std::string intervalEnd(std::string_view prefix, bool upper, std::string_view name)
{
    std::string select{"ISNULL((CASE A.KOD"};
    for (int point = 1; point <= supportPoints; ++point) {
        const int upperPoint = point == 1 ? 2 : point;
        select.append(" WHEN ")
            .append(pointName(point))
            .append(" THEN ")
            .append(prefix)
            .append(std::to_string(upper ? upperPoint : upperPoint - 1));
    }
    return select.append(" END),0) AS ").append(name).append(",");
}

/// "(CASE WHEN SW1  < t AND SW2  >= t THEN 'SW2'  ELSE '' END)+" and so on: the interval of the diameter.
std::string intervalTests(const std::string& diameter)
{
    const auto column = [](int point) {
        std::string name = "SW" + std::to_string(point);
        if (point < 10) name += " ";
        return name;
    };
    std::string tests = "(CASE WHEN                             SW1  >= " + diameter + " THEN 'SW1'  ELSE '' END)+";
    for (int point = 2; point < supportPoints; ++point)
        tests += "(CASE WHEN " + column(point - 1) + " < " + diameter + " AND " + column(point) + " >= " + diameter +
                 " THEN " + pointName(point) + " ELSE '' END)+";
    return tests + "(CASE WHEN SW19 < " + diameter + "                              THEN 'SW20' ELSE '' END) AS KOD";
}

std::string tableCondition(std::string_view table)
{
    if (table == "-1") return {};
    if (table == "0") return " AND ISNULL(RINDENTABELLE,0) = 0";
    return std::string{" AND RINDENTABELLE = "}.append(table);
}

std::string barkStatement(std::string_view species, const std::string& diameter, std::string_view table,
                          std::string_view date)
{
    std::string statement = "SELECT TOP 1 " + intervalEnd("SW", false, "R1") + " " + intervalEnd("SW", true, "R2") +
                            " " + intervalEnd("RA", false, "V1") + " " + intervalEnd("RA", true, "V2") +
                            "RINDEPROZENT FROM RINDENABZUG LEFT JOIN (SELECT ID," + intervalTests(diameter) +
                            " FROM RINDENABZUG) A ON A.ID = RINDENABZUG.ID WHERE HA = '";
    return statement.append(species)
        .append("' AND (GUELTIG_BIS is null or convert(smalldatetime,GUELTIG_BIS,104) >= convert(smalldatetime,'")
        .append(date)
        .append("',104)) ")
        .append(tableCondition(table))
        .append(" ORDER BY convert(smalldatetime,ISNULL(RINDENABZUG.GUELTIG_BIS,"
                "convert(smalldatetime,'01.01.2050',104)),104), RINDENABZUG.ID ");
}

/// The deduction on the line through two support points.
double interpolate(double diameter, const ado::FieldCollection& row)
{
    const auto number = [&](std::string_view name) { return convert::toDouble(row.Item(name).Value()); };
    const double r1 = number("R1");
    const double r2 = number("R2");
    const double v1 = number("V1");
    if (r2 - r1 == 0) return v1;
    return (number("V2") - v1) * (diameter - r1) / (r2 - r1) + v1;
}

/// A deduction in the unit that the log asks for, by the area of the cross-section.
/// @param isPercent the table's unit; Null converts nothing
double inUnit(double deduction, double diameter, std::string_view mode, const Variant& isPercent)
{
    if (isPercent.isNull()) return deduction;
    const bool percent = convert::toBoolean(isPercent);
    const double area = diameter * diameter * timber::pi / 4;
    if (mode == "%" && !percent) {
        // The square of a diameter below 1e-162 is 0.
        if (area == 0)
            throw Error{errors::divisionByZero, "Division by zero: the cross-section of the log is 0.", "Comm_Set"};
        const double inner = diameter - deduction;
        return (area - inner * inner * timber::pi / 4) / area * 100;
    }
    if (mode == "cm" && percent) {
        const double left = area - deduction * (area / 100);
        return diameter - timber::checkedRoot(left * 4 / timber::pi, "the area without bark");
    }
    return deduction;
}

} // namespace

std::string Comm_Set::CalculateRinde(const TmkVar& tmkVar, std::string_view Rinde, std::string_view HA_tmp,
                                     std::string_view Modus_tmp, std::string_view tmpDurch, bool bolCalculation,
                                     std::string_view strOptionen, std::string_view strlistDate) const
{
    const Regional& regional = Platform::current().regional;
    const std::string date =
        strlistDate.empty() ? format::date(Platform::today(), "dd.mm.yyyy", regional) : std::string{strlistDate};
    std::string result{bolCalculation ? std::string_view{"0"} : Rinde};
    const std::string diameterText{tmpDurch.empty() ? std::string_view{"0"} : tmpDurch};
    const double diameter = timber::enteredNumber(diameterText, "tmpDurch", regional);

    if (diameter != 0 && !HA_tmp.empty() && !Modus_tmp.empty() && bolCalculation) {
        ado::Recordset table;
        table.Open(barkStatement(HA_tmp, convert::toSqlNumber(diameterText), strOptionen, date), tmkVar.db_ADO);
        if (!table.AtEOF()) {
            const ado::FieldCollection& row = table.Fields();
            const double onLine = timber::checkedResult(interpolate(diameter, row), "the bark deduction");
            // The deduction passes through its text, which has 15 digits.
            const double deduction = convert::toDouble(Variant{convert::toText(onLine, regional)});
            const double converted = inUnit(deduction, diameter, Modus_tmp, row.Item("RINDEPROZENT").Value());
            result = convert::toText(timber::checkedResult(converted, "the bark deduction"), regional);
        }
        table.Close();
    }
    return format::value(result, "0.00", regional);
}

} // namespace tamarok
