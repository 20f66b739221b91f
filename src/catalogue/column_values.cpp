#include "column_values.h"

#include <charconv>

#include "ado/first_row.h"
#include "dialect/dialect.h"

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok::catalogue {

namespace {

/// Alias digit of the settlement that a version key names, "" for none.
/// Required by the contract: only the last character counts, and its case does. Do not correct.
std::string_view settlementDigit(std::string_view versionKey) noexcept
{
    if (versionKey.ends_with('R')) return "0";
    const std::string_view last = text::right(versionKey, 1);
    return !last.empty() && last.front() >= '1' && last.front() <= '8' ? last : std::string_view{};
}

} // namespace

std::int16_t parseId(std::string_view digits)
{
    std::int16_t id = 0;
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), id);
    if (failure != std::errc{} || end != digits.data() + digits.size()) {
        throw Error{errors::invalidArgument, "\"" + std::string{digits} + "\" is not a column id."};
    }
    return id;
}

std::string sqlNumber(double number)
{
    return text::replaceAll(convert::toText(number, Platform::current().regional), ",", ".");
}

std::string ColumnValues::fill(std::string_view sqlTemplate)
{
    std::string out;
    dialect::appendFilled(out, sqlTemplate, dialect::of(session_), *this);
    return out;
}

bool ColumnValues::appendValue(std::string& out, const dialect::Placeholder& placeholder)
{
    // Names that are unknown here may be words of the dialect, which the caller looks up next.
    const auto* const known = std::ranges::find(columnValueNames, placeholder.name, &ColumnValueName::name);
    if (known == std::end(columnValueNames)) return false;
    switch (known->value) {
    case ColumnValue::row: appendRow(out, placeholder.argument); break;
    case ColumnValue::version: out += text::toUpper(versionKey_); break;
    case ColumnValue::digit: out += settlementDigit(versionKey_); break;
    case ColumnValue::settlement: appendSettlement(out); break;
    case ColumnValue::price: appendPrice(out, placeholder.argument); break;
    case ColumnValue::label: out += texts().GetText(parseId(placeholder.argument), session_); break;
    case ColumnValue::labelSql: out += texts().GetText2(parseId(placeholder.argument), session_); break;
    case ColumnValue::keyTail: out += std::string_view{type_.description().key}.substr(3); break;
    case ColumnValue::currency: appendCurrency(out); break;
    case ColumnValue::trueText: out += Platform::current().regional.trueText; break;
    case ColumnValue::falseText: out += Platform::current().regional.falseText; break;
    }
    return true;
}

void ColumnValues::appendRow(std::string& out, std::string_view id)
{
    // Inserts the text of another column of the list, so that an expression is written once.
    const Column* column = type_.column(parseId(id));
    if (column != nullptr) dialect::appendFilled(out, column->text, dialect::of(session_), *this);
}

void ColumnValues::appendSettlement(std::string& out) const
{
    const std::string_view digit = settlementDigit(versionKey_);
    if (digit == "0") {
        out += 'R';
    } else if (!digit.empty()) {
        out.append("A").append(digit);
    }
}

/// The settlement is the column's own one in a list of the main invoice, and the list's version in any
/// other list.
void ColumnValues::appendPrice(std::string& out, std::string_view settlement) const
{
    const Comm_Get options;
    double national = options.GetOptionenDouble(session_, "UFAKTNAT_EURO");
    if (national == 0.0) {
        national = 1.0;
    }
    const std::string_view version = versionKey_ == "R" ? settlement : std::string_view{versionKey_};
    const bool baseIsEuro = options.GetOptionenNumber(session_, "STATEURO") == 1;

    out.append("(CASE LOGS_RECH.").append(version).append("_EURO WHEN ").append(baseIsEuro ? "0" : "1");
    out.append(" THEN ").append(sqlNumber(baseIsEuro ? 1.0 / national : national));
    out.append(" ELSE 1 END)*LOGS_RECH.").append(version).append("_PREIS*");
}

/// Made at the first label: most columns need no language service.
LocService& ColumnValues::texts()
{
    if (!texts_) texts_ = Platform::locService();
    return *texts_;
}

void ColumnValues::appendCurrency(std::string& out) const
{
    const auto name =
        ado::readFirstValue(session_.db_ADO, "SELECT TEXT_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'NATWAHRUNG'");
    if (name && !name->isNull()) {
        out += convert::toText(*name);
    }
}

} // namespace tamarok::catalogue
