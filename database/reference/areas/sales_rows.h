#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "bulk_insert.h"
#include "random.h"

#include "tamarok/ado.h"
#include "tamarok/date.h"

// What the parts of the sales area share: columns of statements, keys read from the database, and drawn values.
namespace tamarok::database::sales {

// --- columns of an INSERT statement ------------------------------------------------------------

constexpr BulkInsert::Column whole(std::string_view name) noexcept
{
    return {name, ado::DataType::Integer};
}
constexpr BulkInsert::Column number(std::string_view name) noexcept
{
    return {name, ado::DataType::Double};
}
constexpr BulkInsert::Column text(std::string_view name) noexcept
{
    return {name, ado::DataType::VarWChar};
}
constexpr BulkInsert::Column day(std::string_view name) noexcept
{
    return {name, ado::DataType::Date};
}
constexpr BulkInsert::Column flag(std::string_view name) noexcept
{
    return {name, ado::DataType::Boolean};
}

/// Inserts a row of `values`, which stand in the order of the statement's columns. Errors: provider failures.
void insertRow(BulkInsert& rows, std::initializer_list<Variant> values);

// --- keys ----------------------------------------------------------------------------------------

using Ids = std::vector<std::int32_t>;

/// Returns the first field of every row of a statement. Errors: provider failures.
Ids readIds(ado::Connection& connection, std::string_view statement);

/// Returns the first field of the first row as a number; 0 for Null and for no row. Errors: provider failures.
std::int32_t readNumber(ado::Connection& connection, std::string_view statement);

/// Returns the first field of every row of a statement as a text. Errors: provider failures.
std::vector<std::string> readTexts(ado::Connection& connection, std::string_view statement);

/// The keys that every part of the area refers to.
struct Keys {
    explicit Keys(ado::Connection& connection);

    Ids partners, customers, owners, carriers, contractors; ///< PERSONAL.ID_PERSONAL
    Ids districts;                                          ///< ACCESS_LEVELS.ID of forest districts
    Ids locations;                                          ///< WALDORT.ID_WALDORT
    Ids users;                                              ///< USERS.ID
    Ids objects, projects, orders;                          ///< OBJEKT, BB_T_PROJEKT_PLANUNG, BB_T_AUFTRAGS_PLANUNG
    std::vector<Ids> freeLists;                             ///< RELTABLE.ID of the ten free lists
};

// --- drawn values --------------------------------------------------------------------------------

/// One of `items`; Null in `nullPerMille` of 1000 cases and for no items.
Variant pickOrNull(Random& random, const Ids& items, std::uint32_t nullPerMille = 30);

/// `value`, or Null in `nullPerMille` of 1000 cases.
Variant orNull(Random& random, std::uint32_t nullPerMille, Variant value);

/// A day in the three years up to `baseDate`.
Date drawDay(Random& random, Date baseDate);

/// The day `days` after `day`, but none after `last`.
Date notAfter(Date day, std::int32_t days, Date last);

/// `prefix` and `number`, which is left-padded with zeros to `width` digits.
std::string numbered(std::string_view prefix, std::int64_t number, std::size_t width);

/// The year of a day in two digits and a running number, such as "T24-00017".
std::string numberOfYear(std::string_view prefix, Date day, std::int64_t number);

/// Rounds an amount to cents.
double cents(double amount);

/// Rounds a price to quarters of a euro; at least one quarter.
double quarters(double price);

} // namespace tamarok::database::sales
