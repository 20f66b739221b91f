#include <string>
#include <string_view>

#include "ado/first_row.h"
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

// A row of RINDENABZUG holds up to 20 support points: the diameters SW1 to SW20, ascending, and the deductions
// RA1 to RA20. The statement finds the interval of the log's diameter and returns its two ends, (R1,V1) and
// (R2,V2). KOD names the interval by its upper point; a diameter below the first point takes the first
// interval, one above SW19 the last, and both are extrapolated.

constexpr int supportPoints = 20;

enum class IntervalEnd { Lower, Upper };

/// Returns the name of a support point as a literal, padded to two digits: "'SW1' ", "'SW10'".
std::string pointName(int point)
{
    std::string name = "'SW" + std::to_string(point) + "'";
    if (point < 10) name += " ";
    return name;
}

/// Returns a column of the select list, "ISNULL((CASE A.KOD WHEN 'SW1'  THEN ... END),0) AS name,": the value
/// of one end of the interval.
/// @param prefix  SW for the diameters, RA for the deductions
std::string intervalColumn(std::string_view prefix, IntervalEnd end, std::string_view name)
{
    std::string select{"ISNULL((CASE A.KOD"};
    for (int point = 1; point <= supportPoints; ++point) {
        // Below the first point the first interval, from 1 to 2, counts.
        const int upperPoint = point == 1 ? 2 : point;
        select.append(" WHEN ")
            .append(pointName(point))
            .append(" THEN ")
            .append(prefix)
            .append(std::to_string(end == IntervalEnd::Upper ? upperPoint : upperPoint - 1));
    }
    return select.append(" END),0) AS ").append(name).append(",");
}

/// Returns the column KOD: one "(CASE WHEN SW1  < t AND SW2  >= t THEN 'SW2'  ELSE '' END)" an interval,
/// concatenated. Nothing fits a diameter beyond the last point that has a value: KOD is empty then.
std::string intervalName(const std::string& diameter)
{
    const auto column = [](int point) {
        std::string name = "SW" + std::to_string(point);
        if (point < 10) name += " ";
        return name;
    };
    std::string tests = "(CASE WHEN                             SW1  >= " + diameter + " THEN 'SW1'  ELSE '' END)+";
    for (int point = 2; point < supportPoints; ++point)
        tests.append("(CASE WHEN ")
            .append(column(point - 1))
            .append(" < ")
            .append(diameter)
            .append(" AND ")
            .append(column(point))
            .append(" >= ")
            .append(diameter)
            .append(" THEN ")
            .append(pointName(point))
            .append(" ELSE '' END)+");
    return tests + "(CASE WHEN SW19 < " + diameter + "                              THEN 'SW20' ELSE '' END) AS KOD";
}

/// Returns the condition on the number of the bark table: "-1" is any table, "0" also a row without a number.
std::string tableCondition(std::string_view table)
{
    if (table == "-1") return {};
    if (table == "0") return " AND ISNULL(RINDENTABELLE,0) = 0";
    return std::string{" AND RINDENTABELLE = "}.append(table);
}

/// Returns the query of the support points around a diameter, in SQL Server text.
/// @param species   code HA  @param diameter  cm, as SQL number text
/// @param table     see tableCondition  @param date  "dd.mm.yyyy", on which the row must be valid
std::string barkStatement(std::string_view species, const std::string& diameter, std::string_view table,
                          std::string_view date)
{
    std::string statement =
        "SELECT TOP 1 " + intervalColumn("SW", IntervalEnd::Lower, "R1") + " " +
        intervalColumn("SW", IntervalEnd::Upper, "R2") + " " + intervalColumn("RA", IntervalEnd::Lower, "V1") + " " +
        intervalColumn("RA", IntervalEnd::Upper, "V2") + "RINDEPROZENT FROM RINDENABZUG LEFT JOIN (SELECT ID," +
        intervalName(diameter) + " FROM RINDENABZUG) A ON A.ID = RINDENABZUG.ID WHERE HA = '";
    // The row that expires first comes first; an open-ended one counts as 01.01.2050.
    return statement.append(species)
        .append("' AND (GUELTIG_BIS is null or convert(smalldatetime,GUELTIG_BIS,104) >= convert(smalldatetime,'")
        .append(date)
        .append("',104)) ")
        .append(tableCondition(table))
        .append(" ORDER BY convert(smalldatetime,ISNULL(RINDENABZUG.GUELTIG_BIS,"
                "convert(smalldatetime,'01.01.2050',104)),104), RINDENABZUG.ID ");
}

/// Returns the deduction on the line through the two support points. Two equal points give the deduction
/// of the first. Error 6 if a step overflows.
double interpolate(double diameter, const ado::FieldCollection& row)
{
    const auto number = [&](std::string_view name) { return convert::toDouble(row.Item(name).Value()); };
    const double r1 = number("R1");
    const double r2 = number("R2");
    const double v1 = number("V1");
    // Checked by itself: a quotient by an infinite number would be 0.
    const double width = timber::checkedResult(r2 - r1, "the bark deduction");
    if (width == 0) return v1;
    // In this order: the rounding of doubles depends on it.
    return timber::checkedResult((number("V2") - v1) * (diameter - r1) / width + v1, "the bark deduction");
}

/// Converts a deduction to the unit that the log asks for, by the area of the cross-section d² · 3.1416 / 4:
/// x percent of the area, or x cm of the diameter.
/// @param diameter     cm, with bark
/// @param mode         unit asked for, "%" or "cm"
/// @param isPercent    the table's unit; Null converts nothing
/// Errors: 5 for a deduction of more than 100 percent, 6 if a step overflows, 11 for a cross-section of 0.
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
        return timber::checkedResult((area - inner * inner * timber::pi / 4) / area * 100, "the bark deduction");
    }
    if (mode == "cm" && percent) {
        // Checked before the root, which would call an overflow towards minus a negative number.
        const double woodArea = timber::checkedResult(area - deduction * (area / 100), "the area without bark");
        const double square = timber::checkedResult(woodArea * 4 / timber::pi, "the area without bark");
        return diameter - timber::checkedRoot(square, "the area without bark");
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
    // Without a computation the typed text stands; without a row of the table the computed deduction is 0.
    std::string result{bolCalculation ? std::string_view{"0"} : Rinde};
    const std::string diameterText{tmpDurch.empty() ? std::string_view{"0"} : tmpDurch};
    const double diameter = timber::enteredNumber(diameterText, "tmpDurch", regional);

    if (diameter != 0 && !HA_tmp.empty() && !Modus_tmp.empty() && bolCalculation) {
        const std::string statement = barkStatement(HA_tmp, convert::toSqlNumber(diameterText), strOptionen, date);
        ado::readFirst(tmkVar.db_ADO, statement, [&](const ado::FieldCollection& row) {
            const double onLine = interpolate(diameter, row);
            // Required by the contract: the deduction passes through its text, which has 15 digits. Do not
            // correct.
            const double deduction = convert::toDouble(Variant{convert::toText(onLine, regional)});
            const double converted = inUnit(deduction, diameter, Modus_tmp, row.Item("RINDEPROZENT").Value());
            result = convert::toText(converted, regional);
        });
    }
    // A text that is no number comes back unchanged.
    return format::value(result, "0.00", regional);
}

} // namespace tamarok
