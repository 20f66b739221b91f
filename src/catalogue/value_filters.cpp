#include <algorithm>
#include <array>

#include "ado/first_row.h"
#include "column_kind.h"
#include "list_types.h"

#include "tamarok/comm_conv.h"
#include "tamarok/comm_csel.h"
#include "tamarok/convert.h"
#include "tamarok/mcomm.h"
#include "tamarok/text.h"

// Conditions that a value picked in a list puts on its column. Required by the contract: quotes in a value are not
// doubled.

namespace tamarok {

using catalogue::Column;
using catalogue::Comparison;
using catalogue::Kind;
using catalogue::ListType;
using catalogue::ruleOf;
using catalogue::ValueFilter;

namespace {

constexpr std::string_view isNull = " IS NULL ";

/// What a number form does with a value that is no number.
enum class NoNumber : std::uint8_t { findsNull, isInserted };

std::string textCondition(const Variant& value)
{
    return " = '" + convert::toText(value) + "'";
}

std::string numberCondition(const Variant& value, Comparison comparison, NoNumber noNumber)
{
    if (noNumber == NoNumber::findsNull && !convert::isNumeric(value)) return std::string{isNull};
    const std::string number = text::replaceAll(convert::toText(value), ",", ".");
    // The column is rounded by the server; the value goes through the same rounding, since as a literal it would
    // not be equal.
    if (comparison == Comparison::asRoundedNumber) return " = ROUND(CAST(" + number + " as float),2)";
    return " = " + number;
}

std::string condition(Comparison comparison, const Variant& value, NoNumber noNumber, const TmkVar& session)
{
    switch (comparison) {
    case Comparison::asText: return textCondition(value);
    case Comparison::asDate: return " = '" + convert::toText(Comm_Conv{}.TransDate(value, session.strDateFormat)) + "'";
    case Comparison::asNumber:
    case Comparison::asRoundedNumber: return numberCondition(value, comparison, noNumber);
    }
    return {};
}

/// The form that the format of a column stands for.
Comparison comparisonOfFormat(std::string_view format) noexcept
{
    if (format.empty()) return Comparison::asText;
    return format == catalogue::dayFormat ? Comparison::asDate : Comparison::asNumber;
}

void reportUnknownColumn(std::string_view type, std::int16_t id)
{
    mComm::ShowMessage(
        "For Column '" + std::to_string(id) + "' Typ '" + std::string{type} + "' is not define - in function Instr", 0);
}

/// Whether a value of this column is quoted. Three ids stand for texts that the table of deductions does not have.
bool isDeductionText(std::int16_t id)
{
    constexpr std::array<std::int16_t, 3> withoutColumn{30, 32, 117};
    const Column* column = catalogue::deductionList().column(id);
    return column != nullptr ? column->kind == Kind::text : std::ranges::count(withoutColumn, id) > 0;
}

} // namespace

std::string Comm_CSel::IsStr(std::string_view Typ, std::int16_t ID, const Variant& value, const TmkVar& tmkVar) const
{
    if (value.isNull()) return std::string{isNull};
    const ListType* type = catalogue::findListType(Typ);
    if (type == nullptr) return {};
    const ValueFilter filter = type->description().valueFilter;
    const Column* column = type->column(ID);
    const Comparison comparison = column == nullptr ? Comparison::asNumber : ruleOf(column->kind).comparison;
    switch (filter) {
    case ValueFilter::none: break;
    case ValueFilter::listed:
        if (column != nullptr) return condition(comparison, value, NoNumber::findsNull, tmkVar);
        reportUnknownColumn(Typ, ID);
        break;
    case ValueFilter::log: return condition(comparison, value, NoNumber::findsNull, tmkVar);
    case ValueFilter::unchecked: return condition(comparison, value, NoNumber::isInserted, tmkVar);
    case ValueFilter::byFormat:
        return condition(comparisonOfFormat(GetFormat(Typ, ID, tmkVar)), value, NoNumber::isInserted, tmkVar);
    }
    return {};
}

std::string Comm_CSel::GetValue(const Variant& value, std::string_view strLeer) const
{
    return value.isNull() ? std::string{strLeer} : convert::toText(value);
}

Variant Comm_CSel::GetNameAbs(std::int16_t ID, const Variant& value, std::string_view strLeer,
                              const ado::ConnectionRef& dbAdo) const
{
    constexpr std::int16_t invoiceDate = 32;
    if (value.isNull()) return std::string{strLeer};
    if (ID != invoiceDate) return value;
    const auto date =
        ado::readFirstValue(dbAdo, "SELECT INVDATE FROM HEADERRECH WHERE R_NAME = '" + convert::toText(value) + "'");
    return date ? GetValue(*date, strLeer) : std::string{strLeer};
}

std::string Comm_CSel::IsStrAbs(std::int16_t ID, const Variant& value) const
{
    const std::string text = convert::toText(value);
    return isDeductionText(ID) ? "'" + text + "'" : text;
}

std::string Comm_CSel::IsStr2Abs(std::int16_t ID, const Variant& value) const
{
    if (value.isNull()) return std::string{isNull};
    return isDeductionText(ID) ? textCondition(value) : std::string{};
}

} // namespace tamarok
