#include "areas/people_rows.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "tamarok/convert.h"

namespace tamarok::database::people {
namespace {

constexpr std::uint64_t firstStream = 4'000'000'000'001U;

} // namespace

Random randomOf(const ReferenceOptions& options, Stream stream)
{
    return Random{options.seed, firstStream + static_cast<std::uint64_t>(stream)};
}

double rounded(double value, int decimals)
{
    double scale = 1.0;
    for (int i = 0; i < decimals; ++i)
        scale *= 10.0;
    return std::round(value * scale) / scale;
}

Month monthAt(const ReferenceOptions& options, std::int32_t index)
{
    const CivilTime base = toCivil(options.baseDate);
    // Months counted from the year 0, so that the years carry.
    const std::int32_t months = base.year * 12 + base.month - 1 - (monthCount - 1 - index);
    return {months / 12, months % 12 + 1};
}

std::int32_t monthIndexOf(const ReferenceOptions& options, std::int32_t record)
{
    return static_cast<std::int32_t>(static_cast<std::int64_t>(record - 1) * monthCount / options.records);
}

Date lastDayOf(const ReferenceOptions& options, Month month)
{
    const Date last = makeDate(month.year, month.month, daysInMonth(month.year, month.month));
    return std::min(last, dayOf(options.baseDate));
}

Date workingDay(const ReferenceOptions& options, Month month, Random& random)
{
    const Date last = lastDayOf(options, month);
    Date day = makeDate(month.year, month.month, random.between(1, toCivil(last).day));
    // A weekend gives way to the Friday before it or, at the beginning of a month, to the Monday after it.
    const std::int32_t weekday = weekdayOf(day);
    const std::int32_t back = weekday == 1 ? 2 : weekday == 7 ? 1 : 0;
    if (back == 0) return day;
    day.days += toCivil(day).day > back ? -back : 3 - back;
    return std::min(day, last);
}

Date dayBefore(const ReferenceOptions& options, Random& random, std::int32_t days)
{
    return Date{dayOf(options.baseDate).days - random.between(0, days)};
}

Variant sometimes(Random& random, std::uint32_t perMille, const Variant& value)
{
    return random.chance(perMille) ? value : Variant{Null{}};
}

RowUpdate::RowUpdate(ado::Connection& connection, std::string_view table, std::span<const BulkInsert::Column> columns,
                     std::string_view keyColumn)
{
    command_.ActiveConnection = ado::ConnectionRef{std::shared_ptr<void>{}, &connection};
    const auto addParameter = [this](const BulkInsert::Column& column) {
        command_.Parameters().push_back(
            command_.CreateParameter(column.name, column.type, ado::ParameterDirection::Input, 0, Null{}));
    };
    std::string assignments;
    for (const BulkInsert::Column& column : columns) {
        assignments.append(assignments.empty() ? "" : ",").append(column.name).append("=?");
        addParameter(column);
    }
    addParameter({keyColumn, ado::DataType::Integer});
    command_.CommandText = "UPDATE ";
    command_.CommandText.append(table).append(" SET ").append(assignments);
    command_.CommandText.append(" WHERE ").append(keyColumn).append("=?");
}

void RowUpdate::run(const std::vector<Variant>& values, std::int32_t key)
{
    std::size_t column = 0;
    for (const Variant& value : values)
        command_.Parameters()[column++].value = value;
    command_.Parameters()[column].value = key;
    command_.Execute();
}

} // namespace tamarok::database::people
