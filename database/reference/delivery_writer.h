#pragma once

#include <cstdint>

#include "delivery.h"
#include "master_keys.h"
#include "row_fields.h"
#include "settlement_insert.h"

#include "tamarok/ado.h"

namespace tamarok::database {

/// Writes deliveries into the empty tables of a new database.
class DeliveryWriter {
public:
    /// @param connection, keys  must outlive the writer
    DeliveryWriter(ado::Connection& connection, const MasterKeys& keys);

    /// Inserts all rows of a delivery. Errors: provider failures.
    void write(const Delivery& delivery);

    /// Number of logs written so far; the last one has this ID_LOG.
    std::int64_t logs() const noexcept { return logs_; }

private:
    void writeTransport(const Delivery& delivery);
    void writeList(const Delivery& delivery, const TimberList& list);
    void writeDocuments(const Delivery& delivery);
    RowSource sourceOf(const Delivery& delivery, const TimberList& list) const;

    const MasterKeys& keys_;
    TableInsert heads_, lines_, surcharges_, documents_, articles_;
    TableInsert deliveryNotes_, provisions_, provisionLogs_;
    SettlementInsert settlements_;
    std::int64_t logs_ = 0;
    std::int32_t deliveryNoteCount_ = 0;
    std::int32_t provisionCount_ = 0;
};

} // namespace tamarok::database
