#include "ado/first_row.h"
#include "log_catalogue.h"
#include "row_text.h"

#include "tamarok/comm_csel.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok {

namespace {

constexpr std::string_view artikel = "ARTIKEL";
constexpr std::int16_t artikelPricePerQuantity = 155;
constexpr std::int16_t artikelValueShare = 156;
constexpr std::int16_t artikelNetValue = 470;

/// " WHERE (...)" whether or not the text begins with WHERE, "" for none.
std::string selfContainedWhere(std::string_view where)
{
    std::string_view condition = text::trim(where);
    if (condition.starts_with("WHERE ")) {
        condition = text::trim(condition.substr(5));
    }
    return condition.empty() ? std::string{} : std::string{" WHERE ("}.append(condition).append(")");
}

/// " FROM ..." whether or not the text begins with FROM.
std::string selfContainedFrom(std::string_view from)
{
    const std::string_view body = text::trim(from);
    return std::string{body.starts_with("FROM ") ? " " : " FROM "}.append(body);
}

/// Composes the expressions of one SELECT list.
class SelectList {
public:
    SelectList(const TmkVar& session, std::string_view versionKey, std::string_view where, std::string_view from,
               bool grouped) :
        session_{session},
        versionKey_{versionKey}, where_{selfContainedWhere(where)}, from_{selfContainedFrom(from)}, grouped_{grouped}
    {}

    std::string logExpression(std::int16_t id) const
    {
        std::string expression = grouped_ ? columns_.GetSelectClause2(id, versionKey_, session_)
                                          : columns_.GetColumn(id, versionKey_, session_);
        if (id == catalogue::logVolumeShare) {
            return expression
                .append("/.01/(SELECT (CASE WHEN ISNULL(SUM(LOGS.KUBATUR),0) = 0 THEN 1 ELSE SUM(LOGS.KUBATUR) END)")
                .append(from_)
                .append(where_)
                .append(")");
        }
        const catalogue::Column* weighted = catalogue::logWeightedColumns.find(id);
        if (weighted == nullptr || expression.find("SUM(") == std::string::npos) {
            return expression;
        }
        return catalogue::RowText{session_, versionKey_, catalogue::logColumns}.fill(weighted->text);
    }

    std::string artikelExpression(std::int16_t id) const
    {
        if (id == artikelValueShare) {
            return valueShare();
        }
        const std::string expression = artikelColumn(id, grouped_);
        if (id != artikelPricePerQuantity || expression.empty()) {
            return expression;
        }
        return "(CASE WHEN ISNULL(" + expression + ",0) = 0 THEN NULL ELSE " +
               artikelColumn(artikelNetValue, grouped_) + "/" + expression + " END)";
    }

private:
    std::string artikelColumn(std::int16_t id, bool aggregated) const
    {
        return columns_.GetColumnTyp(artikel, id, aggregated, false, session_);
    }

    /// The net value in percent of the whole list's.
    std::string valueShare() const
    {
        const auto total =
            ado::readFirstValue(session_.db_ADO, "SELECT " + artikelColumn(artikelNetValue, true) + from_ + where_);
        if (!total || total->isNull()) {
            return "NULL";
        }
        const double sum = convert::toDouble(*total);
        if (sum == 0.0) {
            throw Error{errors::divisionByZero, "The total of the list's net values is 0.",
                        "Comm_CSel.CorrectStrSelect"};
        }
        const double factor = 100.0 / sum;
        if (factor == 0.0) {
            return "NULL";
        }
        return artikelColumn(artikelNetValue, grouped_) + "*" +
               convert::toSqlNumber(factor, Platform::current().regional);
    }

    const TmkVar& session_;
    std::string_view versionKey_;
    std::string where_;
    std::string from_;
    bool grouped_;
    Comm_CSel columns_;
};

} // namespace

std::string Comm_CSel::CorrectStrSelect(std::string_view Typ, std::span<const std::int16_t> ID,
                                        std::string& strSelect_vbtab, std::string_view Colum_Id_Is_0,
                                        std::string_view strVer_type, const TmkVar& tmkVar, std::string_view strWhere,
                                        std::string_view strFrom, bool GroupBy) const
{
    if (ID.size() > INT16_MAX) {
        throw Error{errors::overflow, "More than 32767 column ids.", "Comm_CSel.CorrectStrSelect"};
    }
    const SelectList list{tmkVar, strVer_type, strWhere, strFrom, GroupBy};
    std::string result;
    for (const std::int16_t id : ID) {
        std::string expression;
        if (Typ == "LOG") {
            expression = list.logExpression(id);
        } else if (Typ == artikel) {
            expression = list.artikelExpression(id);
        }
        const bool isColumn = !expression.empty() && expression != Colum_Id_Is_0;
        if (isColumn && !strSelect_vbtab.empty()) {
            strSelect_vbtab += '\t';
        }
        if (isColumn) {
            strSelect_vbtab += expression;
        }
        const std::string_view item = expression.empty() ? Colum_Id_Is_0 : std::string_view{expression};
        if (!result.empty() && !item.empty()) {
            result += ", ";
        }
        result += item;
    }
    return result;
}

} // namespace tamarok
