#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>

#include "ado/first_row.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

/// One WHEN a kind of unit: the target unit is of that kind and the measured unit is not, so the quantity is
/// derived from the volume. The order decides for a unit of several kinds.
constexpr std::array<std::string_view, 8> unitCascade = {{
#include "data/unit_cascade.inc"
}};

/// The pairs of assortment and unit with their conversion. Null in TSM_MENGECALC means all assortments or all
/// units; a pair that is named exactly wins over these, and a row with two Nulls counts for nothing.
constexpr std::string_view conversionPairs =
    "SELECT ID_HOLZSORTE,ID_WARENEINHEIT,ISNULL(MAX(CALC),0) AS CALC FROM TSM_MENGECALC"
    " WHERE ID_HOLZSORTE IS NOT NULL AND ID_WARENEINHEIT IS NOT NULL GROUP BY ID_HOLZSORTE,ID_WARENEINHEIT"
    " UNION ALL SELECT B.ID_HOLZSORTE,B.ID_WARENEINHEIT,B.CALC"
    " FROM (SELECT ID_HOLZSORTE,ID_WARENEINHEIT,MAX(CALC) AS CALC"
    " FROM (SELECT TSM_MENGECALC.ID_HOLZSORTE,WARENEINHEIT.EINHEIT_ID AS ID_WARENEINHEIT,CALC"
    " FROM TSM_MENGECALC, WARENEINHEIT"
    " WHERE TSM_MENGECALC.ID_HOLZSORTE IS NOT NULL AND TSM_MENGECALC.ID_WARENEINHEIT IS NULL"
    " UNION ALL SELECT HOLZSORTE.ID,TSM_MENGECALC.ID_WARENEINHEIT,CALC FROM TSM_MENGECALC, HOLZSORTE"
    " WHERE TSM_MENGECALC.ID_HOLZSORTE IS NULL AND TSM_MENGECALC.ID_WARENEINHEIT IS NOT NULL) A"
    " GROUP BY ID_HOLZSORTE,ID_WARENEINHEIT) B"
    " LEFT JOIN (SELECT ID_HOLZSORTE,ID_WARENEINHEIT,MAX(CALC) AS CALC FROM TSM_MENGECALC"
    " WHERE ID_HOLZSORTE IS NOT NULL AND ID_WARENEINHEIT IS NOT NULL"
    " GROUP BY ID_HOLZSORTE,ID_WARENEINHEIT) C"
    " ON B.ID_HOLZSORTE = C.ID_HOLZSORTE AND B.ID_WARENEINHEIT = C.ID_WARENEINHEIT WHERE C.CALC IS NULL";

/// Returns the query of a line's quantity in `unit`; a factor of 0 or Null counts as 1. SQL Server text.
std::string cascadeStatement(std::string_view unit)
{
    std::string statement{"SELECT CASE"};
    for (const std::string_view row : unitCascade)
        statement += row;
    return statement
        .append(" ELSE M.MENGE END FROM WARENEINHEIT,(SELECT LOGS.ID_LOG,LOGS.MENGE,LOGS.KUBATUR,LOGS.ENERGIE_MWH, "
                "LOGS.STK,LOGS.UFAKT_RM,LOGS.UFAKT_ATO,LOGS.UFAKT_STK,LOGS.UFAKT_LUT,WARENEINHEIT.FM,WARENEINHEIT.RM,"
                "WARENEINHEIT.GEWICHT_ATRO,WARENEINHEIT.STUCK,WARENEINHEIT.HSTUCK,WARENEINHEIT.GEWICHT_LUTRO,"
                "WARENEINHEIT.SRM FROM LOGS INNER JOIN WARENEINHEIT ON LOGS.ID_MASSEINHEIT = WARENEINHEIT.EINHEIT_ID"
                " AND LOGS.ID_LOG = LOGS_RECH.ID_LOG) M WHERE WARENEINHEIT.EINHEIT_ID = ")
        .append(unit);
}

