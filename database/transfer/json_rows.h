#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "row_column.h"

namespace tamarok::database {

/// Whether a JSON text on its way through a server keeps these rows: binary columns and the character zero do not.
bool jsonHolds(std::span<const std::vector<Variant>> rows, const std::vector<RowColumn>& columns);

/// An INSERT of rows as one JSON text, from which the server reads the values by OPENJSON (SQL Server 2016 and later).
/// All values arrive as texts and are converted by the columns, as the literals of a VALUES clause are.
/// @param used  the columns that the statement names, by position
std::string jsonStatementOf(const std::string& table, std::span<const std::vector<Variant>> rows,
                            const std::vector<RowColumn>& columns, std::span<const std::size_t> used);

} // namespace tamarok::database
