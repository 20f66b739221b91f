#pragma once

#include "tamarok_database/progress.h"
#include "tamarok_database/reference_options.h"

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

namespace tamarok::database {

/// Fills an empty database with tables and indexes, texts in three languages, master data, timber lists
/// with their invoices, and the business records of the other list types, which are drawn from the seed. All of it is
/// one transaction, so that an interrupted run leaves nothing. Errors: 5 for options out of range; provider failures,
/// among them a table that exists already.
void createReferenceDatabase(ado::Connection& connection, const ReferenceOptions& options = {},
                             const ProgressListener& progress = {});

/// The same without timber lists and business records: tables, indexes, texts and master data.
void createMasterDatabase(ado::Connection& connection, const ProgressListener& progress = {});

} // namespace tamarok::database

#pragma GCC visibility pop
