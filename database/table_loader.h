#pragma once

#include <string_view>

#include "database/tsv.h"

#include "tamarok/ado.h"

namespace tamarok::database {

/// Inserts every row of `data` into the table of that name, in order.
void loadTable(ado::Connection& connection, std::string_view table, const TsvTable& data);

/// Fills table STRINGS with the texts of the program and the labels of the log columns.
void loadTexts(ado::Connection& connection);

/// Fills the master data; a file NN_TABLE.tsv holds the rows of TABLE, in the order of the numbers.
void loadMasterData(ado::Connection& connection);

} // namespace tamarok::database
