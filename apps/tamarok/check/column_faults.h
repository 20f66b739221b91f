#pragma once

#include <string>
#include <string_view>

#include "check/table_shapes.h"

namespace tamarok::cli::check {

/// The collation of columns that compare exactly, as SQL Server and the open T-SQL server have it.
inline constexpr std::string_view exactCollation = "Latin1_General_BIN2";

/// What is wrong with a column, with the remedy; empty for a column that fits. A wider text, another order of the
/// columns and a looser Null are no faults.
/// @param onServer  false for the embedded database, which does not change columns
std::string faultOf(const TableShape& table, const ColumnShape& expected, const ColumnShape& found, bool onServer);

/// The statements that add a missing column.
std::string addition(const TableShape& table, const ColumnShape& column, bool onServer);

/// The statement that gives a table the primary key of the reference; empty where the reference has none.
std::string keyAddition(const TableShape& table);

/// The statement that gives a column of a server its type and a collation, "" for that of the database.
std::string alteration(std::string_view table, const ColumnShape& column, std::string_view collation);

/// The remedy for a column of a file.
inline constexpr std::string_view newFile =
    "the embedded database does not change columns: make a new database (tamarok init) and copy the rows";

} // namespace tamarok::cli::check
