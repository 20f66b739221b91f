#pragma once

#include <string_view>

#include "tsv_table.h"

#include "tamarok/ado.h"

namespace tamarok::database {

/// Inserts the rows of `data` into a table, in order. The heads of `data` name the columns.
/// Errors: 5 for a cell that is no value of its column's type; provider failures.
void loadTable(ado::Connection& connection, std::string_view table, const TsvTable& data);

/// Fills table STRINGS with the texts of the program and the labels of the log columns. Errors as above.
void loadTexts(ado::Connection& connection);

/// Fills the tables of the master data, in the order of the numbers of the files. Errors as above, with the
/// name of the file.
void loadMasterData(ado::Connection& connection);

/// Fills the small key tables of the base selections and adds further rows to the master data. Errors as above,
/// with the names of file and table.
void loadSelectionKeys(ado::Connection& connection);

} // namespace tamarok::database
