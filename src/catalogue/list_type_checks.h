#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "column_values.h"
#include "dialect/sql_template.h"
#include "list_type.h"
#include "select_values.h"

// The rules that every description keeps, checked at compile time.
namespace tamarok::catalogue {

/// Ids rise from row to row, so that none occurs twice and a reader finds them.
constexpr bool idsRise(const ListDescription& description)
{
    const auto rise = [](const auto& rows) {
        return std::ranges::adjacent_find(rows, [](const auto& a, const auto& b) { return a.id >= b.id; }) ==
                   rows.end() &&
               std::ranges::all_of(rows, [](const auto& row) { return row.id > 0; });
    };
    return rise(description.columns) && rise(description.selectExpressions);
}

/// A join without a column would never be used, and a prerequisite without a join would add nothing.
constexpr bool joinsFitColumns(const ListType& type)
{
    bool fit = true;
    for (const Join& join : type.description().joins) {
        forEachId(join.ids, [&](std::int16_t id) { fit = fit && type.column(id) != nullptr; });
        forEachId(join.prerequisites, [&](std::int16_t id) { fit = fit && type.join(id) != nullptr; });
    }
    return fit;
}

/// An expression of a grouped list takes the place of a sum.
constexpr bool expressionsFitColumns(const ListType& type)
{
    return std::ranges::all_of(type.description().selectExpressions, [&](const SelectExpression& expression) {
        const Column* column = type.column(expression.id);
        return expression.applies == Applies::always || (column != nullptr && isMeasure(column->aggregate));
    });
}

/// A template with an unknown name would fail only when it is used.
constexpr bool templatesNameValues(const ListDescription& description)
{
    const auto named = [](const auto& rows, const auto& isValue) {
        return std::ranges::all_of(rows, [&](const auto& row) { return dialect::namesOnly(row.text, isValue); });
    };
    return named(description.columns, isColumnValue) && named(description.joins, isColumnValue) &&
           named(description.selectExpressions, isSelectValue);
}

/// An entry of a choice list without a column would show nothing.
constexpr bool choicesNameColumns(const ListType& type)
{
    bool named = true;
    for (const Choice& choice : type.description().choices)
        forEachId(choice.columns, [&](std::int16_t id) { named = named && type.column(id) != nullptr; });
    return named;
}

constexpr bool isUpperCase(std::string_view key)
{
    return std::ranges::none_of(key, [](char c) { return c >= 'a' && c <= 'z'; });
}

} // namespace tamarok::catalogue
