#include "areas/stores.h"

#include "areas/areas.h"

namespace tamarok::database {

void writeStores(ado::Connection& connection, const ReferenceOptions& options)
{
    writeDocumentBook(connection, options);
    writeDistributionKeys(connection, options);
    writeStock(connection, options);
}

} // namespace tamarok::database
