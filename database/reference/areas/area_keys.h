#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "bulk_insert.h"
#include "random.h"
#include "tamarok_database/reference_options.h"

#include "tamarok/ado.h"
#include "tamarok/date.h"
#include "tamarok/error.h"

/// What the areas that draw business records share: keys read from the database, columns by name, days and amounts.
namespace tamarok::database {

/// Columns of an INSERT statement by what they hold.
constexpr BulkInsert::Column textColumn(std::string_view name)
{
    return {name, ado::DataType::VarWChar};
}
constexpr BulkInsert::Column wholeColumn(std::string_view name)
{
    return {name, ado::DataType::Integer};
}
constexpr BulkInsert::Column numberColumn(std::string_view name)
{
    return {name, ado::DataType::Double};
}
constexpr BulkInsert::Column dayColumn(std::string_view name)
{
    return {name, ado::DataType::Date};
}
constexpr BulkInsert::Column flagColumn(std::string_view name)
{
    return {name, ado::DataType::Boolean};
}

/// Returns the place of a column in the list of a statement's columns. An unknown name does not compile.
template <std::size_t count>
consteval std::size_t placeOf(const std::array<BulkInsert::Column, count>& columns, std::string_view name)
{
    for (std::size_t place = 0; place < count; ++place)
        if (columns[place].name == name) return place;
    throw Error{errors::invalidArgument, "The statement has no such column."};
}

/// Inserts a row of `values`, which stand in the order of the statement's columns. Errors: provider failures.
void insertRow(BulkInsert& rows, std::initializer_list<Variant> values);

/// Returns the rows of a query. Errors: provider failures.
std::vector<std::vector<Variant>> rowsOf(ado::Connection& connection, std::string_view query);

/// Returns the first column of a query's rows. Errors: provider failures.
std::vector<std::int32_t> idsOf(ado::Connection& connection, std::string_view query);

/// Returns the greatest ID of a table, 0 for an empty one. Errors: provider failures.
std::int32_t lastId(ado::Connection& connection, std::string_view table);

/// Returns one of `ids`, or Null in `nullPerMille` of 1000 cases and for an empty list.
Variant pickId(Random& random, const std::vector<std::int32_t>& ids, std::uint32_t nullPerMille = 0);

/// Returns one of `ids` in turn: the `number`-th, counted from 1. @param ids  not empty
std::int32_t idInTurn(const std::vector<std::int32_t>& ids, std::int32_t number);

/// Rounds to cents, half away from zero.
double cents(double value);

/// Rounds to one decimal, half away from zero.
double tenth(double value);

/// Returns a day of the three years up to the day before the last day of the data.
Date drawDay(Random& random, const ReferenceOptions& options);

/// Returns the day `days` after another one, or the last day of the data where that comes first.
Date laterDay(Date day, std::int32_t days, const ReferenceOptions& options);

/// Returns the day on which a document was cancelled, after its own day; Null for most documents.
Variant drawCancelDay(Random& random, Date day, const ReferenceOptions& options);

/// Returns a number as text with leading zeros: paddedNumber(17, 4) is "0017".
std::string paddedNumber(std::int64_t number, std::size_t width);

/// Returns the last two digits of a day's year.
std::string shortYear(Date day);

} // namespace tamarok::database
