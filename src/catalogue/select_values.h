#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "column_values.h"
#include "dialect/sql_template.h"
#include "list_type.h"

namespace tamarok::catalogue {

enum class SelectValue : std::uint8_t { column, percent, from, where };

struct SelectValueName {
    std::string_view name;
    SelectValue value;
};

/// The values that templates of select expressions may name, besides those of columns.
inline constexpr SelectValueName selectValueNames[] = {
    {"COLUMN", SelectValue::column},   // {COLUMN}: the column itself, {COLUMN 470}: another one; both as selected
    {"PERCENT", SelectValue::percent}, // {PERCENT 470}: column 470 in percent of its total over the whole list
    {"FROM", SelectValue::from},       // {FROM}: the list's " FROM ..."
    {"WHERE", SelectValue::where},     // {WHERE}: the list's " WHERE (...)", or empty
};

constexpr bool isSelectValue(std::string_view name)
{
    return isColumnValue(name) ||
           std::ranges::find(selectValueNames, name, &SelectValueName::name) != std::end(selectValueNames);
}

/// One SELECT list: its type and the clauses that its subqueries repeat.
struct SelectContext {
    const ListType& type;
    const TmkVar& session;
    std::string_view versionKey;
    std::string from;  ///< " FROM ..."
    std::string where; ///< " WHERE (...)", or empty
    bool grouped;      ///< measures are summed

    /// The expression of a column as the SELECT list has it, unless a SelectExpression takes its place.
    std::string columnText(std::int16_t id) const;
};

/// The values of a select expression that takes the place of one column.
class SelectValues final : public dialect::PlaceholderValues {
public:
    /// @param context    must outlive this object
    /// @param ownColumn  the column that {COLUMN} names
    SelectValues(const SelectContext& context, std::int16_t ownColumn) :
        context_{context}, ownColumn_{ownColumn}, columnValues_{context.session, context.versionKey, context.type}
    {}

    bool appendValue(std::string& out, const dialect::Placeholder& placeholder) override;

private:
    const std::string& ownText();
    std::string percentText(std::int16_t id) const;

    const SelectContext& context_;
    std::int16_t ownColumn_;
    std::optional<std::string> ownText_; ///< composed at its first use, since that may read options
    ColumnValues columnValues_;
};

} // namespace tamarok::catalogue
