#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "dialect/sql_template.h"
#include "list_type.h"

#include "tamarok/loc_service.h"
#include "tamarok/tmkvar.h"

namespace tamarok::catalogue {

enum class ColumnValue : std::uint8_t {
    row,
    version,
    digit,
    settlement,
    price,
    label,
    labelSql,
    keyTail,
    currency,
    trueText,
    falseText
};

struct ColumnValueName {
    std::string_view name;
    ColumnValue value;
};

/// The values that templates of columns and joins may name, besides the words of the dialect.
inline constexpr ColumnValueName columnValueNames[] = {
    {"ROW", ColumnValue::row},               // {ROW 240}: the expression of another column, empty if it has no row
    {"VER", ColumnValue::version},           // {VER}: the version key in upper case
    {"DIGIT", ColumnValue::digit},           // {DIGIT}: alias digit of the settlement, 0 to 8
    {"SETTLEMENT", ColumnValue::settlement}, // {SETTLEMENT}: column prefix of the settlement, R or A1 to A8
    {"PRICE", ColumnValue::price},           // {PRICE A1}: price in base currency times, for that settlement
    {"LABEL", ColumnValue::label},           // {LABEL 3442}: language text of that number
    {"LABELSQL", ColumnValue::labelSql},     // {LABELSQL 5}: the same as an SQL expression, by GetText2
    {"KEYTAIL", ColumnValue::keyTail},       // {KEYTAIL}: the key of the list type from its fourth character on
    {"CURRENCY", ColumnValue::currency},     // {CURRENCY}: name of the national currency
    {"TRUE", ColumnValue::trueText},         // {TRUE}: text of a true value in the regional settings
    {"FALSE", ColumnValue::falseText},       // {FALSE}: text of a false value
};

constexpr bool isColumnValue(std::string_view name)
{
    return std::ranges::find(columnValueNames, name, &ColumnValueName::name) != std::end(columnValueNames);
}

/// The values of columns and joins, for one operation. The settlement is named by the last character of
/// the version key, R or 1 to 8; it is empty for any other one.
class ColumnValues final : public dialect::PlaceholderValues {
public:
    /// @param session     read for the database, the dialect and the language; must outlive this object
    /// @param versionKey  as the caller gave it
    /// @param type        the list type, whose rows {ROW n} names
    ColumnValues(const TmkVar& session, std::string_view versionKey, const ListType& type) :
        session_{session}, versionKey_{versionKey}, type_{type}
    {}

    /// The template, filled. Errors: 5 for a malformed template or an unknown value, failures of the
    /// database and of the language service.
    std::string fill(std::string_view sqlTemplate);

    bool appendValue(std::string& out, const dialect::Placeholder& placeholder) override;

private:
    void appendRow(std::string& out, std::string_view id);
    void appendSettlement(std::string& out) const;
    void appendPrice(std::string& out, std::string_view settlement) const;
    LocService& texts();
    void appendCurrency(std::string& out) const;

    const TmkVar& session_;
    std::string versionKey_;
    const ListType& type_;
    std::unique_ptr<LocService> texts_; ///< made on first use
};

/// Parses the id in a placeholder such as {ROW 240}. Error 5 if it is none.
std::int16_t parseId(std::string_view digits);

/// A number as SQL text, with a point whatever the decimal separator is.
std::string sqlNumber(double number);

} // namespace tamarok::catalogue
