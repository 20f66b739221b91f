#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "areas/receipts_keys.h"
#include "record_insert.h"
#include "tamarok_database/reference_options.h"

#include "tamarok/ado.h"

namespace tamarok::database {

/// First of the random streams of vouchers and harvest records.
inline constexpr std::uint64_t receiptStreams = 2'000'000'000'001U;

/// A nature record that was handed over to the forest inventory: a row of BB_NATURALVOLLZUG_DSW.
struct InventoryReport {
    std::int32_t position = 0; ///< BB_BELEGE.ID, 0 for the report of a harvest record
    std::optional<double> quantity, area;
    Date date, transferred;
    std::string stand;
};

/// Inserts inventory reports and tells their IDs.
class InventoryReports {
public:
    /// Errors: provider failures.
    explicit InventoryReports(ado::Connection& connection);

    /// Inserts the report and returns its ID. Errors: provider failures.
    std::int32_t write(const InventoryReport& report);

private:
    RecordInsert<InventoryReport> insert_;
    std::int32_t last_ = 0;
};

/// Writes vouchers of cost accounting with positions and nature records. Errors: provider failures.
void writeVouchers(ado::Connection& connection, const ReceiptKeys& keys, const ReferenceOptions& options);

/// Writes timber harvest records with lines, sales, offers and nature records. Errors: provider failures.
void writeHarvestRecords(ado::Connection& connection, const ReceiptKeys& keys, const ReferenceOptions& options);

} // namespace tamarok::database
