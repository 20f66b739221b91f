#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/// What a lookup reads out of its SELECT, and the statements that it makes from it. Words of the statement are found by
/// exact texts, case and blanks included.
namespace tamarok::dialogs {

/// Returns whether a statement reads a temporary table, which the session's own connection alone can see.
bool readsTemporaryTable(std::string_view statement);

/// Returns the statement ordered by a column, in place of the order that it has; in descending order if the result
/// would be the statement itself.
/// @param column  number of the column, from 1
std::string orderedBy(std::string_view statement, std::size_t column);

/// Returns whether `orderedBy` made the statement, in descending order.
bool isDescending(std::string_view orderedStatement);

/// Returns the word after the first " FROM ", "" if there is none.
std::string_view tableOf(std::string_view statement);

/// Returns the statement that reads the default row of the statement's table: one element of the SELECT list, where
/// STANDART is 1. "" for a statement without " FROM ", and where the list has no such element.
/// @param element  index in the list, from 0
std::string defaultRowStatement(std::string_view statement, std::size_t element);

/// Returns the relation under which the widths of the columns are kept: "GH_", the end of the table's name and the
/// first two characters of each column, 30 characters at most. "" for a statement without a table.
/// @param baseColumns  the names of the columns in their tables
/// Error 5 if more than 27 characters come from the columns.
std::string widthsRelation(std::string_view statement, std::span<const std::string> baseColumns);

} // namespace tamarok::dialogs
