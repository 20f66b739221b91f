#include "areas/area_keys.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "tamarok/convert.h"

namespace tamarok::database {

void insertRow(BulkInsert& rows, std::initializer_list<Variant> values)
{
    std::size_t column = 0;
    for (const Variant& value : values)
        rows[column++] = value;
    rows.insert();
}

std::vector<std::vector<Variant>> rowsOf(ado::Connection& connection, std::string_view query)
{
    ado::Recordset recordset;
    recordset.Open(std::string{query}, ado::ConnectionRef{std::shared_ptr<void>{}, &connection});
    std::vector<std::vector<Variant>> rows;
    for (; !recordset.AtEOF(); recordset.MoveNext()) {
        std::vector<Variant>& row = rows.emplace_back();
        for (std::int32_t column = 0; column < recordset.Fields().Count(); ++column)
            row.push_back(recordset.Fields().Item(column).Value());
    }
    recordset.Close();
    return rows;
}

std::vector<std::int32_t> idsOf(ado::Connection& connection, std::string_view query)
{
    std::vector<std::int32_t> ids;
    for (const std::vector<Variant>& row : rowsOf(connection, query))
        ids.push_back(convert::toLong(row.at(0)));
    return ids;
}

std::int32_t lastId(ado::Connection& connection, std::string_view table)
{
    return idsOf(connection, "SELECT ISNULL(MAX(ID),0) AS ID FROM " + std::string{table}).at(0);
}

Variant pickId(Random& random, const std::vector<std::int32_t>& ids, std::uint32_t nullPerMille)
{
    if (ids.empty() || random.chance(nullPerMille)) return Null{};
    return random.pick(ids);
}

std::int32_t idInTurn(const std::vector<std::int32_t>& ids, std::int32_t number)
{
    return ids.at(static_cast<std::size_t>(number - 1) % ids.size());
}

double cents(double value)
{
    return std::round(value * 100.0) / 100.0;
}

double tenth(double value)
{
    return std::round(value * 10.0) / 10.0;
}

Date drawDay(Random& random, const ReferenceOptions& options)
{
    constexpr std::int32_t daysOfThreeYears = 1095;
    return Date{dayOf(options.baseDate).days - random.between(1, daysOfThreeYears)};
}

Date laterDay(Date day, std::int32_t days, const ReferenceOptions& options)
{
    return Date{std::min(day.days + days, dayOf(options.baseDate).days)};
}

Variant drawCancelDay(Random& random, Date day, const ReferenceOptions& options)
{
    constexpr std::uint32_t cancelledPerMille = 30;
    constexpr std::int32_t longestDelay = 30;
    if (!random.chance(cancelledPerMille)) return Null{};
    return laterDay(day, random.between(1, longestDelay), options);
}

std::string paddedNumber(std::int64_t number, std::size_t width)
{
    std::string digits = std::to_string(number);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return digits;
}

std::string shortYear(Date day)
{
    return paddedNumber(toCivil(day).year % 100, 2);
}

} // namespace tamarok::database
