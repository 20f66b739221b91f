#pragma once

#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "lists/list_columns.h"
#include "lists/list_statements.h"
#include "lists/record_list.h"

namespace tamarok::workbench {

/// Writes a list as separated values for a spreadsheet: first the heads of the columns, then a line for each row.
/// Values are whole, not rounded by the column's pattern, under the regional settings of the calling thread; where
/// their decimal separator is a comma, a semicolon separates the fields.
/// @param columns  of the list, in its order
/// @param write    receives pieces of the text, in UTF-8 with its mark in front
/// @return number of rows
/// Errors: those of the database and of `write`; Stopped.
std::size_t exportCsv(const ado::ConnectionRef& connection, const ListStatements& list,
                      const std::vector<ListColumn>& columns, const std::function<void(std::string_view)>& write,
                      const std::stop_token& stop, const RowProgress& progress);

} // namespace tamarok::workbench
