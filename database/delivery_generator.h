#pragma once

#include <cstdint>

#include "database/delivery.h"
#include "database/line_measurement.h"
#include "database/master_keys.h"
#include "database/settlement_generator.h"
#include "tamarok_database/reference_options.h"

namespace tamarok::database {

/// Makes deliveries of timber lists in the order of their dates, until the wanted number of logs is
/// reached. Each delivery has random numbers of its own, derived from the seed and its number.
class DeliveryGenerator {
public:
    /// @param keys  must outlive the generator
    /// Error 5 for a number of logs below 0 or above 100,000,000.
    DeliveryGenerator(const MasterKeys& keys, const ReferenceOptions& options);

    /// Fills the next delivery; false, and the delivery empty, when all logs are made.
    bool next(Delivery& delivery);

private:
    TimberList list(const Delivery& delivery, Random& random);
    void describeStand(const Delivery& delivery, TimberList& list, Random& random) const;
    void describePlanning(TimberList& list, Random& random) const;

    const MasterKeys& keys_;
    ReferenceOptions options_;
    LineMeasurement measurement_;
    SettlementGenerator settlements_;
    std::int64_t deliveries_ = 0;
    std::int64_t lists_ = 0;
    std::int64_t logs_ = 0;
};

} // namespace tamarok::database
