#include "areas/areas.h"

namespace tamarok::database {

void writeStores(ado::Connection& /*connection*/, const ReferenceOptions& /*options*/) {}

} // namespace tamarok::database
