#include "areas/areas.h"
#include "areas/people_writers.h"

namespace tamarok::database {

void writePeople(ado::Connection& connection, const ReferenceOptions& options)
{
    // Without records nothing refers to further data of partners either.
    if (options.records == 0) return;
    people::writeUsers(connection, options);
    // Owners, machines and wages read the partners' further columns and the machines' numbers.
    people::writePartners(connection, options);
    people::writeForestOwners(connection, options);
    people::writeMachines(connection, options);
    people::writePartnerGroups(connection, options);
    people::writeWageEntry(connection, options);
    people::writeServicesAndWages(connection, options);
    people::writeWageRates(connection, options);
}

} // namespace tamarok::database
