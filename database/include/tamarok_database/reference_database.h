#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "tamarok_database/reference_options.h"

#include "tamarok/ado.h"

namespace tamarok::database {

/// Progress of `createReferenceDatabase`.
struct Progress {
    std::string_view phase; ///< "Tables", "Texts", "Master data", "Timber lists", "Business records", "Indexes"
    std::int64_t done = 0;  ///< 0 to `total`
    std::int64_t total = 0; ///< logs for "Timber lists", areas for "Business records", else 1
};

/// Called at the start and end of each phase and in between at most ten times a second. An exception that
/// it throws ends `createReferenceDatabase` and leaves the database unchanged.
using ProgressListener = std::function<void(const Progress&)>;

/// Fills an empty database with tables and indexes, texts in three languages, master data, timber lists
/// with their invoices, and the business records of the other list types, which are drawn from the seed. All of it is
/// one transaction, so that an interrupted run leaves nothing. Errors: 5 for options out of range; provider failures,
/// among them a table that exists already.
void createReferenceDatabase(ado::Connection& connection, const ReferenceOptions& options = {},
                             const ProgressListener& progress = {});

} // namespace tamarok::database
