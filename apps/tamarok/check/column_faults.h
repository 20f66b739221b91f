#pragma once

#include <string>

#include "check/table_shapes.h"

namespace tamarok::cli::check {

/// What is wrong with a column, with the remedy; empty for a column that fits. A wider text, another order of the
/// columns and a looser Null are no faults.
/// @param onServer  false for the embedded database, which does not change columns
std::string faultOf(const TableShape& table, const ColumnShape& expected, const ColumnShape& found, bool onServer);

/// The statements that add a missing column.
std::string addition(const TableShape& table, const ColumnShape& column);

} // namespace tamarok::cli::check
