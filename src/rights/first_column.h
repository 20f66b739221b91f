#pragma once

#include <string_view>
#include <vector>

#include "ado/first_row.h"

#include "tamarok/ado.h"

namespace tamarok::rights {

/// Returns the first column of all rows of a query, read at once; empty if there is no row.
/// Errors: 91 no connection, failures of the database.
std::vector<Variant> readFirstColumn(const ado::ConnectionRef& connection, std::string_view statement);

/// Calls `action` with the text of the first column of each row of a query, "" for Null. Reads row by row, so that
/// the action has run for the rows before a failure.
/// Errors: 91 no connection, failures of the database and of the action.
template <class Action>
void forEachFirstText(const ado::ConnectionRef& connection, std::string_view statement, Action&& action)
{
    ado::Recordset rows;
    for (rows.Open(statement, connection); !rows.AtEOF(); rows.MoveNext())
        action(ado::fieldText(rows.Fields().Item(0).Value()));
    rows.Close();
}

} // namespace tamarok::rights
