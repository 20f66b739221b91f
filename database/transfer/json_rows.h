#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "row_column.h"

namespace tamarok::database {

/// Whether every server takes these rows out of a JSON text unchanged. Binary columns, long texts, and texts with
/// characters that JSON escapes are left to literals.
bool jsonHolds(std::span<const std::vector<Variant>> rows, const std::vector<RowColumn>& columns);

/// An INSERT of rows as one JSON text, from which the server reads the values by OPENJSON (SQL Server 2016 and later).
/// All values arrive as texts and are converted by the columns, as the literals of a VALUES clause are.
/// @param rows  those that jsonHolds
/// @param used  the columns that the statement names, by position
std::string jsonStatementOf(const std::string& table, std::span<const std::vector<Variant>> rows,
                            const std::vector<RowColumn>& columns, std::span<const std::size_t> used);

} // namespace tamarok::database
