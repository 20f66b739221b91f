#include "row_contents.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "tamarok_tsql/parsed_batch.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::database::test {

namespace {

using Row = std::vector<Variant>;

bool isNumber(const Variant& value)
{
    using enum Variant::Kind;
    const Variant::Kind kind = value.kind();
    return kind == Integer || kind == Long || kind == LongLong || kind == Double;
}

/// Null, numbers, dates, texts.
int rank(const Variant& value)
{
    return isNumber(value) ? 1 : static_cast<int>(value.kind()) + 2;
}

bool areEqual(const Variant& left, const Variant& right)
{
    if (!isNumber(left) || !isNumber(right)) return left == right;
    constexpr double tolerance = 1e-9;
    const double a = convert::toDouble(left);
    const double b = convert::toDouble(right);
    return std::abs(a - b) <= tolerance * std::max({1.0, std::abs(a), std::abs(b)});
}

std::string written(const Variant& value)
{
    return value.isNull() ? "NULL" : convert::toText(value);
}

/// Below 0, 0, or above 0. Exact: the tolerance of numbers would not give an order.
int compare(const Variant& left, const Variant& right)
{
    if (rank(left) != rank(right)) return rank(left) - rank(right);
    if (!isNumber(left)) return written(left).compare(written(right));
    const double a = convert::toDouble(left);
    const double b = convert::toDouble(right);
    return a < b ? -1 : static_cast<int>(a > b);
}

/// The same order for the rows of both databases. Numbers come last: those that differ in their last digits alone must
/// not decide.
bool comesBefore(const Row& left, const Row& right)
{
    for (const bool numbers : {false, true}) {
        for (std::size_t i = 0; i < left.size(); ++i) {
            if ((isNumber(left[i]) && isNumber(right[i])) != numbers) continue;
            const int order = compare(left[i], right[i]);
            if (order != 0) return order < 0;
        }
    }
    return false;
}

/// The columns of the result by which a statement orders its rows, from the first item on that is such a column.
std::vector<std::size_t> orderColumns(std::string_view statement, std::span<const std::string> columns)
{
    std::vector<std::size_t> ordinals;
    const tsql::ParsedBatch batch{statement};
    for (const tsql::ParsedStep& step : batch.steps()) {
        if (step.kind != tsql::StepKind::Query) continue;
        for (const tsql::OrderItem& item : step.query->order) {
            std::size_t ordinal = columns.size();
            if (item.value->kind == tsql::ExprKind::Number)
                ordinal = static_cast<std::size_t>(
                    convert::toLong(Variant{static_cast<const tsql::NumberExpr*>(item.value)->text}) - 1);
            if (item.value->kind == tsql::ExprKind::Column) {
                const auto& name = static_cast<const tsql::ColumnExpr*>(item.value)->name.text;
                const auto found = std::ranges::find_if(
                    columns, [&](const std::string& column) { return text::equalsNoCase(column, name); });
                ordinal = static_cast<std::size_t>(found - columns.begin());
            }
            if (ordinal >= columns.size()) return ordinals;
            ordinals.push_back(ordinal);
        }
        break;
    }
    return ordinals;
}

std::string describe(std::size_t row, const std::string& column, const Variant& left, const Variant& right)
{
    return "row " + std::to_string(row + 1) + ", " + column + ": '" + written(left) + "' (kind " +
           std::to_string(static_cast<int>(left.kind())) + ") and '" + written(right) + "' (kind " +
           std::to_string(static_cast<int>(right.kind())) + ")";
}

} // namespace

void RowContents::drop(std::size_t column)
{
    for (Row& row : rows)
        row.at(column) = Null{};
}

RowContents readContents(std::string_view statement, const ado::ConnectionRef& connection)
{
    RowContents contents;
    ado::Recordset rows;
    rows.Open(statement, connection);
    const ado::FieldCollection& fields = rows.Fields();
    for (std::int32_t i = 0; i < fields.Count(); ++i)
        contents.columns.push_back(fields.Item(i).Name());
    for (; !rows.AtEOF(); rows.MoveNext()) {
        Row& row = contents.rows.emplace_back();
        for (std::int32_t i = 0; i < fields.Count(); ++i)
            row.push_back(fields.Item(i).Value());
    }
    return contents;
}

std::optional<std::string> firstDifference(std::string_view statement, RowContents left, RowContents right)
{
    if (left.columns.size() != right.columns.size()) return "numbers of columns differ";
    for (std::size_t i = 0; i < left.columns.size(); ++i)
        if (!left.columns[i].empty() && !text::equalsNoCase(left.columns[i], right.columns[i]))
            return "column " + std::to_string(i + 1) + " is named '" + left.columns[i] + "' and '" + right.columns[i] +
                   "'";
    if (left.rows.size() != right.rows.size())
        return std::to_string(left.rows.size()) + " and " + std::to_string(right.rows.size()) + " rows";
    for (const std::size_t column : orderColumns(statement, left.columns))
        for (std::size_t row = 0; row < left.rows.size(); ++row)
            if (!areEqual(left.rows[row][column], right.rows[row][column]))
                return "order: " + describe(row, left.columns[column], left.rows[row][column], right.rows[row][column]);
    std::ranges::sort(left.rows, comesBefore);
    std::ranges::sort(right.rows, comesBefore);
    for (std::size_t row = 0; row < left.rows.size(); ++row)
        for (std::size_t column = 0; column < left.columns.size(); ++column)
            if (!areEqual(left.rows[row][column], right.rows[row][column]))
                return describe(row, left.columns[column], left.rows[row][column], right.rows[row][column]);
    return std::nullopt;
}

} // namespace tamarok::database::test
