#pragma once

#include <cstdint>

#include "delivery.h"
#include "line_measurement.h"
#include "master_keys.h"
#include "random.h"
#include "settlement_generator.h"
#include "tamarok_database/reference_options.h"

namespace tamarok::database {

/// Makes deliveries of timber lists in the order of their dates, until the wanted number of logs is
/// reached. Each delivery draws from a random sequence of its own, derived from the seed and its number.
class DeliveryGenerator {
public:
    /// @param keys  must outlive the generator
    /// Error 5 for a number of logs below 0 or above 100,000,000.
    DeliveryGenerator(const MasterKeys& keys, const ReferenceOptions& options);

    /// Fills `delivery` with the next delivery. Returns false, with an empty delivery, when all logs are made.
    bool next(Delivery& delivery);

private:
    TimberList makeList(const profile::Kind& kind, Random& random);
    Date nextListDate() const;
    void drawStand(const profile::Kind& kind, TimberList& list, Random& random) const;
    void drawPlanning(TimberList& list, Random& random) const;

    const MasterKeys& keys_;
    ReferenceOptions options_;
    LineMeasurement measurement_;
    SettlementGenerator settlements_;
    std::int64_t deliveries_ = 0; ///< made so far
    std::int64_t lists_ = 0;
    std::int64_t logs_ = 0;
};

} // namespace tamarok::database
