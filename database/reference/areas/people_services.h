#pragma once

#include <cstdint>
#include <vector>

#include "areas/people_rows.h"
#include "areas/people_work.h"

namespace tamarok::database::people {

/// A record of services, as the wages book it.
struct ServiceRecord {
    std::int32_t id;
    std::int32_t month; ///< index of the month
    std::int32_t worker;
    std::int32_t level;
    double hours;
    double amount;
};

/// Writes records of services with their services and other wages, and returns them in the order of their ids.
/// Errors: provider failures.
std::vector<ServiceRecord> writeServices(ado::Connection& connection, const ReferenceOptions& options,
                                         const WorkKeys& keys);

/// Writes the months of forest workers' wages that book the records. Errors: provider failures.
void writeForestWages(ado::Connection& connection, const ReferenceOptions& options, const WorkKeys& keys,
                      const std::vector<ServiceRecord>& records);

} // namespace tamarok::database::people
