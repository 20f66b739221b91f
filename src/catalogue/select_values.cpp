#include "select_values.h"

#include "ado/first_row.h"
#include "column_text.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::catalogue {

std::string SelectContext::columnText(std::int16_t id) const
{
    return grouped ? aggregateText(type, id, versionKey, session) : detailText(type, id, versionKey, session);
}

bool SelectValues::appendValue(std::string& out, const dialect::Placeholder& placeholder)
{
    const auto* const known = std::ranges::find(selectValueNames, placeholder.name, &SelectValueName::name);
    if (known == std::end(selectValueNames)) return columnValues_.appendValue(out, placeholder);
    switch (known->value) {
    case SelectValue::column:
        out += placeholder.argument.empty() ? ownText() : context_.columnText(parseId(placeholder.argument));
        break;
    case SelectValue::percent: out += percentText(parseId(placeholder.argument)); break;
    case SelectValue::from: out += context_.from; break;
    case SelectValue::where: out += context_.where; break;
    }
    return true;
}

const std::string& SelectValues::ownText()
{
    if (!ownText_) ownText_ = context_.columnText(ownColumn_);
    return *ownText_;
}

/// Reads the total of a measure over the list from the database and returns the measure times the factor
/// that makes it a percentage, or "NULL" if there is no total. Error 11 if the total is 0.
std::string SelectValues::percentText(std::int16_t id) const
{
    const std::string total = aggregateText(context_.type, id, context_.versionKey, context_.session);
    const auto value = ado::readFirstValue(context_.session.db_ADO, "SELECT " + total + context_.from + context_.where);
    if (!value || value->isNull()) {
        return "NULL";
    }
    const double sum = convert::toDouble(*value);
    if (sum == 0.0) {
        throw Error{errors::divisionByZero, "The total of the list's net values is 0.", "Comm_CSel.CorrectStrSelect"};
    }
    const double factor = 100.0 / sum;
    // A total so large that the factor is 0 counts as none.
    return factor == 0.0 ? "NULL" : context_.columnText(id) + "*" + sqlNumber(factor);
}

} // namespace tamarok::catalogue
