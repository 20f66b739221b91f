#pragma once

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

namespace tamarok::database {

/// Creates all tables of the reference schema without their indexes.
/// Errors: provider failures with the name of the script, among them a table that exists already.
void createTables(ado::Connection& connection);

/// Creates the indexes of these tables. Called after the rows are inserted: a load into tables without
/// indexes is faster.
/// Errors: provider failures with the name of the script, among them duplicate rows in a unique index.
void createIndexes(ado::Connection& connection);

} // namespace tamarok::database

#pragma GCC visibility pop
