#pragma once

#include <cstdint>

#include "bulk_insert.h"
#include "delivery.h"

namespace tamarok::database {

/// Inserts the rows of LOGS_RECH: one row per log with the columns of its nine versions.
class SettlementInsert {
public:
    explicit SettlementInsert(ado::Connection& connection);

    /// Sets the columns that all logs of a delivery share. The columns of a version without document are Null.
    void begin(const Delivery& delivery);

    /// Inserts the row of one log of the delivery last begun. @param log LOGS.ID_LOG
    void insert(const Delivery& delivery, const LogLine& line, std::int32_t log);

private:
    BulkInsert statement_;
};

} // namespace tamarok::database
