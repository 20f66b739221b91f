#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "tamarok_database/reference_options.h"

#include "tamarok/ado.h"

namespace tamarok::database {

/// How far the making of the database has come.
struct Progress {
    std::string_view phase; ///< "Tables", "Texts", "Master data", "Timber lists", "Indexes"
    std::int64_t done = 0;
    std::int64_t total = 0;
};

/// Called at the start and end of each phase, and between them at most ten times a second. An
/// exception that it throws ends the making and leaves the database as it was.
using ProgressListener = std::function<void(const Progress&)>;

/// Fills an empty database: tables and indexes, texts in three languages, master data, and timber
/// lists with their invoices, drawn from the seed. All of it is one transaction, so that an
/// interrupted run leaves nothing.
/// Errors: 5 for options out of range, provider failures (a table that exists already among them).
void createReferenceDatabase(ado::Connection& connection, const ReferenceOptions& options = {},
                             const ProgressListener& progress = {});

} // namespace tamarok::database
