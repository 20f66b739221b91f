#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"

namespace tamarok::database::test {

/// All rows of a statement.
struct RowContents {
    std::vector<std::string> columns;
    std::vector<std::vector<Variant>> rows;

    /// Makes a column Null in every row, so that it counts no more. @param column  from 0
    void drop(std::size_t column);
};

/// Reads all rows. Errors: those of the database.
RowContents readContents(std::string_view statement, const ado::ConnectionRef& connection);

/// Compares the rows of one statement on two databases and describes the first difference; nothing where they agree.
/// Their order counts by the columns of the statement's ORDER BY, as far as it names columns of the result: rows that
/// are equal there may come in any order. Whole numbers and floating-point numbers are one kind; two numbers are equal
/// up to a relative difference of 1e-9, since a sum depends on the order in which it is taken. All other values, dates
/// among them, must be exactly equal. A column without name on the left may have any on the right: the open T-SQL
/// server names expressions.
std::optional<std::string> firstDifference(std::string_view statement, RowContents left, RowContents right);

} // namespace tamarok::database::test
