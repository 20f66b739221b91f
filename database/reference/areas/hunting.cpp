#include "areas/hunting.h"

#include "areas/areas.h"

namespace tamarok::database {

void writeHunting(ado::Connection& connection, const ReferenceOptions& options)
{
    writeHuntingDistricts(connection, options);
    writeObjects(connection, options);
    writeLogBooks(connection, options);
    const HuntingKeys keys{connection};
    writeCullPlans(connection, options, keys);
    writeGame(connection, options, keys);
    writeSmallGame(connection, options, keys);
    writeHuntingDogs(connection, options, keys);
}

} // namespace tamarok::database
