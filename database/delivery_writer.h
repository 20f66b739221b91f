#pragma once

#include <cstdint>

#include "database/bulk_insert.h"
#include "database/delivery.h"
#include "database/master_keys.h"

#include "tamarok/ado.h"

namespace tamarok::database {

/// Writes deliveries into the empty tables of a new database.
class DeliveryWriter {
public:
    /// @param keys  must outlive the writer
    DeliveryWriter(ado::Connection& connection, const MasterKeys& keys);

    void write(const Delivery& delivery);

    /// Number of logs written so far.
    std::int64_t logs() const noexcept { return logs_; }

private:
    /// The statements for LOGS_RECH by the number of leading versions that they fill.
    BulkInsert& settlementsFor(const Delivery& delivery);
    void writeTransport(const Delivery& delivery);
    void writeDocuments(const Delivery& delivery);
    void writeArticles(const Delivery& delivery);
    void writeList(const Delivery& delivery, const TimberList& list);
    void writeListHead(const Delivery& delivery, const TimberList& list);
    void writeLine(const Delivery& delivery, const LogLine& line, BulkInsert& settlements);

    const MasterKeys& keys_;
    BulkInsert heads_, lines_, unsettled_, usual_, full_, surcharges_, documents_, articles_;
    BulkInsert deliveryNotes_, provisions_, provided_;
    std::int64_t logs_ = 0;
    std::int32_t deliveryNoteCount_ = 0;
    std::int32_t provisionCount_ = 0;
};

} // namespace tamarok::database