/// Returns the query of a line's quantity in `unit` by the conversion table, rounded to as many decimals as the
/// pattern "0.000" has behind its point.
std::string conversionTableStatement(std::string_view unit, std::string_view quantityFormat)
{
    const auto decimals = static_cast<std::int64_t>(text::length(quantityFormat)) - 2;
    std::string statement{
        "SELECT ROUND(ISNULL(LOGS.MENGE,0)*(CASE WHEN TSP_UMF.ID_WARENEINHEIT = LOGS.ID_MASSEINHEIT OR"
        " ISNULL(TSP_UMF.UMF_WERT,0)=0 THEN 1 ELSE ISNULL(LOGS.UFAKT,0)/TSP_UMF.UMF_WERT END),"};
    return statement.append(std::to_string(decimals))
        .append(") FROM LOGS LEFT JOIN TSP_UMF ON TSP_UMF.ID_BB_TSM_BAGUMF IN (SELECT ID_BB_TSM_BAGUMF FROM HOLZART"
                " WHERE HOLZART.HA = LOGS.HA) AND TSP_UMF.ID_TSM_SOG_UMF IN (SELECT ID_TSM_SOG_UMF FROM HOLZSORTE"
                " WHERE HOLZSORTE.HS = LOGS.HS) AND TSP_UMF.ID_TSM_STKLG_UMF IN (SELECT ID_TSM_STKLG_UMF FROM STKL"
                " WHERE STKL.STKL = LOGS.STKL) AND TSP_UMF.ID_WARENEINHEIT IN (")
        .append(unit)
        .append(") WHERE LOGS.ID_LOG = LOGS_RECH.ID_LOG");
}

/// Returns all pairs as an array (field, row). Without any pair it holds one row of zeros, so that the caller's
/// cache is not empty and the statement runs once.
Variant loadPairs(const ado::ConnectionRef& connection)
{
    ado::Recordset pairs;
    pairs.Open(conversionPairs, connection);
    if (pairs.AtEOF()) {
        pairs.Close();
        pairs.Open("SELECT 0,0,0", connection);
    }
    Variant rows{pairs.GetRows()};
    pairs.Close();
    return rows;
}

/// A key to compare with the cells of the array by their text. A key in plain decimal form is compared as a
/// number, which needs no text of each cell: 9 to 13 times as fast as comparing texts (bench: pairs_bench).
class Key {
public:
    explicit Key(std::string_view text) : text_{text}
    {
        const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number_);
        isNumber_ =
            parsed.ec == std::errc{} && parsed.ptr == text.data() + text.size() && std::to_string(number_) == text;
    }

    bool equals(const Variant& cell) const
    {
        switch (cell.kind()) {
        case Variant::Kind::Long: return isNumber_ && cell.asLong() == number_;
        case Variant::Kind::Integer: return isNumber_ && cell.asInteger() == number_;
        case Variant::Kind::LongLong: return isNumber_ && cell.asLongLong() == number_;
        case Variant::Kind::Null: return false;
        default: return convert::toText(cell) == text_;
        }
    }

private:
    std::string_view text_;
    std::int64_t number_ = 0;
    bool isNumber_ = false;
};

} // namespace

std::string Comm_CSel::MengeSQL(const TmkVar& tmkVar, bool InFaktura, std::string_view Prefix,
                                std::string_view Einheit_ID, std::string_view strFormatMenge) const
{
    const std::string quantity = tmkVar.strCustomer == "SACHSEN" ? conversionTableStatement(Einheit_ID, strFormatMenge)
                                                                 : cascadeStatement(Einheit_ID);
    if (InFaktura) return "(" + quantity + ")";
    std::string expression{"(CASE WHEN LOGS_RECH."};
    return expression.append(Prefix)
        .append("_NAME IS NULL THEN (")
        .append(quantity)
        .append(") ELSE LOGS_RECH.")
        .append(Prefix)
        .append("_MENGE END)");
}

std::int16_t Comm_Set::MengeCalc(const TmkVar& tmkVar, Variant& arrMengeCalc, std::string_view ID_HolzSorte,
                                 std::string_view ID_WarenEinheit) const
{
    if (tmkVar.strCustomer != "SACHSEN") return 0;
    if (arrMengeCalc.isEmpty()) arrMengeCalc = loadPairs(tmkVar.db_ADO);
    if (ID_HolzSorte.empty() || ID_WarenEinheit.empty()) return 0;

    // The columns lie first in the array: `width` cells a row.
    const VariantArray& pairs = arrMengeCalc.asArray();
    const VariantArray::Bounds fields = pairs.bounds(1);
    const VariantArray::Bounds rows = pairs.bounds(2);
    const auto width = static_cast<std::size_t>(fields.upper - fields.lower) + 1;
    if (width < 3) pairs.at(fields.lower + 2, rows.lower); // Error 9: no third column
    const std::vector<Variant>& cells = pairs.elements();
    const Key assortment{ID_HolzSorte};
    const Key unit{ID_WarenEinheit};
    for (std::size_t row = 0; row < cells.size(); row += width) {
        if (!assortment.equals(cells[row]) || !unit.equals(cells[row + 1])) continue;
        const Variant& factor = cells[row + 2];
        return convert::isNumeric(factor) ? convert::toInteger(factor) : std::int16_t{0};
    }
    return 0;
}

} // namespace tamarok
