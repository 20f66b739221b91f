#include "areas/areas.h"

namespace tamarok::database {

void writeInventory(ado::Connection& /*connection*/, const ReferenceOptions& /*options*/) {}

} // namespace tamarok::database
